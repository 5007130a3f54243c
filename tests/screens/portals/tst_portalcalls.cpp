#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/portals/TarnPortalCalls.h"
#include "support/FailureOf.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <tuple>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;

struct UpdateRow {
    std::optional<QString> status;
    std::optional<QString> welcome;
    qint64 versionOffset; // from the account's current version
    QString refusal; // empty: saved
};

struct InviteRow {
    QString name;
    QString email;
    QString refusal;
};

TarnPortalAccount accountOf(const TarnPortalDashboard &dashboard, const QString &client)
{
    for (const TarnPortalAccount &account : dashboard.accounts)
        if (account.client_id == client)
            return account;
    return {};
}

} // namespace

Q_DECLARE_METATYPE(UpdateRow)
Q_DECLARE_METATYPE(InviteRow)

// The client portals' endpoints against the local workspace and its demo portals.
class TestPortalCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void demoDashboard();
    void acknowledgedAlertLeavesTheDashboard();
    void accountUpdates_data();
    void accountUpdates();
    void invitations_data();
    void invitations();
    void peopleComeAndGo();
    void keysIssuedReplacedAndRevoked();
    void keysAreNotKeptInTheClear();
    void reportsFromTheMonthsFigures();
    void syncCountsTheMonthsCalls();
    void workAndProfile();
    void onlyPeopleWithClients();

private:
    // What the Pilo key opens, as the client's own tools see it.
    [[nodiscard]] TestWorkspace::Answer feed(const QString &key) const
    {
        return client.workspace->send("GET", u"api/portal-keys/reports"_s, QByteArray(),
            TestWorkspace::Headers { { "X-Portal-Key", key.toUtf8() } });
    }

    InboxTestClient client;
};

void TestPortalCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestPortalCalls::demoDashboard()
{
    const TarnPortalDashboard dashboard = tarnWaitFor(TarnPortalCalls::portalDashboard(client.as(maren)));
    QVERIFY(dashboard.accounts.size() >= 5);
    QCOMPARE(accountOf(dashboard, u"c-marlow"_s).status, u"live"_s);
    QCOMPARE(accountOf(dashboard, u"c-fernhill"_s).status, u"paused"_s);
    QCOMPARE(accountOf(dashboard, u"c-marlow"_s).people_count, qint64(3));
    QCOMPARE(accountOf(dashboard, u"c-marlow"_s).pilo_key_tail.value_or(QString()).size(), qsizetype(4));
    QVERIFY(!accountOf(dashboard, u"c-tidewater"_s).lead_key_tail);
    QVERIFY(dashboard.alerts.size() >= 4);
    for (qsizetype i = 1; i < dashboard.alerts.size(); ++i)
        QVERIFY(dashboard.alerts.at(i - 1).created_at >= dashboard.alerts.at(i).created_at);
}

void TestPortalCalls::acknowledgedAlertLeavesTheDashboard()
{
    TarnAPI &api = client.as(maren);
    const TarnPortalAlert alert = tarnWaitFor(TarnPortalCalls::portalDashboard(api)).alerts.first();
    QVERIFY(tarnWaitFor(TarnPortalCalls::acknowledgePortalAlert(api, alert.client_id, alert.id)).ok);
    const TarnPortalDashboard after = tarnWaitFor(TarnPortalCalls::portalDashboard(api));
    QVERIFY(std::none_of(after.alerts.begin(), after.alerts.end(), [&](const auto &a) { return a.id == alert.id; }));
    // Under another client the alert is not found.
    QCOMPARE(failureOf(TarnPortalCalls::acknowledgePortalAlert(api, u"c-oakline"_s, alert.id)), u"No such alert."_s);
}

