#include "screens/websites/WebsiteRules.h"

#include <QTest>

using namespace Qt::StringLiterals;

// The address a site check is asked for, and the sites' words.
class TestWebsiteRules : public QObject {
    Q_OBJECT

private slots:
    void checkAddresses_data();
    void checkAddresses();
    void uptime();
};

void TestWebsiteRules::checkAddresses_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("asked");
    QTest::addRow("bare domain") << u" oaklinestudio.example "_s << u"https://oaklinestudio.example"_s;
    QTest::addRow("plain http kept") << u"http://fernhill.example/menu"_s << u"http://fernhill.example/menu"_s;
    QTest::addRow("another scheme") << u"ftp://files.example"_s << QString();
    QTest::addRow("no dot in the host") << u"localhost"_s << QString();
    QTest::addRow("words") << u"my site.example"_s << QString();
    QTest::addRow("nothing") << u"  "_s << QString();
}

void TestWebsiteRules::checkAddresses()
{
    QFETCH(QString, typed);
    QFETCH(QString, asked);
    QCOMPARE(WebsiteRules::checkAddress(typed), asked);
}

void TestWebsiteRules::uptime()
{
    QCOMPARE(WebsiteRules::uptimeLabel(9987), u"99.87 %"_s);
    QCOMPARE(WebsiteRules::uptimeLabel(10000), u"100.00 %"_s);
    QCOMPARE(WebsiteRules::uptimeLabel(5), u"0.05 %"_s);
}

QTEST_GUILESS_MAIN(TestWebsiteRules)
#include "tst_websiterules.moc"
