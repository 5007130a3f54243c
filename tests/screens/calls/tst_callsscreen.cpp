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
    QStringList ids;
    for (const TarnCall &call : calls->calls()->rows())
        ids.append(call.id);
    QTRY_VERIFY(!shown(u"callRow"_s).isEmpty());
    const QList<QQuickItem *> rows = topDown(shown(u"callRow"_s));
    for (qsizetype i = 0; i < rows.size(); ++i)
        QCOMPARE(rows.at(i)->property("callId").toString(), ids.at(i));
    click(shown(u"callsFilter_all"_s).constFirst());
    QCOMPARE(calls->filter(), u"all"_s);
}

void TestCallsScreen::notesEditedInPlace()
{
    QQuickItem *book = shown(u"callBook"_s).constFirst();
    window.update();
    QTRY_VERIFY2(book->width() > 0, "the book is laid out");
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

QTEST_MAIN(TestCallsScreen)
#include "tst_callsscreen.moc"
