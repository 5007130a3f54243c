#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/workplan/NativeWorkPlanView.h"
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
Q_IMPORT_QML_PLUGIN(PiloTarn_WorkPlanPlugin)

using namespace Qt::StringLiterals;

// The work plan drawn offscreen over the demo workspace as its owner, used
// by pointer and keyboard as a person would.
class TestWorkPlanScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void tickingCompletes();
    void personChosenShowsTheirNotes();
    void newAdminTaskFromTheKeyboard();
    void cleanupTestCase();

private:
    [[nodiscard]] QQuickItem *only(const QString &name) const
    {
        const QList<QQuickItem *> items = tarnNamedItems(window.contentItem(), name);
        return items.size() == 1 ? items.constFirst() : nullptr;
    }
    void click(QQuickItem *item)
    {
        QTest::mouseClick(
            &window, Qt::LeftButton, {}, item->mapToScene({ item->width() / 2, item->height() / 2 }).toPoint());
    }
    [[nodiscard]] bool acted(QQuickItem *item)
    {
        QSignalSpy done(view.get(), &NativeWorkPlanView::actionFinished);
        click(item);
        return !done.isEmpty() || done.wait();
    }

    InboxTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativeWorkPlanView> view;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestWorkPlanScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    TarnAPI &api = client.as(u"maren@halvard.example"_s);
    (void)tarnWaitFor(api.refreshSession());
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    view = std::make_unique<NativeWorkPlanView>(api);
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1100, 760);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.WorkPlan\nWorkPlanScreen { width: 1100; height: 760 }", QUrl());
    QSignalSpy refreshed(view.get(), &NativeWorkPlanView::refreshed);
    screen.reset(component.createWithInitialProperties({ { u"view"_s, QVariant::fromValue(view.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    QVERIFY(refreshed.wait(10'000));
}

void TestWorkPlanScreen::cleanupTestCase()
{
    screen.reset();
}

void TestWorkPlanScreen::tickingCompletes()
{
    const WorkPlanRow first = view->entries()->rows().constFirst();
    QTRY_VERIFY(only(u"done_"_s + first.id));
    QVERIFY(acted(only(u"done_"_s + first.id)));
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->entries()->rows().constFirst().entry.done, !first.entry.done);
    QCOMPARE(only(u"done_"_s + first.id)->property("checked").toBool(), !first.entry.done);
}

void TestWorkPlanScreen::personChosenShowsTheirNotes()
{
    QTRY_VERIFY(only(u"person_p-priya"_s));
    click(only(u"person_p-priya"_s));
    QCOMPARE(view->person(), u"p-priya"_s);
    QTRY_VERIFY(only(u"coachNotes"_s));
    only(u"coachDraft"_s)->setProperty("text", u"Lovely work on the booking form."_s);
    QVERIFY(acted(only(u"coachAdd"_s)));
    QCOMPARE(view->coachNotes()->rows().constLast().body, u"Lovely work on the booking form."_s);

    click(only(u"everyone"_s));
    QCOMPARE(view->person(), QString());
    QTRY_VERIFY(!only(u"coachNotes"_s));
}

void TestWorkPlanScreen::newAdminTaskFromTheKeyboard()
{
    const int planned = view->planned();
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    QTRY_VERIFY(only(u"workEntryForm"_s));
    // The title has the focus: Enter in it saves.
    only(u"entryTitle"_s)->setProperty("text", u"Renew the insurance"_s);
    QSignalSpy done(view.get(), &NativeWorkPlanView::actionFinished);
    QTest::keyClick(&window, Qt::Key_Return);
    QVERIFY(done.wait());
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->planned(), planned + 1);
    QVERIFY(!only(u"workEntryForm"_s));
}

QTEST_MAIN(TestWorkPlanScreen)
#include "tst_workplanscreen.moc"
