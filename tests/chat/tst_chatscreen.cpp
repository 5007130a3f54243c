#include "chat/ChatTestClient.h"
#include "chat/NativeChatView.h"
#include "shell/TarnNavigation.h"
#include "shell/design/NativeTheme.h"
#include "support/QuickItems.h"

#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <algorithm>
#include <memory>

Q_IMPORT_QML_PLUGIN(PiloTarn_DesignPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_ChatPlugin)

using namespace Qt::StringLiterals;

namespace {

void type(QWindow &window, QLatin1StringView text)
{
    for (const char key : text)
        QTest::keyClick(&window, key);
}

} // namespace

// The chat screen drawn offscreen over the demo workspace, used by
// keyboard and pointer as a person would.
class TestChatScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void sendsByKeyboard();
    void editsInPlace();
    void repliesInTheThread();
    void searchReplacesTheRoomList();
    void gifCommandShowsThePicker();
    void deletionAsksFirst();
    void stagedFilesShowAndGo();
    void choosingARoomOpensItAndPagesBack();
    void createsChannelFromTheSheet();
    void channelSettingsArchiveAfterAsking();
    void cleanupTestCase();

private:
    [[nodiscard]] QQuickItem *shown(const QString &name) const
    {
        return tarnNamedItems(window.contentItem(), name).value(0);
    }
    [[nodiscard]] QStringList texts(const QString &name) const
    {
        return tarnTextsOf(tarnNamedItems(window.contentItem(), name));
    }
    // Types into a composer and presses Enter.
    void write(QQuickItem *composer, QLatin1StringView text)
    {
        window.requestActivate();
        composer->forceActiveFocus();
        QTRY_VERIFY(composer->hasActiveFocus());
        type(window, text);
        QTest::keyClick(&window, Qt::Key_Return);
    }

    ChatTestClient client;
    std::unique_ptr<TarnNavigation> navigation;
    std::unique_ptr<NativeChatView> chat;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestChatScreen::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
    navigation = std::make_unique<TarnNavigation>(client.settings.get());
    chat = std::make_unique<NativeChatView>(*client.api, *navigation, *client.settings);
    theme = std::make_unique<NativeTheme>(*client.settings);
    theme->attach(engine);
    window.resize(1000, 700);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Chat\nChatScreen { width: 1000; height: 700 }", QUrl());
    QSignalSpy refreshed(chat.get(), &NativeChatView::refreshed);
    screen.reset(component.createWithInitialProperties({ { u"chat"_s, QVariant::fromValue(chat.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    // Once made, the screen loads on its own.
    QVERIFY(refreshed.wait(10000));
    QVERIFY(!chat->selectedRoom().isEmpty());
    QTRY_VERIFY(shown(u"chatBody"_s));
}

void TestChatScreen::cleanupTestCase()
{
    screen.reset();
}

void TestChatScreen::sendsByKeyboard()
{
    QQuickItem *composer = shown(u"chatComposer"_s);
    QVERIFY(composer);
    window.requestActivate();
    composer->forceActiveFocus();
    QTRY_VERIFY(composer->hasActiveFocus());
    type(window, "first line"_L1);
    QTest::keyClick(&window, Qt::Key_Return, Qt::ShiftModifier);
    type(window, "second line"_L1);
    // Shift+Enter only broke the line.
    QCOMPARE(chat->composerText(), u"first line\nsecond line"_s);
    QVERIFY(!chat->sending());

    QTest::keyClick(&window, Qt::Key_Return);
    QVERIFY(chat->sending());
    QVERIFY(!composer->isEnabled());
    QTRY_VERIFY_WITH_TIMEOUT(
        tarnTextsOf(tarnNamedItems(window.contentItem(), u"chatBody"_s)).contains(u"first line\nsecond line"_s), 10000);
    QVERIFY(composer->isEnabled());
    // Typing goes on where it was.
    QTRY_VERIFY(composer->hasActiveFocus());
    QCOMPARE(composer->property("text").toString(), QString());
    QVERIFY(chat->errorText().isEmpty());
}

// Follows the message sent above, the owner's own.
void TestChatScreen::editsInPlace()
{
    const QString id = chat->timeline()->rows().last().message.id;
    const auto editor = [this] {
        const QList<QQuickItem *> editors = tarnNamedItems(window.contentItem(), u"chatEditor"_s);
        const auto open = std::find_if(editors.begin(), editors.end(), [](QQuickItem *e) { return e->isVisible(); });
        return open == editors.end() ? nullptr : *open;
    };
    QVERIFY(!editor());
    chat->beginEdit(id);
    QTRY_VERIFY(editor() && editor()->hasActiveFocus());
    QCOMPARE(editor()->property("text").toString(), u"first line\nsecond line"_s);

    // Escape leaves the message as it was.
    type(window, " and more"_L1);
    QCOMPARE(chat->editText(), u"first line\nsecond line and more"_s);
    QTest::keyClick(&window, Qt::Key_Escape);
    QTRY_VERIFY(!editor());
    QVERIFY(chat->editingId().isEmpty());
    QVERIFY(texts(u"chatBody"_s).contains(u"first line\nsecond line"_s));

    chat->beginEdit(id);
    QTRY_VERIFY(editor() && editor()->hasActiveFocus());
    type(window, "!"_L1);
    QTest::keyClick(&window, Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(texts(u"chatBody"_s).contains(u"first line\nsecond line!"_s), 10000);
    QVERIFY(!editor());
}

void TestChatScreen::stagedFilesShowAndGo()
{
    QVERIFY(!shown(u"chatSend"_s)->isEnabled());
    QTemporaryDir folder;
    QFile file(folder.filePath(u"notes.txt"_s));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("some notes") > 0);
    file.close();
    QVERIFY(chat->stageFile(file.fileName()));
    // A file alone is worth sending; its chip takes it back out.
    QTRY_VERIFY(texts(u"stagedFile"_s).contains(u"notes.txt"_s));
    QVERIFY(shown(u"chatSend"_s)->isEnabled());
    QMetaObject::invokeMethod(shown(u"stagedFile"_s), "clicked");
    QTRY_VERIFY(chat->stagedFiles().isEmpty());
    QVERIFY(!shown(u"stagedFile"_s));
    QVERIFY(!shown(u"chatSend"_s)->isEnabled());
}

void TestChatScreen::choosingARoomOpensItAndPagesBack()
{
    const QList<ChatRoomRow> &rooms = chat->rooms()->rows();
    const auto sales
        = std::find_if(rooms.begin(), rooms.end(), [](const ChatRoomRow &r) { return r.room.name == "sales"_L1; });
    QVERIFY(sales != rooms.end());
    QQuickItem *row = nullptr;
    for (QQuickItem *item : tarnNamedItems(window.contentItem(), u"chatRoom"_s)) {
        if (item->property("text") == u"# sales"_s)
            row = item;
    }
    QVERIFY(row);
    QMetaObject::invokeMethod(row, "clicked");
    QTRY_COMPARE(chat->selectedRoom(), sales->room.id);
    QTRY_COMPARE(shown(u"chatRoomTitle"_s)->property("text").toString(), u"# sales"_s);
    QTRY_VERIFY_WITH_TIMEOUT(chat->timeline()->rowCount() == 50 && chat->hasMore(), 10000);

    // Reaching the top loads the older messages in front.
    QQuickItem *timeline = shown(u"chatTimeline"_s);
    QVERIFY(timeline);
    QTRY_VERIFY(timeline->property("atYEnd").toBool());
    // Scrolled up until the top stays the top (rows above settle their heights as they are made).
    const auto scrolledToTop = [&] {
        timeline->setProperty("contentY", timeline->property("originY"));
        return !chat->hasMore();
    };
    QTRY_VERIFY_WITH_TIMEOUT(scrolledToTop(), 10000);
    QVERIFY(chat->timeline()->rowCount() > 50);
    QCOMPARE(chat->timeline()->rows().first().message.seq, 1);
}

void TestChatScreen::createsChannelFromTheSheet()
{
    const QString before = chat->selectedRoom();
    QQuickItem *newRoom = shown(u"newRoom"_s);
    QVERIFY(newRoom);
    QMetaObject::invokeMethod(newRoom, "clicked");
    QTRY_VERIFY(shown(u"newChannel"_s));
    QMetaObject::invokeMethod(shown(u"newChannel"_s), "clicked");
    QTRY_VERIFY(shown(u"newChannelName"_s));
    QQuickItem *create = shown(u"newChannelCreate"_s);
    QVERIFY(create);
    // A channel needs a name.
    QVERIFY(!create->isEnabled());
    shown(u"newChannelName"_s)->setProperty("text", u"launch-plans"_s);
    QVERIFY(create->isEnabled());
    QMetaObject::invokeMethod(create, "clicked");

    // The new channel is made, listed and opened.
    QTRY_VERIFY_WITH_TIMEOUT(chat->selectedRoom() != before, 10000);
    QTRY_COMPARE(shown(u"chatRoomTitle"_s)->property("text").toString(), u"# launch-plans"_s);
    QVERIFY(!shown(u"newChannelName"_s));
    QVERIFY(chat->errorText().isEmpty());
}

// Follows the channel made above.
void TestChatScreen::channelSettingsArchiveAfterAsking()
{
    const QString room = chat->selectedRoom();
    QTRY_VERIFY(shown(u"chatRoomSettings"_s));
    QMetaObject::invokeMethod(shown(u"chatRoomSettings"_s), "clicked");
    // The sheet shows the channel once its settings have loaded.
    QTRY_VERIFY_WITH_TIMEOUT(shown(u"roomSettingsName"_s), 10000);
    QCOMPARE(shown(u"roomSettingsName"_s)->property("text").toString(), u"launch-plans"_s);
    QMetaObject::invokeMethod(shown(u"roomSettingsArchive"_s), "clicked");
    QTRY_VERIFY(shown(u"sheetConfirm"_s));
    QVERIFY(chat->selectedRoom() == room);
    QMetaObject::invokeMethod(shown(u"sheetConfirm"_s), "clicked");
    QTRY_VERIFY_WITH_TIMEOUT(chat->selectedRoom() != room, 10000);
    const QList<ChatRoomRow> &rooms = chat->rooms()->rows();
    QVERIFY(std::none_of(rooms.begin(), rooms.end(), [&room](const ChatRoomRow &r) { return r.room.id == room; }));
}

void TestChatScreen::repliesInTheThread()
{
    const QString parent = chat->timeline()->rows().last().message.id;
    chat->openThread(parent);
    QTRY_VERIFY(shown(u"chatThread"_s));
    QQuickItem *composer = shown(u"chatThreadComposer"_s);
    QVERIFY(composer);
    write(composer, "in the thread"_L1);
    QTRY_VERIFY_WITH_TIMEOUT(texts(u"chatBody"_s).count(u"in the thread"_s) == 1, 10000);
    // The reply clears its box once it shows, and the parent counts it.
    QTRY_COMPARE(composer->property("text").toString(), QString());
    QTRY_VERIFY(texts(u"replyCount"_s).contains(u"1 reply"_s));
    chat->closeThread();
    QTRY_VERIFY(!shown(u"chatThread"_s));
}

void TestChatScreen::searchReplacesTheRoomList()
{
    QQuickItem *field = shown(u"chatSearch"_s);
    QVERIFY(field);
    field->setProperty("text", u"second line"_s);
    QCOMPARE(chat->searchText(), u"second line"_s);
    QTRY_VERIFY_WITH_TIMEOUT(chat->searchHits()->rowCount() >= 1, 10000);
    QVERIFY(shown(u"chatSearchHits"_s));
    QVERIFY(!shown(u"chatRooms"_s));
    field->setProperty("text", QString());
    QTRY_VERIFY(shown(u"chatRooms"_s));
}

void TestChatScreen::gifCommandShowsThePicker()
{
    // This workspace has no GIF provider: the picker shows the service's note.
    write(shown(u"chatComposer"_s), "/gif dogs"_L1);
    QVERIFY(chat->gifPickerOpen());
    QTRY_VERIFY_WITH_TIMEOUT(shown(u"gifNote"_s), 10000);
    QCOMPARE(texts(u"gifNote"_s), QStringList { chat->gifPicker()->message() });
    QTest::keyClick(&window, Qt::Key_Escape);
    QTRY_VERIFY(!chat->gifPickerOpen());
    QCOMPARE(chat->composerText(), u"/gif dogs"_s);
    chat->setComposerText(QString());
}

void TestChatScreen::deletionAsksFirst()
{
    const QString body = chat->timeline()->rows().last().message.body;
    const QList<QQuickItem *> bodies = tarnNamedItems(window.contentItem(), u"chatBody"_s);
    const auto last = std::find_if(
        bodies.begin(), bodies.end(), [&body](QQuickItem *item) { return item->property("text") == body; });
    QVERIFY(last != bodies.end());
    // Its actions show while the pointer is over the message.
    QTest::mouseMove(&window, (*last)->mapToScene(QPointF(4, 4)).toPoint());
    QTRY_VERIFY(shown(u"deleteMessage"_s));
    QMetaObject::invokeMethod(shown(u"deleteMessage"_s), "clicked");
    QTRY_VERIFY(shown(u"sheetConfirm"_s));
    QCOMPARE(chat->timeline()->rows().last().message.deleted_at, std::nullopt);
    QMetaObject::invokeMethod(shown(u"sheetConfirm"_s), "clicked");
    QTRY_VERIFY_WITH_TIMEOUT(chat->timeline()->rows().last().message.deleted_at.has_value(), 10000);
    QTRY_VERIFY(texts(u"chatBody"_s).contains(u"This message was deleted."_s));
    QVERIFY(!texts(u"chatBody"_s).contains(body));
}

QTEST_MAIN(TestChatScreen)
#include "tst_chatscreen.moc"