void TestPortalCalls::accountUpdates_data()
{
    QTest::addColumn<UpdateRow>("row");
    QTest::addRow("pause") << UpdateRow { u"paused"_s, {}, 0, {} };
    QTest::addRow("welcome") << UpdateRow { {}, u"Hello again"_s, 0, {} };
    QTest::addRow("unknown status") << UpdateRow { u"closed"_s, {}, 0, u"A portal's status is one of"_s };
    QTest::addRow("long welcome") << UpdateRow { {}, QString(1001, u'x'), 0, u"at most 1000 characters"_s };
    QTest::addRow("stale") << UpdateRow { u"live"_s, {}, -1, u"changed this portal in the meantime"_s };
    QTest::addRow("nothing to change") << UpdateRow { {}, {}, 0, u"Send \"status\" or \"welcome\""_s };
}

void TestPortalCalls::accountUpdates()
{
    QFETCH(UpdateRow, row);
    TarnAPI &api = client.as(maren);
    const TarnPortalAccount before = tarnWaitFor(TarnPortalCalls::portalAccountDetail(api, u"c-oakline"_s)).account;
    const TarnPortalAccountUpdate update { before.version + row.versionOffset, row.status, row.welcome };
    if (!row.refusal.isEmpty()) {
        const QString refusal = failureOf(TarnPortalCalls::updatePortalAccount(api, u"c-oakline"_s, update));
        QVERIFY2(refusal.contains(row.refusal), qPrintable(refusal));
        QCOMPARE(tarnWaitFor(TarnPortalCalls::portalAccountDetail(api, u"c-oakline"_s)).account, before);
        return;
    }
    const TarnPortalAccount after = tarnWaitFor(TarnPortalCalls::updatePortalAccount(api, u"c-oakline"_s, update));
    QCOMPARE(after.version, before.version + 1);
    QCOMPARE(after.status, row.status.value_or(before.status));
    QCOMPARE(after.welcome, row.welcome.value_or(before.welcome));
}

void TestPortalCalls::invitations_data()
{
    QTest::addColumn<InviteRow>("row");
    QTest::addRow("fine") << InviteRow { u"Mia Stone"_s, u"Mia@Oakline.example"_s, {} };
    QTest::addRow("again, other case") << InviteRow { u"Mia"_s, u"mia@oakline.example"_s, u"already invited"_s };
    QTest::addRow("no name") << InviteRow { u"  "_s, u"x@oakline.example"_s, u"needs a name"_s };
    QTest::addRow("no address") << InviteRow { u"Kim"_s, u"kim at oakline"_s, u"not an email address"_s };
}

void TestPortalCalls::invitations()
{
    QFETCH(InviteRow, row);
    TarnAPI &api = client.as(maren);
    const TarnPortalInvite invite { row.name, row.email };
    if (row.refusal.isEmpty()) {
        const QString id = tarnWaitFor(TarnPortalCalls::invitePortalPerson(api, u"c-oakline"_s, invite)).id;
        const QList<TarnPortalPerson> people
            = tarnWaitFor(TarnPortalCalls::portalAccountDetail(api, u"c-oakline"_s)).people;
        QVERIFY(std::any_of(people.begin(), people.end(),
            [&](const auto &p) { return p.id == id && p.email == row.email.toLower() && !p.last_seen_at; }));
    } else {
        const QString refusal = failureOf(TarnPortalCalls::invitePortalPerson(api, u"c-oakline"_s, invite));
        QVERIFY2(refusal.contains(row.refusal), qPrintable(refusal));
    }
}

void TestPortalCalls::peopleComeAndGo()
{
    TarnAPI &api = client.as(maren);
    const QString client_ = u"c-brightwater"_s;
    const TarnPortalPerson person = tarnWaitFor(TarnPortalCalls::portalAccountDetail(api, client_)).people.first();
    const TarnPortalLink first = tarnWaitFor(TarnPortalCalls::portalPersonLink(api, client_, person.id));
    const TarnPortalLink second = tarnWaitFor(TarnPortalCalls::portalPersonLink(api, client_, person.id));
    QVERIFY(first.url.contains(u"?code="_s));
    QVERIFY(first.url != second.url);
    QVERIFY(QDateTime::fromString(second.expires_at, Qt::ISODateWithMs) > QDateTime::currentDateTimeUtc());
    QVERIFY(tarnWaitFor(TarnPortalCalls::removePortalPerson(api, client_, person.id)).ok);
    QCOMPARE(
        failureOf(TarnPortalCalls::removePortalPerson(api, client_, person.id)), u"No such person on this portal."_s);
    QCOMPARE(
        failureOf(TarnPortalCalls::portalPersonLink(api, client_, person.id)), u"No such person on this portal."_s);
}

