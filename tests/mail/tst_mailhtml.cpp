// Mail HTML to blocks: the tree, inline styles, whitespace, blocks, quoted
// history, images and limits, each a table of small mails and the structure
// the mail views should draw for them (see MailDescribe for the notation).
#include "MailDescribe.h"

#include "mail/TarnMailHTML.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestMailHTML : public QObject
{
    Q_OBJECT

private:
    static void addColumns()
    {
        QTest::addColumn<QByteArray>("html");
        QTest::addColumn<QString>("expected");
    }
    static void check()
    {
        QFETCH(QByteArray, html);
        QFETCH(QString, expected);
        const TarnMailDocument document = TarnMailHTML::parseUTF8(html, 150000, 4000);
        QCOMPARE(MailDescribe::document(document), expected);
        QVERIFY(!document.truncated);
    }

private slots:
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
    void images();
    void limits_data();
    void limits();
    void stringAndBytesAgree();
};

void TestMailHTML::tree_data()
{
    addColumns();
    QTest::addRow("stray closing p is a line break") << "<p>a</p></p>b"_ba << u"P(a) P(b)"_s;
    QTest::addRow("stray closing p inside text") << "a</p>b"_ba << u"P(a\\nb)"_s;
    QTest::addRow("office o:p and style add nothing")
        << "<p class=MsoNormal>Hello<o:p></o:p></p><style>p{color:red}</style><p>World<o:p>&nbsp;</o:p></p>"_ba
        << u"P(Hello) P(World)"_s;
    QTest::addRow("unclosed script lets the scan continue")
        << "<p>a</p><script>var x = 1;<p>b</p>"_ba << u"P(a) P(var x = 1;) P(b)"_s;
    QTest::addRow("script content ends at its closing tag, any case")
        << "a<SCRIPT>document.write(\"</p><p>\")</SCRIPT >b"_ba << u"P(ab)"_s;
    QTest::addRow("unterminated comment swallows the rest") << "a<!-- never closed <p>b</p>"_ba << u"P(a)"_s;
    QTest::addRow("comment between text") << "a<!-- x -->b<!---->c"_ba << u"P(abc)"_s;
    QTest::addRow("conditional comments")
        << "<!--[if mso]><p>outlook</p><![endif]--><!--[if !mso]><!-->x<!--<![endif]-->"_ba << u"P(x)"_s;
    QTest::addRow("doctype, processing instruction, cdata")
        << "<!DOCTYPE html><?xml version=\"1.0\" x='>'?><![CDATA[x]]>text"_ba << u"P(text)"_s;
    QTest::addRow("less-than not opening a tag is text") << "1 < 2 and a <3 b</ c a<"_ba << u"P(1 < 2 and a <3 b</ c a<)"_s;
    QTest::addRow("upper-case tags and attributes")
        << "<P STYLE=\"FONT-WEIGHT:BOLD\">Hi</P><BR><B>b</B>"_ba << u"P([b:Hi]) P([b:b])"_s;
    QTest::addRow("quoted greater-than inside attributes")
        << "<a href=\"https://x.example/?a>b\" title='>'>link</a>"_ba << u"P([->https://x.example/?a%3Eb:link])"_s;
    QTest::addRow("unquoted attribute") << "<a href=https://x.example/p>go</a>"_ba
                                        << u"P([->https://x.example/p:go])"_s;
    QTest::addRow("apostrophe inside a bare value does not open a quote")
        << "<a href=https://x.example/it's>go</a> on"_ba << u"P([->https://x.example/it's:go] on)"_s;
    QTest::addRow("first of repeated attributes wins")
        << "<a href=\"https://one.example/\" href=\"https://two.example/\">x</a>"_ba
        << u"P([->https://one.example/:x])"_s;
    QTest::addRow("namespaced element closes by its local name")
        << "<v:shape><p>in shape</p></v:shape><w:sdt>t</w:sdt><p>after</p>"_ba << u"P(in shape) P(t) P(after)"_s;
    QTest::addRow("closing o:p does not close the paragraph")
        << "<p>a<o:p></o:p>b</p><p>c</p>"_ba << u"P(ab) P(c)"_s;
    QTest::addRow("br as a closing tag") << "a</br>b"_ba << u"P(a\\nb)"_s;
    QTest::addRow("block element closes an open paragraph") << "<p>a<div>b</div>c"_ba << u"P(a) P(b) P(c)"_s;
    QTest::addRow("paragraph inside a div survives the div's own close")
        << "<div><p>a</div>b"_ba << u"P(a) P(b)"_s;
    QTest::addRow("list items close each other") << "<ul><li>a<li>b</ul>"_ba << u"UL{P(a)|P(b)}"_s;
    QTest::addRow("definition terms close each other") << "<dl><dt>t<dd>d<dt>u</dl>"_ba << u"P(t) P(d) P(u)"_s;
    QTest::addRow("closing tag stops at a cell")
        << "<b><table><tr><td>x</b>y</td><td>z</td></tr><tr><td>1</td><td>2</td></tr></table>"_ba
        << u"T0{[b:xy],[b:z]/[b:1],[b:2]}"_s;
    QTest::addRow("dropped elements discard their content")
        << "<p>x<textarea>secret</textarea><select><option>o</select><svg><text>v</text></svg>y</p>"_ba
        << u"P(xy)"_s;
    QTest::addRow("self-closing dropped element drops nothing")
        << "<p>a<iframe src=x />b</p>"_ba << u"P(ab)"_s;
    QTest::addRow("self-closing div is empty") << "<div/>text"_ba << u"P(text)"_s;
    QTest::addRow("entities in text and attributes")
        << "<p title=\"a&amp;b\">AT&amp;T &lt;ok&gt; &#8364;5</p>"_ba << u"P(AT&T <ok> \u20AC5)"_s;
    QTest::addRow("invalid UTF-8 repaired") << "<p>a\xff\xfe" "b</p>"_ba << u"P(a\uFFFD\uFFFDb)"_s;
    QTest::addRow("truncated tag at the end") << "<p>a</p><img src=\"cid:x"_ba << u"P(a)"_s;
    QTest::addRow("unclosed elements at the end") << "<div><b>bold <i>both"_ba << u"P([b:bold ][bi:both])"_s;
    QTest::addRow("head, title and meta are not content")
        << "<html><head><title>T</title><meta charset=utf-8></head><body>B</body></html>"_ba << u"P(B)"_s;
}

