#pragma once

#include "workspace/WorkspaceReply.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QTimeZone>

class WorkspaceStore;

// The page clients book time on, served outside the API without a sign-in:
// `GET /book/<slug>` shows a link's free times and a form, `POST` books one.
// Free times are the next 14 days' working hours (09:00 to 17:00 in the
// workspace's zone, Monday to Friday) in steps of the link's length, clear
// of its owner's timed events, Google events and bookings. Each form carries
// a token, so the same form posted twice books once.
class ScheduleBookingPage {
public:
    static constexpr int days = 14;

    ScheduleBookingPage(WorkspaceStore &store, QTimeZone zone);

    [[nodiscard]] WorkspaceReply show(const QString &slug) const;
    [[nodiscard]] WorkspaceReply book(const QString &slug, const QByteArray &form);

    // The working-hours starts from `now` on, `minutes` apart, for `days`
    // days in `zone`.
    [[nodiscard]] static QList<QDateTime> workingStarts(const QDateTime &now, int minutes, const QTimeZone &zone);

private:
    struct Link {
        QString id;
        QString personId;
        QString ownerName;
        QString title;
        int duration = 0;
        QString slug;
    };
    struct Typed {
        QString name;
        QString email;
        QString note;
        QString start;
    };

    [[nodiscard]] std::optional<Link> link(const QString &slug) const;
    [[nodiscard]] QList<QDateTime> freeStarts(const Link &link) const;
    [[nodiscard]] WorkspaceReply form(const Link &link, const Typed &typed, const QString &problem, int status) const;
    [[nodiscard]] WorkspaceReply booked(const Link &link, const QString &bookingId) const;

    WorkspaceStore &m_store;
    QTimeZone m_zone;
};
