#include "inbox/InboxTestClient.h"
#include "inbox/NativeInboxView.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString priya = u"priya@halvard.example"_s;

// Runs `trigger` and waits for the view to say it is done.
template <typename Signal, typename Trigger> bool settle(NativeInboxView &view, Signal signal, Trigger trigger)
{
    QSignalSpy spy(&view, signal);
    trigger();
    return spy.wait(15'000);
}

QString threadTitled(const NativeInboxView &view, const QString &title)
{
    for (const TarnInboxThreadSummary &row : view.threads()->rows())
        if (NativeInboxListModel::titleOf(row) == title)
            return row.id;
    return {};
}

// The POST bodies the workspace received for one route's last segment.
QList<QJsonObject> posted(TestWorkspace &workspace, const QString &ending)
{
    QList<QJsonObject> out;
    for (const QJsonValue &request : workspace.requests()) {
        const QJsonObject r = request.toObject();
        if (r.value("method"_L1) == "POST"_L1 && r.value("path"_L1).toString().endsWith(ending))
            out.append(QJsonDocument::fromJson(r.value("body"_L1).toString().toUtf8()).object());
    }
    return out;
}

} // namespace

// The inbox screen's state over a real workspace, without a window.
class TestInboxView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void answersForOldFiltersAreDropped();
    void refreshChangesRowsInPlace();
    void composerOffers_data();
    void composerOffers();
    void mentionsGoWithTheReply();
    void retriedSendStoresOnce();
    void theLoserSeesTheCurrentThread();

private:
    // A view signed in as `email`, loaded, with the thread of `title` open.
    [[nodiscard]] std::unique_ptr<NativeInboxView> openOn(const QString &email, const QString &title);
    void inbound(const QString &address, const QString &body);

    InboxTestClient client;
};

void TestInboxView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

std::unique_ptr<NativeInboxView> TestInboxView::openOn(const QString &email, const QString &title)
{
    auto view = std::make_unique<NativeInboxView>(client.as(email));
    if (!settle(*view, &NativeInboxView::refreshed, [&] { view->refresh(); }))
        return nullptr;
    const QString id = threadTitled(*view, title);
    if (id.isEmpty() || !settle(*view, &NativeInboxView::refreshed, [&] { view->selectThread(id); }))
        return nullptr;
    return view;
}

void TestInboxView::inbound(const QString &address, const QString &body)
{
    const TestWorkspace::Answer answer = client.workspace->send("POST", u"api/test/inbox/inbound"_s,
        QJsonDocument(QJsonObject { { u"customer_address"_s, address }, { u"body"_s, body } }).toJson());
    QCOMPARE(answer.status, 200);
}

void TestInboxView::answersForOldFiltersAreDropped()
{
    NativeInboxView view(client.as(maren));
    QSignalSpy refreshed(&view, &NativeInboxView::refreshed);
    // The answer for "mine" comes last.
    client.workspace->setFault(QJsonObject {
        { u"method"_s, u"GET"_s }, { u"path"_s, u"/api/inbox"_s }, { u"delay_ms"_s, 300 }, { u"times"_s, 1 } });
    view.setScope(u"mine"_s);
    view.setScope(u"unassigned"_s);
    QVERIFY(refreshed.wait());
    if (refreshed.size() < 2)
        QVERIFY(refreshed.wait());
    client.workspace->clearFaults();
    QCOMPARE(view.threads()->rowCount(), 4);
    for (const TarnInboxThreadSummary &row : view.threads()->rows())
        QCOMPARE(row.owner_name, std::nullopt);
    QCOMPARE(view.unrepliedCount(), 6);
}

void TestInboxView::refreshChangesRowsInPlace()
{
    const std::unique_ptr<NativeInboxView> view = openOn(maren, u"Copper Kettle Cafe"_s);
    QVERIFY(view);
    const QString open = view->selectedThread();
    view->setComposerText(u"Half typed"_s);
    QSignalSpy resets(view->threads(), &QAbstractItemModel::modelReset);
    QSignalSpy changes(view->threads(), &QAbstractItemModel::dataChanged);
    QSignalSpy moves(view->threads(), &QAbstractItemModel::rowsMoved);
    QSignalSpy entriesAdded(view->entries(), &QAbstractItemModel::rowsInserted);

    // Nothing new: nothing changes.
    QVERIFY(settle(*view, &NativeInboxView::refreshed, [&] { view->refresh(); }));
    QCOMPARE(changes.size() + moves.size() + entriesAdded.size(), 0);

    inbound(u"+1 555 0117"_s, u"Any news on page 3?"_s);
    QVERIFY(settle(*view, &NativeInboxView::refreshed, [&] { view->refresh(); }));
    QCOMPARE(resets.size(), 0);
    QCOMPARE(moves.size(), 1); // Quill & Ink to the top
    QCOMPARE(view->threads()->rows().first().preview, u"Any news on page 3?"_s);
    QCOMPARE(view->unrepliedCount(), 7);
    QCOMPARE(view->selectedThread(), open);
    QCOMPARE(view->composerText(), u"Half typed"_s);
    QCOMPARE(entriesAdded.size(), 0);
}

