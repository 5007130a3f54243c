#include "inbox/InboxTestClient.h"
#include "screens/people/NativePayrollView.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// The payroll section's state over a real workspace: the export written to
// the chosen file or refused for an empty period, adjustments typed in, the
// period's status moving on, and someone who is not an owner.
class TestPayrollView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void exports();
    void adjustAndApprove();
    void notForOthers();

private:
    [[nodiscard]] std::unique_ptr<NativePayrollView> loaded(const QString &email);

    InboxTestClient client;
    QTemporaryDir folder;
};

void TestPayrollView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

std::unique_ptr<NativePayrollView> TestPayrollView::loaded(const QString &email)
{
    auto view = std::make_unique<NativePayrollView>(client.as(email));
    QSignalSpy refreshed(view.get(), &NativePayrollView::refreshed);
    view->refresh();
    return refreshed.wait() ? std::move(view) : nullptr;
}

void TestPayrollView::exports()
{
    const auto view = loaded(u"maren@halvard.example"_s);
    QVERIFY(view);
    QSignalSpy finished(view.get(), &NativePayrollView::actionFinished);
    const QString path = folder.filePath(u"payroll.csv"_s);
    view->exportTo(QUrl::fromLocalFile(path));
    QVERIFY(finished.wait());
    QCOMPARE(view->exportedTo(), path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> rows = file.readAll().split('\n');
    QCOMPARE(rows.size(), view->lines()->rowCount() + 3); // header, total and the last line end

    QSignalSpy refreshed(view.get(), &NativePayrollView::refreshed);
    view->choosePeriod(u"2025-06-09"_s);
    QVERIFY(refreshed.wait());
    const QString empty = folder.filePath(u"empty.csv"_s);
    view->exportTo(QUrl::fromLocalFile(empty));
    QVERIFY(finished.wait());
    QCOMPARE(view->errorText(), u"No one has hours or adjustments in this period."_s);
    QVERIFY(!QFile::exists(empty));
}

void TestPayrollView::adjustAndApprove()
{
    const auto view = loaded(u"maren@halvard.example"_s);
    QVERIFY(view);
    QSignalSpy refreshed(view.get(), &NativePayrollView::refreshed);
    view->choosePeriod(u"2025-07-07"_s);
    QVERIFY(refreshed.wait());
    view->addAdjustment(u"p-sam"_s, u"Advance"_s, u"12,50"_s);
    QCOMPARE(view->errorText(), u"Type the amount as 12.50, or -12.50 for a deduction."_s);
    QSignalSpy finished(view.get(), &NativePayrollView::actionFinished);
    view->addAdjustment(u"p-sam"_s, u"Advance"_s, u"-12.5"_s);
    QVERIFY(finished.wait());
    QCOMPARE(view->totalText(), u"-$12.50"_s);
    view->act(u"approve"_s);
    QVERIFY(finished.wait());
    QCOMPARE(view->allowedActions(), QStringList({ u"reopen"_s, u"mark-paid"_s }));
    QVERIFY(view->errorText().isEmpty());
}

void TestPayrollView::notForOthers()
{
    const auto view = loaded(u"tomas@halvard.example"_s);
    QVERIFY(view);
    QCOMPARE(view->errorText(), u"Payroll is open to owners only."_s);
    QCOMPARE(view->lines()->rowCount(), 0);
}

QTEST_GUILESS_MAIN(TestPayrollView)
#include "tst_payrollview.moc"
