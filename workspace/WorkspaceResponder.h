#pragma once

#include <QPointer>
#include <QTcpSocket>

#include <functional>
#include <memory>

class QHttpServerResponder;
struct WorkspaceReply;

// The open connection a request is waiting on. It may be kept past the
// request's handler (long polls, delayed answers): the socket is watched, and
// an answer for a client that has gone is dropped instead of written. Once
// written, the connection's guard hears of it (to close or to wait idle).
class WorkspaceResponder {
public:
    enum class Body { Send, Omit };
    // Omit answers a HEAD request: the headers of the answer without its body.
    explicit WorkspaceResponder(QHttpServerResponder &&responder, Body body = Body::Send);
    WorkspaceResponder(WorkspaceResponder &&other) noexcept;
    WorkspaceResponder &operator=(WorkspaceResponder &&other) noexcept;
    ~WorkspaceResponder();

    [[nodiscard]] bool isConnected() const;
    [[nodiscard]] bool isAnswered() const { return !m_responder; }
    // Writes the answer once; later calls do nothing.
    void send(const WorkspaceReply &reply);
    // Hears the answer when it is given, whether or not the client is still
    // there to read it.
    void setWitness(std::function<void(const WorkspaceReply &)> witness) { m_witness = std::move(witness); }

    // Whether the HTTP library has a reason phrase for the status: it cannot
    // write any other.
    [[nodiscard]] static bool canWrite(int status);

private:
    void abandon();

    std::unique_ptr<QHttpServerResponder> m_responder;
    QPointer<QTcpSocket> m_socket;
    Body m_body = Body::Send;
    std::function<void(const WorkspaceReply &)> m_witness;
};
