#include "inbox/InboxTestClient.h"
#include "screens/calls/NativeCallsView.h"
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
Q_IMPORT_QML_PLUGIN(PiloTarn_CallsPlugin)

using namespace Qt::StringLiterals;

// The calls screen drawn offscreen over the demo workspace, used by pointer
// and keyboard as a person would.
class TestCallsScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void filterButtons();
    void notesEditedInPlace();
    void dialledByKeyboard();
    void leadsNarrowedByStatus();
    void cleanupTestCase();

private:
    [[nodiscard]] QList<QQuickItem *> shown(const QString &name) const
    {
        return tarnNamedItems(window.contentItem(), name);
    }
    // Rows as they stand on the screen, the top one first.
    [[nodiscard]] static QList<QQuickItem *> topDown(QList<QQuickItem *> items)
    {
        std::sort(items.begin(), items.end(),
            [](QQuickItem *a, QQuickItem *b) { return a->mapToScene({}).y() < b->mapToScene({}).y(); });
        return items;
    }
    // Whether the rows drawn are the first of the book the view holds, in
    // its order. Rows a filter removed linger until their deferred deletion,
    // so a test waits for this before it reads or clicks a row.
    [[nodiscard]] bool drawnAsHeld() const
    {
        const QList<QQuickItem *> rows = topDown(shown(u"callRow"_s));
        const QList<TarnCall> &held = calls->calls()->rows();
        if (rows.isEmpty() || rows.size() > held.size())
            return false;
        for (qsizetype i = 0; i < rows.size(); ++i) {
            if (rows.at(i)->property("callId").toString() != held.at(i).id)
                return false;
        }
        return true;
    }
    void click(QQuickItem *item, QPointF at = { 10, 10 })
    {
        QTest::mouseClick(&window, Qt::LeftButton, {}, item->mapToScene(at).toPoint());
    }

    InboxTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativeCallsView> calls;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestCallsScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    calls = std::make_unique<NativeCallsView>(client.as(u"maren@halvard.example"_s), *settings);
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1100, 700);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Calls\nCallsScreen { width: 1100; height: 700 }", QUrl());
    QSignalSpy refreshed(calls.get(), &NativeCallsView::refreshed);
    screen.reset(component.createWithInitialProperties({ { u"calls"_s, QVariant::fromValue(calls.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    QVERIFY(refreshed.wait(10'000));
    QTRY_VERIFY(!shown(u"callRow"_s).isEmpty());
    QTRY_VERIFY(!shown(u"leadRow"_s).isEmpty());
}

void TestCallsScreen::cleanupTestCase()
{
    screen.reset();
}

void TestCallsScreen::filterButtons()
{
    const QList<QQuickItem *> missed = shown(u"callsFilter_missed"_s);
    QCOMPARE(missed.size(), 1);
    click(missed.constFirst());
    QCOMPARE(calls->filter(), u"missed"_s);
    // The rows drawn are the missed calls the view holds, in its order.
    for (const TarnCall &call : calls->calls()->rows())
        QVERIFY(call.direction == "in"_L1 && (call.outcome == "missed"_L1 || call.outcome == "voicemail"_L1));
    QTRY_VERIFY(drawnAsHeld());
    click(shown(u"callsFilter_all"_s).constFirst());
    QCOMPARE(calls->filter(), u"all"_s);
    QTRY_VERIFY(drawnAsHeld());
}

void TestCallsScreen::notesEditedInPlace()
{
    QQuickItem *book = shown(u"callBook"_s).constFirst();
    window.update();
    QTRY_VERIFY2(book->width() > 0, "the book is laid out");
    QTRY_VERIFY(drawnAsHeld());
    QQuickItem *row = topDown(shown(u"callRow"_s)).constFirst();
    const QString id = row->property("callId").toString();
    // The notes column starts after the fixed columns; a click there opens its editor.
    click(row, { row->width() - 120, row->height() / 2 });
    QTRY_COMPARE(shown(u"callNotes"_s).size(), 1);
    QQuickItem *field = shown(u"callNotes"_s).constFirst();
    field->setProperty("text", u"Sent the brochure."_s);
    QSignalSpy saved(calls.get(), &NativeCallsView::actionFinished);
    QTest::keyClick(&window, Qt::Key_Return);
    QVERIFY(saved.wait());
    QCOMPARE(calls->calls()->find(id)->notes, u"Sent the brochure."_s);
    QTRY_COMPARE(shown(u"callNotes"_s).size(), 0);
}

void TestCallsScreen::dialledByKeyboard()
{
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    for (const char key : "+1 555 0113"_L1)
        QTest::keyClick(&window, key);
    QCOMPARE(calls->dialText(), u"+1 555 0113"_s);
    QSignalSpy placed(calls.get(), &NativeCallsView::actionFinished);
    QTest::keyClick(&window, Qt::Key_Return);
    QVERIFY(placed.wait());
    QCOMPARE(calls->placedStatus(), u"ringing"_s);
    QTRY_COMPARE(shown(u"placedCall"_s).size(), 1);
    QVERIFY(calls->placedLabel().contains(u"Fernhill Bakery"_s));
}

// The sales screen's Lead Generation over the same state: a status button
// narrows the rows drawn to that status's count.
void TestCallsScreen::leadsNarrowedByStatus()
{
    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Calls\nLeadsScreen { width: 1100; height: 700 }", QUrl());
    std::unique_ptr<QObject> leads(
        component.createWithInitialProperties({ { u"calls"_s, QVariant::fromValue(calls.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(leads.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    item->setZ(1);
    const QVariantMap status = calls->leadStatuses().at(1).toMap();
    const QList<QQuickItem *> button = tarnNamedItems(item, u"leadStatus_"_s + status.value(u"key"_s).toString());
    QCOMPARE(button.size(), 1);
    click(button.constFirst());
    QCOMPARE(calls->leadStatus(), status.value(u"key"_s).toString());
    QTRY_COMPARE(tarnNamedItems(item, u"leadRow"_s).size(), status.value(u"count"_s).toInt());
    calls->setLeadStatus({});
}

QTEST_MAIN(TestCallsScreen)
#include "tst_callsscreen.moc"
