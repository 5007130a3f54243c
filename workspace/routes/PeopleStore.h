#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonObject>
#include <QString>

class WorkspaceStore;

// The time clock over the workspace's SQLite tables (`people_time_entries`,
// and `people_time_edits` keeping every owner's correction with its reason).
// Each method answers a route whole, refusals included. Everyone keeps their
// own clock; seeing another person's week and correcting an entry is for an
// owner.
class PeopleStore {
public:
    explicit PeopleStore(WorkspaceStore &store);

    [[nodiscard]] bool isOwner(const QString &me) const;
    [[nodiscard]] bool hasEntries() const;

    [[nodiscard]] WorkspaceReply week(const QString &me, const QString &week, const QString &person) const;
    [[nodiscard]] WorkspaceReply clockIn(const QString &me);
    [[nodiscard]] WorkspaceReply clockOut(const QString &me);
    [[nodiscard]] WorkspaceReply editEntry(const QString &me, const QString &id, const QJsonObject &body);

    // For the demo: a closed entry, or an open one when `clockOutMs` is 0.
    void addEntry(const QString &personId, qint64 clockInMs, qint64 clockOutMs);

private:
    [[nodiscard]] QJsonObject entry(const QString &id) const;
    [[nodiscard]] QString openEntry(const QString &personId) const;

    WorkspaceStore &m_store;
};
