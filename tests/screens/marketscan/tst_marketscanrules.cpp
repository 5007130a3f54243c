#include "screens/marketscan/MarketScanRules.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct OrderRow {
    QString opportunity;
    QString sortKey;
    QStringList names;
};

TarnMarketBusiness business(
    const QString &name, const QString &opportunity, std::optional<double> rating, qint64 reviews, double km)
{
    return { .id = name,
        .name = name,
        .address = {},
        .distance_km = km,
        .rating = rating,
        .reviews = reviews,
        .opportunity = opportunity,
        .reasons = {} };
}

const QList<TarnMarketBusiness> found {
    business(u"Cedar"_s, u"low"_s, 4.8, 300, 2.0),
    business(u"Alder"_s, u"high"_s, std::nullopt, 0, 0.5),
    business(u"Beacon"_s, u"high"_s, 3.4, 120, 7.5),
    business(u"Elm"_s, u"medium"_s, 4.8, 12, 1.1),
    business(u"Dover"_s, u"high"_s, 4.1, 120, 3.0),
};

} // namespace

Q_DECLARE_METATYPE(OrderRow)

// A scan's businesses narrowed by opportunity and put in each order offered.
class TestMarketScanRules : public QObject {
    Q_OBJECT

private slots:
    void order_data();
    void order();
    void labels();
};

void TestMarketScanRules::order_data()
{
    QTest::addColumn<OrderRow>("row");
    QTest::addRow("opportunity, then most reviewed, ties as found")
        << OrderRow { {}, u"opportunity"_s, { u"Beacon"_s, u"Dover"_s, u"Alder"_s, u"Elm"_s, u"Cedar"_s } };
    QTest::addRow("rating, unrated last, ties as found")
        << OrderRow { {}, u"rating"_s, { u"Cedar"_s, u"Elm"_s, u"Dover"_s, u"Beacon"_s, u"Alder"_s } };
    QTest::addRow("distance") << OrderRow { {}, u"distance"_s,
        { u"Alder"_s, u"Elm"_s, u"Cedar"_s, u"Dover"_s, u"Beacon"_s } };
    QTest::addRow("high only, by name") << OrderRow { u"high"_s, u"name"_s, { u"Alder"_s, u"Beacon"_s, u"Dover"_s } };
    QTest::addRow("an opportunity nobody has") << OrderRow { u"none"_s, u"name"_s, {} };
}

void TestMarketScanRules::order()
{
    QFETCH(OrderRow, row);
    QStringList names;
    for (const TarnMarketBusiness &b : MarketScanRules::shown(found, row.opportunity, row.sortKey))
        names.append(b.name);
    QCOMPARE(names, row.names);
}

void TestMarketScanRules::labels()
{
    QCOMPARE(MarketScanRules::ratingLabel(found.at(0)), u"4.8 · 300 reviews"_s);
    QCOMPARE(MarketScanRules::ratingLabel(business(u"One"_s, {}, 5.0, 1, 0)), u"5.0 · 1 review"_s);
    QCOMPARE(MarketScanRules::ratingLabel(found.at(1)), u"No reviews"_s);
    QCOMPARE(MarketScanRules::distanceLabel(0.44), u"0.4 km"_s);
    QCOMPARE(MarketScanRules::distanceLabel(11.6), u"12 km"_s);
    QVERIFY(MarketScanRules::isSortKey(u"distance"_s));
    QVERIFY(!MarketScanRules::isSortKey(u"price"_s));
}

QTEST_GUILESS_MAIN(TestMarketScanRules)
#include "tst_marketscanrules.moc"
