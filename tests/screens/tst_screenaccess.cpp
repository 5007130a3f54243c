#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "money/TarnBankFeedCalls.h"
#include "money/TarnBooksCalls.h"
#include "money/TarnPaymentsCalls.h"
#include "screens/calls/TarnCallCalls.h"
#include "screens/company/TarnCompanyCalls.h"
#include "screens/documents/TarnDocumentCalls.h"
#include "screens/kiln/TarnKilnCalls.h"
#include "screens/marketscan/TarnMarketScanCalls.h"
#include "screens/overview/TarnOverviewCalls.h"
#include "screens/owner/TarnOwnerCalls.h"
#include "screens/people/TarnPeopleCalls.h"
#include "screens/portals/TarnPortalCalls.h"
#include "screens/schedule/TarnScheduleCalls.h"
#include "screens/support/TarnSupportCalls.h"
#include "screens/websites/TarnWebsiteCalls.h"
#include "screens/workplan/TarnWorkPlanCalls.h"
#include "shell/TarnAccess.h"
#include "shell/TarnShell.h"
#include "workspace/WorkspaceSeed.h"

#include <QDateTime>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

// How a read went: opened, refused by the service, or failed some other way.
enum class Outcome { opened, refused, broken };

template <typename T> Outcome outcomeOf(QCoro::Task<T> task, QString *text)
{
    try {
        tarnWaitFor(std::move(task));
    } catch (const TarnAPIError &error) {
        *text = error.text();
        return error.kind() == TarnAPIError::Kind::server ? Outcome::refused : Outcome::broken;
    }
    return Outcome::opened;
}

// A place in the window and the read its screen starts with.
struct Gate {
    const char *name;
    TarnDestination destination;
    std::function<Outcome(TarnAPI &, QString *)> read;
};

template <typename Call> std::function<Outcome(TarnAPI &, QString *)> reading(Call call)
{
    return [call](TarnAPI &api, QString *text) { return outcomeOf(call(api), text); };
}

TarnDestination at(TarnScreen screen, const QString &section = {})
{
    return { screen, section.isEmpty() ? std::nullopt : std::optional(section) };
}

QList<Gate> gates()
{
    using S = TarnScreen;
    const QDateTime from = QDateTime::currentDateTimeUtc();
    const QDateTime to = from.addDays(7);
    const QDate today = QDate::currentDate();
    const QString monday = today.addDays(1 - today.dayOfWeek()).toString(Qt::ISODate);
    return {
        { "owner", at(S::owner), reading([](TarnAPI &api) { return TarnOwnerCalls::teamSnapshot(api); }) },
        { "work plan", at(S::workPlan),
            reading([monday](TarnAPI &api) { return TarnWorkPlanCalls::workPlan(api, monday); }) },
        { "documents", at(S::documents),
            reading([](TarnAPI &api) { return TarnDocumentCalls::legacyDocuments(api, {}); }) },
        { "documents' invoices", at(S::documents, u"Invoices"_s),
            reading([](TarnAPI &api) { return TarnBooksCalls::books(api); }) },
        { "payments", at(S::payments), reading([](TarnAPI &api) { return TarnPaymentsCalls::payments(api); }) },
        { "kiln", at(S::kiln), reading([](TarnAPI &api) { return TarnKilnCalls::kilnHandoffCode(api); }) },
        { "SOPs", at(S::company, u"SOPs"_s), reading([](TarnAPI &api) { return TarnCompanyCalls::companySops(api); }) },
        { "thought board", at(S::company, u"Thought board"_s),
            reading([](TarnAPI &api) { return TarnCompanyCalls::thoughtBoard(api); }) },
        { "connections", at(S::company, u"Connections"_s),
            reading([](TarnAPI &api) { return TarnBankFeedCalls::mercurySummary(api); }) },
        { "websites", at(S::websites), reading([](TarnAPI &api) { return TarnWebsiteCalls::websites(api); }) },
        { "portals", at(S::portals), reading([](TarnAPI &api) { return TarnPortalCalls::portalDashboard(api); }) },
        { "calls", at(S::calls), reading([](TarnAPI &api) { return TarnCallCalls::calls(api); }) },
        { "leads", at(S::sales), reading([](TarnAPI &api) { return TarnCallCalls::salesLeads(api); }) },
        { "market scan", at(S::marketScan),
            reading([](TarnAPI &api) { return TarnMarketScanCalls::marketScans(api); }) },
        { "overview's team", at(S::overview),
            reading([](TarnAPI &api) { return TarnOverviewCalls::overviewTeam(api); }) },
        { "product boards", at(S::overview, u"Product boards"_s),
            reading([](TarnAPI &api) { return TarnOverviewCalls::productBoards(api); }) },
        { "fulfilment", at(S::overview, u"Fulfilment"_s),
            reading([](TarnAPI &api) { return TarnOverviewCalls::fulfilmentOrders(api); }) },
        { "calendar", at(S::schedule),
            reading([from, to](TarnAPI &api) { return TarnScheduleCalls::calendarEvents(api, from, to); }) },
        { "HR", at(S::people), reading([](TarnAPI &api) { return TarnPeopleCalls::hrRecords(api); }) },
        { "payroll", at(S::people, u"Payroll"_s),
            reading([](TarnAPI &api) { return TarnPeopleCalls::payrollOverview(api, {}); }) },
        { "support", at(S::support), reading([](TarnAPI &api) { return TarnSupportCalls::supportBoard(api); }) },
    };
}

struct AccessRow {
    QString email;
    Gate gate;
};

} // namespace

Q_DECLARE_METATYPE(AccessRow)

// Every demo person against the first read of every screen and section the
// shell gates: the service opens exactly what the window offers them and
// refuses the rest, so hiding a place is never the only thing keeping it shut.
class TestScreenAccess : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void serviceMatchesTheShell_data();
    void serviceMatchesTheShell();

private:
    InboxTestClient client;
};

void TestScreenAccess::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestScreenAccess::serviceMatchesTheShell_data()
{
    QTest::addColumn<AccessRow>("row");
    for (const WorkspacePerson &person : WorkspaceSeed::people()) {
        for (const Gate &gate : gates())
            QTest::addRow("%s, %s", qPrintable(person.name), gate.name) << AccessRow { person.email, gate };
    }
}

void TestScreenAccess::serviceMatchesTheShell()
{
    QFETCH(AccessRow, row);
    TarnAPI &api = client.as(row.email);
    QVERIFY(api.session());
    const bool offered = TarnShell::canOpen(row.gate.destination, TarnAccess::fromSession(*api.session()));
    QString text;
    const Outcome outcome = row.gate.read(api, &text);
    QVERIFY2(outcome != Outcome::broken, qPrintable(text));
    QVERIFY2((outcome == Outcome::opened) == offered,
        qPrintable(offered ? u"refused: "_s + text : u"the service opened what the window hides"_s));
}

QTEST_GUILESS_MAIN(TestScreenAccess)
#include "tst_screenaccess.moc"
