#pragma once

#include <QPointer>
#include <QTcpSocket>

#include <memory>

class QHttpServerResponder;
struct WorkspaceReply;

// The open connection a request is waiting on. It may be kept past the
// request's handler (long polls, delayed answers): the socket is watched, and
// an answer for a client that has gone is dropped instead of written.
class WorkspaceResponder {
public:
    explicit WorkspaceResponder(QHttpServerResponder &&responder);
    WorkspaceResponder(WorkspaceResponder &&other) noexcept;
    WorkspaceResponder &operator=(WorkspaceResponder &&other) noexcept;
    ~WorkspaceResponder();

    [[nodiscard]] bool isConnected() const;
    [[nodiscard]] bool isAnswered() const { return !m_responder; }
    // Writes the answer once; later calls do nothing.
    void send(const WorkspaceReply &reply);

    // Whether the HTTP library has a reason phrase for the status: it cannot
    // write any other.
    [[nodiscard]] static bool canWrite(int status);

private:
    void abandon();

    std::unique_ptr<QHttpServerResponder> m_responder;
    QPointer<QTcpSocket> m_socket;
};