void TestMailHTML::inlineStyle_data()
{
    addColumns();
    QTest::addRow("bold tags") << "<b>a</b><strong>b</strong>"_ba << u"P([b:ab])"_s;
    QTest::addRow("italic tags") << "<i>a</i><em>b</em><cite>c</cite><var>d</var><dfn>e</dfn>"_ba << u"P([i:abcde])"_s;
    QTest::addRow("underline tags") << "<u>a</u><ins>b</ins>"_ba << u"P([u:ab])"_s;
    QTest::addRow("strikethrough tags") << "<s>a</s><strike>b</strike><del>c</del>"_ba << u"P([s:abc])"_s;
    QTest::addRow("code tags") << "<code>a</code><tt>b</tt><kbd>c</kbd><samp>d</samp>"_ba << u"P([c:abcd])"_s;
    QTest::addRow("styles nest and end") << "<b>a<i>b</i></b>c"_ba << u"P([b:a][bi:b]c)"_s;
    QTest::addRow("css font weights")
        << "<span style=\"font-weight: 700\">a</span><span style=\"font-weight:bolder\">b</span>"
           "<span style=\"font-weight:400\">c</span><span style=\"font-weight:normal\">d</span>"_ba
        << u"P([b:ab]cd)"_s;
    QTest::addRow("css italic") << "<span style=\"FONT-STYLE: Italic\">a</span>"_ba << u"P([i:a])"_s;
    QTest::addRow("css underline with other values")
        << "<span style=\"text-decoration: underline dotted\">a</span>"_ba << u"P([u:a])"_s;
    QTest::addRow("css line-through") << "<span style=\"text-decoration-line:line-through\">a</span>"_ba
                                      << u"P([s:a])"_s;
    QTest::addRow("underline of another property does not count")
        << "<span style=\"text-decoration:none; border-style:underline\">a</span>"_ba << u"P(a)"_s;
    QTest::addRow("block style reaches its text") << "<div style=\"font-weight:bold\">a <span>b</span></div>"_ba
                                                  << u"P([b:a b])"_s;
    QTest::addRow("address is an italic block") << "x<address>Main St</address>y"_ba
                                                 << u"P(x) P([i:Main St]) P(y)"_s;
    QTest::addRow("q gets quotation marks") << "He said <q>hi</q>."_ba << u"P(He said \u201Chi\u201D.)"_s;
}