void TestPortalCalls::keysIssuedReplacedAndRevoked()
{
    TarnAPI &api = client.as(maren);
    const QString marlow = u"c-marlow"_s;
    const TarnPortalKey first = tarnWaitFor(TarnPortalCalls::issuePortalPiloKey(api, marlow));
    QCOMPARE(first.tail, first.key.right(4));
    QCOMPARE(tarnWaitFor(TarnPortalCalls::portalAccountDetail(api, marlow)).account.pilo_key_tail.value_or(QString()),
        first.tail);
    QCOMPARE(feed(first.key).status, 200);
    const QJsonArray shown = QJsonDocument::fromJson(feed(first.key).body).array();
    QVERIFY(!shown.isEmpty());
    for (const QJsonValue &report : shown)
        QVERIFY(report[u"published"_s].toBool());

    const TarnPortalKey second = tarnWaitFor(TarnPortalCalls::issuePortalPiloKey(api, marlow));
    QCOMPARE(feed(first.key).status, 401);
    QCOMPARE(feed(second.key).status, 200);
    QVERIFY(tarnWaitFor(TarnPortalCalls::revokePortalPiloKey(api, marlow)).ok);
    QCOMPARE(feed(second.key).status, 401);
    QVERIFY(!tarnWaitFor(TarnPortalCalls::portalAccountDetail(api, marlow)).account.pilo_key_tail);
    QCOMPARE(feed({}).status, 401);

    // A lead key sends leads in, which the dashboard then shows; it opens nothing else.
    const TarnPortalKey lead = tarnWaitFor(TarnPortalCalls::issuePortalLeadKey(api, marlow));
    const auto sendLead = [&](const QString &key) {
        return client.workspace
            ->send("POST", u"api/portal-keys/leads"_s, QByteArray(R"({"name":"Quarry Tiles"})"),
                TestWorkspace::Headers { { "X-Portal-Key", key.toUtf8() }, { "Content-Type", "application/json" } })
            .status;
    };
    QCOMPARE(sendLead(lead.key), 201);
    QCOMPARE(feed(lead.key).status, 401);
    const TarnPortalDashboard dashboard = tarnWaitFor(TarnPortalCalls::portalDashboard(api));
    QVERIFY(std::any_of(dashboard.alerts.begin(), dashboard.alerts.end(),
        [](const auto &a) { return a.kind == "lead"_L1 && a.text.endsWith(u"Quarry Tiles"_s); }));
    std::ignore = tarnWaitFor(TarnPortalCalls::issuePortalLeadKey(api, marlow));
    QCOMPARE(sendLead(lead.key), 401);
}

