#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/people/NativeTimeClockView.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;

struct CorrectionRow {
    QString as;
    QString clockOut; // local, as typed; empty: the entry's own
    QString reason;
    QString errorText; // empty: saved
};

QVariant cell(const QAbstractItemModel &model, int row, const char *role)
{
    return model.data(model.index(row, 0), model.roleNames().key(role));
}

} // namespace

Q_DECLARE_METATYPE(CorrectionRow)

// The time clock section's state over a real workspace: one's own week and
// clock, an owner looking through another's weeks, and corrections checked
// here and by the service.
class TestTimeClockView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void clockingInAndOut();
    void ownerBrowsesAnotherPersonsWeeks();
    void corrections_data();
    void corrections();

private:
    [[nodiscard]] std::unique_ptr<NativeTimeClockView> loaded(const QString &email, const QString &person = {});

    InboxTestClient client;
};

void TestTimeClockView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

std::unique_ptr<NativeTimeClockView> TestTimeClockView::loaded(const QString &email, const QString &person)
{
    TarnAPI &api = client.as(email);
    (void)tarnWaitFor(api.refreshSession());
    auto view = std::make_unique<NativeTimeClockView>(api);
    QSignalSpy refreshed(view.get(), &NativeTimeClockView::refreshed);
    if (person.isEmpty())
        view->refresh();
    else
        view->setPersonId(person);
    if (!refreshed.wait())
        return {};
    return view;
}

void TestTimeClockView::clockingInAndOut()
{
    const auto view = loaded(u"sam@halvard.example"_s);
    QVERIFY(view);
    QCOMPARE(view->days()->rowCount(), 7);
    QVERIFY(view->ownClock());
    QVERIFY(!view->canCorrect());
    QVERIFY(!view->clockedIn());
    const int before = view->entries()->rowCount();
    QSignalSpy finished(view.get(), &NativeTimeClockView::actionFinished);
    view->clockInOrOut();
    QVERIFY(finished.wait());
    QVERIFY(view->clockedIn());
    QCOMPARE(view->entries()->rowCount(), before + 1);
    QVERIFY(cell(*view->entries(), before, "open").toBool());
    view->clockInOrOut();
    QVERIFY(finished.wait());
    QVERIFY(!view->clockedIn());
    QVERIFY(!cell(*view->entries(), before, "open").toBool());
    QVERIFY(view->errorText().isEmpty());
}

void TestTimeClockView::ownerBrowsesAnotherPersonsWeeks()
{
    const auto view = loaded(maren, u"p-jonah"_s);
    QVERIFY(view);
    QCOMPARE(view->personName(), u"Jonah Whitfield"_s);
    QVERIFY(view->clockedIn());
    QSignalSpy refreshed(view.get(), &NativeTimeClockView::refreshed);
    view->moveWeek(-1);
    QVERIFY(refreshed.wait());
    QVERIFY(view->entries()->rowCount() >= 5);
    // Jonah's Sunday late shift runs into Monday: last week's Sunday and
    // this week's Monday each hold a part of it.
    QVERIFY(cell(*view->days(), 6, "worked").toBool());
    QVERIFY(view->totalText() != "0:00"_L1);
}

void TestTimeClockView::corrections_data()
{
    QTest::addColumn<CorrectionRow>("row");
    const QString reason = u"Forgot to clock out"_s;
    // An empty clock-out keeps the entry's own; the times stay in the shown week.
    QTest::addRow("owner corrects") << CorrectionRow { maren, {}, reason, {} };
    QTest::addRow("no reason, not sent") << CorrectionRow { maren, {}, u" "_s,
        u"Say why the entry is being corrected."_s };
    QTest::addRow("not a time") << CorrectionRow { maren, u"tomorrow"_s, reason,
        u"The clock-out time is not a time."_s };
    QTest::addRow("refused by the service")
        << CorrectionRow { u"tomas@halvard.example"_s, {}, reason, u"Only an owner corrects the time clock."_s };
}

void TestTimeClockView::corrections()
{
    QFETCH(CorrectionRow, row);
    const auto view = loaded(row.as, row.as == maren ? u"p-tomas"_s : QString());
    QVERIFY(view);
    QSignalSpy refreshed(view.get(), &NativeTimeClockView::refreshed);
    view->moveWeek(-1);
    QVERIFY(refreshed.wait());
    const NativeTimeEntryModel &entries = *view->entries();
    const QString out = row.clockOut.isEmpty() ? cell(entries, 0, "clockOutText").toString() : row.clockOut;
    QSignalSpy finished(view.get(), &NativeTimeClockView::actionFinished);
    view->correctEntry(
        cell(entries, 0, "entryId").toString(), cell(entries, 0, "clockInText").toString(), out, row.reason);
    if (view->errorText().isEmpty())
        QVERIFY(finished.wait());
    QCOMPARE(view->errorText(), row.errorText);
    if (row.errorText.isEmpty())
        QCOMPARE(cell(entries, 0, "correction").toString(), u"Corrected by Maren Holt: "_s + row.reason);
}

QTEST_GUILESS_MAIN(TestTimeClockView)
#include "tst_timeclockview.moc"
