#include "TarnWaitFor.h"
#include "chat/ChatTestClient.h"
#include "chat/NativeChatView.h"
#include "chat/TarnChatCalls.h"
#include "service/TarnAPI.h"
#include "shell/TarnNavigation.h"
#include "support/TestWorkspace.h"

#include <QAbstractItemModelTester>
#include <QFileInfo>
#include <QImage>
#include <QMimeData>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

// Fills pasted or dropped data, given a local file it may refer to.
using Fill = std::function<void(QMimeData &, const QString &)>;

QStringList bodies(const NativeChatTimelineModel &model)
{
    QStringList out;
    for (const ChatTimelineRow &row : model.rows())
        out.append(row.message.body);
    return out;
}

} // namespace

// The chat screen's state against the demo workspace, as the owner: what
// it loads, sends, retries and keeps still.
class TestChatView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void opensTheLastRoomAndPagesBack();
    void refreshThatChangesNothingTouchesNoRow();
    void retriedSendStoresOnce();
    void threadsReactionsAndSearch();
    void editKeepsARefusedEdit();
    void createdRoomOpens();
    void roomSettingsKeepUnofferedMembers();
    void pastedAndDroppedFilesStage_data();
    void pastedAndDroppedFilesStage();
    void oversizedFileIsRefusedByName();
    void gifCommandOpensThePicker();
    void failuresKeepWhatIsShown();
    void signingOutForgetsEverything();
    void cleanupTestCase();

private:
    [[nodiscard]] bool waitFor(const char *signal);

    ChatTestClient client;
    TestWorkspace *workspace = nullptr;
    TarnAPI *api = nullptr;
    QSettings *settings = nullptr;
    std::unique_ptr<TarnNavigation> navigation;
    std::unique_ptr<NativeChatView> view;
};

bool TestChatView::waitFor(const char *signal)
{
    QSignalSpy spy(view.get(), signal);
    return spy.wait(10000);
}

void TestChatView::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
    workspace = client.workspace.get();
    api = client.api.get();
    settings = client.settings.get();
    navigation = std::make_unique<TarnNavigation>(settings);
    view = std::make_unique<NativeChatView>(*api, *navigation, *settings);
}

void TestChatView::signingOutForgetsEverything()
{
    view->setComposerText(u"half a thought"_s);
    QVERIFY(view->rooms()->rowCount() > 0);
    view->clear();
    QCOMPARE(view->rooms()->rowCount(), 0);
    QCOMPARE(view->timeline()->rowCount(), 0);
    QCOMPARE(view->thread()->rowCount(), 0);
    QVERIFY(view->selectedRoom().isEmpty());
    QVERIFY(view->composerText().isEmpty());
}

void TestChatView::cleanupTestCase()
{
    view.reset();
}

void TestChatView::opensTheLastRoomAndPagesBack()
{
    const QList<TarnRoom> rooms = tarnWaitFor(TarnChatCalls::rooms(*api));
    const auto sales = std::find_if(rooms.begin(), rooms.end(), [](const TarnRoom &r) { return r.name == "sales"_L1; });
    QVERIFY(sales != rooms.end());
    settings->setValue(NativeChatView::lastRoomKey + u"p-maren"_s, sales->id);
    navigation->setPendingChatDraft(u"drafted elsewhere"_s);

    view->appear();
    QVERIFY(waitFor(SIGNAL(refreshed())));
    QCOMPARE(view->selectedRoom(), sales->id);
    QCOMPARE(view->composerText(), u"drafted elsewhere"_s);
    QVERIFY(navigation->pendingChatDraft().isEmpty());
    QCOMPARE(view->rooms()->rowCount(), rooms.size());
    const QList<ChatRoomRow> &listed = view->rooms()->rows();
    QVERIFY(std::all_of(listed.begin(), listed.end(), [](const ChatRoomRow &r) { return !r.preview.isEmpty(); }));
    QCOMPARE(view->timeline()->rowCount(), 50);
    QVERIFY(view->hasMore());
    // The open room counts as read, and the service heard so.
    const TarnRoom after = tarnWaitFor(TarnChatCalls::rooms(*api)).at(std::distance(rooms.begin(), sales));
    QCOMPARE(after.unread, 0);

    view->loadOlder();
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    QVERIFY(!view->hasMore());
    QCOMPARE(view->timeline()->rows().first().message.seq, 1);
    view->disappear();
}

