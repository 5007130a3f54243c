#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonArray>
#include <QList>
#include <QString>

#include <optional>

class QJsonObject;
class WorkspaceRequest;

// The test controls of "--test-faults": canned answers for chosen requests
// and the log of the latest requests received (bodies cut short). The log
// keeps whether a session cookie came, never its value.
class WorkspaceFaults {
public:
    struct Fault {
        QByteArray method;
        QString path;
        // 0 with a delay: answer normally, only later.
        int status = 0;
        QByteArray contentType;
        QByteArray body;
        std::optional<QString> location;
        int delayMs = 0;
        // Requests left to catch; 0 catches until cleared.
        int times = 1;
        // Run the request, then close the connection before the answer: a
        // change the client cannot know was made.
        bool cut = false;
    };

    // What to do with a request that a fault caught.
    struct Hit {
        int delayMs = 0;
        // Nothing: answer normally after the delay.
        std::optional<WorkspaceReply> reply;
        bool cut = false;
    };

    // Reads a fault as POST /api/test/faults sends it; on a bad one returns
    // nothing and says why in *error.
    [[nodiscard]] static std::optional<Fault> fromJSON(const QJsonObject &json, QString *error);

    void add(Fault fault);
    void clear() { m_faults.clear(); }
    // The first fault for this method and path, used up by one.
    [[nodiscard]] std::optional<Hit> take(QByteArrayView method, const QString &path);

    void record(const WorkspaceRequest &request);
    [[nodiscard]] QJsonArray requests() const { return m_requests; }
    void clearRequests() { m_requests = {}; }

private:
    QList<Fault> m_faults;
    QJsonArray m_requests;
};
