#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/marketscan/TarnMarketScanCalls.h"
#include "support/FailureOf.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString sam = u"sam@halvard.example"_s;

} // namespace

// Market scans against the local workspace: who may scan, the same answer
// for the same trade and area, and scans kept to the person who ran them.
class TestMarketScanCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void gated();
    void sameTradeAndAreaFindTheSame();
    void scansAreThePersonsOwn();

private:
    InboxTestClient client;
};

void TestMarketScanCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestMarketScanCalls::gated()
{
    QCOMPARE(failureOf(TarnMarketScanCalls::marketScans(client.as(u"jonah@halvard.example"_s))),
        u"Market scans are not open to you."_s);
    QCOMPARE(failureOf(TarnMarketScanCalls::marketScans(client.as(sam))), QString());
    QCOMPARE(failureOf(TarnMarketScanCalls::marketScan(client.as(sam), { .trade = u"x"_s, .area = u"Salem"_s })),
        u"Say what trade to scan for and where, each in 2 to 60 characters."_s);
}

void TestMarketScanCalls::sameTradeAndAreaFindTheSame()
{
    const TarnMarketScan first = tarnWaitFor(
        TarnMarketScanCalls::marketScan(client.as(maren), { .trade = u"Plumbers"_s, .area = u"Salem"_s }));
    const TarnMarketScan again = tarnWaitFor(
        TarnMarketScanCalls::marketScan(client.as(maren), { .trade = u" plumbers "_s, .area = u"SALEM"_s }));
    QVERIFY(first.id != again.id);
    QVERIFY(first.businesses.size() >= 14);
    QCOMPARE(again.businesses, first.businesses);
    QCOMPARE(first.found, first.businesses.size());
    QCOMPARE(first.high,
        std::count_if(first.businesses.begin(), first.businesses.end(),
            [](const TarnMarketBusiness &b) { return b.opportunity == "high"_L1; }));
    for (const TarnMarketBusiness &b : first.businesses) {
        QVERIFY2(b.name.endsWith(u" Plumbing"_s), qPrintable(b.name));
        // A business without a site always lacks one, and says so.
        QCOMPARE(!b.website, b.reasons.contains(u"No website"_s));
        if (!b.website)
            QCOMPARE(b.opportunity, u"high"_s);
    }
    const TarnMarketScan other = tarnWaitFor(
        TarnMarketScanCalls::marketScan(client.as(maren), { .trade = u"plumbers"_s, .area = u"Eugene"_s }));
    QVERIFY(other.businesses != first.businesses);
}

void TestMarketScanCalls::scansAreThePersonsOwn()
{
    const QList<TarnMarketScan> hers = tarnWaitFor(TarnMarketScanCalls::marketScans(client.as(maren)));
    QVERIFY(!hers.isEmpty());
    QVERIFY(hers.constFirst().businesses.isEmpty());
    QVERIFY(std::is_sorted(hers.begin(), hers.end(),
        [](const TarnMarketScan &a, const TarnMarketScan &b) { return a.scanned_at > b.scanned_at; }));
    const TarnMarketScan opened = tarnWaitFor(TarnMarketScanCalls::marketScanResult(client.as(maren), hers.at(0).id));
    QCOMPARE(opened.found, hers.at(0).found);
    QCOMPARE(failureOf(TarnMarketScanCalls::marketScanResult(client.as(sam), hers.at(0).id)), u"No such scan."_s);
}

QTEST_GUILESS_MAIN(TestMarketScanCalls)
#include "tst_marketscancalls.moc"
