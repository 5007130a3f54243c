// Plain-text bodies: paragraphs, the split into new text and quoted history,
// links, and the limit; then the plain replies of the corpus.
#include "MailDescribe.h"

#include "mail/TarnMailHTML.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

class TestMailPlainText : public QObject
{
    Q_OBJECT

private slots:
    void blocks_data();
    void blocks();
    void limit_data();
    void limit();
    void corpusReplies_data();
    void corpusReplies();
};

void TestMailPlainText::blocks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::addRow("empty") << QString() << QString();
    QTest::addRow("blank lines end paragraphs") << u"a\nb\n\nc\n\n\n"_s << u"P(a\\nb) P(c)"_s;
    QTest::addRow("whitespace-only line is blank") << u"a\n \t \nb"_s << u"P(a) P(b)"_s;
    QTest::addRow("CRLF line ends") << u"a\r\nb\r\n\r\nc"_s << u"P(a\\nb) P(c)"_s;
    QTest::addRow("indentation kept") << u"  indented\ttext"_s << u"P(  indented\ttext)"_s;
    QTest::addRow("On ... wrote: starts the history")
        << u"Hi\n\nOn Mon, Jan 1, 2024, Ann <a@example.com> wrote:\n> old"_s
        << u"P(Hi) || P(On Mon, Jan 1, 2024, Ann <a@example.com> wrote:\\n> old)"_s;
    QTest::addRow("header without a blank line before it")
        << u"Reply text\nOn Dec 15, John wrote:  \n> x"_s << u"P(Reply text) || P(On Dec 15, John wrote:  \\n> x)"_s;
    QTest::addRow("wrote: inside a sentence is text") << u"I wrote: the report\nOn the other hand, fine."_s
                                                      << u"P(I wrote: the report\\nOn the other hand, fine.)"_s;
    QTest::addRow("On needs a word boundary") << u"Once Ann wrote:\nx"_s << u"P(Once Ann wrote:\\nx)"_s;
    QTest::addRow("original message separator")
        << u"Reply\n\n  -----Original Message-----\nFrom: x"_s
        << u"P(Reply) || P(  -----Original Message-----\\nFrom: x)"_s;
    QTest::addRow("one dash is not a separator") << u"Reply\n-Original Message-\nx"_s
                                                 << u"P(Reply\\n-Original Message-\\nx)"_s;
    QTest::addRow("quote marker starts the history") << u"Top\n> quoted\nmore"_s << u"P(Top) || P(> quoted\\nmore)"_s;
    QTest::addRow("indented quote marker is text") << u"Top\n  > not a quote"_s << u"P(Top\\n  > not a quote)"_s;
    QTest::addRow("only history is shown") << u"> a\n> b"_s << u"P(> a\\n> b)"_s;
    QTest::addRow("addresses become links") << u"see https://example.com/x.\nand http://a.example"_s
                                            << u"P(see [->https://example.com/x:https://example.com/x].\\nand "
                                               "[->http://a.example:http://a.example])"_s;
}

void TestMailPlainText::blocks()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const TarnMailDocument document = TarnMailHTML::parsePlainText(text, 150000);
    QCOMPARE(MailDescribe::document(document), expected);
    QVERIFY(!document.truncated);
}

void TestMailPlainText::limit_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("limit");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("truncated");

    QTest::addRow("cut") << u"abcdef\n\nghi"_s << 3 << u"P(abc)"_s << true;
    QTest::addRow("exactly at the limit") << u"abc"_s << 3 << u"P(abc)"_s << false;
    QTest::addRow("link cut with the text") << u"go https://example.com/long"_s << 22
                                            << u"P(go [->https://example.com:https://example.com])"_s << true;
    QTest::addRow("surrogate pair never split") << u"ab\U0001F600"_s << 3 << u"P(ab)"_s << true;
}

void TestMailPlainText::limit()
{
    QFETCH(QString, text);
    QFETCH(int, limit);
    QFETCH(QString, expected);
    QFETCH(bool, truncated);
    const TarnMailDocument document = TarnMailHTML::parsePlainText(text, limit);
    QCOMPARE(MailDescribe::document(document), expected);
    QCOMPARE(document.truncated, truncated);
}

void TestMailPlainText::corpusReplies_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("quotedStart"); // how the history begins; empty: no history

    QTest::addRow("false On lines") << u"crisp__email_tricky_1_on_false_positive.txt"_s << QString();
    QTest::addRow("wrote in a URL") << u"crisp__email_tricky_2_url_with_wrote.txt"_s << QString();
    QTest::addRow("original message") << u"crisp__email_tricky_15_original_message_variations.txt"_s
                                      << u"-----Original Message-----"_s;
    QTest::addRow("header right after text") << u"crisp__email_tricky_12_no_space_after_header.txt"_s
                                             << u"On Dec 15, 2024, at 3:00 PM, John Smith"_s;
    QTest::addRow("quote without header") << u"crisp__email_tricky_19_quote_without_header.txt"_s
                                          << u"> This is a quoted section"_s;
    QTest::addRow("spaced original message") << u"crisp__email_original_message_2.txt"_s
                                             << u"----- Original Message -----"_s;
}

void TestMailPlainText::corpusReplies()
{
    QFETCH(QString, file);
    QFETCH(QString, quotedStart);
    QFile f(QDir(QStringLiteral(TARN_CORPUS_DIR "/plain-replies")).filePath(file));
    QVERIFY2(f.open(QIODevice::ReadOnly), qPrintable(f.fileName()));
    const TarnMailDocument document = TarnMailHTML::parsePlainText(QString::fromUtf8(f.readAll()), 150000);
    QVERIFY(!document.blocks.isEmpty());
    if (quotedStart.isEmpty()) {
        QVERIFY(document.quoted.isEmpty());
    } else {
        QVERIFY(!document.quoted.isEmpty());
        QVERIFY2(TarnMailHTML::plainText(document.quoted).startsWith(quotedStart),
            qPrintable(TarnMailHTML::plainText(document.quoted).left(80)));
        QVERIFY(!TarnMailHTML::plainText(document.blocks).contains(quotedStart));
    }
}

QTEST_APPLESS_MAIN(TestMailPlainText)
#include "tst_mailplaintext.moc"
