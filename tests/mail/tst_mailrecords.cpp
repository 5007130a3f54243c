#include "mail/MailBlockRows.h"
#include "mail/MailComposeRules.h"
#include "mail/MailParse.h"
#include "mail/TarnMailAction.h"
#include "mail/TarnMailCard.h"
#include "mail/TarnMailHTML.h"
#include "mail/TarnMailInbox.h"
#include "mail/TarnMailProxy.h"
#include "mail/TarnMailSend.h"
#include "service/TarnJSONObject.h"

#include <QTest>

using namespace Qt::StringLiterals;

using Ids = QList<QString>;
using Selection = std::optional<QString>;
using Paths = QList<TarnMailProxy::Path>;

// The mail records' own rules: times that arrive as numbers or strings, the
// selection after a thread action, the proxy paths of signed images and the
// composer's attachment limits.
class TestMailRecords : public QObject {
    Q_OBJECT

private slots:
    void millis_data();
    void millis();
    void nextSelection_data();
    void nextSelection();
    void leaves_data();
    void leaves();
    void proxyPaths_data();
    void proxyPaths();
    void attachmentLimits_data();
    void attachmentLimits();
    void reply_data();
    void reply();
    void forward();
    void bodyChoice_data();
    void bodyChoice();
    void blockRows_data();
    void blockRows();
};

void TestMailRecords::millis_data()
{
    QTest::addColumn<QByteArray>("lastMs");
    QTest::addColumn<qint64>("expected"); // -1: the card is refused

    struct Row {
        const char *label;
        QByteArray json;
        qint64 expected;
    };
    const Row rows[] {
        { "number", "1764028800123", 1764028800123 },
        { "numeric string", "\"1764028800123\"", 1764028800123 },
        { "string with spaces", "\" 42 \"", 42 },
        { "fraction", "1.5", -1 },
        { "words", "\"yesterday\"", -1 },
        { "empty string", "\"\"", -1 },
        { "bool", "true", -1 },
    };
    for (const Row &row : rows)
        QTest::addRow("%s", row.label) << row.json << row.expected;
}

void TestMailRecords::millis()
{
    QFETCH(QByteArray, lastMs);
    QFETCH(qint64, expected);
    const QByteArray json = R"({"id":"t","from":{"email":"a@b"},"subject":"s","count":1,"lastMs":)" + lastMs + "}";
    try {
        const auto card = TarnJSON::decode<TarnMailCard>(json);
        QCOMPARE(card.lastMs, expected);
    } catch (const TarnDecodeError &) {
        QCOMPARE(expected, -1);
    }
}

void TestMailRecords::nextSelection_data()
{
    QTest::addColumn<Selection>("current");
    QTest::addColumn<Ids>("before");
    QTest::addColumn<Ids>("after");
    QTest::addColumn<Selection>("expected");

    struct Row {
        const char *label;
        Selection current;
        Ids before;
        Ids after;
        Selection expected;
    };
    const Ids abcd { u"a"_s, u"b"_s, u"c"_s, u"d"_s };
    const Row rows[] {
        { "no selection stays none", {}, abcd, { u"a"_s }, {} },
        { "still listed stays", u"b"_s, abcd, { u"d"_s, u"b"_s }, u"b"_s },
        { "removed: the next one", u"b"_s, abcd, { u"a"_s, u"c"_s, u"d"_s }, u"c"_s },
        { "next also gone: the first later survivor", u"b"_s, abcd, { u"a"_s, u"d"_s }, u"d"_s },
        { "a new thread above does not steal it", u"b"_s, abcd, { u"n"_s, u"a"_s, u"c"_s, u"d"_s }, u"c"_s },
        { "the last removed walks up", u"d"_s, abcd, { u"a"_s, u"b"_s, u"c"_s }, u"c"_s },
        { "nearest earlier survivor", u"d"_s, abcd, { u"a"_s, u"b"_s }, u"b"_s },
        { "all gone, new ones: the first", u"b"_s, abcd, { u"x"_s, u"y"_s }, u"x"_s },
        { "emptied list", u"a"_s, abcd, {}, {} },
        { "unknown current: the first", u"z"_s, abcd, { u"c"_s, u"d"_s }, u"c"_s },
        { "unknown current, empty list", u"z"_s, abcd, {}, {} },
    };
    for (const Row &row : rows)
        QTest::addRow("%s", row.label) << row.current << row.before << row.after << row.expected;
}

