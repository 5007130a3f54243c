#include "workspace/routes/PeoplePayrollStore.h"

#include "money/TarnMoneyInput.h"
#include "screens/people/PayrollRules.h"
#include "service/TarnJSONObject.h"
#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlQuery>

#include <map>

using namespace Qt::StringLiterals;
using BooksSql::newID;
using BooksSql::run;
using BooksSql::single;
using BooksSql::text;

namespace {

constexpr int shownPeriods = 6;

qint64 dayStartMs(QDate day)
{
    return QDateTime(day, QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
}

QString isoTime(qint64 ms)
{
    return QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC).toString(Qt::ISODateWithMs);
}

// The period a path names: the first day of a period, nothing else.
std::optional<QDate> periodFrom(const QString &text)
{
    const QDate day = QDate::fromString(text, Qt::ISODate);
    if (!day.isValid() || PayrollRules::periodStart(day) != day)
        return std::nullopt;
    return day;
}

WorkspaceReply noSuchPeriod()
{
    return WorkspaceReply::error(400, u"A pay period is named by its first day, as YYYY-MM-DD."_s);
}

} // namespace

PeoplePayrollStore::PeoplePayrollStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool PeoplePayrollStore::mayUse(const QString &me) const
{
    const std::optional<WorkspacePerson> person = m_store.person(me);
    return person && person->owner && person->apps.contains(u"Payroll"_s);
}

bool PeoplePayrollStore::hasRates() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM people_payroll_rates"_s) > 0;
}

QString PeoplePayrollStore::status(QDate start) const
{
    const QString found = text(m_store.database(), u"SELECT status FROM people_payroll_periods WHERE start = ?"_s,
        { start.toString(Qt::ISODate) });
    return found.isEmpty() ? u"open"_s : found;
}

QJsonObject PeoplePayrollStore::periodJSON(QDate start) const
{
    return { { u"start"_s, start.toString(Qt::ISODate) },
        { u"end"_s, start.addDays(PayrollRules::periodDays - 1).toString(Qt::ISODate) },
        { u"status"_s, status(start) } };
}

WorkspaceReply PeoplePayrollStore::overview(const QString &period) const
{
    const std::optional<QDate> asked
        = period.isEmpty() ? std::optional(PayrollRules::periodStart(QDate::currentDate())) : periodFrom(period);
    if (!asked)
        return noSuchPeriod();
    const QDate start = *asked;
    const QString key = start.toString(Qt::ISODate);
    const qint64 from = dayStartMs(start);
    const qint64 to = dayStartMs(start.addDays(PayrollRules::periodDays));

    // Every person with a rate who worked or has an adjustment, by name.
    QSqlQuery q = run(m_store.database(),
        u"SELECT p.id, p.name, r.rate, (SELECT COALESCE(SUM(MIN(e.clock_out, ?) - MAX(e.clock_in, ?)), 0)"
        " FROM people_time_entries e WHERE e.person_id = p.id AND e.clock_out IS NOT NULL"
        " AND e.clock_out > ? AND e.clock_in < ?)"
        " FROM people p JOIN people_payroll_rates r ON r.person_id = p.id ORDER BY p.name"_s,
        { to, from, from, to });
    std::map<QString, QJsonArray> adjustments;
    std::map<QString, qint64> adjusted;
    QSqlQuery a = run(m_store.database(),
        u"SELECT a.id, a.person_id, a.label, a.amount, p.name, a.created_at FROM people_payroll_adjustments a"
        " JOIN people p ON p.id = a.created_by WHERE a.period_start = ? ORDER BY a.created_at, a.id"_s,
        { key });
    while (a.next()) {
        const QString person = a.value(1).toString();
        adjustments[person].append(QJsonObject { { u"id"_s, a.value(0).toString() },
            { u"label"_s, a.value(2).toString() }, { u"amount"_s, a.value(3).toLongLong() },
            { u"created_by_name"_s, a.value(4).toString() }, { u"created_at"_s, isoTime(a.value(5).toLongLong()) } });
        adjusted[person] += a.value(3).toLongLong();
    }
    QJsonArray lines;
    qint64 total = 0;
    while (q.next()) {
        const QString person = q.value(0).toString();
        const qint64 minutes = q.value(3).toLongLong() / 60000;
        if (minutes == 0 && !adjustments.contains(person))
            continue;
        const qint64 rate = q.value(2).toLongLong();
        const qint64 regular = PayrollRules::pay(minutes, rate);
        const qint64 lineTotal = regular + adjusted[person];
        total += lineTotal;
        lines.append(QJsonObject { { u"person_id"_s, person }, { u"person_name"_s, q.value(1).toString() },
            { u"rate"_s, rate }, { u"minutes"_s, minutes }, { u"regular_pay"_s, regular },
            { u"adjustments"_s, adjustments[person] }, { u"total"_s, lineTotal } });
    }
    QJsonArray periods;
    const QDate current = PayrollRules::periodStart(QDate::currentDate());
    for (int i = 0; i < shownPeriods; ++i)
        periods.append(periodJSON(current.addDays(-i * PayrollRules::periodDays)));
    QSqlQuery n
        = run(m_store.database(), u"SELECT notes, version FROM people_payroll_periods WHERE start = ?"_s, { key });
    const bool stored = n.next();
    return WorkspaceReply::json(
        QJsonObject { { u"period"_s, periodJSON(start) }, { u"notes"_s, stored ? n.value(0).toString() : QString() },
            { u"version"_s, stored ? n.value(1).toLongLong() : 0 }, { u"lines"_s, lines }, { u"total"_s, total },
            { u"periods"_s, periods } });
}

