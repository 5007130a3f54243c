// Link vetting: what may be linked, what asks first, what counts as tracking,
// and the small link helpers of the mail views.
#include "MailDescribe.h"

#include "mail/TarnMailHTML.h"
#include "mail/detail/LinkRules.h"

#include <QTest>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

class TestMailLinks : public QObject
{
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
    void linkSummary_data();
    void linkSummary();
    void linkified_data();
    void linkified();
    void attachmentID_data();
    void attachmentID();
};

void TestMailLinks::safeLink_data()
{
    QTest::addColumn<QString>("href");
    QTest::addColumn<QString>("expected"); // empty: refused

    QTest::addRow("https") << u"https://example.com/a?b=c#d"_s << u"https://example.com/a?b=c#d"_s;
    QTest::addRow("http, upper-case scheme") << u"HTTP://Example.com/"_s << u"http://example.com/"_s;
    QTest::addRow("mailto") << u"mailto:ann@example.com?subject=Hi"_s << u"mailto:ann@example.com?subject=Hi"_s;
    QTest::addRow("entities decoded, spaces trimmed") << u"  https://example.com/?a=1&amp;b=2 "_s
                                                      << u"https://example.com/?a=1&b=2"_s;
    QTest::addRow("disallowed characters percent-encoded") << u"https://example.com/a b|c"_s
                                                           << u"https://example.com/a%20b%7Cc"_s;
    QTest::addRow("javascript") << u"javascript:alert(1)"_s << QString();
    QTest::addRow("javascript in capitals") << u"JavaScript:alert(1)"_s << QString();
    QTest::addRow("javascript split by an entity tab") << u"jav&#x09;ascript:alert(1)"_s << QString();
    QTest::addRow("data") << u"data:text/html,<script>alert(1)</script>"_s << QString();
    QTest::addRow("file") << u"file:///etc/passwd"_s << QString();
    QTest::addRow("relative path") << u"/account/settings"_s << QString();
    QTest::addRow("scheme-relative") << u"//evil.example/"_s << QString();
    QTest::addRow("fragment only") << u"#top"_s << QString();
    QTest::addRow("user part") << u"https://bank.example@evil.example/"_s << QString();
    QTest::addRow("user and password") << u"https://a:b@example.com/"_s << QString();
    QTest::addRow("no host") << u"https:///path"_s << QString();
    QTest::addRow("empty mailto") << u"mailto:"_s << QString();
    QTest::addRow("empty") << u"   "_s << QString();
}

void TestMailLinks::safeLink()
{
    QFETCH(QString, href);
    QFETCH(QString, expected);
    const std::optional<QUrl> url = TarnMailHTML::safeLink(href);
    QCOMPARE(url ? url->toString(QUrl::FullyEncoded) : QString(), expected);
}

// Plain addresses are read from their text without a URL parse: the result
// must be what the parse gives, and near-plain addresses must take the parse.
void TestMailLinks::plainAddressesReadAsParsed_data()
{
    QTest::addColumn<QString>("href");
    QTest::addColumn<bool>("plain");

    QTest::addRow("host only") << u"https://example.com"_s << true;
    QTest::addRow("path, query and fragment") << u"https://a.example.com/p/q.html?x=1&y=%20#top"_s << true;
    QTest::addRow("delimiters kept") << u"http://a.example/a!$&'()*+,;=:@b?q=/?[1]#f/?"_s << true;
    QTest::addRow("empty query") << u"https://a.example/pixel?"_s << true;
    QTest::addRow("empty query before fragment") << u"https://a.example/p?#f"_s << true;
    QTest::addRow("escaped delimiter") << u"https://a.example/a%2Fb"_s << true;
    QTest::addRow("escaped unreserved is decoded") << u"https://a.example/%7Euser"_s << false;
    QTest::addRow("lower-case escape is raised") << u"https://a.example/%e2%82%ac"_s << false;
    QTest::addRow("broken escape") << u"https://a.example/%zz"_s << false;
    QTest::addRow("second hash") << u"https://a.example/#a#b"_s << false;
    QTest::addRow("upper-case host") << u"https://Example.com/"_s << false;
    QTest::addRow("upper-case scheme") << u"HTTPS://example.com/"_s << false;
    QTest::addRow("port") << u"https://example.com:8443/"_s << false;
    QTest::addRow("user") << u"https://a@example.com/"_s << false;
    QTest::addRow("dotted quad") << u"http://203.0.113.7/x"_s << false;
    QTest::addRow("short dotted number") << u"http://1.2.3/x"_s << false;
    QTest::addRow("hexadecimal number") << u"http://0x000000000000150/."_s << false;
    QTest::addRow("last label starts with a digit") << u"https://shop.3com/"_s << false;
    QTest::addRow("encoded international label") << u"https://www.xn--pple-43d.com/"_s << false;
    QTest::addRow("trailing dot") << u"https://example.com./"_s << false;
    QTest::addRow("empty label") << u"https://a..example/"_s << false;
    QTest::addRow("leading hyphen") << u"https://-a.example/"_s << false;
    QTest::addRow("label of 64") << (u"https://"_s + QString(64, u'a') + u".example/"_s) << false;
    QTest::addRow("space") << u"https://a.example/a b"_s << false;
    QTest::addRow("braces and bar") << u"https://a.example/{x}|"_s << false;
    QTest::addRow("non-ASCII path") << u"https://a.example/café"_s << false;
    QTest::addRow("entity in the query") << u"https://a.example/?a=1&amp;b=2"_s << true;
    QTest::addRow("spaces around") << u"  https://a.example/  "_s << true;
}

