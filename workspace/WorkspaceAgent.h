#pragma once

#include "workspace/WorkspaceOptions.h"

#include <QJsonArray>
#include <QString>
#include <QTimer>

#include <optional>

class QSqlQuery;
class WorkspaceStore;

// The local stand-in for the assistant's agent: it keeps the agent requests
// in the workspace's database and, while online, works each one on a timer
// through queued, running and then done, failed or blocked. Its replies come
// from the workspace's own data through a few fixed skills, so they are the
// same on every run; anything that would move money or delete data waits,
// blocked, for the owner's decision.
class WorkspaceAgent {
public:
    struct Ask {
        QString content;
        std::optional<QString> page;
        std::optional<QString> origin;
        QString run;
        std::optional<QString> requestKey;
    };
    enum class Decision { Approve, Decline };

    WorkspaceAgent(WorkspaceStore &store, WorkspaceOptions::Agent mode);
    WorkspaceAgent(const WorkspaceAgent &) = delete;
    WorkspaceAgent &operator=(const WorkspaceAgent &) = delete;

    [[nodiscard]] bool configured() const { return m_mode != WorkspaceOptions::Agent::Off; }
    [[nodiscard]] bool online() const { return m_mode == WorkspaceOptions::Agent::Online; }

    // Stores a request and returns its id; a key the person used before
    // gives the id of the request stored under it, and nothing new.
    [[nodiscard]] QString ask(const QString &personId, const Ask &ask);
    // The person's own requests, oldest first, as the service's records.
    [[nodiscard]] QJsonArray requests(const QString &personId) const;
    // Everyone's blocked requests, oldest first.
    [[nodiscard]] QJsonArray blocked() const;
    // False when the person has no request with that id.
    [[nodiscard]] bool remove(const QString &personId, const QString &id);
    [[nodiscard]] bool rename(const QString &personId, const QString &id, const QString &title);
    // The request's new status; nothing when it is not blocked.
    [[nodiscard]] std::optional<QString> resume(
        const QString &id, Decision decision, const QString &reconciliation, const QString &reviewer);

private:
    struct Outcome {
        QString status;
        std::optional<QString> reply;
    };
    void step();
    [[nodiscard]] Outcome work(const QString &personId, const QString &content, const QString &run) const;
    [[nodiscard]] QJsonArray select(const QString &where, const QString &value) const;
    void plantDemo();
    [[nodiscard]] QSqlQuery prepare(const QString &sql) const;

    WorkspaceStore &m_store;
    const WorkspaceOptions::Agent m_mode;
    QTimer m_timer;
};
