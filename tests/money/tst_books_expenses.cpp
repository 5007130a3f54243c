#include "money/MoneyTestSession.h"
#include "money/NativeBooksExpenses.h"

#include <QDate>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

// The Expenses page over the demo year, whose register runs past one page.
class TestBooksExpenses : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void yearByAccount();
};

void TestBooksExpenses::yearByAccount()
{
    MoneyTestSession session;
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    NativeBooksExpenses expenses(*session.api);
    QSignalSpy changed(&expenses, &NativeBooksExpenses::changed);
    const QDate today = QDate::currentDate();
    expenses.load(today.addYears(-1).toString(Qt::ISODate), today.toString(Qt::ISODate));
    while (expenses.loading())
        QVERIFY(changed.wait());
    QCOMPARE(expenses.error(), QString());

    // Rent, software, supplies and payroll each month: four accounts, and
    // about 48 lines, where the register's first page alone holds about 30.
    QAbstractListModel *groups = expenses.byAccount();
    QCOMPARE(groups->rowCount(), 4);
    int lines = 0;
    for (int row = 0; row < groups->rowCount(); ++row)
        lines += groups->data(groups->index(row), groups->roleNames().key("count")).toInt();
    QCOMPARE(expenses.rows()->rowCount(), lines);
    QVERIFY(lines > 40);
    QCOMPARE(groups->data(groups->index(0), groups->roleNames().key("label")).toString(), u"Payroll"_s);
}

QTEST_GUILESS_MAIN(TestBooksExpenses)
#include "tst_books_expenses.moc"
