#include "service/Config.h"

#include <QTemporaryFile>
#include <QTest>

using namespace Qt::StringLiterals;

class TestConfig : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void resolve_data();
    void resolve();
    void serviceURL_data();
    void serviceURL();
    void options_data();
    void options();
};

void TestConfig::resolve_data()
{
    QTest::addColumn<QString>("home");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("resolved");

    QTest::addRow("absolute path") << u"https://w.example/"_s << u"/api/session"_s
                                   << u"https://w.example/api/session"_s;
    QTest::addRow("relative below base") << u"https://w.example/tarn/"_s << u"api/mobile/exchange"_s
                                         << u"https://w.example/tarn/api/mobile/exchange"_s;
    QTest::addRow("absolute replaces base")
        << u"https://w.example/tarn/"_s << u"/api/session"_s << u"https://w.example/api/session"_s;
    QTest::addRow("query kept") << u"https://w.example:8443/"_s << u"/api/gifs?q=cat%20hat"_s
                                << u"https://w.example:8443/api/gifs?q=cat%20hat"_s;
    QTest::addRow("other host") << u"https://w.example/"_s << u"https://evil.example/api"_s
                                << u"https://evil.example/api"_s;
    QTest::addRow("network path") << u"https://w.example/"_s << u"//evil.example/api"_s
                                  << u"https://evil.example/api"_s;
}

void TestConfig::resolve()
{
    QFETCH(QString, home);
    QFETCH(QString, path);
    QFETCH(QString, resolved);
    QString error;
    const std::optional<Config> config = Config::fromOptions(home, {}, &error);
    QVERIFY2(config, qPrintable(error));
    QCOMPARE(config->resolve(path).toString(QUrl::FullyEncoded), resolved);
}

void TestConfig::serviceURL_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<bool>("service");

    QTest::addRow("same") << u"https://127.0.0.1:8443/api/session"_s << true;
    QTest::addRow("plain http") << u"http://127.0.0.1:8443/api/session"_s << false;
    QTest::addRow("other port") << u"https://127.0.0.1:8444/api/session"_s << false;
    QTest::addRow("other host") << u"https://localhost:8443/api/session"_s << false;
    QTest::addRow("user info") << u"https://u:p@127.0.0.1:8443/api/session"_s << false;
    QTest::addRow("callback scheme") << u"pilo-tarn://auth?code=1"_s << false;
}

void TestConfig::serviceURL()
{
    QFETCH(QString, url);
    QFETCH(bool, service);
    QString error;
    const std::optional<Config> config = Config::fromOptions(u"https://127.0.0.1:8443/"_s, {}, &error);
    QVERIFY(config);
    QCOMPARE(config->isServiceURL(QUrl(url)), service);
}

void TestConfig::options_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("certificate");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("home");

    const QString pem = QFINDTESTDATA("testdata/loopback.pem");
    QTest::addRow("built in") << QString() << QString() << true << u"https://tarn.halvard.co/"_s;
    QTest::addRow("path gains slash") << u"https://10.0.0.1:9/base"_s << QString() << true
                                      << u"https://10.0.0.1:9/base/"_s;
    QTest::addRow("http refused") << u"http://127.0.0.1/"_s << QString() << false << QString();
    QTest::addRow("no host") << u"https:///x"_s << QString() << false << QString();
    QTest::addRow("query refused") << u"https://h/?a=1"_s << QString() << false << QString();
    QTest::addRow("certificate read") << u"https://127.0.0.1:1/"_s << pem << true << u"https://127.0.0.1:1/"_s;
    QTest::addRow("certificate missing") << u"https://127.0.0.1:1/"_s << u"/nonexistent.pem"_s << false << QString();
}

void TestConfig::options()
{
    QFETCH(QString, url);
    QFETCH(QString, certificate);
    QFETCH(bool, valid);
    QFETCH(QString, home);
    qunsetenv("TARN_WORKSPACE_URL");
    qunsetenv("TARN_WORKSPACE_CA");
    QString error;
    const std::optional<Config> config = Config::fromOptions(url, certificate, &error);
    QCOMPARE(config.has_value(), valid);
    if (!valid) {
        QVERIFY(!error.isEmpty());
        return;
    }
    QCOMPARE(config->homeURL().toString(), home);
    QCOMPARE(config->extraCertificate().has_value(), !certificate.isEmpty());
    if (config->extraCertificate())
        QVERIFY(config->sslConfiguration().caCertificates().contains(*config->extraCertificate()));
}

QTEST_GUILESS_MAIN(TestConfig)
#include "tst_config.moc"
