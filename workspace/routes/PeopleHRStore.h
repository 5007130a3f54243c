#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonObject>
#include <QString>

class WorkspaceStore;
struct TarnHRRecordEdit;

// HR records over `people_hr`, one row beside a `people` row (a person
// without one reads with their role as the job title, as an employee, at
// version 0). Everyone signed in reads the team; contact details and
// changes are an owner's. Each method answers a route whole.
class PeopleHRStore {
public:
    explicit PeopleHRStore(WorkspaceStore &store);

    [[nodiscard]] bool hasRecords() const;

    [[nodiscard]] WorkspaceReply records(const QString &me) const;
    [[nodiscard]] WorkspaceReply update(const QString &me, const QString &id, const QJsonObject &body);

    // For the demo: a person's record as an owner would have typed it.
    void set(const QString &personId, const TarnHRRecordEdit &record);

private:
    [[nodiscard]] bool isOwner(const QString &me) const;
    // Empty when there is no such person.
    [[nodiscard]] QJsonObject record(const QString &id, bool contacts) const;

    WorkspaceStore &m_store;
};