void PeoplePayrollStore::log(QDate start, const QString &action, const QString &me)
{
    run(m_store.database(),
        u"INSERT INTO people_payroll_log (period_start, action, person_id, at) VALUES (?, ?, ?, ?)"_s,
        { start.toString(Qt::ISODate), action, me, QDateTime::currentMSecsSinceEpoch() });
}

WorkspaceReply PeoplePayrollStore::act(
    const QString &me, const QString &period, const QString &action, const QJsonObject &body)
{
    const std::optional<QDate> start = periodFrom(period);
    if (!start)
        return noSuchPeriod();
    static const QStringList actions { u"approve"_s, u"reopen"_s, u"mark-paid"_s, u"adjust"_s };
    if (!actions.contains(action))
        return WorkspaceReply::error(404, u"No such payroll action."_s);
    const QString current = status(*start);
    if (!PayrollRules::allows(current, action))
        return WorkspaceReply::error(409, u"A period that is %1 cannot take \"%2\"."_s.arg(current, action));
    if (action == "adjust"_L1) {
        const QString person = body.value("person_id"_L1).toString();
        const QString label = body.value("label"_L1).toString().trimmed();
        const qint64 amount = body.value("amount"_L1).toInteger();
        if (single(m_store.database(), u"SELECT COUNT(*) FROM people_payroll_rates WHERE person_id = ?"_s, { person })
            == 0)
            return WorkspaceReply::error(400, u"That person is not on the payroll."_s);
        if (label.isEmpty() || label.size() > PayrollRules::labelLimit)
            return WorkspaceReply::error(
                400, u"An adjustment needs a label of at most %1 characters."_s.arg(PayrollRules::labelLimit));
        if (amount == 0 || std::abs(amount) > PayrollRules::adjustmentLimit)
            return WorkspaceReply::error(400,
                u"An adjustment is not zero and at most %1 either way."_s.arg(
                    TarnMoneyInput::text(PayrollRules::adjustmentLimit)));
        addAdjustment(*start, person, label, amount, me);
    } else {
        const QString next = action == "approve"_L1 ? u"approved"_s : action == "reopen"_L1 ? u"open"_s : u"paid"_s;
        run(m_store.database(),
            u"INSERT INTO people_payroll_periods (start, status, updated_by) VALUES (?, ?, ?)"
            " ON CONFLICT (start) DO UPDATE SET status = excluded.status, updated_by = excluded.updated_by"_s,
            { start->toString(Qt::ISODate), next, me });
    }
    log(*start, action, me);
    return overview(period);
}

