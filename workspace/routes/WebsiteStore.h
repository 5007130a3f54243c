#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonObject>
#include <QString>

class WorkspaceStore;

// The clients' websites over SQLite, and site checks. The local workspace
// fetches nothing from the web: a check judges a site from its address, the
// same every time for the same host, and keeps the score on a listed site
// it checked.
class WebsiteStore {
public:
    explicit WebsiteStore(WorkspaceStore &store);

    [[nodiscard]] bool createSchema();
    [[nodiscard]] bool mayUse(const QString &me) const;
    [[nodiscard]] bool hasSites() const;

    [[nodiscard]] WorkspaceReply sites() const;
    [[nodiscard]] WorkspaceReply check(const QJsonObject &body);

    // For the demo.
    void addSite(const QString &clientId, const QString &domain, const QString &status, qint64 publishedAtMs,
        qint64 uptime, qint64 visits, qint64 formEntries);

private:
    WorkspaceStore &m_store;
};
