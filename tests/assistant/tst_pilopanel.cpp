#include "TarnWaitFor.h"
#include "assistant/AgentTestPerson.h"
#include "assistant/TarnPiloConversation.h"
#include "shell/design/NativeTheme.h"
#include "support/QuickItems.h"
#include "support/TestWorkspace.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <memory>

Q_IMPORT_QML_PLUGIN(PiloTarn_DesignPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_AssistantPlugin)

using namespace Qt::StringLiterals;

struct PanelRow {
    QString agent;
    bool notConnectedShown;
    bool composerOpen;
};
Q_DECLARE_METATYPE(PanelRow)

// The side panel drawn offscreen over the conversation of a real workspace.
class TestPiloPanel : public QObject {
    Q_OBJECT

private slots:
    void panel_data();
    void panel();
};

void TestPiloPanel::panel_data()
{
    QTest::addColumn<PanelRow>("row");
    QTest::addRow("online") << PanelRow { u"online"_s, false, true };
    QTest::addRow("offline") << PanelRow { u"offline"_s, true, false };
}

void TestPiloPanel::panel()
{
    QFETCH(PanelRow, row);
    TestWorkspace workspace({ u"--agent"_s, row.agent });
    QVERIFY2(workspace.isRunning(), qPrintable(workspace.error()));
    const AgentTestPerson owner = AgentTestPerson::signIn(workspace, u"maren@halvard.example"_s);
    TarnPiloConversation conversation(*owner.api);
    tarnWaitFor(conversation.refresh(false));

    QTemporaryDir folder;
    QSettings preferences(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    NativeTheme theme(preferences);
    QQmlEngine engine;
    theme.attach(engine);
    QQuickWindow window;
    window.resize(400, 700);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Assistant\nPiloPanel { width: 400; height: 700 }", QUrl());
    std::unique_ptr<QObject> made(
        component.createWithInitialProperties({ { u"conversation"_s, QVariant::fromValue(&conversation) } }));
    auto *panel = qobject_cast<QQuickItem *>(made.get());
    QVERIFY2(panel, qPrintable(component.errorString()));
    panel->setParentItem(window.contentItem());

    // Past replies stay readable whether or not the agent is there.
    QTRY_COMPARE(tarnTextsOf(tarnNamedItems(panel, u"piloStatus"_s)), QStringList({ u"Done"_s, u"Done"_s }));
    QCOMPARE(tarnNamedItems(panel, u"piloNotConnected"_s).size(), row.notConnectedShown ? 1 : 0);
    QQuickItem *composer = tarnNamedItems(panel, u"piloComposer"_s).value(0);
    QVERIFY(composer);
    QCOMPARE(composer->isEnabled(), row.composerOpen);
    if (!row.composerOpen)
        return;

    composer->setProperty("text", u"Where am I signed in?"_s);
    QQuickItem *send = tarnNamedItems(panel, u"piloSend"_s).value(0);
    QVERIFY(send && send->isEnabled());
    QMetaObject::invokeMethod(send, "clicked");
    conversation.setActive(true);
    QTRY_COMPARE_WITH_TIMEOUT(
        tarnTextsOf(tarnNamedItems(panel, u"piloStatus"_s)), QStringList({ u"Done"_s, u"Done"_s, u"Done"_s }), 10000);
    QCOMPARE(composer->property("text").toString(), QString());
}

QTEST_MAIN(TestPiloPanel)
#include "tst_pilopanel.moc"
