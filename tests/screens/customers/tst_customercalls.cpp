#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "inbox/TarnInboxCalls.h"
#include "screens/calls/TarnCallCalls.h"
#include "screens/customers/CustomerRules.h"
#include "screens/customers/TarnCustomerCalls.h"
#include "screens/support/TarnSupportCalls.h"
#include "service/TarnAPI.h"
#include "support/FailureOf.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;
namespace Calls = TarnCustomerCalls;

namespace {

using Call = std::function<void(TarnAPI &)>;
using Failing = std::function<QString(TarnAPI &)>;

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;

template <typename T> void attempt(QCoro::Task<T> task)
{
    (void)failureOf(std::move(task));
}

const QString oddId = u"c&=+#?/ é"_s;
const QString oddIdSent = u"c%26%3D%2B%23%3F%2F%20%C3%A9"_s;

QStringList eventIds(const QList<TarnTimelineEvent> &events)
{
    QStringList out;
    for (const TarnTimelineEvent &event : events)
        out.append(event.id);
    return out;
}

// The whole timeline, page by page.
QList<TarnTimelineEvent> wholeTimeline(TarnAPI &api, const QString &client, int pageSize)
{
    QList<TarnTimelineEvent> all;
    QString before;
    do {
        const TarnTimelinePage page = tarnWaitFor(Calls::crm360Timeline(api, client, before, pageSize));
        all.append(page.events);
        before = page.next_before.value_or(QString());
    } while (!before.isEmpty());
    return all;
}

} // namespace

// The customer register's calls against the local workspace and its demo
// register: the wire form, the demo, versions, the timeline's sources and
// pages, and each change a profile makes.
class TestCustomerCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void wireForm_data();
    void wireForm();
    void demoRegisterAcrossStages();
    void searchFindsByAnyField();
    void staleSaveRefusedWithCurrentRecord();
    void timelinePagesDoNotShift();
    void customerFromInboxShowsItsThread();
    void mailToTheCustomerIsOnTheTimeline();
    void callsAndSupportTasksJoinTheTimeline();
    void profileChanges();
    void filesRoundTrip();
    void draftsSendOrDiscardOnce();
    void refusals_data();
    void refusals();

private:
    InboxTestClient client;
};

void TestCustomerCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestCustomerCalls::wireForm_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("query");
    QTest::addColumn<QJsonObject>("body");

    const QString profile = u"/api/crm360/clients/"_s + oddIdSent;
    const QString record = u"/api/records/"_s + oddIdSent;
    const struct {
        const char *label;
        Call call;
        QString method, path, query;
        QJsonObject body;
    } rows[] {
        { "search, text escaped", [](TarnAPI &a) { attempt(Calls::clientSearch(a, u"a&b"_s)); }, u"GET"_s,
            u"/api/clients"_s, u"q=a%26b"_s, {} },
        { "list, no stage sends none", [](TarnAPI &a) { attempt(Calls::crm360Clients(a, {})); }, u"GET"_s,
            u"/api/crm360/clients"_s, {}, {} },
        { "first timeline page", [](TarnAPI &a) { attempt(Calls::crm360Timeline(a, oddId, {}, 50)); }, u"GET"_s,
            profile + u"/timeline"_s, u"limit=50"_s, {} },
        { "later timeline page", [](TarnAPI &a) { attempt(Calls::crm360Timeline(a, oddId, u"5|x"_s, 9)); }, u"GET"_s,
            profile + u"/timeline"_s, u"before=5%7Cx&limit=9"_s, {} },
        { "save details",
            [](TarnAPI &a) {
                attempt(Calls::crm360SaveDetails(a, oddId, { 3, u"N"_s, u"e"_s, u"p"_s, u"c"_s, u"a"_s }));
            },
            u"PATCH"_s, profile, {},
            { { u"version"_s, 3 }, { u"name"_s, u"N"_s }, { u"email"_s, u"e"_s }, { u"phone"_s, u"p"_s },
                { u"company"_s, u"c"_s }, { u"address"_s, u"a"_s } } },
        { "task done only", [](TarnAPI &a) { attempt(Calls::crm360UpdateTask(a, oddId, { .done = true })); },
            u"PATCH"_s, u"/api/crm360/tasks/"_s + oddIdSent, {}, { { u"done"_s, true } } },
        { "delete file", [](TarnAPI &a) { attempt(Calls::deleteRecordFile(a, oddId, u"f/1"_s)); }, u"DELETE"_s,
            record + u"/files/f%2F1"_s, {}, {} },
        { "follow-up", [](TarnAPI &a) { attempt(Calls::setSalesFollowUp(a, oddId, u"2026-01-02"_s)); }, u"POST"_s,
            u"/api/sales/"_s + oddIdSent + u"/follow-up"_s, {}, { { u"on"_s, u"2026-01-02"_s } } },
        { "send draft", [](TarnAPI &a) { attempt(Calls::sendCRMDraft(a, oddId)); }, u"POST"_s,
            u"/api/crm360/drafts/"_s + oddIdSent + u"/send"_s, {}, {} },
    };
    for (const auto &row : rows)
        QTest::addRow("%s", row.label) << row.call << row.method << row.path << row.query << row.body;
}

