#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/people/NativePeopleView.h"
#include "screens/people/TarnPeopleCalls.h"
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
Q_IMPORT_QML_PLUGIN(PiloTarn_PeoplePlugin)

using namespace Qt::StringLiterals;

// The people screen drawn offscreen over the demo workspace as its owner:
// each section's page loads its state, its buttons reach the state, and an
// empty pay period says so instead of offering an export.
class TestPeopleScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void timeClockClocksInAndCorrects();
    void payrollShowsLinesAndEmptyPeriods();
    void hrRecordSavedFromItsForm();
    void hrOpensAPersonsTimeClock();
    void memberSeesRecordsWithoutContacts();
    void cleanupTestCase();

private:
    [[nodiscard]] QQuickItem *named(const QString &name) const;
    void click(const QString &name);

    InboxTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativePeopleView> people;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestPeopleScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    TarnAPI &api = client.as(u"maren@halvard.example"_s);
    (void)tarnWaitFor(api.refreshSession());
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    people = std::make_unique<NativePeopleView>(api);
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1100, 800);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.People\nPeopleScreen { width: 1100; height: 800 }", QUrl());
    QSignalSpy refreshed(people->timeClock(), &NativeTimeClockView::refreshed);
    screen.reset(component.createWithInitialProperties(
        { { u"people"_s, QVariant::fromValue(people.get()) }, { u"section"_s, u"Time clock"_s } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    QVERIFY(refreshed.wait(10'000));
}

void TestPeopleScreen::cleanupTestCase()
{
    screen.reset();
}

QQuickItem *TestPeopleScreen::named(const QString &name) const
{
    const QList<QQuickItem *> items = tarnNamedItems(window.contentItem(), name);
    return items.size() == 1 ? items.constFirst() : nullptr;
}

void TestPeopleScreen::click(const QString &name)
{
    QTRY_VERIFY2(named(name), qPrintable(name));
    QQuickItem *item = named(name);
    QTest::mouseClick(
        &window, Qt::LeftButton, {}, item->mapToScene({ item->width() / 2, item->height() / 2 }).toPoint());
}

void TestPeopleScreen::timeClockClocksInAndCorrects()
{
    NativeTimeClockView *clock = people->timeClock();
    QTRY_COMPARE(named(u"timeClockDays"_s)->childItems().size(), 8); // seven days and the Repeater
    const QDate monday = clock->monday();
    QSignalSpy weekRead(clock, &NativeTimeClockView::refreshed);
    click(u"weekBack"_s);
    QVERIFY(weekRead.wait());
    QCOMPARE(clock->monday(), monday.addDays(-7));
    QVERIFY(clock->entryCount() >= 5); // the demo's weekday shifts
    click(u"weekNow"_s);
    QVERIFY(weekRead.wait());
    QCOMPARE(clock->monday(), monday);
    const bool wasIn = clock->clockedIn();
    QSignalSpy finished(clock, &NativeTimeClockView::actionFinished);
    click(u"clockButton"_s);
    QVERIFY(finished.wait());
    QCOMPARE(clock->clockedIn(), !wasIn);
    QCOMPARE(named(u"clockButton"_s)->property("text").toString(), wasIn ? u"Clock in"_s : u"Clock out"_s);

    // The owner corrects the first entry through its sheet; the reason shows under it.
    const QString first = clock->entries()->rows().constFirst().id;
    click(u"correct_"_s + first);
    QObject *sheet = screen->findChild<QObject *>(u"correctionSheet"_s);
    QVERIFY(sheet);
    QTRY_VERIFY(sheet->property("opened").toBool());
    QQuickItem *reason = tarnNamedItems(window.contentItem(), u"correctionReason"_s).value(0);
    QVERIFY(reason);
    reason->setProperty("text", u"Forgot to clock out"_s);
    click(u"sheetConfirm"_s);
    QVERIFY(finished.wait());
    QCOMPARE(clock->errorText(), QString());
    QVERIFY(clock->entries()->rows().constFirst().edit_reason == u"Forgot to clock out"_s);
}

void TestPeopleScreen::payrollShowsLinesAndEmptyPeriods()
{
    NativePayrollView *payroll = people->payroll();
    QSignalSpy refreshed(payroll, &NativePayrollView::refreshed);
    screen->setProperty("section", u"Payroll"_s);
    QVERIFY(refreshed.wait());
    QTRY_VERIFY(named(u"payrollLines"_s));
    QVERIFY(named(u"payrollExport"_s)->isEnabled());
    QVERIFY(!named(u"payrollEmpty"_s));

    // An adjustment typed into its sheet lands on the line; its bin takes it off again.
    const auto samsAdjustments = [payroll] { return payroll->lines()->rows().at(4).adjustments; };
    QCOMPARE(payroll->lines()->rows().at(4).person_id, u"p-sam"_s);
    const qsizetype before = samsAdjustments().size();
    QSignalSpy finished(payroll, &NativePayrollView::actionFinished);
    click(u"adjust_p-sam"_s);
    QObject *sheet = screen->findChild<QObject *>(u"adjustmentSheet"_s);
    QTRY_VERIFY(sheet->property("opened").toBool());
    named(u"adjustmentLabel"_s)->setProperty("text", u"Mileage"_s);
    named(u"adjustmentAmount"_s)->setProperty("text", u"18.40"_s);
    click(u"sheetConfirm"_s);
    QVERIFY(finished.wait());
    QCOMPARE(samsAdjustments().size(), before + 1);
    QCOMPARE(samsAdjustments().constLast().amount, 1840);
    click(u"removeAdjustment_"_s + samsAdjustments().constLast().id);
    QVERIFY(finished.wait());
    QCOMPARE(samsAdjustments().size(), before);

    payroll->choosePeriod(u"2025-06-09"_s);
    QVERIFY(refreshed.wait());
    QTRY_VERIFY(named(u"payrollEmpty"_s));
    QVERIFY(!named(u"payrollLines"_s));
    QVERIFY(!named(u"payrollExport"_s)->isEnabled());
}

void TestPeopleScreen::hrRecordSavedFromItsForm()
{
    NativeHRView *hr = people->hr();
    QSignalSpy refreshed(hr, &NativeHRView::refreshed);
    screen->setProperty("section", u"HR"_s);
    QVERIFY(refreshed.wait());
    click(u"hr_p-sam"_s);
    QCOMPARE(hr->selectedId(), u"p-sam"_s);
    QQuickItem *title = named(u"hrJobTitle"_s);
    QTRY_COMPARE(title->property("text").toString(), u"Designer"_s);

    QSignalSpy finished(hr, &NativeHRView::actionFinished);
    title->setProperty("text", u"Lead designer"_s);
    click(u"hrSave"_s);
    QVERIFY(finished.wait());
    QCOMPARE(hr->errorText(), QString());
    QCOMPARE(hr->selected().value(u"jobTitle"_s).toString(), u"Lead designer"_s);

    // Saved elsewhere first: the form shows that change, and the refusal says whose.
    const TarnHRRecord &sam = hr->records()->rows().at(4);
    QCOMPARE(sam.id, u"p-sam"_s);
    const TarnHRRecordEdit theirs { u"Art director"_s, u"part-time"_s, u"2023-04-17"_s, {}, {}, sam.version };
    (void)tarnWaitFor(TarnPeopleCalls::updateHRRecord(client.as(u"maren@halvard.example"_s), u"p-sam"_s, theirs));
    title->setProperty("text", u"Mine"_s);
    click(u"hrSave"_s);
    QVERIFY(finished.wait());
    QCOMPARE(hr->errorText(), u"Maren Holt changed this record in the meantime; it now shows their change."_s);
    QCOMPARE(title->property("text").toString(), u"Art director"_s);

    // Read again with nothing changed, the list keeps its rows.
    QSignalSpy reset(hr->records(), &QAbstractItemModel::modelReset);
    QSignalSpy removed(hr->records(), &QAbstractItemModel::rowsRemoved);
    hr->refresh();
    QVERIFY(refreshed.wait());
    QCOMPARE(reset.count() + removed.count(), 0);
}

void TestPeopleScreen::hrOpensAPersonsTimeClock()
{
    QSignalSpy opened(screen.get(), SIGNAL(openSection(QString)));
    click(u"hrTimeClock"_s);
    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened.at(0).at(0).toString(), u"Time clock"_s);
    QCOMPARE(people->timeClock()->personId(), u"p-sam"_s);

    // Their week, which only they clock in and out of; "My clock" returns to one's own.
    QSignalSpy refreshed(people->timeClock(), &NativeTimeClockView::refreshed);
    screen->setProperty("section", u"Time clock"_s);
    QVERIFY(refreshed.wait());
    QTRY_COMPARE(people->timeClock()->personName(), u"Sam Okoro"_s);
    QVERIFY(!named(u"clockButton"_s));
    click(u"ownClock"_s);
    QTRY_VERIFY(named(u"clockButton"_s));
    QCOMPARE(people->timeClock()->personName(), u"Maren Holt"_s);
}

void TestPeopleScreen::memberSeesRecordsWithoutContacts()
{
    // A second screen, a member's, in place of the owner's.
    auto *owners = qobject_cast<QQuickItem *>(screen.get());
    owners->setVisible(false);
    TarnAPI &api = client.as(u"priya@halvard.example"_s);
    (void)tarnWaitFor(api.refreshSession());
    NativePeopleView member(api);
    QQmlComponent component(&engine);
    component.setData("import PiloTarn.People\nPeopleScreen { width: 1100; height: 800 }", QUrl());
    QSignalSpy refreshed(member.hr(), &NativeHRView::refreshed);
    std::unique_ptr<QObject> theirs(
        component.createWithInitialProperties({ { u"people"_s, QVariant::fromValue(&member) } }));
    qobject_cast<QQuickItem *>(theirs.get())->setParentItem(window.contentItem());
    QVERIFY(refreshed.wait());
    QTRY_VERIFY(named(u"hr_p-sam"_s));
    QCOMPARE(member.hr()->records()->rowCount(), 6);
    for (const TarnHRRecord &record : member.hr()->records()->rows())
        QVERIFY(!record.phone && !record.emergency_contact);
    for (const QString &ownersOnly : { u"hrSave"_s, u"hrPhone"_s, u"hrEmergency"_s, u"hrTimeClock"_s })
        QVERIFY2(!named(ownersOnly), qPrintable(ownersOnly));
    QCOMPARE(named(u"hrJobTitle"_s)->property("readOnly").toBool(), true);
    theirs.reset();
    owners->setVisible(true);
}

QTEST_MAIN(TestPeopleScreen)
#include "tst_peoplescreen.moc"