void TestMailLinks::plainAddressesReadAsParsed()
{
    QFETCH(QString, href);
    QFETCH(bool, plain);
    const QString text = TarnMailHTML::decodeEntities(href).trimmed();
    const std::optional<TarnMailHTML::detail::LinkRules::WebParts> parts
        = TarnMailHTML::detail::LinkRules::plainWebParts(text);
    QCOMPARE(parts.has_value(), plain);

    const std::optional<QUrl> parsed = TarnMailHTML::detail::LinkRules::vettedByParse(text);
    const std::optional<TarnMailLink> link = TarnMailHTML::detail::LinkRules::vetted(href);
    QCOMPARE(link.has_value(), parsed.has_value());
    if (!parsed)
        return;
    QCOMPARE(link->text(), parsed->toString(QUrl::FullyEncoded));
    if (parts) {
        QCOMPARE(parts->host.toString(), parsed->host(QUrl::FullyEncoded));
        QCOMPARE(parts->path.toString(), parsed->path(QUrl::FullyEncoded));
        const QString query = parsed->query(QUrl::FullyEncoded);
        QCOMPARE(parts->pathAndQuery.toString(), query.isEmpty() ? parts->path.toString() : parts->path + u'?' + query);
    }
}

void TestMailLinks::confirmationRoundTrip_data()
{
    QTest::addColumn<QString>("target");
    QTest::addRow("plain") << u"https://example.com/"_s;
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
    QTest::addColumn<QString>("url");
    QTest::addColumn<LinkDecision::Kind>("kind");
    QTest::addColumn<QString>("target");

    QTest::addRow("web link opens") << u"https://example.com/x"_s << LinkDecision::Kind::Open
                                    << u"https://example.com/x"_s;
    QTest::addRow("mail link opens") << u"mailto:a@example.com"_s << LinkDecision::Kind::Open
                                     << u"mailto:a@example.com"_s;
    QTest::addRow("other scheme blocked") << u"ftp://example.com/"_s << LinkDecision::Kind::Block << QString();
    QTest::addRow("confirmation scheme in capitals")
        << u"PILO-MAIL-CONFIRM://open?u=https%3A%2F%2Fexample.com%2F"_s << LinkDecision::Kind::Confirm
        << u"https://example.com/"_s;
    QTest::addRow("confirmation without target") << u"pilo-mail-confirm://open"_s << LinkDecision::Kind::Block
                                                 << QString();
    QTest::addRow("confirmation with an empty target") << u"pilo-mail-confirm://open?u="_s
                                                       << LinkDecision::Kind::Block << QString();
    QTest::addRow("confirmation of a script") << u"pilo-mail-confirm://open?u=javascript%3Aalert(1)"_s
                                              << LinkDecision::Kind::Block << QString();
    QTest::addRow("confirmation of a credentials trick")
        << u"pilo-mail-confirm://open?u=https%3A%2F%2Fbank.example%40evil.example%2F"_s << LinkDecision::Kind::Block
        << QString();
}

void TestMailLinks::linkDecision()
{
    QFETCH(QString, url);
    QFETCH(LinkDecision::Kind, kind);
    QFETCH(QString, target);
    const LinkDecision decision = TarnMailHTML::linkDecision(QUrl(url));
    QCOMPARE(decision.kind(), kind);
    QCOMPARE(decision.url().toString(QUrl::FullyEncoded), target);
}