void TestMailRecords::nextSelection()
{
    QFETCH(Selection, current);
    QFETCH(Ids, before);
    QFETCH(Ids, after);
    QFETCH(Selection, expected);
    QCOMPARE(TarnMailAction::nextSelection(current, before, after), expected);
}

void TestMailRecords::leaves_data()
{
    QTest::addColumn<TarnMailAction>("action");
    QTest::addColumn<QStringList>("leavesViews");

    using K = TarnMailAction::Kind;
    const auto simple = [](K kind) { return TarnMailAction::simple(kind); };
    QTest::addRow("done") << simple(K::Done) << QStringList { u"inbox"_s, u"snoozed"_s };
    QTest::addRow("trash") << simple(K::Trash)
                           << QStringList { u"inbox"_s, u"starred"_s, u"sent"_s, u"snoozed"_s, u"done"_s, {} };
    QTest::addRow("untrash") << simple(K::Untrash) << QStringList { u"trash"_s };
    QTest::addRow("back to the inbox") << simple(K::Inbox) << QStringList { u"snoozed"_s, u"done"_s, u"trash"_s };
    QTest::addRow("snooze") << TarnMailAction::snooze(1) << QStringList { u"inbox"_s, u"done"_s, u"trash"_s };
    QTest::addRow("pin") << simple(K::Pin) << QStringList();
    QTest::addRow("label") << TarnMailAction::label(u"l"_s, true) << QStringList();
}

void TestMailRecords::leaves()
{
    QFETCH(TarnMailAction, action);
    QFETCH(QStringList, leavesViews);
    // The empty view is a search's results.
    const QStringList views { u"inbox"_s, u"starred"_s, u"sent"_s, u"snoozed"_s, u"done"_s, u"trash"_s, {} };
    QStringList left;
    for (const QString &view : views)
        if (action.leaves(view))
            left.append(view);
    QCOMPARE(left, leavesViews);
}

void TestMailRecords::proxyPaths_data()
{
    QTest::addColumn<Ids>("requested");
    QTest::addColumn<QJsonObject>("answer");
    QTest::addColumn<Paths>("expected");

    struct Row {
        const char *label;
        Ids requested;
        QJsonObject answer;
        Paths expected;
    };
    const QString a = u"https://cdn.example/a.png"_s;
    const QString b = u"http://news.example/b.gif?x=1&y=2"_s;
    const QJsonObject both { { a, u"u=A&e=9&s=Zz_-"_s }, { b, u"u=B&e=9&s=Yy"_s } };
    const Row rows[] {
        { "both signed, in requested order", { b, a }, { { u"images"_s, both } },
            { { b, u"/api/tarn-mail/img?u=B&e=9&s=Yy"_s }, { a, u"/api/tarn-mail/img?u=A&e=9&s=Zz_-"_s } } },
        { "unsigned skipped", { a, u"https://other.example/c.png"_s }, { { u"images"_s, both } },
            { { a, u"/api/tarn-mail/img?u=A&e=9&s=Zz_-"_s } } },
        { "the service's own prefix", { a }, { { u"path"_s, u"/api/tarn-mail/img2?"_s }, { u"images"_s, both } },
            { { a, u"/api/tarn-mail/img2?u=A&e=9&s=Zz_-"_s } } },
        { "a prefix off the mail service", { a }, { { u"path"_s, u"/api/logout?"_s }, { u"images"_s, both } }, {} },
        { "a prefix climbing out", { a }, { { u"path"_s, u"/api/tarn-mail/../logout?"_s }, { u"images"_s, both } },
            {} },
        { "a token with a fragment", { a }, { { u"images"_s, QJsonObject { { a, u"u=A#x"_s } } } }, {} },
        { "a token with a path", { a }, { { u"images"_s, QJsonObject { { a, u"u=A/../x"_s } } } }, {} },
        { "an empty token", { a }, { { u"images"_s, QJsonObject { { a, u""_s } } } }, {} },
        { "nothing signed", { a }, { { u"images"_s, QJsonObject() } }, {} },
    };
    for (const Row &row : rows)
        QTest::addRow("%s", row.label) << row.requested << row.answer << row.expected;
}

void TestMailRecords::proxyPaths()
{
    QFETCH(Ids, requested);
    QFETCH(QJsonObject, answer);
    QFETCH(Paths, expected);
    const auto signedImages = TarnMailSignedImages::fromJSON(TarnJSONObject(answer));
    QCOMPARE(TarnMailProxy::proxyPaths(requested, signedImages), expected);
}

