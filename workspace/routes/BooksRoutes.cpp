#include "workspace/routes/BooksRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/BankFeedStore.h"
#include "workspace/routes/BooksLedger.h"
#include "workspace/routes/BooksSql.h"

#include <QJsonArray>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;
using Outcome = BooksLedger::Outcome;

WorkspaceReply reply(const Outcome &outcome)
{
    return outcome.ok() ? WorkspaceReply::json(outcome.body) : WorkspaceReply::error(outcome.status, outcome.error);
}

QJsonObject bodyOf(const WorkspaceRequest &request)
{
    return request.jsonBody().value_or(QJsonObject());
}

QList<BooksLedger::Line> linesOf(const QJsonArray &array)
{
    QList<BooksLedger::Line> lines;
    for (const QJsonValue &value : array) {
        const QJsonObject line = value.toObject();
        // A fractional or missing amount reads as -1 and is refused with the rest.
        lines.append({ line.value("account_id"_L1).toString(), line.value("debit"_L1).toInteger(-1),
            line.value("credit"_L1).toInteger(-1) });
    }
    return lines;
}

} // namespace

namespace BooksRoutes {

void add(WorkspaceServer &server)
{
    BooksLedger(server.store().database()).plantDemoWhenEmpty();

    WorkspaceRouter &router = server.router();
    // Every route: the person's Books app and books-owner flag first, then
    // one ledger operation answered as it came out.
    const auto route = [&server, &router](const QByteArray &method, const QString &path, auto operation,
                           qint64 limit = WorkspaceLimits::bodyBytes) {
        router.add(
            method, path, Access::Session,
            [&server, operation](const WorkspaceRequest &request) {
                const std::optional<WorkspacePerson> person = server.store().person(request.session().personId);
                if (!person || !person->apps.contains("Books"_L1) || !person->books_owner)
                    return WorkspaceReply::error(403, u"The books are open to the people who keep them."_s);
                BooksLedger ledger(server.store().database());
                return reply(operation(ledger, request));
            },
            limit);
    };
    const auto dated = [](const WorkspaceRequest &request) { return bodyOf(request).value("date"_L1).toString(); };

    route("GET", u"/api/accounting/books"_s, [&server](BooksLedger &ledger, const WorkspaceRequest &) {
        // The bank feed's rows that have fallen due show with the rest.
        BankFeedStore(server.store()).deliver(BooksSql::nowMs());
        return Outcome { 200, {}, ledger.overview() };
    });
    route("GET", u"/api/accounting/report"_s, [](BooksLedger &ledger, const WorkspaceRequest &request) {
        return ledger.report(request.query(u"start"_s), request.query(u"end"_s));
    });
    route("GET", u"/api/accounting/register"_s, [](BooksLedger &ledger, const WorkspaceRequest &request) {
        return ledger.registerPage(request.query(u"start"_s), request.query(u"end"_s), request.query(u"account_id"_s),
            request.query(u"limit"_s).toLongLong(), request.query(u"offset"_s).toLongLong());
    });
    route("PATCH", u"/api/accounting/company"_s, [](BooksLedger &ledger, const WorkspaceRequest &request) {
        return ledger.setCompany(bodyOf(request).value("name"_L1).toString());
    });
    route("PATCH", u"/api/accounting/source-link"_s, [](BooksLedger &ledger, const WorkspaceRequest &request) {
        const QJsonValue enabled = bodyOf(request).value("enabled"_L1);
        if (!enabled.isBool())
            return Outcome::refused(400, u"Say whether the link is enabled."_s);
        return ledger.setSourceLinked(enabled.toBool());
    });
    route("POST", u"/api/accounting/source-post"_s, [](BooksLedger &ledger, const WorkspaceRequest &request) {
        const QJsonObject body = bodyOf(request);
        return ledger.postSource(body.value("kind"_L1).toString(), body.value("id"_L1).toString(),
            body.value("income_account_id"_L1).toString());
    });
    route("POST", u"/api/accounting/entries"_s, [](BooksLedger &ledger, const WorkspaceRequest &request) {
        const QJsonObject body = bodyOf(request);
        return ledger.post(body.value("entry_date"_L1).toString(), body.value("memo"_L1).toString(),
            linesOf(body.value("lines"_L1).toArray()));
    });
    route("POST", u"/api/accounting/entries/:entry/reverse"_s,
        [dated](BooksLedger &ledger, const WorkspaceRequest &request) {
            return ledger.reverse(request.arguments().value(0), dated(request));
        });
    const struct {
        QString collection;
        QString kind;
    } voidable[] = {
        { u"bills"_s, u"bill"_s },
        { u"customer-invoices"_s, u"invoice"_s },
        { u"bill-payments"_s, u"bill_payment"_s },
        { u"customer-receipts"_s, u"receipt"_s },
    };
    for (const auto &documents : voidable) {
        route("POST", u"/api/accounting/%1/:id/void"_s.arg(documents.collection),
            [dated, kind = documents.kind](BooksLedger &ledger, const WorkspaceRequest &request) {
                return ledger.voidDocument(kind, request.arguments().value(0), dated(request));
            });
    }
    route(
        "POST", u"/api/accounting/bank-import"_s,
        [](BooksLedger &ledger, const WorkspaceRequest &request) {
            const QJsonObject body = bodyOf(request);
            return ledger.importRows(body.value("bank_account_id"_L1).toString(), body.value("rows"_L1).toArray());
        },
        WorkspaceLimits::statementBodyBytes);
    route("POST", u"/api/accounting/bank-rows/:row/match"_s, [](BooksLedger &ledger, const WorkspaceRequest &request) {
        return ledger.match(request.arguments().value(0), bodyOf(request).value("entry_id"_L1).toString());
    });
    route(
        "POST", u"/api/accounting/bank-rows/:row/unmatch"_s, [](BooksLedger &ledger, const WorkspaceRequest &request) {
            return ledger.unmatch(request.arguments().value(0));
        });
    route("POST", u"/api/accounting/bank-rows/:row/post"_s, [](BooksLedger &ledger, const WorkspaceRequest &request) {
        return ledger.categorize(request.arguments().value(0), bodyOf(request).value("account_id"_L1).toString());
    });
    route("GET", u"/api/accounting/reconciliation"_s, [](BooksLedger &ledger, const WorkspaceRequest &request) {
        return ledger.reconciliation(request.query(u"bank_account_id"_s), request.query(u"statement_date"_s));
    });
    route("POST", u"/api/accounting/reconciliations"_s, [](BooksLedger &ledger, const WorkspaceRequest &request) {
        const QJsonObject body = bodyOf(request);
        const QJsonValue balance = body.value("statement_balance"_L1);
        if (!balance.isDouble()
            || balance.toInteger(std::numeric_limits<qint64>::min()) == std::numeric_limits<qint64>::min())
            return Outcome::refused(400, u"Give the statement ending balance in cents."_s);
        return ledger.close(body.value("bank_account_id"_L1).toString(), body.value("statement_date"_L1).toString(),
            balance.toInteger());
    });
}

} // namespace BooksRoutes