void TestCustomerCalls::wireForm()
{
    QFETCH(Call, call);
    QFETCH(QString, method);
    QFETCH(QString, path);
    QFETCH(QString, query);
    QFETCH(QJsonObject, body);

    TarnAPI &api = client.as(maren);
    client.workspace->clearRequests();
    call(api);
    const QJsonArray sent = client.workspace->requests();
    QCOMPARE(sent.size(), 1);
    const QJsonObject request = sent.first().toObject();
    QCOMPARE(request.value("method"_L1).toString(), method);
    QCOMPARE(request.value("path"_L1).toString(), path);
    QCOMPARE(request.value("query"_L1).toString(), query);
    QCOMPARE(QJsonDocument::fromJson(request.value("body"_L1).toString().toUtf8()).object(), body);
}

void TestCustomerCalls::demoRegisterAcrossStages()
{
    TarnAPI &api = client.as(maren);
    const TarnCustomerList all = tarnWaitFor(Calls::crm360Clients(api, {}));
    QVERIFY2(all.clients.size() >= 30, qPrintable(QString::number(all.clients.size())));
    QSet<QString> stages;
    for (const TarnCustomerSummary &customer : all.clients)
        stages.insert(customer.stage);
    for (const CustomerRules::Stage &stage : CustomerRules::stages())
        QVERIFY2(stages.contains(stage.id), qPrintable(stage.id));

    const TarnCustomerList proposals = tarnWaitFor(Calls::crm360Clients(api, u"proposal"_s));
    QVERIFY(!proposals.clients.isEmpty() && proposals.clients.size() < all.clients.size());
    QVERIFY(std::all_of(proposals.clients.cbegin(), proposals.clients.cend(),
        [](const TarnCustomerSummary &c) { return c.stage == "proposal"_L1; }));

    // The demo's histories reach back months and hold drafts to send.
    const TarnCustomerProfile bright = tarnWaitFor(Calls::crm360Profile(api, u"c-brightwater"_s));
    QVERIFY(!bright.drafts.isEmpty() && !bright.contacts.isEmpty() && !bright.tasks.isEmpty());
    const QList<TarnTimelineEvent> history = wholeTimeline(api, u"c-brightwater"_s, 100);
    QVERIFY(
        std::any_of(history.cbegin(), history.cend(), [](const TarnTimelineEvent &e) { return e.kind == "stage"_L1; }));
    QVERIFY(QDateTime::fromString(history.last().at, Qt::ISODateWithMs).daysTo(QDateTime::currentDateTimeUtc()) > 30);
}

void TestCustomerCalls::searchFindsByAnyField()
{
    TarnAPI &api = client.as(maren);
    const auto names = [&](const QString &text) {
        QStringList out;
        for (const TarnCustomerSummary &c : tarnWaitFor(Calls::clientSearch(api, text)).clients)
            out.append(c.name);
        return out;
    };
    QCOMPARE(names(u"brightwater"_s).value(0), u"Brightwater Dental"_s);
    QCOMPARE(names(u"0113"_s), QStringList { u"Fernhill Bakery"_s });
    QCOMPARE(names(u"studio@tidewater"_s), QStringList { u"Tidewater Yoga"_s });
    // Wildcards are plain characters.
    QCOMPARE(names(u"%"_s), QStringList());
    QCOMPARE(names(u""_s), QStringList());
}

