#include "workspace/routes/ScheduleBookingPage.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QLocale>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QUrlQuery>

using namespace Qt::StringLiterals;
using BooksSql::newID;
using BooksSql::orNull;
using BooksSql::run;
using BooksSql::text;

namespace {

const QTime opens(9, 0);
const QTime closes(17, 0);
constexpr qsizetype longestName = 100;
constexpr qsizetype longestEmail = 200;
constexpr qsizetype longestNote = 1000;
constexpr qint64 minuteMs = 60'000;

const char *const schema[] = {
    // The form a booking came from, so that posting it again books nothing more.
    "CREATE TABLE IF NOT EXISTS schedule_booking_forms ("
    " token TEXT PRIMARY KEY, booking_id TEXT NOT NULL REFERENCES schedule_bookings(id))",
};

// The owner's busy times overlapping [from, to): timed events of both
// calendars and the bookings on every link of theirs.
// The person, from and to, once for each.
const QString busySql
    = u"SELECT start_ms, end_ms FROM schedule_events WHERE person_id = ? AND all_day = 0 AND end_ms > ?"
      " AND start_ms < ?"
      " UNION ALL SELECT start_ms, end_ms FROM schedule_google_events WHERE person_id = ? AND all_day = 0"
      " AND end_ms > ? AND start_ms < ?"
      " UNION ALL SELECT b.start_ms, b.start_ms + l.duration * 60000 FROM schedule_bookings b"
      " JOIN schedule_links l ON l.id = b.link_id WHERE l.person_id = ?"
      " AND b.start_ms + l.duration * 60000 > ? AND b.start_ms < ?"_s;

QString newToken()
{
    return QString::number(QRandomGenerator::system()->generate64(), 36)
        + QString::number(QRandomGenerator::system()->generate64(), 36);
}

QString e(const QString &value)
{
    return value.toHtmlEscaped();
}

QString dayLabel(const QDateTime &at)
{
    return QLocale(QLocale::English).toString(at.date(), u"dddd d MMMM"_s);
}

QString iso(const QDateTime &at)
{
    return at.toUTC().toString(Qt::ISODate);
}

} // namespace

ScheduleBookingPage::ScheduleBookingPage(WorkspaceStore &store, QTimeZone zone)
    : m_store(store)
    , m_zone(std::move(zone))
{
    if (!BooksSql::runAll(m_store.database(), schema))
        qWarning("could not create the booking forms' table");
}

QList<QDateTime> ScheduleBookingPage::workingStarts(const QDateTime &now, int minutes, const QTimeZone &zone)
{
    QList<QDateTime> starts;
    const QDate today = now.toTimeZone(zone).date();
    for (int d = 0; d < days && minutes > 0; ++d) {
        const QDate day = today.addDays(d);
        if (day.dayOfWeek() > 5)
            continue;
        for (int offset = 0; offset + minutes <= opens.secsTo(closes) / 60; offset += minutes) {
            const QDateTime start(day, opens.addSecs(offset * 60), zone);
            if (start > now)
                starts.append(start);
        }
    }
    return starts;
}

std::optional<ScheduleBookingPage::Link> ScheduleBookingPage::link(const QString &slug) const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT l.id, l.person_id, p.name, l.title, l.duration FROM schedule_links l"
        " JOIN people p ON p.id = l.person_id WHERE l.slug = ?"_s,
        { slug });
    if (!q.next())
        return std::nullopt;
    return Link { q.value(0).toString(), q.value(1).toString(), q.value(2).toString(), q.value(3).toString(),
        q.value(4).toInt(), slug };
}

QList<QDateTime> ScheduleBookingPage::freeStarts(const Link &link) const
{
    const QList<QDateTime> starts
        = workingStarts(QDateTime::currentDateTimeUtc().toTimeZone(m_zone), link.duration, m_zone);
    if (starts.isEmpty())
        return {};
    const qint64 lengthMs = link.duration * minuteMs;
    const QVariantList range { link.personId, starts.constFirst().toMSecsSinceEpoch(),
        starts.constLast().toMSecsSinceEpoch() + lengthMs };
    QSqlQuery q = run(m_store.database(), busySql, range + range + range);
    QList<std::pair<qint64, qint64>> busy;
    while (q.next())
        busy.append({ q.value(0).toLongLong(), q.value(1).toLongLong() });
    QList<QDateTime> free;
    for (const QDateTime &start : starts) {
        const qint64 from = start.toMSecsSinceEpoch();
        const bool clear = std::none_of(busy.begin(), busy.end(),
            [&](const std::pair<qint64, qint64> &b) { return b.second > from && b.first < from + lengthMs; });
        if (clear)
            free.append(start);
    }
    return free;
}

WorkspaceReply ScheduleBookingPage::show(const QString &slug) const
{
    const std::optional<Link> found = link(slug);
    if (!found)
        return WorkspaceReply::page(u"Booking"_s, u"<p>There is no booking page here.</p>"_s, 404);
    return form(*found, {}, {}, 200);
}

