#include "inbox/InboxTestClient.h"
#include "inbox/NativeInboxView.h"
#include "shell/design/NativeTheme.h"
#include "support/QuickItems.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <memory>

Q_IMPORT_QML_PLUGIN(PiloTarn_DesignPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_InboxPlugin)

using namespace Qt::StringLiterals;

// The inbox screen drawn offscreen over the demo workspace, used by pointer
// and keyboard as a person would.
class TestInboxScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void composerShowsWhereRepliesGo_data();
    void composerShowsWhereRepliesGo();
    void repliesByKeyboard();
    void cleanupTestCase();

private:
    [[nodiscard]] QList<QQuickItem *> shown(const QString &name) const
    {
        return tarnNamedItems(window.contentItem(), name);
    }
    // Clicks the list's row whose text starts with `title` and waits for its thread.
    [[nodiscard]] bool open(const QString &title);

    InboxTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativeInboxView> inbox;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestInboxScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    inbox = std::make_unique<NativeInboxView>(client.as(u"maren@halvard.example"_s));
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1100, 700);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Inbox\nInboxScreen { width: 1100; height: 700 }", QUrl());
    QSignalSpy refreshed(inbox.get(), &NativeInboxView::refreshed);
    screen.reset(component.createWithInitialProperties({ { u"inbox"_s, QVariant::fromValue(inbox.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    // Once made, the screen loads on its own.
    QVERIFY(refreshed.wait(10'000));
    QTRY_COMPARE(shown(u"inboxThread"_s).size(), inbox->threads()->rowCount());
}

void TestInboxScreen::cleanupTestCase()
{
    screen.reset();
}

bool TestInboxScreen::open(const QString &title)
{
    for (QQuickItem *row : shown(u"inboxThread"_s)) {
        if (!row->property("text").toString().startsWith(title))
            continue;
        QSignalSpy refreshed(inbox.get(), &NativeInboxView::refreshed);
        QTest::mouseClick(&window, Qt::LeftButton, {}, row->mapToScene(QPointF(20, row->height() / 2)).toPoint());
        return refreshed.wait(10'000) && inbox->threadTitle() == title;
    }
    return false;
}

void TestInboxScreen::composerShowsWhereRepliesGo_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("composer");
    QTest::addRow("a web form") << u"lena@example.net"_s << false;
    QTest::addRow("a text") << u"Oakline Studio"_s << true;
}

void TestInboxScreen::composerShowsWhereRepliesGo()
{
    QFETCH(QString, title);
    QFETCH(bool, composer);
    QVERIFY(open(title));
    QTRY_COMPARE(shown(u"inboxEntry"_s).size(), inbox->entries()->rowCount());
    QCOMPARE(shown(u"inboxComposer"_s).size(), composer ? 1 : 0);
    QCOMPARE(shown(u"draftWithPilo"_s).size(), inbox->aiConfigured() ? 1 : 0);
}

void TestInboxScreen::repliesByKeyboard()
{
    QVERIFY(open(u"Brightwater Dental"_s));
    QQuickItem *composer = shown(u"inboxComposer"_s).value(0);
    QVERIFY(composer);
    const int entries = inbox->entries()->rowCount();
    window.requestActivate();
    composer->forceActiveFocus();
    QTRY_VERIFY(composer->hasActiveFocus());
    for (const char key : "Friday works"_L1)
        QTest::keyClick(&window, key);
    QCOMPARE(inbox->composerText(), u"Friday works"_s);
    QSignalSpy finished(inbox.get(), &NativeInboxView::actionFinished);
    QTest::keyClick(&window, Qt::Key_Return);
    QVERIFY(finished.wait(10'000));
    QTRY_COMPARE(shown(u"inboxEntry"_s).size(), entries + 1);
    QCOMPARE(composer->property("text").toString(), QString());
}

QTEST_MAIN(TestInboxScreen)
#include "tst_inboxscreen.moc"
