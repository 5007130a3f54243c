#include "workspace/routes/OwnerRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/BooksSql.h"

#include <QDate>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>

using namespace Qt::StringLiterals;
using BooksSql::run;
using BooksSql::single;

namespace {

// Money through the bank accounts in [from, to): what came in and what went out.
QJsonObject moneyMonth(const QSqlDatabase &db, const QDate &from)
{
    const QVariantList range { from.toString(Qt::ISODate), from.addMonths(1).toString(Qt::ISODate) };
    QSqlQuery q = run(db,
        u"SELECT COALESCE(SUM(l.debit), 0), COALESCE(SUM(l.credit), 0) FROM books_lines l"
        " JOIN books_accounts a ON a.id = l.account_id AND a.bank != 0"
        " JOIN books_entries e ON e.id = l.entry_id WHERE e.entry_date >= ? AND e.entry_date < ?"_s,
        range);
    q.next();
    return { { u"month"_s, from.toString(u"yyyy-MM"_s) }, { u"money_in"_s, q.value(0).toLongLong() },
        { u"money_out"_s, q.value(1).toLongLong() } };
}

// Invoices or bills not voided with something still owed: how many, how much,
// and how many of them are past due.
void owed(QJsonObject &answer, const QSqlDatabase &db, const QString &kind, const QString &prefix, const QDate &today)
{
    QSqlQuery q = run(db,
        u"SELECT COUNT(*), COALESCE(SUM(left), 0), COALESCE(SUM(due_date < ?), 0) FROM (SELECT d.due_date,"
        " d.amount - (SELECT COALESCE(SUM(p.amount), 0) FROM books_documents p"
        "  WHERE p.applies_to = d.id AND p.voided = 0) AS left"
        " FROM books_documents d WHERE d.kind = ? AND d.voided = 0) WHERE left > 0"_s,
        { today.toString(Qt::ISODate), kind });
    q.next();
    answer.insert(prefix, q.value(0).toLongLong());
    answer.insert(prefix + u"_amount"_s, q.value(1).toLongLong());
    answer.insert(prefix + u"_overdue"_s, q.value(2).toLongLong());
}

// Each person's week since Monday: calls made or taken, support tasks they
// hold open and closed, and the minutes they logged on support.
QJsonArray teamWeek(const QSqlDatabase &db, const QDate &monday)
{
    const qint64 since = QDateTime(monday, QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
    const QString day = monday.toString(Qt::ISODate);
    QSqlQuery q = run(db,
        u"SELECT p.id, p.name, p.role,"
        " (SELECT COUNT(*) FROM calls_book c WHERE c.person_id = p.id AND c.started_at >= ?),"
        " (SELECT COUNT(*) FROM support_tasks t WHERE t.assignee_id = p.id AND t.status != 'done'),"
        " (SELECT COUNT(*) FROM support_tasks t WHERE t.assignee_id = p.id AND t.status = 'done'"
        "  AND t.updated_at >= ?),"
        " (SELECT COALESCE(SUM(s.minutes), 0) FROM support_time s WHERE s.person_id = p.id AND s.day >= ?)"
        " FROM people p ORDER BY p.position"_s,
        { since, since, day });
    QJsonArray team;
    while (q.next()) {
        team.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"name"_s, q.value(1).toString() },
            { u"role"_s, q.value(2).toString() }, { u"calls"_s, q.value(3).toLongLong() },
            { u"support_open"_s, q.value(4).toLongLong() }, { u"support_done"_s, q.value(5).toLongLong() },
            { u"support_minutes"_s, q.value(6).toLongLong() } });
    }
    return team;
}

QJsonObject snapshot(const QSqlDatabase &db, const QDate &today)
{
    const QDate month(today.year(), today.month(), 1);
    QJsonObject answer { { u"today"_s, today.toString(Qt::ISODate) },
        { u"months"_s, QJsonArray { moneyMonth(db, month.addMonths(-1)), moneyMonth(db, month) } } };
    owed(answer, db, u"invoice"_s, u"open_invoices"_s, today);
    owed(answer, db, u"bill"_s, u"unpaid_bills"_s, today);
    QSqlQuery paid = run(db,
        u"SELECT COUNT(*), COALESCE(SUM(amount), 0) FROM payments WHERE status = 'Paid' AND date >= ? AND date < ?"_s,
        { month.toString(Qt::ISODate), month.addMonths(1).toString(Qt::ISODate) });
    paid.next();
    answer.insert(u"payments_received"_s, paid.value(0).toLongLong());
    answer.insert(u"payments_received_amount"_s, paid.value(1).toLongLong());
    answer.insert(u"support_open"_s, single(db, u"SELECT COUNT(*) FROM support_tasks WHERE status != 'done'"_s));
    answer.insert(u"support_overdue"_s,
        single(db, u"SELECT COUNT(*) FROM support_tasks WHERE status != 'done' AND due_date < ?"_s,
            { today.toString(Qt::ISODate) }));
    // Open threads whose newest sent entry is the customer's: the inbox's own badge.
    answer.insert(u"inbox_waiting"_s,
        single(db,
            u"SELECT COUNT(*) FROM inbox_threads t WHERE t.done = 0 AND t.snoozed_until IS NULL AND"
            " (SELECT e.direction FROM inbox_entries e WHERE e.thread_id = t.id AND e.draft = 0"
            "  ORDER BY e.created_at DESC, e.seq DESC LIMIT 1) = 'inbound'"_s));
    const QDate monday = today.addDays(1 - today.dayOfWeek());
    answer.insert(u"week_start"_s, monday.toString(Qt::ISODate));
    answer.insert(u"team"_s, teamWeek(db, monday));
    return answer;
}

} // namespace

namespace OwnerRoutes {

void add(WorkspaceServer &server)
{
    server.router().add(
        "GET", u"/api/owner/snapshot"_s, WorkspaceRouter::Access::Session, [&server](const WorkspaceRequest &request) {
            const std::optional<WorkspacePerson> me = server.store().person(request.session().personId);
            if (!me || !me->owner)
                return WorkspaceReply::error(403, u"The dashboard is open to the company's owners."_s);
            return WorkspaceReply::json(snapshot(server.store().database(), QDate::currentDate()));
        });
}

} // namespace OwnerRoutes
