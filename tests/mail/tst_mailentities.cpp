// Character references as mail writes them, including the sloppy ones.
#include "mail/TarnMailHTML.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestMailEntities : public QObject
{
    Q_OBJECT

private slots:
    void decodeEntities_data();
    void decodeEntities();
};

void TestMailEntities::decodeEntities_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::addRow("no ampersand") << u"plain text"_s << u"plain text"_s;
    QTest::addRow("common names") << u"&lt;a&gt; &quot;q&quot; &apos;s&apos; &copy;&reg;&trade;"_s
                                  << u"<a> \"q\" 's' \u00A9\u00AE\u2122"_s;
    QTest::addRow("names are case-sensitive") << u"&Eacute;&eacute; &AMP;"_s << u"\u00C9\u00E9 &AMP;"_s;
    QTest::addRow("legacy name without semicolon") << u"a &amp b &lt c &nbspd"_s << u"a & b < c &nbspd"_s;
    QTest::addRow("legacy name at the end") << u"AT&amp"_s << u"AT&"_s;
    QTest::addRow("other names need the semicolon") << u"wait&hellip and &hellip;"_s << u"wait&hellip and \u2026"_s;
    QTest::addRow("unknown name stays") << u"&bogus; &ampx;"_s << u"&bogus; &ampx;"_s;
    QTest::addRow("decimal") << u"&#65;&#233;&#128512;"_s << u"A\u00E9\U0001F600"_s;
    QTest::addRow("hexadecimal either case") << u"&#x41;&#X42;&#x1f600;"_s << u"AB\U0001F600"_s;
    QTest::addRow("numeric without semicolon") << u"&#65 &#x42 "_s << u"A B "_s;
    QTest::addRow("windows-1252 range remapped") << u"&#150;&#x80;&#153;&#x9F;"_s << u"\u2013\u20AC\u2122\u0178"_s;
    QTest::addRow("undefined windows-1252 slot kept") << u"&#129;"_s << u"\u0081"_s;
    QTest::addRow("zero is a replacement character") << u"&#0;"_s << u"\uFFFD"_s;
    QTest::addRow("surrogates are replaced") << u"&#xD800;&#57343;"_s << u"\uFFFD\uFFFD"_s;
    QTest::addRow("beyond unicode is replaced") << u"&#x110000;&#99999999999999;"_s << u"\uFFFD\uFFFD"_s;
    QTest::addRow("empty hexadecimal stays") << u"&#x;"_s << u"&#x;"_s;
    QTest::addRow("empty number stays") << u"&#;"_s << u"&#;"_s;
    QTest::addRow("unparsable number stays") << u"&#12ab; &#xZZ;"_s << u"&#12ab; &#xZZ;"_s;
    QTest::addRow("ampersand stops a name") << u"&&amp;&"_s << u"&&&"_s;
    QTest::addRow("whitespace stops a name") << u"&amp\tx & y"_s << u"&\tx & y"_s;
    QTest::addRow("no stop within 32 characters") << QString(u"&"_s + QString(40, u'a') + u";"_s)
                                                  << QString(u"&"_s + QString(40, u'a') + u";"_s);
    QTest::addRow("decoded text is not decoded again") << u"&amp;lt;"_s << u"&lt;"_s;
    QTest::addRow("non-ASCII after an ampersand") << u"&\u00E9;"_s << u"&\u00E9;"_s;
}

void TestMailEntities::decodeEntities()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(TarnMailHTML::decodeEntities(text), expected);
}

QTEST_APPLESS_MAIN(TestMailEntities)
#include "tst_mailentities.moc"
