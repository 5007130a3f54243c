// Mail HTML to blocks: character references, the tree, inline styles,
// whitespace, blocks, tables, quoted history, links, images and limits, each a
// table of small mails and the structure the mail views should draw for them
// (see MailDescribe for the notation).
#include "MailDescribe.h"

#include "mail/TarnMailHTML.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct MailRow {
    const char *name;
    QByteArray html;
    QString expected;
    int trackers = 0;
    int characterLimit = TarnMailHTML::threadCharacterLimit;
    int blockLimit = TarnMailHTML::threadBlockLimit;
    bool truncated = false;
};

void addRows(std::initializer_list<MailRow> rows)
{
    QTest::addColumn<MailRow>("row");
    for (const MailRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

struct EntityRow {
    const char *name;
    QString text;
    QString expected;
};

} // namespace

class TestMailHTML : public QObject {
    Q_OBJECT

private slots:
    void entities_data();
    void entities();
    void tree_data();
    void tree() { check(); }
    void inlineStyle_data();
    void inlineStyle() { check(); }
    void whitespace_data();
    void whitespace() { check(); }
    void blocks_data();
    void blocks() { check(); }
    void tables_data();
    void tables() { check(); }
    void quotedHistory_data();
    void quotedHistory() { check(); }
    void links_data();
    void links() { check(); }
    void images_data();
    void images() { check(); }
    void limits_data();
    void limits() { check(); }

private:
    static void check()
    {
        QFETCH(MailRow, row);
        const TarnMailDocument document = TarnMailHTML::parseUTF8(row.html, row.characterLimit, row.blockLimit);
        QCOMPARE(MailDescribe::document(document), row.expected);
        QCOMPARE(document.truncated, row.truncated);
        QCOMPARE(document.blockedTrackers, row.trackers);
    }
};

void TestMailHTML::entities_data()
{
    QTest::addColumn<EntityRow>("row");
    const QString unterminated = u"&"_s + QString(40, u'a') + u";"_s;
    const QList<EntityRow> rows {
        { "names are case-sensitive", u"&Eacute;&eacute; &AMP;"_s, u"\u00C9\u00E9 &AMP;"_s },
        { "legacy name without semicolon", u"a &amp b &lt c &nbspd"_s, u"a & b < c &nbspd"_s },
        { "other names need the semicolon", u"wait&hellip and &hellip;"_s, u"wait&hellip and \u2026"_s },
        { "unknown name stays", u"&bogus; &ampx;"_s, u"&bogus; &ampx;"_s },
        { "decimal", u"&#65;&#233;&#128512;"_s, u"A\u00E9\U0001F600"_s },
        { "hexadecimal either case", u"&#x41;&#X42;&#x1f600;"_s, u"AB\U0001F600"_s },
        { "numeric without semicolon", u"&#65 &#x42 "_s, u"A B "_s },
        { "windows-1252 range remapped", u"&#150;&#x80;&#153;&#x9F;"_s, u"\u2013\u20AC\u2122\u0178"_s },
        { "zero, surrogates and beyond unicode are replaced",
            u"&#0;&#xD800;&#57343;&#x110000;&#18446744073709551681;"_s, u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"_s },
        { "numbers that do not parse stay", u"&#x; &#; &#12ab; &#xZZ;"_s, u"&#x; &#; &#12ab; &#xZZ;"_s },
        { "ampersand stops a name", u"&&amp&lt;&"_s, u"&&<&"_s },
        { "no stop within 32 characters", unterminated, unterminated },
        { "decoded text is not decoded again", u"&amp;lt;"_s, u"&lt;"_s },
    };
    for (const EntityRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestMailHTML::entities()
{
    QFETCH(EntityRow, row);
    QCOMPARE(TarnMailHTML::decodeEntities(row.text), row.expected);
}

void TestMailHTML::tree_data()
{
    addRows({
        { "stray closing p and br are line breaks", "a</p>b</br>c", u"P(a\\nb\\nc)"_s },
        { "unclosed script lets the scan continue", "<p>a</p><script>var x = 1;<p>b</p>",
            u"P(a) P(var x = 1;) P(b)"_s },
        { "script content ends at its closing tag, any case", "a<SCRIPT>document.write(\"</p><p>\")</SCRIPT >b",
            u"P(ab)"_s },
        { "unterminated comment swallows the rest", "a<!-- never closed <p>b</p>", u"P(a)"_s },
        { "conditional comments", "<!--[if mso]><p>outlook</p><![endif]--><!--[if !mso]><!-->x<!--<![endif]-->",
            u"P(x)"_s },
        { "doctype, processing instruction, cdata", "<!DOCTYPE html><?xml version=\"1.0\" x='>'?><![CDATA[x]]>text",
            u"P(text)"_s },
        { "less-than not opening a tag is text", "1 < 2 and a <3 b</ c a<", u"P(1 < 2 and a <3 b</ c a<)"_s },
        { "upper-case tags and attributes", "<P STYLE=\"FONT-WEIGHT:BOLD\">Hi</P><BR><B>b</B>",
            u"P([b:Hi]) P([b:b])"_s },
        { "quoted greater-than inside attributes", "<a href=\"https://x.example/?a>b\" title='>'>link</a>",
            u"P([->https://x.example/?a%3Eb:link])"_s },
        { "apostrophe inside a bare value does not open a quote", "<a href=https://x.example/it's>go</a> on",
            u"P([->https://x.example/it's:go] on)"_s },
        { "first of repeated attributes wins", "<a href=\"https://one.example/\" href=\"https://two.example/\">x</a>",
            u"P([->https://one.example/:x])"_s },
        { "namespaced element closes by its local name",
            "<v:shape><p>in shape</p></v:shape><w:sdt>t</w:sdt><p>after</p>", u"P(in shape) P(t) P(after)"_s },
        { "closing o:p does not close the paragraph", "<p>a<o:p></o:p>b</p><p>c</p>", u"P(ab) P(c)"_s },
        { "block element closes an open paragraph", "<p>a<div>b</div>c", u"P(a) P(b) P(c)"_s },
        { "paragraph inside a div survives the div's own close", "<div><p>a</div>b", u"P(a) P(b)"_s },
        { "list items close each other", "<ul><li>a<li>b</ul>", u"UL{P(a)|P(b)}"_s },
        { "definition terms close each other", "<dl><dt>t<dd>d<dt>u</dl>", u"P(t) P(d) P(u)"_s },
        { "closing tag stops at a cell",
            "<b><table><tr><td>x</b>y</td><td>z</td></tr><tr><td>1</td><td>2</td></tr></table>",
            u"T0{[b:xy],[b:z]/[b:1],[b:2]}"_s },
        { "dropped elements discard their content",
            "<p>x<textarea>secret</textarea><select><option>o</select><svg><text>v</text></svg>y</p>", u"P(xy)"_s },
        { "self-closing elements are empty", "<p>a<iframe src=x />b</p><div/>text", u"P(ab) P(text)"_s },
        { "invalid UTF-8 repaired",
            "<p>a\xff\xfe"
            "b</p>",
            u"P(a\uFFFD\uFFFDb)"_s },
        { "truncated tag at the end", "<p>a</p><img src=\"cid:x", u"P(a)"_s },
        { "unclosed elements at the end", "<div><b>bold <i>both", u"P([b:bold ][bi:both])"_s },
        { "head, title and meta are not content",
            "<html><head><title>T</title><meta charset=utf-8></head><body>B</body></html>", u"P(B)"_s },
    });
}

void TestMailHTML::inlineStyle_data()
{
    addRows({
        { "styles nest and end", "<b>a<i>b</i></b>c", u"P([b:a][bi:b]c)"_s },
        { "css font weights",
            "<span style=\"font-weight: 700\">a</span><span style=\"font-weight:bolder\">b</span>"
            "<span style=\"font-weight:400\">c</span><span style=\"font-weight:normal\">d</span>",
            u"P([b:ab]cd)"_s },
        { "css italic, underline and line-through",
            "<span style=\"FONT-STYLE: Italic\">a</span><span style=\"text-decoration: underline "
            "dotted\">b</span><span style=\"text-decoration-line:line-through\">c</span>",
            u"P([i:a][u:b][s:c])"_s },
        { "underline of another property does not count",
            "<span style=\"text-decoration:none; border-style:underline\">a</span>", u"P(a)"_s },
        { "block style reaches its text", "<div style=\"font-weight:bold\">a <span>b</span></div>", u"P([b:a b])"_s },
        { "q gets quotation marks", "He said <q>hi</q>.", u"P(He said \u201Chi\u201D.)"_s },
    });
}

void TestMailHTML::whitespace_data()
{
    addRows({
        { "runs of whitespace collapse", "<p>  a \n\t b  </p>", u"P(a b)"_s },
        { "no-break spaces are kept", "<p>a&nbsp;&nbsp;b</p>", u"P(a\u00A0\u00A0b)"_s },
        { "invisible characters removed",
            "<p>a&#8203;b&zwnj;c&shy;d\xef\xbb\xbf"
            "e\xe2\x81\xa0"
            "f</p>",
            u"P(abcdef)"_s },
        { "invisible character between spaces", "<p>a &#8203; b</p>", u"P(a b)"_s },
        { "one space across run boundaries", "<p>a <b> b </b> c</p>", u"P(a [b:b ]c)"_s },
        { "line break takes no spaces along", "<p>line one <br>\n  line two</p>", u"P(line one\\nline two)"_s },
        { "outer line breaks dropped, a blank line kept", "<p><br>a<br><br>b<br><br></p>", u"P(a\\n\\nb)"_s },
        { "no-break-space paragraph dropped", "<p>&nbsp;</p><p> </p><p>x</p>", u"P(x)"_s },
        { "whitespace between blocks adds nothing", "<div>a</div>\n   \n<div>b</div>", u"P(a) P(b)"_s },
    });
}

void TestMailHTML::blocks_data()
{
    addRows({
        { "headings trimmed, with styles", "<h1> Title </h1><h3>Sub <b>bold</b></h3><h6>six</h6>",
            u"H1(Title) H3(Sub [b:bold]) H6(six)"_s },
        { "rule between paragraphs", "a<hr>b<hr/>", u"P(a) HR P(b) HR"_s },
        { "list start numbers",
            "<ol start=\"-3\"><li>a</li><li>b</li></ol><ol start=\"+5\"><li>c</ol><ol start=\"x1\"><li>d</ol>"
            "<ol start=\"2.5\"><li>e</ol><ol start=\"9999999999\"><li>f</ol>",
            u"OL-3{P(a)|P(b)} OL5{P(c)} OL{P(d)} OL{P(e)} OL{P(f)}"_s },
        { "nested list inside an item", "<ul><li>a<ul><li>b</li></ul></li></ul>", u"UL{P(a) UL{P(b)}}"_s },
        { "content outside items kept as items", "<ul>loose<li>a</li>tail</ul>", u"UL{P(loose)|P(a)|P(tail)}"_s },
        { "empty and hidden items and empty lists dropped",
            "<ul><li> </li><li hidden>h</li><li>a</li></ul><ol><li></li></ol>", u"UL{P(a)}"_s },
        { "item outside a list", "<li>a</li>b", u"P(a) P(b)"_s },
        { "plain blockquote", "<blockquote>q<p>r</p></blockquote>", u"Q{P(q) P(r)}"_s },
        { "preformatted keeps whitespace", "<pre>\n  a  b\n<b>c</b>  <i>e</i><br>d</pre>",
            u"PRE(  a  b\\nc  e\\nd)"_s },
        { "empty blocks omitted", "<h2> </h2><pre>\n  </pre><div class=\"signature\"> </div>x", u"P(x)"_s },
        { "signatures by class and by id",
            "<p>Hi</p><div class=\"gmail_signature\">-- <br>Ann</div><div id=\"Signature\"><p>Bob</p><p>CEO</p></div>",
            u"P(Hi) SIG{P(--\\nAnn)} SIG{P(Bob) P(CEO)}"_s },
        { "hidden preheaders and friends",
            "<div style=\"display: none\">pre</div><span hidden>h</span>"
            "<div style=\"max-height:0px; overflow:hidden\">m</div><p style=\"opacity:0\">o</p>"
            "<p style=\"opacity: 0; color: red\">o2</p><p style=\"mso-hide:all\">x</p>"
            "<p style=\"visibility:hidden\">v</p><p style=\"opacity:0 !important\">o3</p>"
            "<p style=\"max-height:0\">shown</p><p style=\"opacity:0.5\">too</p>",
            u"P(shown) P(too)"_s },
        { "skipped controls", "<p>a<button>Press</button><input value=v>b</p>", u"P(ab)"_s },
    });
}

void TestMailHTML::tables_data()
{
    const QByteArray x240(240, 'x');
    addRows({
        { "presentation role or a single row is layout",
            "<table "
            "role=\"presentation\"><tr><td>a</td><td>b</td></tr><tr><td>1</td><td>2</td></tr></table><table><tr><td>c</"
            "td><td>d</td></tr></table>",
            u"P(a) P(b) P(1) P(2) P(c) P(d)"_s },
        { "header rows from thead",
            "<table><thead><tr><td>h</td><td>i</td></tr></thead><tbody><tr><td>1</td><td>2</td></tr></tbody></table>",
            u"T1{h,i/1,2}"_s },
        { "leading th-only row is a header",
            "<table><tr><th>h</th><th>i</th></tr><tr><td>1</td><td>2</td></tr></table>", u"T1{h,i/1,2}"_s },
        { "th row after a data row is not a header", "<table><tr><td>1</td></tr><tr><th>h</th></tr></table>",
            u"T0{1/h}"_s },
        { "mixed th and td row is not a header",
            "<table><tr><td>v</td><th>k</th></tr><tr><td>v2</td><th>k2</th></tr></table>", u"T0{v,k/v2,k2}"_s },
        { "colspan padded with empty cells",
            "<table><tr><td colspan=\"2\">wide</td></tr><tr><td>a</td><td>b</td></tr></table>", u"T0{wide,/a,b}"_s },
        { "more than ten columns is layout", "<table><tr><td colspan=11>a</td></tr><tr><td>b</td></tr></table>",
            u"P(a) P(b)"_s },
        { "long cell text is layout", "<table><tr><td>" + x240 + "x</td></tr><tr><td>b</td></tr></table>",
            u"P("_s + QString::fromLatin1(x240) + u"x) P(b)"_s },
        { "240 characters still data", "<table><tr><td>" + x240 + "</td></tr><tr><td>b</td></tr></table>",
            u"T0{"_s + QString::fromLatin1(x240) + u"/b}"_s },
        { "image in a cell is layout",
            "<table><tr><td><span><img src=\"cid:x\" alt=\"i\"></span></td></tr><tr><td>b</td></tr></table>",
            u"IMG(i cid:x) P(b)"_s },
        { "layout element deeper than six levels does not count",
            "<table><tr><td><span><span><span><span><span><span><h2>t</h2></span></span></span></span></span></span>x"
            "</td></tr><tr><td>b</td></tr></table>",
            u"T0{t\\nx/b}"_s },
        { "nested table makes the outer one layout",
            "<table><tr><td><table><tr><td>1</td><td>2</td></tr><tr><td>3</td><td>4</td></tr></table></td></tr>"
            "<tr><td>b</td></tr></table>",
            u"T0{1,2/3,4} P(b)"_s },
        { "caption before the table", "<table><caption>Totals</caption><tr><td>a</td></tr><tr><td>b</td></tr></table>",
            u"P(Totals) T0{a/b}"_s },
        { "cells keep styles, blocks joined by line breaks",
            "<table><tr><td><b>x</b></td><td><p>1</p><p>2</p></td></tr><tr><td>y</td><td>z</td></tr></table>",
            u"T0{[b:x],1\\n2/y,z}"_s },
        { "hidden rows and cells are left out",
            "<table><tr><td>a</td><td style=\"display:none\">h</td></tr><tr style=\"display:none\"><td>x</td></tr>"
            "<tr><td>b</td></tr></table>",
            u"T0{a/b}"_s },
    });
}

void TestMailHTML::quotedHistory_data()
{
    addRows({
        { "gmail quote",
            "<div dir=\"ltr\">Thanks</div><div class=\"gmail_quote\"><div class=\"gmail_attr\">On Mon, Ann wrote:"
            "</div><blockquote class=\"gmail_quote\">Older</blockquote></div>",
            u"P(Thanks) || P(On Mon, Ann wrote:) Q{P(Older)}"_s },
        { "cite blockquote becomes a quote", "<p>Reply</p><blockquote type=\"Cite\"><p>Old</p></blockquote>",
            u"P(Reply) || Q{P(Old)}"_s },
        { "thunderbird prefix and cite",
            "<p>Reply</p><div class=\"moz-cite-prefix\">On 1/2, Bo wrote:<br></div><blockquote type=\"cite\">Old"
            "</blockquote>",
            u"P(Reply) || P(On 1/2, Bo wrote:) Q{P(Old)}"_s },
        { "class names match whole words only", "<p>R</p><div class=\"not_gmail_quote\">x</div>", u"P(R) P(x)"_s },
        { "outlook separator folds the rest",
            "<p>Reply</p><div id=\"appendonsend\"></div><hr><div id=\"divRplyFwdMsg\"><b>From:</b> Ann</div>"
            "<div>Old</div>",
            u"P(Reply) || HR P([b:From:] Ann) P(Old)"_s },
        { "separator id compared without case", "<p>R</p><div id=\"DivRplyFwdMsg\">x</div>", u"P(R) || P(x)"_s },
        { "separator before any content does not fold",
            "<div id=\"appendonsend\"></div><hr><div id=\"divRplyFwdMsg\">From: Ann</div><p>Forwarded</p>",
            u"HR P(From: Ann) P(Forwarded)"_s },
        { "only history is promoted", "<div class=\"gmail_quote\">Only history</div>", u"P(Only history)"_s },
        { "nested history is an ordinary quote",
            "<p>R</p><blockquote type=\"cite\">A<blockquote type=\"cite\">B</blockquote></blockquote>",
            u"P(R) || Q{P(A) Q{P(B)}}"_s },
        { "empty cite blockquote adds nothing", "<p>R</p><blockquote type=\"cite\"> </blockquote>", u"P(R)"_s },
    });
}

void TestMailHTML::links_data()
{
    addRows({
        { "javascript href leaves text unlinked", "<a href=\"javascript:alert(1)\">x</a>", u"P(x)"_s },
        { "link carries into styled children", "<a href=\"https://x.example/\">go <b>now</b></a>!",
            u"P([->https://x.example/:go ][b->https://x.example/:now]!)"_s },
        { "text naming another site asks first", "<a href=\"https://evil.example.net/login\">www.bank.example.com</a>",
            u"P([->pilo-mail-confirm://open?u=https%3A%2F%2Fevil.example.net%2Flogin:www.bank.example.com])"_s },
        { "text naming the same site opens", "<a href=\"https://www.bank.example.com/x\"> bank.example.com/x </a>",
            u"P([->https://www.bank.example.com/x:bank.example.com/x])"_s },
        { "anchor without href ends an outer link", "<a href=\"https://x.example/\">a<a name=\"n\">b</a></a>",
            u"P([->https://x.example/:a]b)"_s },
    });
}

void TestMailHTML::images_data()
{
    addRows({
        { "dropped without counting",
            "<img src=\"cid:px\" width=1 height=1><img src=\"https://cdn.example/img/Transparent.GIF\" width=\"10\" "
            "height=\"5\"><img src=\"https://t.example/o.gif\" width=\"1\" height=\"1\" style=\"display:none\">",
            u""_s },
        { "pixel sized by style", "<img src=\"HTTP://x.example/a.gif\" style=\"width: 1px; height:1px\">", u""_s, 1 },
        { "zero width or one pixel high",
            "<img src=\"https://x.example/a.gif\" width=\"0\" height=\"300\"><img src=\"https://x.example/b.gif\" "
            "width=\"600\" height=\"1\">",
            u""_s, 2 },
        { "two by two is still a pixel", "<p>a</p><img src=\"https://x.example/a.gif\" width=2 height=2>", u"P(a)"_s,
            1 },
        { "open-tracking URL",
            "<img src=\"https://example.us1.list-manage.com/track/open.php?u=1\" width=\"20\" height=\"20\">", u""_s,
            1 },
        { "emoji become text",
            "<p>Hi <img class=\"wp-smiley emoji\" alt=\"\xf0\x9f\x98\x80\" src=\"https://s.example/x.png\"> ok<img "
            "alt=\"\xf0\x9f\x91\x8d\xf0\x9f\x8f\xbd\" src=\"https://cdn.example/t.png\" width=\"16\"></p>",
            u"P(Hi \U0001F600 ok\U0001F44D\U0001F3FD)"_s },
        { "large emoji picture stays an image",
            "<img alt=\"\xf0\x9f\x91\x8d\" src=\"https://cdn.example/t.png\" width=\"64\" height=\"64\">",
            u"IMG(\U0001F44D remote:https://cdn.example/t.png 64x64)"_s },
        { "spacer name with alt text kept",
            "<img src=\"https://cdn.example/blank.png\" alt=\"Logo\" width=10 height=5>",
            u"IMG(Logo remote:https://cdn.example/blank.png 10x5)"_s },
        { "cid percent-decoded", "<img src=\"CID:part1%40example.com\" alt=\"chart\">",
            u"IMG(chart cid:part1@example.com)"_s },
        { "embedded images",
            "<img src=\"data:image/png;base64,iVBO Rw0K\" alt=\"d\"><img src=\"data:image/svg+xml;base64,PHN2Zz4=\" "
            "alt=\"vector\"><img src=\"data:image/png,abc\">",
            u"IMG(d embedded:6) IMG(vector unsupported)"_s },
        { "unsafe sources keep only their alt",
            "<img src=\"javascript:alert(1)\" alt=\"x\"><img src=\"https://user@cdn.example/a.png\" alt=\"u\">",
            u"IMG(x unsupported) IMG(u unsupported)"_s },
        { "title as alt", "<img src=\"https://cdn.example/a.png\" title=\" Chart \">",
            u"IMG(Chart remote:https://cdn.example/a.png)"_s },
        { "percent width, style height",
            "<img src=\"https://cdn.example/a.png\" alt=\"a\" width=\"100%\" style=\"max-height:90px; height: 30px\">",
            u"IMG(a remote:https://cdn.example/a.png ?x30)"_s },
        { "linked image", "<a href=\"https://shop.example/\"><img src=\"https://cdn.example/a.png\" alt=\"buy\"></a>",
            u"IMG(buy remote:https://cdn.example/a.png ->https://shop.example/)"_s },
        { "image splits its paragraph", "<p>before<img src=\"cid:a\" alt=\"x\">after</p>",
            u"P(before) IMG(x cid:a) P(after)"_s },
    });
}

void TestMailHTML::limits_data()
{
    // 109 lists and items fill the nesting stack; the rest flows into the innermost list as loose items.
    const QString deepLists = QString(u"UL{P(x) "_s).repeated(109) + u"UL{"_s + QString(u"P(x)|"_s).repeated(190)
        + u"P(x)}"_s + QString(u"}"_s).repeated(109);
    addRows({
        { "text cut at the character limit", "<p>abcdef</p><p>ghi</p>", u"P(abcd)"_s, 0, 4, 100, true },
        { "exactly at the character limit", "<p>ab</p><p>cd</p>", u"P(ab) P(cd)"_s, 0, 4, 100 },
        { "collapsed whitespace is what counts", "<p>a     b</p>", u"P(a b)"_s, 0, 3, 100 },
        { "surrogate pair never split", "<p>ab\xf0\x9f\x98\x80</p>", u"P(ab)"_s, 0, 3, 100, true },
        { "line break past the limit", "<p>ab<br>c</p>", u"P(ab)"_s, 0, 2, 100, true },
        { "preformatted text counts", "<pre>abcdef</pre><p>x</p>", u"PRE(abc)"_s, 0, 3, 100, true },
        { "blocks stop at the block limit", "<p>1</p><p>2</p><p>3</p>", u"P(1) P(2)"_s, 0, 100, 2, true },
        { "exactly at the block limit", "<p>1</p><p>2</p>", u"P(1) P(2)"_s, 0, 100, 2 },
        { "an open quote keeps what it read", "<blockquote><p>1</p><p>2</p><p>3</p></blockquote><p>4</p>",
            u"Q{P(1) P(2)}"_s, 0, 100, 2, true },
        { "nested blocks count", "<ul><li>1</li><li>2</li></ul><p>3</p>", u"UL{P(1)|P(2)}"_s, 0, 100, 3, true },
        { "nesting deeper than the cap keeps all text",
            QByteArray("<div>").repeated(1000) + "deep" + QByteArray("</div>").repeated(1000) + "<p>after</p>",
            u"P(deep) P(after)"_s },
        { "ten thousand unclosed inline elements", QByteArray("<b><i>").repeated(5000) + "text", u"P([bi:text])"_s },
        { "nested lists beyond the cap", QByteArray("<ul><li>x").repeated(300), deepLists },
    });
}

QTEST_APPLESS_MAIN(TestMailHTML)
#include "tst_mailhtml.moc"