void TestCustomerCalls::staleSaveRefusedWithCurrentRecord()
{
    TarnAPI &first = client.as(maren);
    TarnAPI &second = client.as(tomas);
    const QString id = u"c-oakline"_s;
    const TarnCustomerProfile seen = tarnWaitFor(Calls::crm360Profile(second, id));
    const TarnCustomerProfile base = tarnWaitFor(Calls::crm360Profile(first, id));

    const TarnCustomerDetails mine { base.version, u"Oakline Studio Ltd"_s, base.email, base.phone, u"Oakline"_s,
        u"4 Quay Street"_s };
    const TarnCustomerProfile saved = tarnWaitFor(Calls::crm360SaveDetails(first, id, mine));
    QCOMPARE(saved.version, base.version + 1);
    QCOMPARE(saved.address, u"4 Quay Street"_s);

    const TarnCustomerDetails theirs { seen.version, u"Oakline"_s, seen.email, seen.phone, {}, {} };
    QVERIFY(failureOf(Calls::crm360SaveDetails(second, id, theirs)).contains(u"changed this customer"_s));
    const TarnCustomerProfile after = tarnWaitFor(Calls::crm360Profile(second, id));
    QCOMPARE(after.name, u"Oakline Studio Ltd"_s);
    QCOMPARE(after.version, saved.version);

    // The refusal's body carries that same record for whoever reads it raw.
    const QString token = client.workspace->signIn(maren);
    const QByteArray csrf = client.workspace->session(token).value("csrf"_L1).toString().toLatin1();
    const TestWorkspace::Answer raw = client.workspace->send("PATCH", u"api/crm360/clients/c-oakline"_s, token,
        QJsonObject { { u"version"_s, 1 }, { u"name"_s, u"x"_s } }, { { "X-CSRF-Token", csrf } });
    QCOMPARE(raw.status, 409);
    QCOMPARE(raw.json().value("current"_L1).toObject().value("name"_L1).toString(), u"Oakline Studio Ltd"_s);
}

void TestCustomerCalls::timelinePagesDoNotShift()
{
    TarnAPI &api = client.as(maren);
    const QString id = u"c-marlow"_s;
    for (int i = 0; i < 12; ++i)
        tarnWaitFor(Calls::crm360AddNote(api, id, u"Note %1"_s.arg(i)));
    const QStringList whole = eventIds(wholeTimeline(api, id, 1000));

    const TarnTimelinePage first = tarnWaitFor(Calls::crm360Timeline(api, id, {}, 7));
    QCOMPARE(first.events.size(), 7);
    QVERIFY(first.next_before.has_value());
    // A note arriving between pages lands before the first page, not inside the next.
    tarnWaitFor(Calls::crm360AddNote(api, id, u"Meanwhile"_s));
    QCOMPARE(wholeTimeline(api, id, 5).size(), whole.size() + 1);

    QStringList walked = eventIds(first.events);
    QString before = *first.next_before;
    while (!before.isEmpty()) {
        const TarnTimelinePage page = tarnWaitFor(Calls::crm360Timeline(api, id, before, 7));
        walked.append(eventIds(page.events));
        before = page.next_before.value_or(QString());
    }
    QCOMPARE(walked, whole);
}

