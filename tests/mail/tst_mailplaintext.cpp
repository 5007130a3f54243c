// Plain-text bodies: paragraphs, the split into new text and quoted history,
// links, and the limit; then the plain replies of the corpus.
#include "MailDescribe.h"

#include "mail/TarnMailHTML.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct PlainRow {
    const char *name;
    QString text;
    QString expected;
    int characterLimit = TarnMailHTML::threadCharacterLimit;
    bool truncated = false;
};

struct ReplyRow {
    const char *name;
    QString file;
    QString quotedStart; // how the history begins; empty: no history
};

} // namespace

class TestMailPlainText : public QObject {
    Q_OBJECT

private slots:
    void blocks_data();
    void blocks();
    void corpusReplies_data();
    void corpusReplies();
};

void TestMailPlainText::blocks_data()
{
    QTest::addColumn<PlainRow>("row");
    const QList<PlainRow> rows {
        { "empty", QString(), QString() },
        { "blank lines end paragraphs", u"a\nb\n\nc\n\n\n"_s, u"P(a\\nb) P(c)"_s },
        { "whitespace-only line is blank", u"a\n \t \nb"_s, u"P(a) P(b)"_s },
        { "CRLF line ends", u"a\r\nb\r\n\r\nc"_s, u"P(a\\nb) P(c)"_s },
        { "indentation kept", u"  indented\ttext"_s, u"P(  indented\ttext)"_s },
        { "On ... wrote: starts the history", u"Hi\n\nOn Mon, Jan 1, 2024, Ann <a@example.com> wrote:\n> old"_s,
            u"P(Hi) || P(On Mon, Jan 1, 2024, Ann <a@example.com> wrote:\\n> old)"_s },
        { "header without a blank line before it", u"Reply text\nOn Dec 15, John wrote:  \n> x"_s,
            u"P(Reply text) || P(On Dec 15, John wrote:  \\n> x)"_s },
        { "wrote: inside a sentence is text", u"I wrote: the report\nOn the other hand, fine."_s,
            u"P(I wrote: the report\\nOn the other hand, fine.)"_s },
        { "On needs a word boundary", u"Hi\nOnce Ann wrote:\nx"_s, u"P(Hi\\nOnce Ann wrote:\\nx)"_s },
        { "original message separator", u"Reply\n\n  -----Original Message-----\nFrom: x"_s,
            u"P(Reply) || P(  -----Original Message-----\\nFrom: x)"_s },
        { "one dash is not a separator", u"Reply\n-Original Message-\nx"_s, u"P(Reply\\n-Original Message-\\nx)"_s },
        { "quote marker starts the history", u"Top\n> quoted\nmore"_s, u"P(Top) || P(> quoted\\nmore)"_s },
        { "indented quote marker is text", u"Top\n  > not a quote"_s, u"P(Top\\n  > not a quote)"_s },
        { "only history is shown", u"> a\n> b"_s, u"P(> a\\n> b)"_s },
        { "addresses become links", u"see https://example.com/x.\nand http://a.example"_s,
            u"P(see [->https://example.com/x:https://example.com/x].\\nand [->http://a.example:http://a.example])"_s },
        { "closing punctuation left out of a link", u"(at http://example.com/x?y=1).\"'"_s,
            u"P((at [->http://example.com/x?y=1:http://example.com/x?y=1]).\"')"_s },
        { "two links", u"https://a.example https://b.example"_s,
            u"P([->https://a.example:https://a.example] [->https://b.example:https://b.example])"_s },
        { "link stops at angle brackets", u"<https://a.example/p>"_s,
            u"P(<[->https://a.example/p:https://a.example/p]>)"_s },
        { "unsafe address stays text", u"http://user@evil.example/ ok"_s, u"P(http://user@evil.example/ ok)"_s },
        { "nothing but punctuation after the scheme", u"see https://..."_s, u"P(see https://...)"_s },
        { "cut at the limit", u"abcdef\n\nghi"_s, u"P(abc)"_s, 3, true },
        { "exactly at the limit", u"abc"_s, u"P(abc)"_s, 3 },
        { "link cut with the text", u"go https://example.com/long"_s,
            u"P(go [->https://example.com:https://example.com])"_s, 22, true },
        { "surrogate pair never split", u"ab\U0001F600"_s, u"P(ab)"_s, 3, true },
    };
    for (const PlainRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestMailPlainText::blocks()
{
    QFETCH(PlainRow, row);
    const TarnMailDocument document = TarnMailHTML::parsePlainText(row.text, row.characterLimit);
    QCOMPARE(MailDescribe::document(document), row.expected);
    QCOMPARE(document.truncated, row.truncated);
}

void TestMailPlainText::corpusReplies_data()
{
    QTest::addColumn<ReplyRow>("row");
    const QList<ReplyRow> rows {
        { "false On lines", u"crisp__email_tricky_1_on_false_positive.txt"_s, QString() },
        { "original message", u"crisp__email_tricky_15_original_message_variations.txt"_s,
            u"-----Original Message-----"_s },
        { "quote without header", u"crisp__email_tricky_19_quote_without_header.txt"_s,
            u"> This is a quoted section"_s },
        { "spaced original message", u"crisp__email_original_message_2.txt"_s, u"----- Original Message -----"_s },
    };
    for (const ReplyRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestMailPlainText::corpusReplies()
{
    QFETCH(ReplyRow, row);
    QFile f(QDir(QStringLiteral(TARN_CORPUS_DIR "/plain-replies")).filePath(row.file));
    QVERIFY2(f.open(QIODevice::ReadOnly), qPrintable(f.fileName()));
    const TarnMailDocument document = TarnMailHTML::parsePlainText(QString::fromUtf8(f.readAll()), 150000);
    QVERIFY(!document.blocks.isEmpty());
    const QString quoted = TarnMailHTML::plainText(document.quoted);
    if (row.quotedStart.isEmpty()) {
        QVERIFY(document.quoted.isEmpty());
    } else {
        QVERIFY2(quoted.startsWith(row.quotedStart), qPrintable(quoted.left(80)));
        QVERIFY(!TarnMailHTML::plainText(document.blocks).contains(row.quotedStart));
    }
}

QTEST_APPLESS_MAIN(TestMailPlainText)
#include "tst_mailplaintext.moc"