void TestChatView::refreshThatChangesNothingTouchesNoRow()
{
    QAbstractItemModelTester timelineTester(view->timeline(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    QAbstractItemModelTester roomsTester(view->rooms(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    const qsizetype shown = view->timeline()->rowCount();
    QSignalSpy reset(view->timeline(), &QAbstractItemModel::modelReset);
    QSignalSpy inserted(view->timeline(), &QAbstractItemModel::rowsInserted);
    QSignalSpy changed(view->timeline(), &QAbstractItemModel::dataChanged);
    QSignalSpy roomsChanged(view->rooms(), &QAbstractItemModel::dataChanged);

    view->refresh();
    QVERIFY(waitFor(SIGNAL(refreshed())));
    QCOMPARE(reset.count() + inserted.count() + changed.count() + roomsChanged.count(), 0);
    QCOMPARE(view->timeline()->rowCount(), shown);

    // Someone else writes: one row arrives at the end, the pages read before stay.
    const TestWorkspace::Answer posted
        = workspace->send("POST", u"api/test/rooms/%1/messages"_s.arg(view->selectedRoom()), QString(),
            QJsonObject { { u"user_id"_s, u"p-tomas"_s }, { u"body"_s, u"fresh from Tomas"_s } });
    QCOMPARE(posted.status, 200);
    view->refresh();
    QVERIFY(waitFor(SIGNAL(refreshed())));
    QCOMPARE(reset.count(), 0);
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(view->timeline()->rowCount(), shown + 1);
    QCOMPARE(bodies(*view->timeline()).last(), u"fresh from Tomas"_s);
}

void TestChatView::retriedSendStoresOnce()
{
    const QString room = view->selectedRoom();
    const QJsonObject cut { { u"method"_s, u"POST"_s }, { u"path"_s, u"/api/rooms/%1/messages"_s.arg(room) },
        { u"cut"_s, true }, { u"times"_s, 0 } };
    const auto sendAndWait = [this] {
        view->send();
        QVERIFY(view->sending());
        QVERIFY(waitFor(SIGNAL(actionFinished())));
        QVERIFY(!view->sending());
    };

    // The cut attempt was stored; the unchanged retry finds it by its nonce.
    workspace->setFault(cut);
    view->setComposerText(u"  only once  "_s);
    sendAndWait();
    QVERIFY(!view->errorText().isEmpty());
    QCOMPARE(view->composerText(), u"  only once  "_s);
    workspace->clearFaults();
    sendAndWait();
    QVERIFY(view->composerText().isEmpty());
    QVERIFY(view->errorText().isEmpty());
    QCOMPARE(bodies(*view->timeline()).count(u"only once"_s), 1);

    // A changed attempt is another message, with another nonce.
    workspace->setFault(cut);
    view->setComposerText(u"second"_s);
    sendAndWait();
    const QString nonce = view->retryNonce();
    view->setComposerText(u"second, edited"_s);
    sendAndWait();
    QVERIFY(view->retryNonce() != nonce);
    workspace->clearFaults();
    sendAndWait();

    const TarnMessagePage page = tarnWaitFor(TarnChatCalls::messages(*api, room));
    QStringList stored;
    for (const TarnMessage &m : page.messages)
        stored.append(m.body);
    QCOMPARE(stored.count(u"only once"_s), 1);
    QCOMPARE(stored.count(u"second"_s), 1);
    QCOMPARE(stored.count(u"second, edited"_s), 1);
}

void TestChatView::threadsReactionsAndSearch()
{
    const QString parent = view->timeline()->rows().last().message.id;
    view->openThread(parent);
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    QCOMPARE(view->thread()->rowCount(), 0);
    view->sendReply(u"a reply"_s);
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    QCOMPARE(bodies(*view->thread()), QStringList { u"a reply"_s });
    QCOMPARE(view->timeline()->rows().last().message.reply_count, 1);

    view->toggleReaction(parent, u"👍"_s);
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    QCOMPARE(view->timeline()->rows().last().message.reactions->first().mine, true);
    view->toggleReaction(parent, u"👍"_s);
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    QVERIFY(view->timeline()->rows().last().message.reactions->isEmpty());

    view->setSearchText(u"a reply"_s);
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    QVERIFY(view->searchHits()->rowCount() >= 1);
    view->closeThread();
    view->openSearchHit(0);
    QCOMPARE(view->threadParent(), parent);
    view->setSearchText(QString());
    QCOMPARE(view->searchHits()->rowCount(), 0);
}

void TestChatView::editKeepsARefusedEdit()
{
    const QString room = view->selectedRoom();
    const QList<ChatTimelineRow> &rows = view->timeline()->rows();
    const auto others = std::find_if(
        rows.begin(), rows.end(), [](const ChatTimelineRow &r) { return r.message.user_id != "p-maren"_L1; });
    QVERIFY(others != rows.end());
    view->beginEdit(others->message.id);
    QVERIFY(view->editingId().isEmpty());

    view->setComposerText(u"to be edited"_s);
    view->send();
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    const TarnMessage mine = view->timeline()->rows().last().message;
    view->beginEdit(mine.id);
    QCOMPARE(view->editText(), u"to be edited"_s);
    view->setEditText(u"my edit"_s);

    // Another window's edit reaches the service first.
    QString id = mine.id;
    QString in = room;
    tarnWaitFor(TarnChatCalls::editMessage(
        *api, std::move(id), std::move(in), u"edited elsewhere"_s, mine.version.value_or(0)));
    view->saveEdit();
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    QVERIFY(view->errorText().contains(u"changed"_s));
    QCOMPARE(view->editingId(), mine.id);
    QCOMPARE(view->editText(), u"my edit"_s);
    QCOMPARE(bodies(*view->timeline()).last(), u"to be edited"_s);

    view->refresh();
    QVERIFY(waitFor(SIGNAL(refreshed())));
    QCOMPARE(bodies(*view->timeline()).last(), u"edited elsewhere"_s);
    view->saveEdit();
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    QVERIFY(view->editingId().isEmpty());
    QVERIFY(view->errorText().isEmpty());
    QCOMPARE(bodies(*view->timeline()).last(), u"my edit"_s);
}

void TestChatView::createdRoomOpens()
{
    navigation->setChatCreate(TarnChatCreateRequest { u"channel"_s, u"request-1"_s });
    QCOMPARE(view->createMode(), u"channel"_s);
    QVERIFY(!navigation->hasChatCreate());

    view->createChannel(u"launch & \"plans\""_s, true, { u"p-tomas"_s });
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    const QList<ChatRoomRow> &rooms = view->rooms()->rows();
    const auto created = std::find_if(
        rooms.begin(), rooms.end(), [](const ChatRoomRow &r) { return r.room.name == u"launch & \"plans\""_s; });
    QVERIFY(created != rooms.end());
    QCOMPARE(view->selectedRoom(), created->room.id);
    QCOMPARE(view->timeline()->rowCount(), 0);
    QCOMPARE(settings->value(NativeChatView::lastRoomKey + u"p-maren"_s).toString(), created->room.id);
}

// Follows the room made above: private, with Tomas.
void TestChatView::roomSettingsKeepUnofferedMembers()
{
    const QString room = view->selectedRoom();
    QCOMPARE(view->selectedKind(), u"channel"_s);
    view->loadRoomSettings();
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    QCOMPARE(view->roomSettings().value(u"id"_s).toString(), room);
    QVERIFY(view->roomSettings().value(u"members"_s).toStringList().contains(u"p-tomas"_s));

    // Tomas out, another in; the owner is not offered and stays.
    const QVariantList people = view->people();
    const auto other = std::find_if(
        people.begin(), people.end(), [](const QVariant &p) { return p.toMap().value(u"id"_s) != "p-tomas"_L1; });
    QVERIFY(other != people.end());
    const QString newcomer = other->toMap().value(u"id"_s).toString();
    view->saveRoomSettings(u" launch-plans "_s, false, false, { newcomer });
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    const TarnRoomSettings saved = tarnWaitFor(TarnChatCalls::roomSettings(*api, room));
    QCOMPARE(saved.name, u"launch-plans"_s);
    QVERIFY(!saved.private_);
    QStringList members = saved.members;
    members.sort();
    QStringList expected { newcomer, u"p-maren"_s };
    expected.sort();
    QCOMPARE(members, expected);

    // Archived, it leaves the list and another room opens.
    view->loadRoomSettings();
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    view->saveRoomSettings(u"launch-plans"_s, false, true, { newcomer });
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    const QList<ChatRoomRow> &rooms = view->rooms()->rows();
    QVERIFY(std::none_of(rooms.begin(), rooms.end(), [&room](const ChatRoomRow &r) { return r.room.id == room; }));
    QVERIFY(!view->selectedRoom().isEmpty());
    QVERIFY(view->selectedRoom() != room);
}

void TestChatView::pastedAndDroppedFilesStage_data()
{
    struct Row {
        const char *name;
        Fill fill;
        bool taken;
        QString staged;
    };
    const Row rows[] = {
        { "local file", [](QMimeData &d, const QString &f) { d.setUrls({ QUrl::fromLocalFile(f) }); }, true,
            u"plan.txt"_s },
        { "raw image", [](QMimeData &d, const QString &) { d.setImageData(QImage(4, 4, QImage::Format_RGB32)); }, true,
            u"pasted-image.png"_s },
        // A web address is text to paste, not a file.
        { "remote address", [](QMimeData &d, const QString &) { d.setUrls({ QUrl(u"https://example.org/a.png"_s) }); },
            false, QString() },
        { "plain text", [](QMimeData &d, const QString &) { d.setText(u"just words"_s); }, false, QString() },
    };
    QTest::addColumn<Fill>("fill");
    QTest::addColumn<bool>("taken");
    QTest::addColumn<QString>("staged");
    for (const Row &row : rows)
        QTest::addRow("%s", row.name) << row.fill << row.taken << row.staged;
}

void TestChatView::pastedAndDroppedFilesStage()
{
    QFETCH(Fill, fill);
    QFETCH(bool, taken);
    QFETCH(QString, staged);
    for (const QVariant &file : view->stagedFiles())
        view->unstageFile(file.toMap().value(u"id"_s).toString());
    QFile plan(client.folder.filePath(u"plan.txt"_s));
    QVERIFY(plan.open(QIODevice::WriteOnly));
    plan.write("the plan");
    plan.close();

    QMimeData data;
    fill(data, plan.fileName());
    QCOMPARE(view->stageMime(data), taken);
    QStringList names;
    for (const QVariant &file : view->stagedFiles())
        names.append(file.toMap().value(u"name"_s).toString());
    QCOMPARE(names, staged.isEmpty() ? QStringList() : QStringList { staged });
}

void TestChatView::oversizedFileIsRefusedByName()
{
    QFile big(client.folder.filePath(u"notes.bin"_s));
    QVERIFY(big.open(QIODevice::WriteOnly));
    big.write(QByteArray(TarnChatCalls::maxFileBytes + 1, 'x'));
    big.close();
    view->setComposerText(u"keep me"_s);
    QVERIFY(!view->stageFile(big.fileName()));
    QVERIFY(view->errorText().contains(u"notes.bin"_s));
    QCOMPARE(view->composerText(), u"keep me"_s);
    QVERIFY(view->stagedFiles().isEmpty());

    big.resize(TarnChatCalls::maxFileBytes);
    QVERIFY(view->stageFile(big.fileName()));
    QCOMPARE(view->stagedFiles().size(), 1);
}

void TestChatView::gifCommandOpensThePicker()
{
    // This workspace has no GIF provider: the picker says so.
    view->setComposerText(u"/gif dogs"_s);
    view->send();
    QVERIFY(view->gifPickerOpen());
    QTRY_VERIFY_WITH_TIMEOUT(!view->gifPicker()->busy(), 10000);
    QVERIFY(!view->gifPicker()->configured());
    QVERIFY(!view->gifPicker()->message().isEmpty());
    view->closeGifPicker();

    // A provider's answers, canned: one GIF, its preview and the GIF itself.
    const auto canned = [this](const QString &path, const QString &type, const QString &body) {
        workspace->setFault(QJsonObject { { u"method"_s, u"GET"_s }, { u"path"_s, path }, { u"status"_s, 200 },
            { u"content_type"_s, type }, { u"body"_s, body } });
    };
    canned(u"/api/gifs"_s, u"application/json"_s,
        uR"({"configured":true,"results":[{"id":"g1","title":"Happy Cat!","width":8,"height":8}]})"_s);
    canned(u"/api/gifs/g1/preview"_s, u"image/gif"_s, u"GIF89a-small"_s);
    canned(u"/api/gifs/g1/file"_s, u"image/gif"_s, u"GIF89a-whole"_s);
    view->setComposerText(u"/gif cats"_s);
    view->send();
    QTRY_VERIFY_WITH_TIMEOUT(!view->gifPicker()->busy(), 10000);
    QCOMPARE(view->gifPicker()->query(), u"cats"_s);
    QCOMPARE(view->gifPicker()->results()->rows().size(), 1);
    QCOMPARE(view->gifPicker()->results()->rows().first().preview,
        u"data:image/gif;base64,"_s + QString::fromLatin1(QByteArray("GIF89a-small").toBase64()));

    view->gifPicker()->pick(u"g1"_s);
    QVERIFY(waitFor(SIGNAL(actionFinished())));
    QVERIFY(!view->gifPickerOpen());
    QVERIFY(view->composerText().isEmpty());
    const TarnMessage sent = view->timeline()->rows().last().message;
    QCOMPARE(sent.attachments.size(), 1);
    QCOMPARE(sent.attachments.first().name, u"happy-cat.gif"_s);

    // Opening it saves it where the desktop can open it.
    QSignalSpy ready(view.get(), &NativeChatView::attachmentReady);
    view->openAttachment(sent.id, sent.attachments.first().id);
    QVERIFY(ready.wait(10000));
    QFile saved(ready.first().first().toUrl().toLocalFile());
    QCOMPARE(QFileInfo(saved).fileName(), u"happy-cat.gif"_s);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QCOMPARE(saved.readAll(), QByteArray("GIF89a-whole"));

    // An image is fetched once for the timeline to draw inline.
    QSignalSpy images(view.get(), &NativeChatView::imageFilesChanged);
    view->fetchImage(sent.id, sent.attachments.first().id);
    view->fetchImage(sent.id, sent.attachments.first().id);
    QVERIFY(images.wait(10000));
    QCOMPARE(images.count(), 1);
    QFile drawn(view->imageFiles().value(sent.attachments.first().id).toUrl().toLocalFile());
    QVERIFY(drawn.open(QIODevice::ReadOnly));
    QCOMPARE(drawn.readAll(), QByteArray("GIF89a-whole"));
}

// Last: the signed-out answer ends the session.
void TestChatView::failuresKeepWhatIsShown()
{
    const QList<ChatRoomRow> rooms = view->rooms()->rows();
    const QList<ChatTimelineRow> rows = view->timeline()->rows();
    const auto answer = [this](int status, const QString &body) {
        workspace->setFault(QJsonObject { { u"method"_s, u"GET"_s }, { u"path"_s, u"/api/rooms"_s },
            { u"status"_s, status }, { u"content_type"_s, u"application/json"_s }, { u"body"_s, body } });
        view->refresh();
        return waitFor(SIGNAL(refreshed()));
    };
    QVERIFY(answer(200, uR"([{"id":"r1","name":"no kind"}])"_s));
    QVERIFY(!view->errorText().isEmpty());
    QCOMPARE(view->rooms()->rows(), rooms);
    QCOMPARE(view->timeline()->rows(), rows);

    QSignalSpy signedOut(view.get(), &NativeChatView::signedOut);
    QVERIFY(answer(401, uR"({"error":"Sign in to continue."})"_s));
    QCOMPARE(signedOut.count(), 1);
    QCOMPARE(view->rooms()->rows(), rooms);
}

QTEST_MAIN(TestChatView)
#include "tst_chatview.moc"
