#pragma once

#include "workspace/WorkspaceReply.h"

#include <QDate>
#include <QJsonObject>
#include <QString>

#include <optional>

class WorkspaceStore;

// The schedule over SQLite: each person's calendar events (times in
// milliseconds) and their booking links with the bookings clients made
// through them. A booking is an event of its link's owner too.
class ScheduleStore {
public:
    static constexpr qint64 longestRangeDays = 62;

    // Milliseconds of a range read from ISO 8601 times: it ends after it
    // starts and spans at most 62 days, else it is refused with
    // `rangeRefusal`.
    struct Range {
        qint64 from = 0;
        qint64 to = 0;
    };
    [[nodiscard]] static std::optional<Range> readRange(const QString &from, const QString &to);
    static const QString rangeRefusal;

    // A link's page is `pages` + "/book/" + its slug.
    ScheduleStore(WorkspaceStore &store, QString pages);

    [[nodiscard]] bool createSchema();
    [[nodiscard]] bool mayUse(const QString &me) const;
    // Whether anyone has an event in the week of `monday` (local time).
    [[nodiscard]] bool hasEventsInWeekOf(const QDate &monday) const;

    [[nodiscard]] WorkspaceReply events(const QString &me, const QString &from, const QString &to) const;
    [[nodiscard]] WorkspaceReply links(const QString &me) const;
    [[nodiscard]] WorkspaceReply createLink(const QString &me, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply bookings(const QString &me, const QString &linkId) const;

    // For the demo.
    struct Event {
        QString personId;
        QString title;
        qint64 startMs = 0;
        qint64 endMs = 0;
        bool allDay = false;
        QString kind;
        QString location;
        QString clientId;
    };
    void addEvent(const Event &event);
    [[nodiscard]] QString addLink(const QString &personId, const QString &title, qint64 duration);
    void addBooking(
        const QString &linkId, const QString &name, const QString &email, qint64 startMs, const QString &note);

private:
    [[nodiscard]] QJsonObject linkObject(const QString &id) const;

    WorkspaceStore &m_store;
    QString m_pages;
};