void TestMailLinks::isTrackerURL_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<bool>("tracker");

    QTest::addRow("campaign open pixel") << u"https://example.us1.list-manage.com/track/open.php?u=1&id=2"_s << true;
    QTest::addRow("transactional open") << u"https://u123.ct.sendgrid.net/wf/open?upn=abc"_s << true;
    QTest::addRow("hashed open path") << u"https://email.mg.example.com/o/ABCDEFGH12"_s << true;
    QTest::addRow("short open path is not") << u"https://example.com/o/abc"_s << false;
    QTest::addRow("open with query") << u"https://click.e.example.com/open.aspx?ffcb10-1"_s << true;
    QTest::addRow("e2t open") << u"https://t.example.com/e2t/o/5/abc"_s << true;
    QTest::addRow("pixel gif") << u"https://pixel.example.com/pixel.gif?x=1"_s << true;
    QTest::addRow("beacon") << u"https://b.example.com/beacon/123"_s << true;
    QTest::addRow("mail view") << u"https://m.example.com/email/open?id=1"_s << true;
    QTest::addRow("open id parameter") << u"https://m.example.com/img.png?open_id=42"_s << true;
    QTest::addRow("tracking gif name") << u"https://m.example.com/t.gif?x"_s << true;
    QTest::addRow("one by one") << u"https://m.example.com/1x1.png"_s << true;
    QTest::addRow("bare open at the end") << u"https://m.example.com/open"_s << true;
    QTest::addRow("m/o gif") << u"https://m.example.com/m/o/abc.def.gif"_s << true;
    QTest::addRow("upper-case path") << u"https://m.example.com/TRACK/OPEN"_s << true;
    QTest::addRow("listed host with tracking path") << u"https://mandrillapp.com/px/abc"_s << true;
    QTest::addRow("listed host, real image") << u"https://mcusercontent.com/o/logo.png"_s << false;
    QTest::addRow("click host, word boundary") << u"https://click.example.com/trk-abc"_s << true;
    QTest::addRow("click host, longer word") << u"https://click.example.com/tracks/summer"_s << false;
    QTest::addRow("ordinary image") << u"https://cdn.example.com/images/hero.jpg"_s << false;
    QTest::addRow("opening word in path") << u"https://cdn.example.com/opening-hours.png"_s << false;
    QTest::addRow("not web") << u"ftp://example.com/track/open"_s << false;
}

void TestMailLinks::isTrackerURL()
{
    QFETCH(QString, url);
    QFETCH(bool, tracker);
    QCOMPARE(TarnMailHTML::isTrackerURL(QUrl(url)), tracker);
}

void TestMailLinks::isDeceptive_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("url");
    QTest::addColumn<bool>("deceptive");

    QTest::addRow("other registrable domain") << u"https://www.paypal.com/"_s
                                              << u"https://paypal.com.account-verify.example.net/login"_s << true;
    QTest::addRow("bare domain over an address") << u"www.chase.com"_s << u"http://203.0.113.7/chase/"_s << true;
    QTest::addRow("punycode look-alike") << u"https://www.apple.com"_s << u"https://www.xn--pple-43d.com/"_s << true;
    QTest::addRow("same domain, other case") << u"amazon.com"_s << u"https://AMAZON.COM/gp/orders"_s << false;
    QTest::addRow("subdomain shown") << u"https://docs.example.com/a"_s << u"https://example.com/b"_s << false;
    QTest::addRow("www shown for bare host") << u"www.example.com"_s << u"https://example.com/"_s << false;
    QTest::addRow("suffix without a dot is another site") << u"example.com"_s << u"https://badexample.com/"_s
                                                          << true;
    QTest::addRow("words are not an address") << u"Click here"_s << u"https://evil.example.org/"_s << false;
    QTest::addRow("trailing dot is not an address") << u"https://www.irs.gov."_s << u"https://www.irs.gov/"_s
                                                    << false;
    QTest::addRow("port and path") << u"shop.example.com:8443/cart"_s << u"https://other.example/"_s << true;
    QTest::addRow("scheme in capitals") << u"HTTPS://WWW.SHOP.EXAMPLE"_s << u"https://other.example/"_s << true;
    QTest::addRow("port without digits") << u"shop.example.com:/cart"_s << u"https://other.example/"_s << false;
    QTest::addRow("empty label") << u"shop..example.com"_s << u"https://other.example/"_s << false;
    QTest::addRow("leading dot") << u".shop.example.com"_s << u"https://other.example/"_s << false;
    QTest::addRow("top-level of digits") << u"shop.example.c0m"_s << u"https://other.example/"_s << false;
    QTest::addRow("more after the name") << u"shop.example.com!"_s << u"https://other.example/"_s << false;
    QTest::addRow("mail links are not checked") << u"support@bank.example.com"_s
                                                << u"mailto:phish@evil.example.org"_s << false;
    QTest::addRow("text over 300 characters") << QString(u"a"_s.repeated(300) + u".com"_s)
                                              << u"https://evil.example/"_s << false;
}

