#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/websites/TarnWebsiteCalls.h"
#include "support/FailureOf.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString sam = u"sam@halvard.example"_s;

} // namespace

// The clients' sites and site checks against the local workspace.
class TestWebsiteCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void gated();
    void checksAreSteadyAndKept();

private:
    InboxTestClient client;
};

void TestWebsiteCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestWebsiteCalls::gated()
{
    QCOMPARE(failureOf(TarnWebsiteCalls::websites(client.as(u"priya@halvard.example"_s))),
        u"Websites are not open to you."_s);
    const QList<TarnWebsite> sites = tarnWaitFor(TarnWebsiteCalls::websites(client.as(sam)));
    QVERIFY(sites.size() >= 5);
    QVERIFY(std::is_sorted(
        sites.begin(), sites.end(), [](const TarnWebsite &a, const TarnWebsite &b) { return a.domain < b.domain; }));
    QCOMPARE(failureOf(TarnWebsiteCalls::proposalSiteCheck(client.as(sam), { .url = u"mailto:a@b.example"_s })),
        u"That is not a site's address."_s);
}

void TestWebsiteCalls::checksAreSteadyAndKept()
{
    TarnAPI &api = client.as(sam);
    const TarnWebsite listed = tarnWaitFor(TarnWebsiteCalls::websites(api)).constFirst();
    const TarnSiteCheck first
        = tarnWaitFor(TarnWebsiteCalls::proposalSiteCheck(api, { .url = u"https://"_s + listed.domain }));
    const TarnSiteCheck again
        = tarnWaitFor(TarnWebsiteCalls::proposalSiteCheck(api, { .url = u"https://"_s + listed.domain.toUpper() }));
    QCOMPARE(again.overall, first.overall);
    QCOMPARE(again.findings, first.findings);
    QCOMPARE(first.overall, (first.speed + first.mobile + first.seo + first.security + first.accessibility) / 5);
    QVERIFY(!first.findings.isEmpty());
    // The listed site keeps its score.
    const QList<TarnWebsite> sites = tarnWaitFor(TarnWebsiteCalls::websites(api));
    QCOMPARE(sites.constFirst().score, std::optional(first.overall));

    // Without HTTPS, security is poor and said first.
    const TarnSiteCheck plain
        = tarnWaitFor(TarnWebsiteCalls::proposalSiteCheck(api, { .url = u"http://"_s + listed.domain }));
    QCOMPARE(plain.security, 20);
    QCOMPARE(plain.findings.constFirst().severity, u"high"_s);
    QVERIFY(plain.findings.constFirst().text.contains(u"HTTPS"_s));
}

QTEST_GUILESS_MAIN(TestWebsiteCalls)
#include "tst_websitecalls.moc"
