#include "chat/ChatTestClient.h"
#include "chat/NativeChatView.h"
#include "shell/TarnNavigation.h"
#include "shell/design/NativeTheme.h"
#include "support/QuickItems.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

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

// The chat screen drawn offscreen over the demo workspace, written to by
// keyboard as a person would.
class TestChatScreen : public QObject {
    Q_OBJECT

private slots:
    void sendsByKeyboard();
};

void TestChatScreen::sendsByKeyboard()
{
    QStandardPaths::setTestModeEnabled(true);
    ChatTestClient client;
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
    TarnNavigation navigation(client.settings.get());
    NativeChatView chat(*client.api, navigation, *client.settings);

    NativeTheme theme(*client.settings);
    QQmlEngine engine;
    theme.attach(engine);
    QQuickWindow window;
    window.resize(1000, 700);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Chat\nChatScreen { width: 1000; height: 700 }", QUrl());
    QSignalSpy refreshed(&chat, &NativeChatView::refreshed);
    std::unique_ptr<QObject> made(component.createWithInitialProperties({ { u"chat"_s, QVariant::fromValue(&chat) } }));
    auto *screen = qobject_cast<QQuickItem *>(made.get());
    QVERIFY2(screen, qPrintable(component.errorString()));
    screen->setParentItem(window.contentItem());
    // Once made, the screen loads on its own.
    QVERIFY(refreshed.wait(10000));
    QVERIFY(!chat.selectedRoom().isEmpty());
    QTRY_VERIFY(!tarnNamedItems(screen, u"chatBody"_s).isEmpty());

    QQuickItem *composer = tarnNamedItems(screen, u"chatComposer"_s).value(0);
    QVERIFY(composer);
    window.requestActivate();
    composer->forceActiveFocus();
    QTRY_VERIFY(composer->hasActiveFocus());
    type(window, "first line"_L1);
    QTest::keyClick(&window, Qt::Key_Return, Qt::ShiftModifier);
    type(window, "second line"_L1);
    // Shift+Enter only broke the line.
    QCOMPARE(chat.composerText(), u"first line\nsecond line"_s);
    QVERIFY(!chat.sending());

    QTest::keyClick(&window, Qt::Key_Return);
    QVERIFY(chat.sending());
    QVERIFY(!composer->isEnabled());
    QTRY_VERIFY_WITH_TIMEOUT(tarnTextsOf(tarnNamedItems(screen, u"chatBody"_s)).contains(u"first line\nsecond line"_s), 10000);
    QVERIFY(composer->isEnabled());
    QCOMPARE(composer->property("text").toString(), QString());
    QVERIFY(chat.errorText().isEmpty());
}

QTEST_MAIN(TestChatScreen)
#include "tst_chatscreen.moc"
