#include "money/MoneyTestSession.h"
#include "money/NativeBooksDashboard.h"
#include "money/TarnBooksCalls.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

// The Dashboard page against the demo year.
class TestBooksDashboard : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void yearOfBars();
};

void TestBooksDashboard::yearOfBars()
{
    MoneyTestSession session;
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    NativeBooksDashboard dashboard(*session.api);
    QSignalSpy changed(&dashboard, &NativeBooksDashboard::changed);
    dashboard.show(tarnWaitFor(TarnBooksCalls::books(*session.api)), {}, QDate::currentDate());
    while (dashboard.loading())
        QVERIFY(changed.wait());
    QCOMPARE(dashboard.error(), QString());

    // Two bars a month, money in first, every month of the demo year busy.
    QAbstractListModel *bars = dashboard.bars();
    QCOMPARE(bars->rowCount(), 2 * NativeBooksDashboard::monthCount);
    const QHash<int, QByteArray> roles = bars->roleNames();
    const auto value = [&](int row, const QByteArray &role) { return bars->data(bars->index(row), roles.key(role)); };
    for (int row = 0; row < bars->rowCount(); ++row) {
        QCOMPARE(value(row, "kind").toString(), row % 2 ? u"Money out"_s : u"Money in"_s);
        QVERIFY(value(row, "cents").toDouble() > 0);
        QVERIFY(value(row, "cents").toDouble() <= dashboard.largestBar());
    }
    QCOMPARE(value(23, "month").toString(), QDate::currentDate().toString(u"yyyy-MM"_s));
    QVERIFY(dashboard.moneyIn() != dashboard.moneyOut());
    QCOMPARE(dashboard.bankNote(), u"1 account · 3 to categorize in Mercury"_s);
}

QTEST_GUILESS_MAIN(TestBooksDashboard)
#include "tst_books_dashboard.moc"
