#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonObject>
#include <QString>

class WorkspaceStore;

// The Google calendar of a connected mailbox, as the mail service's calendar
// methods reach it: the events in the account (times in milliseconds) and
// who granted the calendar when connecting Google. Answers are the mail
// RPC's JSON records.
class ScheduleGoogle {
public:
    explicit ScheduleGoogle(WorkspaceStore &store);

    [[nodiscard]] bool createSchema();
    [[nodiscard]] bool isGranted(const QString &me) const;
    void grant(const QString &me);

    // "calendar.events" {from, to}: {"events":[event]}, by start.
    [[nodiscard]] WorkspaceReply events(const QString &me, const QJsonObject &params) const;
    // "calendar.create" {title, start_at, end_at, location?}: the event made.
    [[nodiscard]] WorkspaceReply create(const QString &me, const QJsonObject &params);

    // For the demo.
    [[nodiscard]] bool hasEvents() const;
    QString add(
        const QString &me, const QString &title, qint64 startMs, qint64 endMs, bool allDay, const QString &location);

private:
    [[nodiscard]] QJsonObject eventObject(const QString &id) const;

    WorkspaceStore &m_store;
};