void TestInboxView::composerOffers_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("canSend");
    QTest::addColumn<bool>("drafts");
    QTest::addRow("a web form is read only") << u"lena@example.net"_s << false << false;
    QTest::addRow("a customer's text") << u"Brightwater Dental"_s << true << true;
}

void TestInboxView::composerOffers()
{
    QFETCH(QString, title);
    QFETCH(bool, canSend);
    QFETCH(bool, drafts);
    const std::unique_ptr<NativeInboxView> view = openOn(maren, title);
    QVERIFY(view);
    QCOMPARE(view->canSend(), canSend);
    QCOMPARE(view->aiConfigured(), drafts);
    QVERIFY(view->entries()->rowCount() > 0);

    client.workspace->clearRequests();
    view->setComposerText(u"Can do."_s);
    QSignalSpy finished(view.get(), &NativeInboxView::actionFinished);
    view->draftWithPilo();
    if (drafts) {
        QVERIFY(finished.wait());
        QVERIFY(view->composerText().startsWith(u"Hi Brightwater Dental, thanks for your message"_s));
        QVERIFY(view->composerText().contains(u"Can do."_s));
    }
    view->send();
    if (canSend)
        QVERIFY(finished.wait());
    QCOMPARE(posted(*client.workspace, u"/assist"_s).size(), drafts ? 1 : 0);
    QCOMPARE(posted(*client.workspace, u"/reply"_s).size(), canSend ? 1 : 0);
    QCOMPARE(view->composerText().isEmpty(), canSend);
}

void TestInboxView::mentionsGoWithTheReply()
{
    const std::unique_ptr<NativeInboxView> view = openOn(maren, u"Oakline Studio"_s);
    QVERIFY(view);
    view->setComposerText(u"Checking with @pri"_s);
    QCOMPARE(view->mentionSuggestions().size(), 1);
    view->insertMention(view->mentionSuggestions().first().toMap().value(u"id"_s).toString());
    QCOMPARE(view->composerText(), u"Checking with @Priya Nair "_s);
    QVERIFY(view->mentionSuggestions().isEmpty());
    // A person picked and then deleted from the text is not mentioned.
    view->setComposerText(u"@Tom"_s);
    view->insertMention(u"p-tomas"_s);
    view->setComposerText(u"Checking with @Priya Nair now"_s);

    client.workspace->clearRequests();
    QVERIFY(settle(*view, &NativeInboxView::actionFinished, [&] { view->send(); }));
    QCOMPARE(
        posted(*client.workspace, u"/reply"_s).value(0).value("mentions"_L1).toArray(), QJsonArray { u"p-priya"_s });
    const auto &rows = view->entries()->rows();
    QCOMPARE(rows.last().body, u"Checking with @Priya Nair now"_s);
    QCOMPARE(view->entries()->data(view->entries()->index(int(rows.size() - 1)), Qt::UserRole + 7).toStringList(),
        QStringList { u"Priya Nair"_s });
}

void TestInboxView::retriedSendStoresOnce()
{
    const std::unique_ptr<NativeInboxView> view = openOn(maren, u"Harbor Vet Clinic"_s);
    QVERIFY(view);
    const int before = view->entries()->rowCount();
    client.workspace->setFault(QJsonObject { { u"method"_s, u"POST"_s },
        { u"path"_s, u"/api/inbox/%1/reply"_s.arg(view->selectedThread()) }, { u"cut"_s, true }, { u"times"_s, 0 } });
    client.workspace->clearRequests();
    view->setComposerText(u"Yes, still on."_s);
    QVERIFY(settle(*view, &NativeInboxView::actionFinished, [&] { view->send(); }));
    QVERIFY(!view->errorText().isEmpty());
    QCOMPARE(view->composerText(), u"Yes, still on."_s);
    client.workspace->clearFaults();
    QVERIFY(settle(*view, &NativeInboxView::actionFinished, [&] { view->send(); }));
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->entries()->rowCount(), before + 1);
    const QList<QJsonObject> attempts = posted(*client.workspace, u"/reply"_s);
    QVERIFY(attempts.size() >= 2);
    for (const QJsonObject &attempt : attempts)
        QCOMPARE(attempt.value("nonce"_L1), attempts.first().value("nonce"_L1));
}

void TestInboxView::theLoserSeesTheCurrentThread()
{
    const std::unique_ptr<NativeInboxView> mine = openOn(maren, u"+1 555 0142"_s);
    const std::unique_ptr<NativeInboxView> theirs = openOn(priya, u"+1 555 0142"_s);
    QVERIFY(mine && theirs);
    QVERIFY(theirs->canEdit());
    QVERIFY(settle(*mine, &NativeInboxView::actionFinished, [&] { mine->assign(u"p-maren"_s); }));
    // Priya still sees it unassigned; her snooze is refused and she sees why.
    QCOMPARE(theirs->ownerId(), QString());
    QVERIFY(settle(*theirs, &NativeInboxView::actionFinished, [&] { theirs->snooze(1); }));
    QCOMPARE(theirs->errorText(), u"This conversation is assigned to Maren Holt."_s);
    QCOMPARE(theirs->ownerId(), u"p-maren"_s);
    QVERIFY(!theirs->canEdit());
    QCOMPARE(theirs->snoozedUntil(), QString());
}

QTEST_GUILESS_MAIN(TestInboxView)
#include "tst_inboxview.moc"