void TestMailHTML::whitespace_data()
{
    addColumns();
    QTest::addRow("runs of whitespace collapse") << "<p>  a \n\t b  </p>"_ba << u"P(a b)"_s;
    QTest::addRow("no-break spaces are kept") << "<p>a&nbsp;&nbsp;b</p>"_ba << u"P(a\u00A0\u00A0b)"_s;
    QTest::addRow("invisible characters removed")
        << "<p>a&#8203;b&zwnj;c&shy;d\xef\xbb\xbf" "e\xe2\x81\xa0" "f</p>"_ba << u"P(abcdef)"_s;
    QTest::addRow("invisible character between spaces") << "<p>a &#8203; b</p>"_ba << u"P(a b)"_s;
    QTest::addRow("one space across run boundaries") << "<p>a <b> b </b> c</p>"_ba << u"P(a [b:b ]c)"_s;
    QTest::addRow("line break takes no spaces along") << "<p>line one <br>\n  line two</p>"_ba
                                                      << u"P(line one\\nline two)"_s;
    QTest::addRow("trailing and leading line breaks dropped") << "<p><br>a<br><br></p>"_ba << u"P(a)"_s;
    QTest::addRow("blank line kept between lines") << "<p>a<br><br>b</p>"_ba << u"P(a\\n\\nb)"_s;
    QTest::addRow("no-break-space paragraph dropped") << "<p>&nbsp;</p><p> </p><p>x</p>"_ba << u"P(x)"_s;
    QTest::addRow("layout cells are separate paragraphs")
        << "<table role=\"presentation\"><tr><td>Name:</td><td>Ann</td></tr></table>"_ba << u"P(Name:) P(Ann)"_s;
    QTest::addRow("inline elements do not break") << "<span>a</span><font>b</font><label>c</label>"_ba
                                                  << u"P(abc)"_s;
    QTest::addRow("whitespace between blocks adds nothing") << "<div>a</div>\n   \n<div>b</div>"_ba
                                                            << u"P(a) P(b)"_s;
}