void TestCustomerCalls::customerFromInboxShowsItsThread()
{
    TarnAPI &api = client.as(maren);
    const TestWorkspace::Answer inbound = client.workspace->send("POST", u"api/test/inbox/inbound"_s,
        QJsonDocument(QJsonObject { { u"customer_address"_s, u"+1 555 0977"_s },
                          { u"body"_s, u"Can you quote a deep clean?"_s } })
            .toJson());
    const QString thread = inbound.json().value("id"_L1).toString();
    const TarnInboxCustomer made
        = tarnWaitFor(TarnInboxCalls::inboxCreateCustomer(api, thread, u"leads"_s, u"Lena Park"_s));

    const TarnCustomerProfile profile = tarnWaitFor(Calls::crm360Profile(api, made.client_id));
    QCOMPARE(profile.stage, u"lead"_s);
    QCOMPARE(profile.phone, u"+1 555 0977"_s);
    const QList<TarnTimelineEvent> events = wholeTimeline(api, made.client_id, 50);
    QCOMPARE(events.size(), 1);
    QCOMPARE(events.first().kind, u"inbox"_s);
    QCOMPARE(events.first().body, u"Can you quote a deep clean?"_s);
    QCOMPARE(tarnWaitFor(Calls::clientSearch(api, u"Lena"_s)).clients.value(0).id, made.client_id);
}

void TestCustomerCalls::mailToTheCustomerIsOnTheTimeline()
{
    TarnAPI &api = client.as(maren);
    const QString id = u"c-quill"_s;
    const TarnCustomerProfile base = tarnWaitFor(Calls::crm360Profile(api, id));
    // The demo mailbox holds a quote from this address, in two people's boxes.
    const TarnCustomerDetails details { base.version, base.name, u"Ingrid@Erdwerk.example"_s, base.phone, {}, {} };
    tarnWaitFor(Calls::crm360SaveDetails(api, id, details));
    const QList<TarnTimelineEvent> events = wholeTimeline(api, id, 50);
    const auto mails = std::count_if(events.cbegin(), events.cend(),
        [](const TarnTimelineEvent &e) { return e.kind == "mail"_L1 && e.title == "RE: Clay order for December"_L1; });
    QCOMPARE(mails, 1);
}

void TestCustomerCalls::callsAndSupportTasksJoinTheTimeline()
{
    TarnAPI &api = client.as(maren);
    const TestWorkspace::Answer inbound = client.workspace->send("POST", u"api/test/inbox/inbound"_s,
        QJsonDocument(QJsonObject { { u"customer_address"_s, u"+1 555 0978"_s }, { u"body"_s, u"Hello"_s } }).toJson());
    const QString customer = tarnWaitFor(TarnInboxCalls::inboxCreateCustomer(api,
                                             inbound.json().value("id"_L1).toString(), u"customers"_s, u"Rowan Hale"_s))
                                 .client_id;

    // A subtask stays with its task; the task itself is told when made and when done.
    const QString task
        = tarnWaitFor(TarnSupportCalls::createSupportTask(api, { .title = u"Fix the gate"_s, .client_id = customer }))
              .id;
    tarnWaitFor(TarnSupportCalls::createSupportSubtask(api, task, u"Order hinges"_s));
    const TarnSupportTask opened = tarnWaitFor(TarnSupportCalls::supportTask(api, task));
    tarnWaitFor(TarnSupportCalls::updateSupportTask(
        api, task, TarnSupportTaskUpdate { .version = opened.task.version, .status = u"done"_s }));
    // A call from the book tied to the customer afterwards.
    const TarnCall call = tarnWaitFor(TarnCallCalls::calls(api)).constFirst();
    tarnWaitFor(TarnCallCalls::saveCallCell(api, call.id, { u"client_id"_s, customer, call.version }));

    QStringList seen;
    for (const TarnTimelineEvent &event : wholeTimeline(api, customer, 50))
        seen.append(event.kind + u": "_s + event.title + u" / "_s + event.body);
    QVERIFY2(seen.contains(u"support: Support task opened / Fix the gate"_s), qPrintable(seen.join(u'\n')));
    QVERIFY2(seen.contains(u"support: Support task done / Fix the gate"_s), qPrintable(seen.join(u'\n')));
    QCOMPARE(seen.filter(u"Order hinges"_s), QStringList());
    QCOMPARE(seen.filter(QRegularExpression(u"^call: (Call received|Call made|Missed call)"_s)).size(), 1);
}