void TestMailLinks::isDeceptive()
{
    QFETCH(QString, text);
    QFETCH(QString, url);
    QFETCH(bool, deceptive);
    QCOMPARE(TarnMailHTML::isDeceptive(text, QUrl(url)), deceptive);
}

void TestMailLinks::linkSummary_data()
{
    QTest::addColumn<QStringList>("links"); // one run per entry; empty: no link
    QTest::addColumn<QString>("summary");   // empty: none

    QTest::addRow("no links") << QStringList {QString(), QString()} << QString();
    QTest::addRow("web and mail") << QStringList {u"https://a.example/"_s, QString(), u"mailto:b@example.com"_s}
                                  << u"Opens https://a.example/\nmailto:b@example.com"_s;
    QTest::addRow("repeats once") << QStringList {u"https://a.example/"_s, u"https://a.example/"_s}
                                  << u"Opens https://a.example/"_s;
    QStringList many;
    QStringList lines;
    for (int i = 1; i <= 8; ++i) {
        many.append(u"https://a.example/%1"_s.arg(i));
        if (i <= 6)
            lines.append(u"Opens https://a.example/%1"_s.arg(i));
    }
    QTest::addRow("at most six") << many << lines.join(u'\n');
}

void TestMailLinks::linkSummary()
{
    QFETCH(QStringList, links);
    QFETCH(QString, summary);
    QList<TarnMailRun> runs;
    for (const QString &link : links)
        runs.append({u"t"_s, {}, link.isEmpty() ? std::nullopt : std::make_optional(TarnMailLink(QUrl(link)))});
    QCOMPARE(TarnMailHTML::linkSummary(runs).value_or(QString()), summary);
}

void TestMailLinks::linkified_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::addRow("no address") << u"just words"_s << u"just words"_s;
    QTest::addRow("address in a sentence") << u"See https://example.com/a, then"_s
                                           << u"See [->https://example.com/a:https://example.com/a], then"_s;
    QTest::addRow("closing punctuation left out") << u"(at http://example.com/x?y=1).\"'"_s
                                                  << u"(at [->http://example.com/x?y=1:http://example.com/x?y=1]).\"'"_s;
    QTest::addRow("two addresses") << u"https://a.example https://b.example"_s
                                   << u"[->https://a.example:https://a.example] [->https://b.example:https://b.example]"_s;
    QTest::addRow("stops at angle brackets") << u"<https://a.example/p>"_s
                                             << u"<[->https://a.example/p:https://a.example/p]>"_s;
    QTest::addRow("unsafe match stays text") << u"http://user@evil.example/ ok"_s << u"http://user@evil.example/ ok"_s;
    QTest::addRow("nothing but punctuation after the scheme") << u"see https://..."_s << u"see https://..."_s;
}

void TestMailLinks::linkified()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const QList<TarnMailRun> runs = TarnMailHTML::linkified(text);
    QCOMPARE(MailDescribe::runs(runs), expected);
    QString joined;
    for (const TarnMailRun &run : runs)
        joined += run.text;
    QCOMPARE(joined, text);
}

void TestMailLinks::attachmentID_data()
{
    QTest::addColumn<QString>("cid");
    QTest::addColumn<QString>("expected");

    QTest::addRow("by id") << u"image001.png@01D0"_s << u"image001.png@01D0"_s;
    QTest::addRow("by id in brackets, any case") << u" IMAGE002@X "_s << u"<image002@x>"_s;
    QTest::addRow("by name when no id matches") << u"logo.png"_s << u"att-3"_s;
    QTest::addRow("an id wins over an earlier name") << u"shared"_s << u"shared"_s;
    QTest::addRow("no match") << u"missing"_s << QString();
    QTest::addRow("empty") << u" "_s << QString();
}

void TestMailLinks::attachmentID()
{
    QFETCH(QString, cid);
    QFETCH(QString, expected);
    const QList<TarnMailHTML::AttachmentRef> attachments = {
        {u"image001.png@01D0"_s, u"photo.jpg"_s},
        {u"<image002@x>"_s, u"b.png"_s},
        {u"att-3"_s, u"Logo.PNG"_s},
        {u"att-4"_s, u"shared"_s},
        {u"shared"_s, u"s.png"_s},
    };
    QCOMPARE(TarnMailHTML::attachmentID(cid, attachments).value_or(QString()), expected);
}

QTEST_APPLESS_MAIN(TestMailLinks)
#include "tst_maillinks.moc"