void TestMailHTML::blocks_data()
{
    addColumns();
    QTest::addRow("headings trimmed, with styles")
        << "<h1> Title </h1><h3>Sub <b>bold</b></h3><h6>six</h6>"_ba << u"H1(Title) H3(Sub [b:bold]) H6(six)"_s;
    QTest::addRow("empty heading omitted") << "<h2> </h2>x"_ba << u"P(x)"_s;
    QTest::addRow("rule between paragraphs") << "a<hr>b<hr/>"_ba << u"P(a) HR P(b) HR"_s;
    QTest::addRow("paragraph-like elements")
        << "<p>p</p><details><summary>s</summary>d</details><fieldset><legend>l</legend>f</fieldset>"_ba
        << u"P(p) P(s) P(d) P(l) P(f)"_s;
    QTest::addRow("ordered list from a negative start")
        << "<ol start=\"-3\"><li>a</li><li>b</li></ol>"_ba << u"OL-3{P(a)|P(b)}"_s;
    QTest::addRow("ordered list with a plus sign") << "<ol start=\"+5\"><li>a</ol>"_ba << u"OL5{P(a)}"_s;
    QTest::addRow("non-numeric start numbers from 1") << "<ol start=\"x1\"><li>a</ol><ol start=\"2.5\"><li>b</ol>"_ba
                                                      << u"OL{P(a)} OL{P(b)}"_s;
    QTest::addRow("menu and dir are lists") << "<menu><li>a</menu><dir><li>b</dir>"_ba << u"UL{P(a)} UL{P(b)}"_s;
    QTest::addRow("nested list inside an item") << "<ul><li>a<ul><li>b</li></ul></li></ul>"_ba
                                                << u"UL{P(a) UL{P(b)}}"_s;
    QTest::addRow("content outside items kept as items") << "<ul>loose<li>a</li>tail</ul>"_ba
                                                         << u"UL{P(loose)|P(a)|P(tail)}"_s;
    QTest::addRow("list directly inside a list") << "<ul><li>a</li><ul><li>b</li></ul></ul>"_ba
                                                 << u"UL{P(a)|UL{P(b)}}"_s;
    QTest::addRow("empty items and empty lists dropped") << "<ul><li> </li><li>a</li></ul><ol><li></li></ol>"_ba
                                                         << u"UL{P(a)}"_s;
    QTest::addRow("item outside a list") << "<li>a</li>b"_ba << u"P(a) P(b)"_s;
    QTest::addRow("plain blockquote") << "<blockquote>q<p>r</p></blockquote>"_ba << u"Q{P(q) P(r)}"_s;
    QTest::addRow("preformatted keeps whitespace")
        << "<pre>\n  a  b\n<b>c</b><br>d</pre>"_ba << u"PRE(  a  b\\nc\\nd)"_s;
    QTest::addRow("blank preformatted omitted") << "<pre>\n  </pre>x"_ba << u"P(x)"_s;
    QTest::addRow("signature by class") << "<p>Hi</p><div class=\"gmail_signature\">-- <br>Ann</div>"_ba
                                        << u"P(Hi) SIG{P(--\\nAnn)}"_s;
    QTest::addRow("signature by id") << "<div id=\"Signature\"><p>Bob</p><p>CEO</p></div>"_ba
                                     << u"SIG{P(Bob) P(CEO)}"_s;
    QTest::addRow("empty signature omitted") << "<div class=\"signature\"> </div>x"_ba << u"P(x)"_s;
    QTest::addRow("hidden preheaders and friends")
        << "<div style=\"display: none\">pre</div><span hidden>h</span>"
           "<div style=\"max-height:0px; overflow:hidden\">m</div><p style=\"opacity:0\">o</p>"
           "<p style=\"opacity: 0; color: red\">o2</p><p style=\"mso-hide:all\">x</p>"
           "<p style=\"visibility:hidden\">v</p><p style=\"opacity:0.5\">shown</p>"_ba
        << u"P(shown)"_s;
    QTest::addRow("skipped controls") << "<p>a<button>Press</button><input value=v>b</p>"_ba << u"P(ab)"_s;
}

