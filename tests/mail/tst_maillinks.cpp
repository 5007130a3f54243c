// Link vetting: what may be linked, what asks first and what counts as tracking.
#include "mail/TarnMailHTML.h"
#include "mail/detail/LinkRules.h"

#include <QTest>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

struct TextRow {
    const char *name;
    QString text;
    QString expected; // empty: refused, or none
};

struct FlagRow {
    const char *name;
    QString text;
    bool expected;
};

struct DecisionRow {
    const char *name;
    QString url;
    LinkDecision::Kind kind;
    QString target;
};

struct DeceptionRow {
    const char *name;
    QString shown;
    QString url;
    bool deceptive;
};

template <typename Row> void addRows(const QList<Row> &rows)
{
    QTest::addColumn<Row>("row");
    for (const Row &row : rows)
        QTest::addRow("%s", row.name) << row;
}

} // namespace

class TestMailLinks : public QObject {
    Q_OBJECT

private slots:
    void safeLink_data();
    void safeLink();
    void plainAddressesReadAsParsed_data();
    void plainAddressesReadAsParsed();
    void confirmationRoundTrip_data();
    void confirmationRoundTrip();
    void linkDecision_data();
    void linkDecision();
    void isTrackerURL_data();
    void isTrackerURL();
    void isDeceptive_data();
    void isDeceptive();
    void linkSummary();
    void attachmentID();
};

void TestMailLinks::safeLink_data()
{
    addRows<TextRow>({
        { "https", u"https://example.com/a?b=c#d"_s, u"https://example.com/a?b=c#d"_s },
        { "http, upper-case scheme", u"HTTP://Example.com/"_s, u"http://example.com/"_s },
        { "mailto", u"mailto:ann@example.com?subject=Hi"_s, u"mailto:ann@example.com?subject=Hi"_s },
        { "entities decoded, spaces trimmed", u"  https://example.com/?a=1&amp;b=2 "_s,
            u"https://example.com/?a=1&b=2"_s },
        { "disallowed characters percent-encoded", u"https://example.com/a b|c"_s, u"https://example.com/a%20b%7Cc"_s },
        { "javascript", u"javascript:alert(1)"_s, QString() },
        { "javascript split by an entity tab", u"jav&#x09;ascript:alert(1)"_s, QString() },
        { "scheme-relative", u"//evil.example/"_s, QString() },
        { "user part", u"https://bank.example@evil.example/"_s, QString() },
        { "no host", u"https:///path"_s, QString() },
        { "empty mailto", u"mailto:"_s, QString() },
        { "empty", u"   "_s, QString() },
    });
}

void TestMailLinks::safeLink()
{
    QFETCH(TextRow, row);
    const std::optional<QUrl> url = TarnMailHTML::safeLink(row.text);
    QCOMPARE(url ? url->toString(QUrl::FullyEncoded) : QString(), row.expected);
}

// Plain addresses are read from their text without a URL parse: the result
// must be what the parse gives, and near-plain addresses must take the parse.
void TestMailLinks::plainAddressesReadAsParsed_data()
{
    addRows<FlagRow>({
        { "host only", u"https://example.com"_s, true },
        { "path, query and fragment", u"https://a.example.com/p/q.html?x=1&y=%20#top"_s, true },
        { "delimiters kept", u"http://a.example/a!$&'()*+,;=:@b?q=/?[1]#f/?"_s, true },
        { "empty query", u"https://a.example/pixel?"_s, true },
        { "empty query before fragment", u"https://a.example/p?#f"_s, true },
        { "escaped delimiter", u"https://a.example/a%2Fb"_s, true },
        { "escaped unreserved is decoded", u"https://a.example/%7Euser"_s, false },
        { "lower-case escape is raised", u"https://a.example/%e2%82%ac"_s, false },
        { "broken escape", u"https://a.example/%zz"_s, false },
        { "second hash", u"https://a.example/#a#b"_s, false },
        { "upper-case scheme", u"HTTPS://example.com/"_s, false },
        { "user", u"https://a@example.com/"_s, false },
        { "hexadecimal number", u"http://0x000000000000150/."_s, false },
        { "encoded international label", u"https://www.xn--pple-43d.com/"_s, false },
        { "trailing dot", u"https://example.com./"_s, false },
        { "empty label", u"https://a..example/"_s, false },
        { "leading hyphen", u"https://-a.example/"_s, false },
        { "label of 64", u"https://"_s + QString(64, u'a') + u".example/"_s, false },
        { "braces and bar", u"https://a.example/{x}|"_s, false },
        { "non-ASCII path", u"https://a.example/café"_s, false },
    });
}

