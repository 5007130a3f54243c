#include "screens/overview/OverviewRules.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct EtaRow {
    QString status;
    QString eta;
    QString label;
    bool late;
};

} // namespace

Q_DECLARE_METATYPE(EtaRow)

// When an order is due, said against today, and the way orders move on.
class TestOverviewRules : public QObject {
    Q_OBJECT

private slots:
    void due_data();
    void due();
    void ordersMoveOn();
};

void TestOverviewRules::due_data()
{
    QTest::addColumn<EtaRow>("row");
    // Today is Wednesday 25 November 2026.
    QTest::addRow("today") << EtaRow { u"packing"_s, u"2026-11-25"_s, u"Due today"_s, false };
    QTest::addRow("tomorrow") << EtaRow { u"shipped"_s, u"2026-11-26"_s, u"Due tomorrow"_s, false };
    QTest::addRow("later") << EtaRow { u"packing"_s, u"2026-12-03"_s, u"Due Thu 3 Dec"_s, false };
    QTest::addRow("a day late") << EtaRow { u"shipped"_s, u"2026-11-24"_s, u"1 day late"_s, true };
    QTest::addRow("days late") << EtaRow { u"packing"_s, u"2026-11-20"_s, u"5 days late"_s, true };
    QTest::addRow("delivered after its day") << EtaRow { u"delivered"_s, u"2026-11-20"_s, u"Delivered"_s, false };
    QTest::addRow("no day") << EtaRow { u"packing"_s, u"soon"_s, QString(), false };
}

void TestOverviewRules::due()
{
    QFETCH(EtaRow, row);
    const TarnOrder order {
        .id = u"o1"_s, .client_name = {}, .summary = {}, .status = row.status, .eta = row.eta, .updated_at = {}
    };
    const QDate today(2026, 11, 25);
    QCOMPARE(OverviewRules::etaLabel(order, today), row.label);
    QCOMPARE(OverviewRules::late(order, today), row.late);
}

void TestOverviewRules::ordersMoveOn()
{
    QCOMPARE(OverviewRules::nextStatus(u"packing"_s), u"shipped"_s);
    QCOMPARE(OverviewRules::nextStatus(u"shipped"_s), u"delivered"_s);
    QCOMPARE(OverviewRules::nextStatus(u"delivered"_s), QString());
}

QTEST_GUILESS_MAIN(TestOverviewRules)
#include "tst_overviewrules.moc"