void TestMailRecords::attachmentLimits_data()
{
    QTest::addColumn<QList<qint64>>("sizes");
    QTest::addColumn<bool>("fits");

    constexpr qint64 limit = 18874368;
    QTest::addRow("none") << QList<qint64>() << true;
    QTest::addRow("20 small files") << QList<qint64>(20, 10) << true;
    QTest::addRow("a 21st file") << QList<qint64>(21, 10) << false;
    QTest::addRow("exactly 18 MiB in two") << QList<qint64> { limit - 1000, 1000 } << true;
    QTest::addRow("18 MiB and a byte") << QList<qint64> { limit - 1000, 1001 } << false;
    QTest::addRow("empty files count too") << QList<qint64>(21, 0) << false;
}

void TestMailRecords::attachmentLimits()
{
    QFETCH(QList<qint64>, sizes);
    QFETCH(bool, fits);
    QList<MailDraftFile> files;
    for (const qint64 size : sizes)
        files.append({ u"id"_s, u"f.bin"_s, QByteArray(size, 'x') });
    QCOMPARE(TarnMailSend::attachmentsFit(files), fits);
}

void TestMailRecords::reply_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QStringList>("to");
    QTest::addColumn<QStringList>("cc");
    QTest::addColumn<bool>("all");
    QTest::addColumn<QStringList>("expectedTo");
    QTest::addColumn<QStringList>("expectedCc");

    const QString me = u"me@x.example"_s;
    const QString ann = u"ann@x.example"_s;
    const QString bob = u"bob@x.example"_s;
    const QString cy = u"cy@x.example"_s;
    QTest::addRow("reply: the sender only")
        << ann << QStringList { me, bob } << QStringList { cy } << false << QStringList { ann } << QStringList();
    QTest::addRow("reply all: the others copied, not me") << ann << QStringList { me, bob } << QStringList { cy }
                                                          << true << QStringList { ann } << QStringList { bob, cy };
    QTest::addRow("reply all: an address once, whatever its case")
        << ann << QStringList { u"ANN@x.example"_s, u"Me@X.example"_s } << QStringList { bob, u"BOB@x.example"_s }
        << true << QStringList { ann } << QStringList { bob };
    QTest::addRow("reply to my own message: its recipients")
        << me << QStringList { ann, bob } << QStringList() << false << QStringList { ann, bob } << QStringList();
    QTest::addRow("reply all to my own message: copies kept")
        << me << QStringList { ann } << QStringList { cy } << true << QStringList { ann } << QStringList { cy };
}

void TestMailRecords::reply()
{
    QFETCH(QString, from);
    QFETCH(QStringList, to);
    QFETCH(QStringList, cc);
    QFETCH(bool, all);
    QFETCH(QStringList, expectedTo);
    QFETCH(QStringList, expectedCc);
    const auto people = [](const QStringList &emails) {
        QList<TarnMailPerson> out;
        for (const QString &email : emails)
            out.append({ {}, email });
        return out;
    };
    TarnMailMessage message;
    message.id = u"m1"_s;
    message.from = { u"Someone"_s, from };
    message.to = people(to);
    message.cc = people(cc);
    const TarnMailThread thread { u"t1"_s, u"RE: Clay order"_s, { message }, false };
    const TarnMailSend draft = MailComposeRules::reply(thread, message, u"me@x.example"_s, all);
    QCOMPARE(draft.to, expectedTo);
    QCOMPARE(draft.cc, expectedCc);
    QCOMPARE(draft.subject, u"RE: Clay order"_s);
    QCOMPARE(draft.threadId, u"t1"_s);
    QCOMPARE(draft.messageId, u"m1"_s);
}