WorkspaceReply PeoplePayrollStore::saveNotes(const QString &me, const QString &period, const QJsonObject &body)
{
    const std::optional<QDate> start = periodFrom(period);
    if (!start)
        return noSuchPeriod();
    const QString notes = body.value("notes"_L1).toString();
    if (!body.value("notes"_L1).isString() || notes.size() > PayrollRules::notesLimit)
        return WorkspaceReply::error(400, u"Notes are text of at most %1 characters."_s.arg(PayrollRules::notesLimit));
    const QString key = start->toString(Qt::ISODate);
    const qint64 version
        = single(m_store.database(), u"SELECT version FROM people_payroll_periods WHERE start = ?"_s, { key });
    if (!body.value("version"_L1).isDouble() || body.value("version"_L1).toInteger() != version) {
        const QString editor = text(m_store.database(),
            u"SELECT p.name FROM people_payroll_periods r JOIN people p ON p.id = r.updated_by WHERE r.start = ?"_s,
            { key });
        const WorkspaceReply current = overview(period);
        return WorkspaceReply::json(
            QJsonObject { { u"error"_s,
                              u"%1 changed this period in the meantime; it now shows their change."_s.arg(
                                  editor.isEmpty() ? u"Someone"_s : editor) },
                { u"overview"_s, QJsonDocument::fromJson(current.body).object() } },
            409);
    }
    run(m_store.database(),
        u"INSERT INTO people_payroll_periods (start, status, notes, version, updated_by) VALUES (?, 'open', ?, 1, ?)"
        " ON CONFLICT (start) DO UPDATE SET notes = excluded.notes, version = version + 1,"
        " updated_by = excluded.updated_by"_s,
        { key, notes, me });
    log(*start, u"notes"_s, me);
    return overview(period);
}

WorkspaceReply PeoplePayrollStore::removeAdjustment(const QString &me, const QString &id)
{
    const QString period
        = text(m_store.database(), u"SELECT period_start FROM people_payroll_adjustments WHERE id = ?"_s, { id });
    if (period.isEmpty())
        return WorkspaceReply::error(404, u"No such adjustment."_s);
    const QDate start = QDate::fromString(period, Qt::ISODate);
    if (!PayrollRules::allows(status(start), u"adjust"_s))
        return WorkspaceReply::error(409, u"Only an open period's adjustments can be removed."_s);
    run(m_store.database(), u"DELETE FROM people_payroll_adjustments WHERE id = ?"_s, { id });
    log(start, u"remove-adjustment"_s, me);
    return overview(period);
}

WorkspaceReply PeoplePayrollStore::exportCSV(const QString &period) const
{
    const std::optional<QDate> start = periodFrom(period);
    if (!start)
        return noSuchPeriod();
    const QJsonObject answer = QJsonDocument::fromJson(overview(period).body).object();
    QList<TarnPayrollLine> lines;
    for (const QJsonValue &line : answer.value("lines"_L1).toArray())
        lines.append(TarnPayrollLine::fromJSON(TarnJSONObject(line)));
    const QByteArray csv = PayrollRules::csv(*start, start->addDays(PayrollRules::periodDays - 1), lines);
    if (csv.isEmpty())
        return WorkspaceReply::error(404, u"No one has hours or adjustments in this period."_s);
    WorkspaceReply reply;
    reply.contentType = "text/csv; charset=utf-8";
    reply.body = csv;
    return reply;
}

void PeoplePayrollStore::setRate(const QString &personId, qint64 centsPerHour)
{
    run(m_store.database(), u"INSERT OR REPLACE INTO people_payroll_rates (person_id, rate) VALUES (?, ?)"_s,
        { personId, centsPerHour });
}

void PeoplePayrollStore::setStatus(QDate start, const QString &status, const QString &notes, const QString &by)
{
    run(m_store.database(),
        u"INSERT OR REPLACE INTO people_payroll_periods (start, status, notes, version, updated_by)"
        " VALUES (?, ?, ?, 1, ?)"_s,
        { start.toString(Qt::ISODate), status, notes, by });
}

void PeoplePayrollStore::addAdjustment(
    QDate start, const QString &personId, const QString &label, qint64 amount, const QString &by)
{
    run(m_store.database(),
        u"INSERT INTO people_payroll_adjustments (id, period_start, person_id, label, amount, created_by,"
        " created_at) VALUES (?, ?, ?, ?, ?, ?, ?)"_s,
        { newID("adj-"_L1), start.toString(Qt::ISODate), personId, label, amount, by,
            QDateTime::currentMSecsSinceEpoch() });
}