void TestMailLinks::plainAddressesReadAsParsed()
{
    namespace LinkRules = TarnMailHTML::detail::LinkRules;
    QFETCH(FlagRow, row);
    const QString text = TarnMailHTML::decodeEntities(row.text).trimmed();
    const std::optional<LinkRules::WebParts> parts = LinkRules::plainWebParts(text);
    QCOMPARE(parts.has_value(), row.expected);

    const std::optional<QUrl> parsed = LinkRules::vettedByParse(text);
    const std::optional<TarnMailLink> link = LinkRules::vetted(row.text);
    QCOMPARE(link.has_value(), parsed.has_value());
    if (!parsed)
        return;
    QCOMPARE(link->text(), parsed->toString(QUrl::FullyEncoded));
    if (parts) {
        QCOMPARE(parts->host.toString(), parsed->host(QUrl::FullyEncoded));
        QCOMPARE(parts->path.toString(), parsed->path(QUrl::FullyEncoded));
        const QString query = parsed->query(QUrl::FullyEncoded);
        QCOMPARE(parts->pathAndQuery.toString(), query.isEmpty() ? parts->path.toString() : parts->path + u'?' + query);
        QCOMPARE(LinkRules::isTracker(parts->host, parts->path, parts->pathAndQuery), LinkRules::isTrackerURL(*parsed));
    }
}

void TestMailLinks::confirmationRoundTrip_data()
{
    QTest::addColumn<QString>("target");
    QTest::addRow("query delimiters") << u"https://example.com/p?a=1&b=2+3&c=%26#frag"_s;
    QTest::addRow("encoded spaces and unicode") << u"https://example.com/caf%C3%A9%20x?q=%E2%82%AC"_s;
    QTest::addRow("international host") << u"https://xn--pple-43d.com/login"_s;
    QTest::addRow("mailto") << u"mailto:ann@example.com?subject=a%26b"_s;
}

void TestMailLinks::confirmationRoundTrip()
{
    QFETCH(QString, target);
    const QUrl url = QUrl::fromEncoded(target.toUtf8(), QUrl::StrictMode);
    QVERIFY(url.isValid());
    const QUrl confirmation = TarnMailHTML::confirmationURL(url);
    QCOMPARE(confirmation.scheme(), u"pilo-mail-confirm"_s);
    QCOMPARE(confirmation.host(), u"open"_s);
    QCOMPARE(QUrlQuery(confirmation).queryItems().size(), 1);
    const LinkDecision decision = TarnMailHTML::linkDecision(confirmation);
    QCOMPARE(decision.kind(), LinkDecision::Kind::Confirm);
    QCOMPARE(decision.url().toString(QUrl::FullyEncoded), url.toString(QUrl::FullyEncoded));
}

void TestMailLinks::linkDecision_data()
{
    using Kind = LinkDecision::Kind;
    addRows<DecisionRow>({
        { "web link opens", u"https://example.com/x"_s, Kind::Open, u"https://example.com/x"_s },
        { "other scheme blocked", u"ftp://example.com/"_s, Kind::Block, QString() },
        { "confirmation scheme in capitals", u"PILO-MAIL-CONFIRM://open?u=https%3A%2F%2Fexample.com%2F"_s,
            Kind::Confirm, u"https://example.com/"_s },
        { "confirmation without target", u"pilo-mail-confirm://open"_s, Kind::Block, QString() },
        { "confirmation with an empty target", u"pilo-mail-confirm://open?u="_s, Kind::Block, QString() },
        { "confirmation of a script", u"pilo-mail-confirm://open?u=javascript%3Aalert(1)"_s, Kind::Block, QString() },
    });
}

void TestMailLinks::linkDecision()
{
    QFETCH(DecisionRow, row);
    const LinkDecision decision = TarnMailHTML::linkDecision(QUrl(row.url));
    QCOMPARE(decision.kind(), row.kind);
    QCOMPARE(decision.url().toString(QUrl::FullyEncoded), row.target);
}

void TestMailLinks::isTrackerURL_data()
{
    addRows<FlagRow>({
        { "campaign open pixel", u"https://example.us1.list-manage.com/track/open.php?u=1&id=2"_s, true },
        { "hashed open path", u"https://email.mg.example.com/o/ABCDEFGH12"_s, true },
        { "short open path is not", u"https://example.com/o/abc"_s, false },
        { "e2t open", u"https://t.example.com/e2t/o/5/abc"_s, true },
        { "pixel", u"https://pixel.example.com/pixel.gif?x=1"_s, true },
        { "beacon", u"https://b.example.com/beacon/123"_s, true },
        { "mail view", u"https://m.example.com/email/open?id=1"_s, true },
        { "tracking gif name", u"https://m.example.com/t.gif?x"_s, true },
        { "one by one", u"https://m.example.com/1x1.png"_s, true },
        { "open id parameter", u"https://m.example.com/img.png?open_id=42"_s, true },
        { "bare open at the end", u"https://m.example.com/open"_s, true },
        { "upper-case path", u"https://m.example.com/TRACK/OPEN"_s, true },
        { "listed host with tracking path", u"https://mandrillapp.com/px/abc"_s, true },
        { "listed host, real image", u"https://mcusercontent.com/o/logo.png"_s, false },
        { "click host, word boundary", u"https://click.example.com/trk-abc"_s, true },
        { "click host, longer word", u"https://click.example.com/tracks/summer"_s, false },
        { "ordinary image", u"https://cdn.example.com/images/hero.jpg"_s, false },
        { "opening word in path", u"https://cdn.example.com/opening-hours.png"_s, false },
        { "not web", u"ftp://example.com/track/open"_s, false },
    });
}