void TestPortalCalls::keysAreNotKeptInTheClear()
{
    const TarnPortalKey key = tarnWaitFor(TarnPortalCalls::issuePortalPiloKey(client.as(maren), u"c-oakline"_s));
    const TarnPortalLink link = tarnWaitFor(TarnPortalCalls::portalPersonLink(client.as(maren), u"c-oakline"_s,
        tarnWaitFor(TarnPortalCalls::portalAccountDetail(client.as(maren), u"c-oakline"_s)).people.first().id));
    const QByteArray code = link.url.section(u"code="_s, 1).toUtf8();
    QDirIterator files(client.workspace->dataPath(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QVERIFY2(!bytes.contains(key.key.toUtf8()) && !bytes.contains(code), qPrintable(file.fileName()));
    }
}

void TestPortalCalls::reportsFromTheMonthsFigures()
{
    TarnAPI &api = client.as(maren);
    const QString month = QDateTime::currentDateTimeUtc().addMonths(-4).toString(u"yyyy-MM"_s);
    const TarnPortalReportDraft draft { u"Spring review"_s, month };
    const QString id = tarnWaitFor(TarnPortalCalls::createPortalReport(api, u"c-marlow"_s, draft)).id;
    const TarnPortalReport report = tarnWaitFor(TarnPortalCalls::portalReport(api, u"c-marlow"_s, id));
    QCOMPARE(report.month, month);
    QVERIFY2(report.body.contains(u" visits, "_s), qPrintable(report.body));
    QVERIFY(!report.published);
    QVERIFY(tarnWaitFor(TarnPortalCalls::setPortalReportPublished(api, u"c-marlow"_s, id, { true })).published);
    QVERIFY(tarnWaitFor(TarnPortalCalls::deletePortalReport(api, u"c-marlow"_s, id)).ok);
    QCOMPARE(failureOf(TarnPortalCalls::portalReport(api, u"c-marlow"_s, id)), u"No such report."_s);

    const QString nextMonth = QDateTime::currentDateTimeUtc().addMonths(1).toString(u"yyyy-MM"_s);
    for (const QString &bad : { nextMonth, u"2026-13"_s, u"May"_s }) {
        const TarnPortalReportDraft wrong { u"Report"_s, bad };
        QVERIFY(failureOf(TarnPortalCalls::createPortalReport(api, u"c-marlow"_s, wrong)).contains(u"YYYY-MM"_s));
    }
}

void TestPortalCalls::syncCountsTheMonthsCalls()
{
    TarnAPI &api = client.as(maren);
    const QList<TarnPerformanceMonth> months = tarnWaitFor(TarnPortalCalls::syncClientPerformance(api, u"c-oakline"_s));
    QVERIFY(months.size() >= 7);
    QCOMPARE(months.last().month, QDateTime::currentDateTimeUtc().toString(u"yyyy-MM"_s));
    QCOMPARE(tarnWaitFor(TarnPortalCalls::clientPerformance(api, u"c-oakline"_s)), months);
    // The sync settles the portal's alert about out-of-date figures.
    const TarnPortalDashboard dashboard = tarnWaitFor(TarnPortalCalls::portalDashboard(api));
    QVERIFY(std::none_of(dashboard.alerts.begin(), dashboard.alerts.end(),
        [](const auto &a) { return a.client_id == "c-oakline"_L1 && a.kind == "performance"_L1; }));
    QVERIFY(tarnWaitFor(TarnPortalCalls::refreshPortal(api, u"c-oakline"_s)).refreshed_at);
}

void TestPortalCalls::workAndProfile()
{
    TarnAPI &api = client.as(maren);
    const TarnClientProfile profile = tarnWaitFor(TarnPortalCalls::clientProfile(api, u"c-fernhill"_s));
    QCOMPARE(profile.name, u"Fernhill Bakery"_s);
    const TarnPortalWork work = tarnWaitFor(TarnPortalCalls::portalAccountDetail(api, u"c-fernhill"_s)).work.first();
    QVERIFY(tarnWaitFor(TarnPortalCalls::deletePortalWork(api, u"c-fernhill"_s, work.id)).ok);
    QCOMPARE(failureOf(TarnPortalCalls::deletePortalWork(api, u"c-fernhill"_s, work.id)), u"No such work."_s);
    QCOMPARE(failureOf(TarnPortalCalls::clientProfile(api, u"c-nobody"_s)), u"No such client."_s);
}

void TestPortalCalls::onlyPeopleWithClients()
{
    TarnAPI &priya = client.as(u"priya@halvard.example"_s);
    QCOMPARE(failureOf(TarnPortalCalls::portalDashboard(priya)), u"Client portals are not open to you."_s);
    QCOMPARE(
        failureOf(TarnPortalCalls::issuePortalPiloKey(priya, u"c-marlow"_s)), u"Client portals are not open to you."_s);
}

QTEST_GUILESS_MAIN(TestPortalCalls)
#include "tst_portalcalls.moc"
