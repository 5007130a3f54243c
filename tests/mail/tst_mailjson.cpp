// The JSON shape other tools read from `tarn mail-blocks`: one row per block
// kind and image source, compared as JSON values (key order does not matter).
#include "mail/TarnMailHTML.h"
#include "mail/TarnMailJSON.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

class TestMailJSON : public QObject {
    Q_OBJECT

private slots:
    void firstBlock_data();
    void firstBlock();
    void document();
};

void TestMailJSON::firstBlock_data()
{
    QTest::addColumn<QByteArray>("html");
    QTest::addColumn<QByteArray>("expected");

    QTest::addRow("paragraph with style and link") << "<p><b>a</b><a href=\"https://x.example/\"><i>b</i></a></p>"_ba
                                                   << R"({"type":"paragraph","runs":[{"text":"a","style":1,"link":null},
              {"text":"b","style":2,"link":"https://x.example/"}]})"_ba;
    QTest::addRow("heading") << "<h2>T</h2>"_ba
                             << R"({"type":"heading","level":2,"runs":[{"text":"T","style":0,"link":null}]})"_ba;
    QTest::addRow("list") << "<ol start=3><li>a<li><ul><li>b</ul></ol>"_ba
                          << R"({"type":"list","ordered":true,"start":3,"items":[
                                [{"type":"paragraph","runs":[{"text":"a","style":0,"link":null}]}],
                                [{"type":"list","ordered":false,"start":1,"items":[
                                  [{"type":"paragraph","runs":[{"text":"b","style":0,"link":null}]}]]}]]})"_ba;
    QTest::addRow("quote")
        << "<blockquote>q</blockquote>"_ba
        << R"({"type":"quote","blocks":[{"type":"paragraph","runs":[{"text":"q","style":0,"link":null}]}]})"_ba;
    QTest::addRow("preformatted") << "<pre>a  b</pre>"_ba
                                  << R"({"type":"preformatted","text":"a  b"})"_ba;
    QTest::addRow("table") << "<table><tr><th>h</th></tr><tr><td><u>c</u></td></tr></table>"_ba
                           << R"({"type":"table","headerRows":1,"rows":[[[{"text":"h","style":0,"link":null}]],
                                 [[{"text":"c","style":4,"link":null}]]]})"_ba;
    QTest::addRow("remote image")
        << "<a href=\"https://x.example/\"><img src=\"https://i.example/a.png\" alt=\"A\" width=10></a>"_ba
        << R"({"type":"image","alt":"A","source":{"kind":"remote","url":"https://i.example/a.png"},
                                         "width":10,"height":null,"link":"https://x.example/"})"_ba;
    QTest::addRow("cid image") << "<img src=\"cid:a%20b\" height=5>"_ba
                               << R"({"type":"image","alt":"","source":{"kind":"cid","id":"a b"},
                                      "width":null,"height":5,"link":null})"_ba;
    QTest::addRow("embedded image") << "<img src=\"data:image/gif;base64,R0lGODlh\">"_ba
                                    << R"({"type":"image","alt":"","source":{"kind":"embedded","bytes":6},
                                           "width":null,"height":null,"link":null})"_ba;
    QTest::addRow("unsupported image") << "<img src=\"ftp://x/a.png\" alt=\"x\">"_ba
                                       << R"({"type":"image","alt":"x","source":{"kind":"unsupported"},
                                              "width":null,"height":null,"link":null})"_ba;
    QTest::addRow("signature")
        << "<div class=signature>s</div>"_ba
        << R"({"type":"signature","blocks":[{"type":"paragraph","runs":[{"text":"s","style":0,"link":null}]}]})"_ba;
    QTest::addRow("rule") << "<hr>"_ba
                          << R"({"type":"rule"})"_ba;
}

void TestMailJSON::firstBlock()
{
    QFETCH(QByteArray, html);
    QFETCH(QByteArray, expected);
    const TarnMailDocument document = TarnMailHTML::parseUTF8(html, 150000, 4000);
    QVERIFY(!document.blocks.isEmpty());
    QJsonParseError error;
    const QJsonObject wanted = QJsonDocument::fromJson(expected, &error).object();
    QCOMPARE(error.error, QJsonParseError::NoError);
    QCOMPARE(TarnMailJSON::block(document.blocks.first()), wanted);
}

void TestMailJSON::document()
{
    const TarnMailDocument document = TarnMailHTML::parseUTF8(
        "<p>new<img src=\"cid:one\" alt=a><img src=\"https://t.example/p.gif\" width=1 height=1></p>"
        "<blockquote type=cite><img src=\"https://i.example/b.png\" alt=b><img src=\"cid:two\" alt=c></blockquote>"_ba,
        150000, 4000);
    const QJsonObject json = QJsonDocument::fromJson(TarnMailJSON::encode(document)).object();
    QCOMPARE(json.keys(),
        QStringList({ u"blockedTrackers"_s, u"blocks"_s, u"cidReferences"_s, u"quoted"_s, u"remoteImageURLs"_s,
            u"truncated"_s }));
    QCOMPARE(json.value("blockedTrackers"_L1).toInt(), 1);
    QCOMPARE(json.value("truncated"_L1).toBool(true), false);
    QCOMPARE(json.value("blocks"_L1).toArray().size(), 2);
    QCOMPARE(json.value("quoted"_L1).toArray().size(), 1);
    QCOMPARE(json.value("cidReferences"_L1).toArray(), QJsonArray({ u"one"_s, u"two"_s }));
    QCOMPARE(json.value("remoteImageURLs"_L1).toArray(), QJsonArray({ u"https://i.example/b.png"_s }));
}

QTEST_APPLESS_MAIN(TestMailJSON)
#include "tst_mailjson.moc"