void TestMailHTML::tables_data()
{
    addColumns();
    QTest::addRow("two rows of three short cells are data")
        << "<table><tr><td>a</td><td>b</td><td>c</td></tr><tr><td>1</td><td>2</td><td>3</td></tr></table>"_ba
        << u"T0{a,b,c/1,2,3}"_s;
    QTest::addRow("presentation role is layout")
        << "<table role=\"presentation\"><tr><td>a</td><td>b</td></tr><tr><td>1</td><td>2</td></tr></table>"_ba
        << u"P(a) P(b) P(1) P(2)"_s;
    QTest::addRow("role none is layout")
        << "<table role=none><tr><td>a</td></tr><tr><td>1</td></tr></table>"_ba << u"P(a) P(1)"_s;
    QTest::addRow("one row is layout") << "<table><tr><td>a</td><td>b</td></tr></table>"_ba << u"P(a) P(b)"_s;
    QTest::addRow("header rows from thead")
        << "<table><thead><tr><th>h</th><th>i</th></tr></thead><tbody><tr><td>1</td><td>2</td></tr></tbody></table>"_ba
        << u"T1{h,i/1,2}"_s;
    QTest::addRow("leading th-only row is a header")
        << "<table><tr><th>h</th><th>i</th></tr><tr><td>1</td><td>2</td></tr></table>"_ba << u"T1{h,i/1,2}"_s;
    QTest::addRow("th row after a data row is not a header")
        << "<table><tr><td>1</td></tr><tr><th>h</th></tr></table>"_ba << u"T0{1/h}"_s;
    QTest::addRow("mixed th and td row is not a header")
        << "<table><tr><th>k</th><td>v</td></tr><tr><th>k2</th><td>v2</td></tr></table>"_ba << u"T0{k,v/k2,v2}"_s;
    QTest::addRow("colspan padded with empty cells")
        << "<table><tr><td colspan=\"2\">wide</td></tr><tr><td>a</td><td>b</td></tr></table>"_ba
        << u"T0{wide,/a,b}"_s;
    QTest::addRow("more than ten columns is layout")
        << "<table><tr><td colspan=11>a</td></tr><tr><td>b</td></tr></table>"_ba << u"P(a) P(b)"_s;
    QTest::addRow("long cell text is layout")
        << "<table><tr><td>"_ba + QByteArray(241, 'x') + "</td></tr><tr><td>b</td></tr></table>"_ba
        << QString(u"P("_s + QString(241, u'x') + u") P(b)"_s);
    QTest::addRow("240 characters still data")
        << "<table><tr><td>"_ba + QByteArray(240, 'x') + "</td></tr><tr><td>b</td></tr></table>"_ba
        << QString(u"T0{"_s + QString(240, u'x') + u"/b}"_s);
    QTest::addRow("image in a cell is layout")
        << "<table><tr><td><span><img src=\"cid:x\" alt=\"i\"></span></td></tr><tr><td>b</td></tr></table>"_ba
        << u"IMG(i cid:x) P(b)"_s;
    QTest::addRow("layout element deeper than six levels does not count")
        << "<table><tr><td><span><span><span><span><span><span><h2>t</h2></span></span></span></span></span></span>x"
           "</td></tr><tr><td>b</td></tr></table>"_ba
        << u"T0{t\\nx/b}"_s;
    QTest::addRow("nested table makes the outer one layout")
        << "<table><tr><td><table><tr><td>1</td><td>2</td></tr><tr><td>3</td><td>4</td></tr></table></td></tr>"
           "<tr><td>b</td></tr></table>"_ba
        << u"T0{1,2/3,4} P(b)"_s;
    QTest::addRow("caption before the table")
        << "<table><caption>Totals</caption><tr><td>a</td></tr><tr><td>b</td></tr></table>"_ba
        << u"P(Totals) T0{a/b}"_s;
    QTest::addRow("cells keep styles, blocks joined by line breaks")
        << "<table><tr><td><b>x</b></td><td><p>1</p><p>2</p></td></tr><tr><td>y</td><td>z</td></tr></table>"_ba
        << u"T0{[b:x],1\\n2/y,z}"_s;
    QTest::addRow("hidden rows and cells are left out")
        << "<table><tr><td>a</td><td style=\"display:none\">h</td></tr><tr style=\"display:none\"><td>x</td></tr>"
           "<tr><td>b</td></tr></table>"_ba
        << u"T0{a/b}"_s;
}

void TestMailHTML::quotedHistory_data()
{
    addColumns();
    QTest::addRow("gmail quote")
        << "<div dir=\"ltr\">Thanks</div><div class=\"gmail_quote\"><div class=\"gmail_attr\">On Mon, Ann wrote:"
           "</div><blockquote class=\"gmail_quote\">Older</blockquote></div>"_ba
        << u"P(Thanks) || P(On Mon, Ann wrote:) Q{P(Older)}"_s;
    QTest::addRow("cite blockquote becomes a quote") << "<p>Reply</p><blockquote type=\"Cite\"><p>Old</p></blockquote>"_ba
                                                     << u"P(Reply) || Q{P(Old)}"_s;
    QTest::addRow("thunderbird prefix and cite")
        << "<p>Reply</p><div class=\"moz-cite-prefix\">On 1/2, Bo wrote:<br></div><blockquote type=\"cite\">Old"
           "</blockquote>"_ba
        << u"P(Reply) || P(On 1/2, Bo wrote:) Q{P(Old)}"_s;
    QTest::addRow("yahoo") << "<p>R</p><div class=\"x yahoo_quoted\">Old</div>"_ba << u"P(R) || P(Old)"_s;
    QTest::addRow("protonmail") << "<p>R</p><div class=\"protonmail_quote\">Old</div>"_ba << u"P(R) || P(Old)"_s;
    QTest::addRow("apple mail") << "<p>R</p><div class=\"Apple-Mail-Quote\">Old</div>"_ba << u"P(R) || P(Old)"_s;
    QTest::addRow("class names match whole words only") << "<p>R</p><div class=\"not_gmail_quote\">x</div>"_ba
                                                        << u"P(R) P(x)"_s;
    QTest::addRow("outlook separator folds the rest")
        << "<p>Reply</p><div id=\"appendonsend\"></div><hr><div id=\"divRplyFwdMsg\"><b>From:</b> Ann</div>"
           "<div>Old</div>"_ba
        << u"P(Reply) || HR P([b:From:] Ann) P(Old)"_s;
    QTest::addRow("separator id compared without case") << "<p>R</p><div id=\"DivRplyFwdMsg\">x</div>"_ba
                                                        << u"P(R) || P(x)"_s;
    QTest::addRow("new outlook reference container")
        << "<p>R</p><div id=\"mail-editor-reference-message-container\">x</div>"_ba << u"P(R) || P(x)"_s;
    QTest::addRow("separator before any content does not fold")
        << "<div id=\"appendonsend\"></div><hr><div id=\"divRplyFwdMsg\">From: Ann</div><p>Forwarded</p>"_ba
        << u"HR P(From: Ann) P(Forwarded)"_s;
    QTest::addRow("only history is promoted") << "<div class=\"gmail_quote\">Only history</div>"_ba
                                              << u"P(Only history)"_s;
    QTest::addRow("nested history is an ordinary quote")
        << "<p>R</p><blockquote type=\"cite\">A<blockquote type=\"cite\">B</blockquote></blockquote>"_ba
        << u"P(R) || Q{P(A) Q{P(B)}}"_s;
    QTest::addRow("empty cite blockquote adds nothing") << "<p>R</p><blockquote type=\"cite\"> </blockquote>"_ba
                                                        << u"P(R)"_s;
}