void TestMailRecords::forward()
{
    TarnMailMessage message;
    message.from = { u"Ingrid Baumann"_s, u"ingrid@erdwerk.example"_s };
    message.to = { { {}, u"maren@halvard.example"_s } };
    message.cc = { { u"Tomas Reyes"_s, u"tomas@halvard.example"_s } };
    message.text = u"Please find attached our quotation."_s;
    const TarnMailSend draft = MailComposeRules::forward({ u"t"_s, u"Fw: Clay"_s, { message }, false }, message);
    QVERIFY(draft.to.isEmpty());
    QCOMPARE(draft.subject, u"Fw: Clay"_s);
    QVERIFY(!draft.threadId);
    const QStringList lines = draft.text.split(u'\n');
    const qsizetype at = lines.indexOf(u"---------- Forwarded message ----------"_s);
    QVERIFY(at > 0);
    QCOMPARE(lines.at(at + 1), u"From: Ingrid Baumann <ingrid@erdwerk.example>"_s);
    QVERIFY(lines.at(at + 2).startsWith("Date: "_L1));
    QCOMPARE(lines.mid(at + 3, 3),
        QStringList(
            { u"Subject: Fw: Clay"_s, u"To: maren@halvard.example"_s, u"Cc: Tomas Reyes <tomas@halvard.example>"_s }));
    QCOMPARE(lines.last(), message.text);
    QCOMPARE(MailComposeRules::prefixed(u"Clay"_s, u"Fwd: "_s), u"Fwd: Clay"_s);
    QCOMPARE(MailComposeRules::prefixed(u" re: Clay"_s, u"Re: "_s), u"re: Clay"_s);
}

void TestMailRecords::bodyChoice_data()
{
    QTest::addColumn<std::optional<QString>>("html");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");

    QTest::addRow("HTML when it says something")
        << std::optional(u"<p>From <b>HTML</b></p>"_s) << u"plain"_s << u"From HTML"_s;
    QTest::addRow("whitespace-only HTML: the text") << std::optional(u" \n\t \r\n"_s) << u"plain"_s << u"plain"_s;
    QTest::addRow("no HTML: the text") << std::optional<QString>() << u"plain"_s << u"plain"_s;
    QTest::addRow("neither: the snippet") << std::optional(u"\n"_s) << u"  "_s << u"snippet"_s;
}

void TestMailRecords::bodyChoice()
{
    QFETCH(std::optional<QString>, html);
    QFETCH(QString, text);
    QFETCH(QString, shown);
    const TarnMailDocument document = MailParse::document({ u"m"_s, html, text, u"snippet"_s }, false);
    QCOMPARE(TarnMailHTML::plainText(document.blocks).trimmed(), shown);
}

void TestMailRecords::blockRows_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QStringList>("rows"); // kind depth [q][s] marker | text or images

    QTest::addRow("runs as escaped styled text")
        << u"<p>Fish &amp; <b>chips</b> <i><u>now</u></i> <a href=\"https://a.example/x\">here</a> &lt;b&gt;</p>"_s
        << QStringList { u"paragraph 0 | Fish &amp; <b>chips</b> <u><i>now</i></u> <a "
                         "href=\"https://a.example/x\">here</a> &lt;b&gt;"_s };
    QTest::addRow("ordered list from its start")
        << u"<ol start=\"3\"><li>one</li><li>two</li></ol>"_s
        << QStringList { u"paragraph 1 3. | one"_s, u"paragraph 1 4. | two"_s };
    QTest::addRow("nested bullets") << u"<ul><li>a<ul><li>b</li></ul></li></ul>"_s
                                    << QStringList { u"paragraph 1 • | a"_s, u"paragraph 2 • | b"_s };
    QTest::addRow("heading and rule") << u"<h2>Title</h2><hr><p>after</p>"_s
                                      << QStringList { u"heading 0 h2 | Title"_s, u"rule 0 | "_s,
                                             u"paragraph 0 | after"_s };
    QTest::addRow("images side by side")
        << u"<p>x</p><img src=\"https://a.example/1.png\" alt=\"one\"><img src=\"cid:logo@x\" alt=\"two\">"_s
        << QStringList { u"paragraph 0 | x"_s, u"images 0 | https://a.example/1.png cid:logo@x"_s };
}

void TestMailRecords::blockRows()
{
    QFETCH(QString, html);
    QFETCH(QStringList, rows);
    const TarnMailDocument document = TarnMailHTML::parse(html, 10000, 100);
    QStringList described;
    for (const MailBlockRow &row : MailBlockRows::rows(document.blocks)) {
        QString line = row.kind + u' ' + QString::number(row.depth);
        if (row.quote)
            line += u" q"_s;
        if (row.signature)
            line += u" s"_s;
        if (row.level > 0)
            line += u" h"_s + QString::number(row.level);
        if (!row.marker.isEmpty())
            line += u' ' + row.marker;
        QStringList sources;
        for (const QVariant &image : row.images)
            sources.append(image.toMap().value(u"source"_s).toString());
        line += u" | "_s + (sources.isEmpty() ? row.text : sources.join(u' '));
        described.append(line);
    }
    QCOMPARE(described, rows);
}

QTEST_GUILESS_MAIN(TestMailRecords)
#include "tst_mailrecords.moc"