void TestCustomerCalls::profileChanges()
{
    TarnAPI &api = client.as(maren);
    const QString id = u"c-tidewater"_s;
    const TarnCustomerProfile before = tarnWaitFor(Calls::crm360Profile(api, id));

    tarnWaitFor(Calls::crm360ChangeStage(api, id, u"proposal"_s));
    tarnWaitFor(Calls::crm360ChangeStage(api, id, u"proposal"_s));
    const TarnTimelinePage page = tarnWaitFor(Calls::crm360Timeline(api, id, {}, 5));
    QCOMPARE(page.events.first().kind, u"stage"_s);
    QCOMPARE(page.events.first().body, before.stage + u" → proposal"_s);
    QVERIFY(page.events.value(1).kind != "stage"_L1 || page.events.value(1).body != page.events.first().body);

    const TarnCustomerTask task = before.tasks.first();
    tarnWaitFor(Calls::crm360UpdateTask(api, task.id, { .done = true, .title = u"Renamed"_s }));
    const QString contact = tarnWaitFor(Calls::addCRMContact(api, id, { u"Ana"_s, u"Owner"_s, {}, {} })).id;
    tarnWaitFor(Calls::addRecordReminder(api, id, { u"Ring back"_s, u"2030-01-02T09:00:00.000Z"_s }));
    tarnWaitFor(Calls::setSalesFollowUp(api, id, u"2030-01-05"_s));
    TarnCustomerProfile after = tarnWaitFor(Calls::crm360Profile(api, id));
    const auto renamed = std::find_if(
        after.tasks.cbegin(), after.tasks.cend(), [&](const TarnCustomerTask &t) { return t.id == task.id; });
    QVERIFY(renamed != after.tasks.cend() && renamed->done && renamed->title == "Renamed"_L1);
    QVERIFY(std::any_of(
        after.contacts.cbegin(), after.contacts.cend(), [&](const TarnCustomerContact &c) { return c.id == contact; }));
    QVERIFY(std::any_of(after.reminders.cbegin(), after.reminders.cend(),
        [](const TarnRecordReminder &r) { return r.text == "Ring back"_L1 && r.person_name == "Maren Holt"_L1; }));
    QCOMPARE(after.follow_up_on, u"2030-01-05"_s);
    // Stage moves and follow-ups never make an open edit of the details stale.
    QCOMPARE(after.version, before.version);

    tarnWaitFor(Calls::crm360DeleteTask(api, task.id));
    tarnWaitFor(Calls::deleteCRMContact(api, contact));
    tarnWaitFor(Calls::setSalesFollowUp(api, id, {}));
    after = tarnWaitFor(Calls::crm360Profile(api, id));
    QCOMPARE(after.tasks.size(), before.tasks.size() - 1);
    QCOMPARE(after.contacts.size(), before.contacts.size());
    QCOMPARE(after.follow_up_on, std::nullopt);

    tarnWaitFor(Calls::archiveRecord(api, id));
    QVERIFY(tarnWaitFor(Calls::crm360Profile(api, id)).archived);
    const TarnCustomerList listed = tarnWaitFor(Calls::crm360Clients(api, {}));
    QVERIFY(std::none_of(
        listed.clients.cbegin(), listed.clients.cend(), [&](const TarnCustomerSummary &c) { return c.id == id; }));
    QVERIFY(tarnWaitFor(Calls::clientSearch(api, u"Tidewater"_s)).clients.isEmpty());
}

void TestCustomerCalls::filesRoundTrip()
{
    TarnAPI &api = client.as(maren);
    const QString id = u"c-harbor"_s;
    QByteArray bytes(300 * 1024, '\0');
    for (qsizetype i = 0; i < bytes.size(); ++i)
        bytes[i] = char(i * 7 % 251);
    const QString file = tarnWaitFor(Calls::uploadRecordFile(api, id, { u"scan.bin"_s, bytes })).id;
    const TarnCustomerProfile profile = tarnWaitFor(Calls::crm360Profile(api, id));
    QCOMPARE(profile.files.value(0).name, u"scan.bin"_s);
    QCOMPARE(profile.files.value(0).size, bytes.size());
    QCOMPARE(tarnWaitFor(Calls::downloadRecordFile(api, id, file)), bytes);
    // A file belongs to its record: another customer's path does not reach it.
    QVERIFY(!failureOf(Calls::downloadRecordFile(api, u"c-quill"_s, file)).isEmpty());
    tarnWaitFor(Calls::deleteRecordFile(api, id, file));
    QVERIFY(!failureOf(Calls::downloadRecordFile(api, id, file)).isEmpty());

    // The service holds the same limit as the client, naming the file.
    const QByteArray over(CustomerRules::fileLimitBytes + 1, 'x');
    QCOMPARE(failureOf(Calls::uploadRecordFile(api, id, { u"big.iso"_s, over })),
        *CustomerRules::fileRefusal(u"big.iso"_s, over.size()));
}