void TestMailHTML::links_data()
{
    addColumns();
    QTest::addRow("javascript href leaves text unlinked") << "<a href=\"javascript:alert(1)\">x</a>"_ba << u"P(x)"_s;
    QTest::addRow("entity-split javascript scheme") << "<a href=\"jav&#x09;ascript:alert(1)\">x</a>"_ba << u"P(x)"_s;
    QTest::addRow("relative href") << "<a href=\"/path\">x</a>"_ba << u"P(x)"_s;
    QTest::addRow("credentials in href") << "<a href=\"https://example.com@evil.example.org/\">x</a>"_ba << u"P(x)"_s;
    QTest::addRow("mailto") << "<a href=\"mailto:a@b.example\">mail</a>"_ba << u"P([->mailto:a@b.example:mail])"_s;
    QTest::addRow("link carries into styled children")
        << "<a href=\"https://x.example/\">go <b>now</b></a>!"_ba
        << u"P([->https://x.example/:go ][b->https://x.example/:now]!)"_s;
    QTest::addRow("text naming another site asks first")
        << "<a href=\"https://evil.example.net/login\">www.bank.example.com</a>"_ba
        << u"P([->pilo-mail-confirm://open?u=https%3A%2F%2Fevil.example.net%2Flogin:www.bank.example.com])"_s;
    QTest::addRow("text naming the same site opens")
        << "<a href=\"https://www.bank.example.com/x\"> bank.example.com/x </a>"_ba
        << u"P([->https://www.bank.example.com/x:bank.example.com/x])"_s;
    QTest::addRow("anchor without href ends an outer link")
        << "<a href=\"https://x.example/\">a<a name=\"n\">b</a></a>"_ba << u"P([->https://x.example/:a]b)"_s;
}