WorkspaceReply ScheduleBookingPage::form(const Link &link, const Typed &typed, const QString &problem, int status) const
{
    QString times;
    QString day;
    for (const QDateTime &start : freeStarts(link)) {
        if (dayLabel(start) != day) {
            times += (day.isEmpty() ? u""_s : u"</p>"_s) + u"<h3>%1</h3><p>"_s.arg(e(dayLabel(start)));
            day = dayLabel(start);
        }
        const QString value = iso(start);
        times += u"<label><input type=\"radio\" name=\"start\" value=\"%1\"%2> %3</label> "_s.arg(
            e(value), value == typed.start ? u" checked"_s : QString(), start.toString(u"HH:mm"_s));
    }
    times = day.isEmpty() ? u"<p>No free times in the next two weeks.</p>"_s : times + u"</p>"_s;
    const QString content
        = u"<p class=\"note\">%1 with %2 · times in %3</p>%4"
          "<form method=\"post\" action=\"/book/%5\"><input type=\"hidden\" name=\"token\" value=\"%6\">"
          "<fieldset><legend>Choose a time</legend>%7</fieldset>"
          "<p><label>Name<br><input name=\"name\" maxlength=\"100\" value=\"%8\"></label></p>"
          "<p><label>Email<br><input name=\"email\" type=\"email\" maxlength=\"200\" value=\"%9\"></label></p>"
          "<p><label>Note<br><textarea name=\"note\" maxlength=\"1000\">%10</textarea></label></p>"
          "<p><button type=\"submit\">Book</button></p></form>"_s.arg(u"%1 min"_s.arg(link.duration), e(link.ownerName),
              e(QString::fromUtf8(m_zone.id())),
              problem.isEmpty() ? QString() : u"<p role=\"alert\"><strong>%1</strong></p>"_s.arg(e(problem)),
              e(link.slug), newToken(), times, e(typed.name), e(typed.email), e(typed.note));
    return WorkspaceReply::page(link.title, content, status);
}

WorkspaceReply ScheduleBookingPage::booked(const Link &link, const QString &bookingId) const
{
    const qint64 startMs
        = BooksSql::single(m_store.database(), u"SELECT start_ms FROM schedule_bookings WHERE id = ?"_s, { bookingId });
    const QDateTime start = QDateTime::fromMSecsSinceEpoch(startMs, m_zone);
    return WorkspaceReply::page(u"Booked"_s,
        u"<p>Your %1 with %2 is booked for %3, %4 – %5.</p>"_s.arg(e(link.title), e(link.ownerName), e(dayLabel(start)),
            start.toString(u"HH:mm"_s), start.addSecs(qint64(link.duration) * 60).toString(u"HH:mm"_s)));
}

WorkspaceReply ScheduleBookingPage::book(const QString &slug, const QByteArray &body)
{
    const std::optional<Link> found = link(slug);
    if (!found)
        return WorkspaceReply::page(u"Booking"_s, u"<p>There is no booking page here.</p>"_s, 404);
    QString plus = QString::fromUtf8(body);
    const QUrlQuery query(plus.replace(u'+', u' '));
    const auto field = [&query](const QString &key) { return query.queryItemValue(key, QUrl::FullyDecoded); };
    const Typed typed { field(u"name"_s).simplified(), field(u"email"_s).trimmed(), field(u"note"_s).trimmed(),
        field(u"start"_s) };
    const QString token = field(u"token"_s);

    QSqlDatabase db = m_store.database();
    if (const QString earlier = text(db, u"SELECT booking_id FROM schedule_booking_forms WHERE token = ?"_s, { token });
        !token.isEmpty() && !earlier.isEmpty())
        return booked(*found, earlier);

    static const QRegularExpression address(u"^[^@\\s]+@[^@\\s]+\\.[^@\\s]+$"_s);
    if (token.isEmpty())
        return form(*found, typed, u"This form is out of date: choose a time again."_s, 400);
    if (typed.name.isEmpty() || typed.name.size() > longestName)
        return form(*found, typed, u"Write your name (up to 100 characters)."_s, 400);
    if (typed.email.size() > longestEmail || !address.match(typed.email).hasMatch())
        return form(*found, typed, u"Write an email address such as name@example.com."_s, 400);
    if (typed.note.size() > longestNote)
        return form(*found, typed, u"Keep the note to 1,000 characters."_s, 400);
    const QDateTime start = QDateTime::fromString(typed.start, Qt::ISODate);
    const QList<QDateTime> working = workingStarts(QDateTime::currentDateTimeUtc(), found->duration, m_zone);
    if (!start.isValid() || !working.contains(start))
        return form(*found, typed, u"Choose one of the times shown."_s, 400);
    if (!freeStarts(*found).contains(start))
        return form(*found, { typed.name, typed.email, typed.note, {} },
            u"That time was taken in the meantime. Choose one of the times left."_s, 409);

    const QString id = newID("bk-"_L1);
    db.transaction();
    run(db, u"INSERT INTO schedule_bookings (id, link_id, name, email, start_ms, note) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { id, found->id, typed.name, typed.email, start.toMSecsSinceEpoch(), orNull(typed.note) });
    run(db, u"INSERT INTO schedule_booking_forms (token, booking_id) VALUES (?, ?)"_s, { token, id });
    db.commit();
    return booked(*found, id);
}