void TestCustomerCalls::draftsSendOrDiscardOnce()
{
    TarnAPI &api = client.as(maren);
    const QString id = u"c-fernhill"_s;
    const TarnCustomerProfile before = tarnWaitFor(Calls::crm360Profile(api, id));
    QVERIFY(!before.drafts.isEmpty());
    const TarnCustomerDraft draft = before.drafts.first();
    tarnWaitFor(Calls::sendCRMDraft(api, draft.id));
    QVERIFY(failureOf(Calls::discardCRMDraft(api, draft.id)).contains(u"already sent"_s));
    const TarnTimelinePage page = tarnWaitFor(Calls::crm360Timeline(api, id, {}, 1));
    QCOMPARE(page.events.first().kind, draft.channel == "email"_L1 ? u"mail"_s : u"inbox"_s);
    QCOMPARE(page.events.first().body, draft.body);
    QVERIFY(tarnWaitFor(Calls::crm360Profile(api, id)).drafts.size() == before.drafts.size() - 1);

    const QString other = tarnWaitFor(Calls::crm360Profile(api, u"c-tidewater"_s)).drafts.value(0).id;
    tarnWaitFor(Calls::discardCRMDraft(api, other));
    QVERIFY(failureOf(Calls::sendCRMDraft(api, other)).contains(u"already discarded"_s));
}

void TestCustomerCalls::refusals_data()
{
    QTest::addColumn<Failing>("call");
    QTest::addColumn<QString>("message");

    const struct {
        const char *label;
        Failing call;
        QString message;
    } rows[] {
        { "unknown stage", [](TarnAPI &a) { return failureOf(Calls::crm360ChangeStage(a, u"c-copper"_s, u"won"_s)); },
            u"\"stage\" is one of"_s },
        { "unknown customer", [](TarnAPI &a) { return failureOf(Calls::crm360Profile(a, u"c-nobody"_s)); },
            u"No such customer."_s },
        { "empty note", [](TarnAPI &a) { return failureOf(Calls::crm360AddNote(a, u"c-copper"_s, u"  "_s)); },
            u"A note needs text."_s },
        { "contact without a name",
            [](TarnAPI &a) {
                return failureOf(Calls::addCRMContact(a, u"c-copper"_s, { {}, u"Owner"_s, {}, {} }));
            },
            u"A contact needs a name."_s },
        { "reminder without a time",
            [](TarnAPI &a) {
                return failureOf(Calls::addRecordReminder(a, u"c-copper"_s, { u"x"_s, u"soon"_s }));
            },
            u"\"remind_at\""_s },
        { "follow-up not a day",
            [](TarnAPI &a) { return failureOf(Calls::setSalesFollowUp(a, u"c-copper"_s, u"2030-02-30"_s)); },
            u"\"on\" is a day"_s },
        { "task gone", [](TarnAPI &a) { return failureOf(Calls::crm360DeleteTask(a, u"ct-none"_s)); },
            u"No such task."_s },
        { "timeline cursor not ours",
            [](TarnAPI &a) { return failureOf(Calls::crm360Timeline(a, u"c-copper"_s, u"yesterday"_s, 5)); },
            u"\"next_before\""_s },
    };
    for (const auto &row : rows)
        QTest::addRow("%s", row.label) << row.call << row.message;
}

void TestCustomerCalls::refusals()
{
    QFETCH(Failing, call);
    QFETCH(QString, message);
    const QString failure = call(client.as(maren));
    QVERIFY2(failure.contains(message), qPrintable(failure));
}

QTEST_GUILESS_MAIN(TestCustomerCalls)
#include "tst_customercalls.moc"