void TestMailHTML::images_data()
{
    QTest::addColumn<QByteArray>("html");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("trackers");

    QTest::addRow("1x1 remote image is a tracker")
        << "<p>a</p><img src=\"https://t.example/p.gif\" width=\"1\" height=\"1\">"_ba << u"P(a)"_s << 1;
    QTest::addRow("1x1 cid image dropped without counting") << "<img src=\"cid:px\" width=1 height=1>"_ba << u""_s << 0;
    QTest::addRow("pixel sized by style") << "<img src=\"HTTP://x.example/a.gif\" style=\"width: 1px; height:1px\">"_ba
                                          << u""_s << 1;
    QTest::addRow("zero width") << "<img src=\"https://x.example/a.gif\" width=\"0\" height=\"300\">"_ba << u""_s << 1;
    QTest::addRow("one pixel high banner") << "<img src=\"https://x.example/a.gif\" width=\"600\" height=\"1\">"_ba
                                           << u""_s << 1;
    QTest::addRow("two by two is still a pixel") << "<img src=\"https://x.example/a.gif\" width=2 height=2>"_ba << u""_s
                                                 << 1;
    QTest::addRow("open-tracking URL")
        << "<img src=\"https://example.us1.list-manage.com/track/open.php?u=1\" width=\"20\" height=\"20\">"_ba << u""_s
        << 1;
    QTest::addRow("click host with tracking path") << "<img src=\"https://click.mail.example.com/px/abc\" alt=\"\">"_ba
                                                   << u""_s << 1;
    QTest::addRow("click host image stays")
        << "<img src=\"https://click.mail.example.com/px/banner.png\" alt=\"Sale\">"_ba
        << u"IMG(Sale remote:https://click.mail.example.com/px/banner.png)"_s << 0;
    QTest::addRow("emoji class becomes text")
        << "<p>Hi <img class=\"wp-smiley emoji\" alt=\"\xf0\x9f\x98\x80\" src=\"https://s.example/x.png\"> there</p>"_ba
        << u"P(Hi \U0001F600 there)"_s << 0;
    QTest::addRow("small emoji alt becomes text")
        << "<p>ok<img alt=\"\xf0\x9f\x91\x8d\" src=\"https://cdn.example/t.png\" width=\"16\"></p>"_ba
        << u"P(ok\U0001F44D)"_s << 0;
    QTest::addRow("large emoji picture stays an image")
        << "<img alt=\"\xf0\x9f\x91\x8d\" src=\"https://cdn.example/t.png\" width=\"64\" height=\"64\">"_ba
        << u"IMG(\U0001F44D remote:https://cdn.example/t.png 64x64)"_s << 0;
    QTest::addRow("spacer dropped without counting")
        << "<img src=\"https://cdn.example/img/Transparent.GIF\" width=\"10\" height=\"5\">"_ba << u""_s << 0;
    QTest::addRow("spacer name with alt text kept")
        << "<img src=\"https://cdn.example/blank.png\" alt=\"Logo\" width=10 height=5>"_ba
        << u"IMG(Logo remote:https://cdn.example/blank.png 10x5)"_s << 0;
    QTest::addRow("cid percent-decoded") << "<img src=\"CID:part1%40example.com\" alt=\"chart\">"_ba
                                         << u"IMG(chart cid:part1@example.com)"_s << 0;
    QTest::addRow("embedded png") << "<img src=\"data:image/png;base64,iVBO Rw0K\" alt=\"d\">"_ba
                                  << u"IMG(d embedded:6)"_s << 0;
    QTest::addRow("embedded svg unsupported") << "<img src=\"data:image/svg+xml;base64,PHN2Zz4=\" alt=\"vector\">"_ba
                                              << u"IMG(vector unsupported)"_s << 0;
    QTest::addRow("data without base64 and alt dropped") << "<img src=\"data:image/png,abc\">"_ba << u""_s << 0;
    QTest::addRow("script source") << "<img src=\"javascript:alert(1)\" alt=\"x\">"_ba << u"IMG(x unsupported)"_s << 0;
    QTest::addRow("credentials in source") << "<img src=\"https://user@cdn.example/a.png\" alt=\"u\">"_ba
                                           << u"IMG(u unsupported)"_s << 0;
    QTest::addRow("title as alt") << "<img src=\"https://cdn.example/a.png\" title=\" Chart \">"_ba
                                  << u"IMG(Chart remote:https://cdn.example/a.png)"_s << 0;
    QTest::addRow("percent width, style height")
        << "<img src=\"https://cdn.example/a.png\" alt=\"a\" width=\"100%\" style=\"max-height:90px; height: 30px\">"_ba
        << u"IMG(a remote:https://cdn.example/a.png ?x30)"_s << 0;
    QTest::addRow("linked image") << "<a href=\"https://shop.example/\"><img src=\"https://cdn.example/a.png\" alt=\"buy\"></a>"_ba
                                  << u"IMG(buy remote:https://cdn.example/a.png ->https://shop.example/)"_s << 0;
    QTest::addRow("image splits its paragraph") << "<p>before<img src=\"cid:a\" alt=\"x\">after</p>"_ba
                                                << u"P(before) IMG(x cid:a) P(after)"_s << 0;
    QTest::addRow("hidden pixel is neither shown nor counted")
        << "<img src=\"https://t.example/o.gif\" width=\"1\" height=\"1\" style=\"display:none\">"_ba << u""_s << 0;
}

