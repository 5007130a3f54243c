#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/kiln/NativeKilnView.h"
#include "screens/kiln/TarnKilnCalls.h"
#include "support/FailureOf.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTest>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;

// The page at `url` as a browser gets it, without the app's session: its
// HTTP status and body.
std::pair<int, QByteArray> fetchPage(const TarnAPI &api, const QUrl &url)
{
    QNetworkAccessManager net;
    QNetworkRequest request(url);
    request.setSslConfiguration(api.config().sslConfiguration());
    std::unique_ptr<QNetworkReply> reply(net.get(request));
    QSignalSpy finished(reply.get(), &QNetworkReply::finished);
    if (!reply->isFinished() && !finished.wait(10'000))
        return { 0, {} };
    return { reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), reply->readAll() };
}

} // namespace

// The web workspace's hand-off against the local workspace: a code opens the
// page once and only for those with the app, and the view goes nowhere but
// the service's own host.
class TestKiln : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void codeOpensThePageOnce();
    void viewStaysOnTheService_data();
    void viewStaysOnTheService();

private:
    InboxTestClient client;
};

void TestKiln::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestKiln::codeOpensThePageOnce()
{
    QCOMPARE(failureOf(TarnKilnCalls::kilnHandoffCode(client.as(u"priya@halvard.example"_s))),
        u"The web workspace is not open to you."_s);

    TarnAPI &api = client.as(maren);
    const TarnKilnHandoff handoff = tarnWaitFor(TarnKilnCalls::kilnHandoffCode(api));
    const QUrl url(handoff.url);
    QVERIFY2(api.config().isServiceURL(url), qPrintable(handoff.url));
    QCOMPARE(QUrlQuery(url).queryItemValue(u"code"_s), handoff.code);
    const auto [status, body] = fetchPage(api, url);
    QCOMPARE(status, 200);
    QVERIFY(body.contains("Signed in as Maren Holt."));
    // Spent: the same code opens nothing again, nor does one never given.
    QCOMPARE(fetchPage(api, url).first, 403);
    QUrl madeUp = url;
    madeUp.setQuery(u"code=made-up"_s);
    QCOMPARE(fetchPage(api, madeUp).first, 403);

    // The view asks for a code of its own each time it appears.
    NativeKilnView view(api);
    QSignalSpy changed(&view, &NativeKilnView::urlChanged);
    view.appear();
    QTRY_VERIFY(!view.url().isEmpty());
    QVERIFY(QUrlQuery(view.url()).queryItemValue(u"code"_s) != handoff.code);
    QVERIFY(view.loading());
    view.pageLoaded(true, {});
    QVERIFY(view.loaded() && !view.loading());
    QCOMPARE(view.errorText(), QString());
}

void TestKiln::viewStaysOnTheService_data()
{
    const QUrl home = client.as(maren).config().homeURL();
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<bool>("allowed");
    QTest::addRow("a page of the service") << home.resolved(QUrl(u"/kiln/projects"_s)) << true;
    QUrl plain = home;
    plain.setScheme(u"http"_s);
    QTest::addRow("the same host without TLS") << plain << false;
    QUrl port = home;
    port.setPort(home.port() + 1);
    QTest::addRow("another port") << port << false;
    QTest::addRow("another host") << QUrl(u"https://docs.halvard.example/kiln"_s) << false;
}

void TestKiln::viewStaysOnTheService()
{
    QFETCH(QUrl, url);
    QFETCH(bool, allowed);
    const NativeKilnView view(client.as(maren));
    QCOMPARE(view.allowed(url), allowed);
}

QTEST_GUILESS_MAIN(TestKiln)
#include "tst_kiln.moc"
