#include "service/TarnAPIError.h"
#include "service/TarnCreatedID.h"
#include "service/TarnErrorBody.h"
#include "service/TarnJSONObject.h"
#include "service/TarnOK.h"
#include "service/TarnPath.h"
#include "service/TarnSession.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestRecords : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sessionDecodes_data();
    void sessionDecodes();
    void integersAreExact_data();
    void integersAreExact();
    void smallRecords();
    void escape_data();
    void escape();
    void errorTexts();
};

void TestRecords::sessionDecodes_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("decodes");

    const QByteArray base = R"("id":"p1","name":"Maren","email":"m@x","csrf":"c","apps":["Home"])";
    QTest::addRow("required only") << "{" + base + "}" << true;
    QTest::addRow("optional null") << "{" + base + R"(,"role":null,"owner":null,"text_size":null})" << true;
    QTest::addRow("all fields") << "{" + base
            + R"(,"role":"admin","owner":true,"books_owner":false,"background":"sand","accent":"teal","text_size":"large"})"
                                << true;
    QTest::addRow("missing csrf") << QByteArray(R"({"id":"p1","name":"M","email":"m","apps":[]})") << false;
    QTest::addRow("apps not an array") << QByteArray(R"({"id":"p1","name":"M","email":"m","csrf":"c","apps":"Home"})")
                                       << false;
    QTest::addRow("app not a string") << QByteArray(R"({"id":"p1","name":"M","email":"m","csrf":"c","apps":[1]})")
                                      << false;
    QTest::addRow("owner as string") << QByteArray(
        R"({"id":"p1","name":"M","email":"m","csrf":"c","apps":[],"owner":"yes"})")
                                     << false;
    QTest::addRow("id as number") << QByteArray(R"({"id":1,"name":"M","email":"m","csrf":"c","apps":[]})") << false;
    QTest::addRow("array at top") << QByteArray("[]") << false;
    QTest::addRow("not JSON") << QByteArray("<html>") << false;
    QTest::addRow("truncated") << QByteArray(R"({"id":"p1")") << false;
    QTest::addRow("empty") << QByteArray() << false;
}

void TestRecords::sessionDecodes()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, decodes);
    bool decoded = false;
    try {
        const TarnSession session = TarnJSON::decode<TarnSession>(json);
        decoded = true;
        QCOMPARE(session.id, u"p1"_s);
    } catch (const TarnDecodeError &) {
    }
    QCOMPARE(decoded, decodes);
}

void TestRecords::integersAreExact_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("decodes");
    QTest::addColumn<qint64>("value");

    QTest::addRow("cents") << QByteArray(R"({"n":100000000000})") << true << qint64(100000000000);
    QTest::addRow("negative") << QByteArray(R"({"n":-450})") << true << qint64(-450);
    QTest::addRow("written as float") << QByteArray(R"({"n":12.0})") << true << qint64(12);
    QTest::addRow("fraction") << QByteArray(R"({"n":12.5})") << false << qint64(0);
    QTest::addRow("huge") << QByteArray(R"({"n":1e300})") << false << qint64(0);
    QTest::addRow("string") << QByteArray(R"({"n":"12"})") << false << qint64(0);
    QTest::addRow("bool") << QByteArray(R"({"n":true})") << false << qint64(0);
}

void TestRecords::integersAreExact()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, decodes);
    QFETCH(qint64, value);
    try {
        const TarnJSONObject object(TarnJSON::parse(json));
        QCOMPARE(object.integer("n"_L1), value);
        QVERIFY(decodes);
    } catch (const TarnDecodeError &) {
        QVERIFY(!decodes);
    }
}

void TestRecords::smallRecords()
{
    QCOMPARE(TarnJSON::decode<TarnOK>(R"({"ok":true})").ok, true);
    QCOMPARE(TarnJSON::decode<TarnCreatedID>(R"({"id":"r-9"})").id, u"r-9"_s);
    QCOMPARE(TarnJSON::decode<TarnErrorBody>(R"({"error":""})").error, std::optional<QString>(QString()));
    QCOMPARE(TarnJSON::decode<TarnErrorBody>(R"({"ok":true})").error, std::nullopt);
    QVERIFY_THROWS_EXCEPTION(TarnDecodeError, (void)TarnJSON::decode<TarnOK>(R"({"ok":"true"})"));
    QVERIFY_THROWS_EXCEPTION(TarnDecodeError, (void)TarnJSON::decode<TarnErrorBody>(R"({"error":5})"));
}

void TestRecords::escape_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("escaped");

    QTest::addRow("plain id") << u"room-42_a.b~c"_s << u"room-42_a.b~c"_s;
    QTest::addRow("always escaped") << u"a&b=c+d#e?f/g"_s << u"a%26b%3Dc%2Bd%23e%3Ff%2Fg"_s;
    QTest::addRow("kept query characters") << u"x:y@z!$'()*,;"_s << u"x:y@z!$'()*,;"_s;
    QTest::addRow("space and percent") << u"50% off"_s << u"50%25%20off"_s;
    QTest::addRow("unicode") << u"Café"_s << u"Caf%C3%A9"_s;
    QTest::addRow("path climbing") << u"../admin"_s << u"..%2Fadmin"_s;
}

void TestRecords::escape()
{
    QFETCH(QString, value);
    QFETCH(QString, escaped);
    QCOMPARE(TarnPath::escape(value), escaped);
    // Ids and query values go through the same escape; the first query value
    // opens the query and an absent one is left out.
    const TarnPath path = TarnPath(u"/api/rooms"_s)
                              .id(value)
                              .segment("messages"_L1)
                              .query("q"_L1, std::optional<QString>())
                              .query("before"_L1, value)
                              .query("after"_L1, u"1"_s);
    QCOMPARE(path.toString(), u"/api/rooms/"_s + escaped + u"/messages?before="_s + escaped + u"&after=1"_s);
}

void TestRecords::errorTexts()
{
    QCOMPARE(TarnAPIError::signedOut().text(), u"Sign in to Pilo Tarn again."_s);
    QCOMPARE(TarnAPIError::invalidResponse().text(), u"Pilo Tarn returned an unreadable response. Try again."_s);
    QCOMPARE(TarnAPIError::server(u"Room is archived."_s).text(), u"Room is archived."_s);
    QCOMPARE(QString::fromUtf8(TarnAPIError::server(u"Zoë"_s).what()), u"Zoë"_s);
}

QTEST_GUILESS_MAIN(TestRecords)
#include "tst_records.moc"