void TestMailHTML::images()
{
    QFETCH(QByteArray, html);
    QFETCH(QString, expected);
    QFETCH(int, trackers);
    const TarnMailDocument document = TarnMailHTML::parseUTF8(html, 150000, 4000);
    QCOMPARE(MailDescribe::document(document), expected);
    QCOMPARE(document.blockedTrackers, trackers);
}

void TestMailHTML::limits_data()
{
    QTest::addColumn<QByteArray>("html");
    QTest::addColumn<int>("characterLimit");
    QTest::addColumn<int>("blockLimit");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("truncated");

    QTest::addRow("text cut at the character limit") << "<p>abcdef</p><p>ghi</p>"_ba << 4 << 100 << u"P(abcd)"_s
                                                     << true;
    QTest::addRow("exactly at the character limit") << "<p>ab</p><p>cd</p>"_ba << 4 << 100 << u"P(ab) P(cd)"_s << false;
    QTest::addRow("collapsed whitespace is what counts") << "<p>a     b</p>"_ba << 3 << 100 << u"P(a b)"_s << false;
    QTest::addRow("surrogate pair never split")
        << "<p>ab\xf0\x9f\x98\x80</p>"_ba << 3 << 100 << u"P(ab)"_s << true;
    QTest::addRow("preformatted text counts") << "<pre>abcdef</pre><p>x</p>"_ba << 3 << 100 << u"PRE(abc)"_s << true;
    QTest::addRow("blocks stop at the block limit") << "<p>1</p><p>2</p><p>3</p>"_ba << 100 << 2 << u"P(1) P(2)"_s
                                                    << true;
    QTest::addRow("exactly at the block limit") << "<p>1</p><p>2</p>"_ba << 100 << 2 << u"P(1) P(2)"_s << false;
    QTest::addRow("an open quote keeps what it read")
        << "<blockquote><p>1</p><p>2</p><p>3</p></blockquote><p>4</p>"_ba << 100 << 2 << u"Q{P(1) P(2)}"_s << true;
    QTest::addRow("nested blocks count")
        << "<ul><li>1</li><li>2</li></ul><p>3</p>"_ba << 100 << 3 << u"UL{P(1)|P(2)}"_s << true;
    QTest::addRow("nesting deeper than the cap keeps all text")
        << QByteArray("<div>").repeated(1000) + "deep" + QByteArray("</div>").repeated(1000) + "<p>after</p>"
        << 150000 << 4000 << u"P(deep) P(after)"_s << false;
    QTest::addRow("ten thousand unclosed inline elements")
        << QByteArray("<b><i>").repeated(5000) + "text" << 150000 << 4000 << u"P([bi:text])"_s << false;
    QTest::addRow("nested lists beyond the cap")
        << QByteArray("<ul><li>x").repeated(300) << 150000 << 4000
        // 109 lists and items fill the stack; the rest flows into the innermost list as loose items.
        << QString(QString(u"UL{P(x) "_s).repeated(109) + u"UL{"_s + QString(u"P(x)|"_s).repeated(190) + u"P(x)}"_s
               + QString(u"}"_s).repeated(109))
        << false;
}

void TestMailHTML::limits()
{
    QFETCH(QByteArray, html);
    QFETCH(int, characterLimit);
    QFETCH(int, blockLimit);
    QFETCH(QString, expected);
    QFETCH(bool, truncated);
    const TarnMailDocument document = TarnMailHTML::parseUTF8(html, characterLimit, blockLimit);
    QCOMPARE(MailDescribe::document(document), expected);
    QCOMPARE(document.truncated, truncated);
}

void TestMailHTML::stringAndBytesAgree()
{
    const QString html = u"<p>caf\u00E9 <b>\U0001F600</b> &eacute;</p><img src=\"cid:x\" alt=\"\u00E9\">"_s;
    QCOMPARE(TarnMailHTML::parse(html, 150000, 4000), TarnMailHTML::parseUTF8(html.toUtf8(), 150000, 4000));
}

QTEST_APPLESS_MAIN(TestMailHTML)
#include "tst_mailhtml.moc"