void TestMailLinks::isTrackerURL()
{
    QFETCH(FlagRow, row);
    QCOMPARE(TarnMailHTML::isTrackerURL(QUrl(row.text)), row.expected);
}

void TestMailLinks::isDeceptive_data()
{
    const QString other = u"https://other.example/"_s;
    addRows<DeceptionRow>({
        { "other registrable domain", u"https://www.paypal.com/"_s,
            u"https://paypal.com.account-verify.example.net/login"_s, true },
        { "bare domain over an address", u"www.chase.com"_s, u"http://203.0.113.7/chase/"_s, true },
        { "punycode look-alike", u"https://www.apple.com"_s, u"https://www.xn--pple-43d.com/"_s, true },
        { "same domain, other case", u"amazon.com"_s, u"https://AMAZON.COM/gp/orders"_s, false },
        { "subdomain shown", u"https://docs.example.com/a"_s, u"https://example.com/b"_s, false },
        { "suffix without a dot is another site", u"example.com"_s, u"https://badexample.com/"_s, true },
        { "words are not an address", u"Click here"_s, u"https://evil.example.org/"_s, false },
        { "trailing dot is not an address", u"https://www.irs.gov."_s, u"https://www.irs.gov/"_s, false },
        { "port and path", u"shop.example.com:8443/cart"_s, other, true },
        { "scheme in capitals", u"HTTPS://WWW.SHOP.EXAMPLE"_s, other, true },
        { "port without digits", u"shop.example.com:/cart"_s, other, false },
        { "empty label", u"shop..example.com"_s, other, false },
        { "leading dot", u".shop.example.com"_s, other, false },
        { "top-level of digits", u"shop.example.c0m"_s, other, false },
        { "more after the name", u"shop.example.com!"_s, other, false },
        { "mail links are not checked", u"support@bank.example.com"_s, u"mailto:phish@evil.example.org"_s, false },
        { "text over 300 characters", u"a"_s.repeated(300) + u".com"_s, u"https://evil.example/"_s, false },
    });
}

void TestMailLinks::isDeceptive()
{
    QFETCH(DeceptionRow, row);
    QCOMPARE(TarnMailHTML::isDeceptive(row.shown, QUrl(row.url)), row.deceptive);
}

void TestMailLinks::linkSummary()
{
    const auto summary = [](const QStringList &links) {
        QList<TarnMailRun> runs;
        for (const QString &link : links)
            runs.append({ u"t"_s, {}, link.isEmpty() ? std::nullopt : std::make_optional(TarnMailLink(QUrl(link))) });
        return TarnMailHTML::linkSummary(runs);
    };
    QCOMPARE(summary({ QString(), QString() }), std::nullopt);
    QCOMPARE(summary({ u"https://a.example/"_s, QString(), u"mailto:b@example.com"_s, u"https://a.example/"_s }),
        u"Opens https://a.example/\nmailto:b@example.com"_s);
    QStringList many;
    for (int i = 1; i <= 7; ++i)
        many.append(u"https://a.example/%1"_s.arg(i));
    QCOMPARE(summary(many)->split(u'\n').size(), 6);
}

void TestMailLinks::attachmentID()
{
    const QList<TarnMailHTML::AttachmentRef> attachments = {
        { u"<image002@x>"_s, u"b.png"_s },
        { u"att-3"_s, u"Logo.PNG"_s },
        { u"att-4"_s, u"shared"_s },
        { u"shared"_s, u"s.png"_s },
    };
    const auto find = [&](const QString &cid) { return TarnMailHTML::attachmentID(cid, attachments); };
    QCOMPARE(find(u" IMAGE002@X "_s), u"<image002@x>"_s); // trimmed, brackets and case ignored
    QCOMPARE(find(u"logo.png"_s), u"att-3"_s); // by name when no id matches
    QCOMPARE(find(u"shared"_s), u"shared"_s); // an id wins over an earlier name
    QCOMPARE(find(u"missing"_s), std::nullopt);
}

QTEST_APPLESS_MAIN(TestMailLinks)
#include "tst_maillinks.moc"
