#include "mail/detail/MailTag.h"

#include "mail/TarnMailStyle.h"

#include <array>
#include <vector>

using namespace Qt::StringLiterals;

namespace TarnMailHTML::detail {

namespace {

constexpr int tagCount = int(Tag::Xml) + 1;

struct TagRow {
    Tag tag;
    QLatin1StringView name;
    quint16 flags;
    quint32 style;
};

constexpr quint16 V = TagFlag::Void;
constexpr quint16 D = TagFlag::Dropped;
constexpr quint16 BL = TagFlag::BlockLevel;
constexpr quint16 TI = TagFlag::TableInner;
constexpr quint16 BR = TagFlag::Breaks;
constexpr quint16 IN = TagFlag::Inline;
constexpr quint16 PB = TagFlag::ParagraphBarrier;
constexpr quint16 SK = TagFlag::Skipped;
constexpr quint16 LS = TagFlag::List;
constexpr quint16 PR = TagFlag::Preformatted;
constexpr quint16 HD = TagFlag::Heading;
constexpr quint16 LO = TagFlag::LayoutOnly;

constexpr quint32 bold = TarnMailStyle::Bold;
constexpr quint32 italic = TarnMailStyle::Italic;
constexpr quint32 underline = TarnMailStyle::Underline;
constexpr quint32 strike = TarnMailStyle::Strikethrough;
constexpr quint32 code = TarnMailStyle::Code;

// clang-format off
constexpr TagRow rows[] = {
    {Tag::Other, ""_L1, 0, 0}, {Tag::Root, "#root"_L1, 0, 0}, {Tag::Text, "#text"_L1, 0, 0},
    {Tag::A, "a"_L1, IN, 0}, {Tag::Address, "address"_L1, BL | BR, italic}, {Tag::Applet, "applet"_L1, D, 0},
    {Tag::Area, "area"_L1, V | SK, 0}, {Tag::Article, "article"_L1, BL | BR, 0}, {Tag::Aside, "aside"_L1, BL | BR, 0},
    {Tag::Audio, "audio"_L1, D, 0},
    {Tag::B, "b"_L1, IN, bold}, {Tag::Base, "base"_L1, V | SK, 0},
    {Tag::Blockquote, "blockquote"_L1, BL | BR | PB | LO, 0},
    {Tag::Body, "body"_L1, IN, 0}, {Tag::Br, "br"_L1, V | BR, 0}, {Tag::Button, "button"_L1, SK, 0},
    {Tag::Canvas, "canvas"_L1, D, 0}, {Tag::Caption, "caption"_L1, TI | BR, 0}, {Tag::Center, "center"_L1, BL | BR, 0},
    {Tag::Cite, "cite"_L1, IN, italic}, {Tag::Code, "code"_L1, IN, code}, {Tag::Col, "col"_L1, V | SK, 0},
    {Tag::Colgroup, "colgroup"_L1, SK, 0},
    {Tag::Datalist, "datalist"_L1, D, 0}, {Tag::Dd, "dd"_L1, BR, 0}, {Tag::Del, "del"_L1, IN, strike},
    {Tag::Details, "details"_L1, BR, 0}, {Tag::Dfn, "dfn"_L1, IN, italic}, {Tag::Dir, "dir"_L1, BR | LS, 0},
    {Tag::Div, "div"_L1, BL | BR | PB, 0}, {Tag::Dl, "dl"_L1, BL | BR, 0}, {Tag::Dt, "dt"_L1, BR, 0},
    {Tag::Em, "em"_L1, IN, italic}, {Tag::Embed, "embed"_L1, V | SK, 0},
    {Tag::Fieldset, "fieldset"_L1, BL | BR, 0}, {Tag::Figcaption, "figcaption"_L1, BR, 0},
    {Tag::Figure, "figure"_L1, BL | BR, 0}, {Tag::Footer, "footer"_L1, BL | BR, 0}, {Tag::Form, "form"_L1, BL | BR, 0},
    {Tag::Frameset, "frameset"_L1, D, 0},
    {Tag::H1, "h1"_L1, BL | BR | HD | LO, 0}, {Tag::H2, "h2"_L1, BL | BR | HD | LO, 0},
    {Tag::H3, "h3"_L1, BL | BR | HD | LO, 0}, {Tag::H4, "h4"_L1, BL | BR | HD, 0},
    {Tag::H5, "h5"_L1, BL | BR | HD, 0}, {Tag::H6, "h6"_L1, BL | BR | HD, 0}, {Tag::Head, "head"_L1, D, 0},
    {Tag::Header, "header"_L1, BL | BR, 0}, {Tag::Hr, "hr"_L1, V | BL | BR | LO, 0}, {Tag::Html, "html"_L1, IN, 0},
    {Tag::I, "i"_L1, IN, italic}, {Tag::Iframe, "iframe"_L1, D, 0}, {Tag::Img, "img"_L1, V | LO, 0},
    {Tag::Input, "input"_L1, V | SK, 0}, {Tag::Ins, "ins"_L1, IN, underline},
    {Tag::Kbd, "kbd"_L1, IN, code}, {Tag::Keygen, "keygen"_L1, V | SK, 0},
    {Tag::Label, "label"_L1, IN, 0}, {Tag::Legend, "legend"_L1, BR, 0}, {Tag::Li, "li"_L1, BR | PB, 0},
    {Tag::Link, "link"_L1, V | SK, 0}, {Tag::Listing, "listing"_L1, BR | PR, 0},
    {Tag::Main, "main"_L1, BR, 0}, {Tag::Map, "map"_L1, D, 0}, {Tag::Math, "math"_L1, D, 0},
    {Tag::Menu, "menu"_L1, BL | BR | LS, 0}, {Tag::Meta, "meta"_L1, V | SK, 0},
    {Tag::Nav, "nav"_L1, BL | BR, 0}, {Tag::Noframes, "noframes"_L1, D, 0}, {Tag::Noscript, "noscript"_L1, D, 0},
    {Tag::Object, "object"_L1, D, 0}, {Tag::Ol, "ol"_L1, BL | BR | LS | LO, 0},
    {Tag::P, "p"_L1, BL | BR, 0}, {Tag::Param, "param"_L1, V | SK, 0}, {Tag::Plaintext, "plaintext"_L1, BR | PR, 0},
    {Tag::Pre, "pre"_L1, BL | BR | PR | LO, 0},
    {Tag::Q, "q"_L1, 0, 0},
    {Tag::S, "s"_L1, IN, strike}, {Tag::Samp, "samp"_L1, IN, code}, {Tag::Script, "script"_L1, D, 0},
    {Tag::Section, "section"_L1, BL | BR, 0}, {Tag::Select, "select"_L1, D, 0}, {Tag::Source, "source"_L1, V | SK, 0},
    {Tag::Strike, "strike"_L1, IN, strike}, {Tag::Strong, "strong"_L1, IN, bold}, {Tag::Style, "style"_L1, D, 0},
    {Tag::Summary, "summary"_L1, BR, 0}, {Tag::Svg, "svg"_L1, D, 0},
    {Tag::Table, "table"_L1, BL | TI | BR | PB | LO, 0}, {Tag::Tbody, "tbody"_L1, TI | BR, 0},
    {Tag::Td, "td"_L1, TI | BR | PB, 0},
    {Tag::Template, "template"_L1, D, 0}, {Tag::Textarea, "textarea"_L1, D, 0}, {Tag::Tfoot, "tfoot"_L1, TI | BR, 0},
    {Tag::Th, "th"_L1, TI | BR | PB, 0}, {Tag::Thead, "thead"_L1, TI | BR, 0}, {Tag::Title, "title"_L1, D, 0},
    {Tag::Tr, "tr"_L1, TI | BR, 0}, {Tag::Track, "track"_L1, V | SK, 0}, {Tag::Tt, "tt"_L1, IN, code},
    {Tag::U, "u"_L1, IN, underline}, {Tag::Ul, "ul"_L1, BL | BR | LS | LO, 0},
    {Tag::Var, "var"_L1, IN, italic}, {Tag::Video, "video"_L1, D, 0},
    {Tag::Wbr, "wbr"_L1, V | SK, 0},
    {Tag::Xml, "xml"_L1, D, 0},
};
// clang-format on

static_assert(std::size(rows) == tagCount, "one row per tag");

constexpr qsizetype longestName = 10;

template <typename Field> constexpr auto byTag(Field field)
{
    std::array<decltype(field(rows[0])), tagCount> values {};
    for (const TagRow &row : rows)
        values[size_t(row.tag)] = field(row);
    return values;
}

constexpr auto flagsByTag = byTag([](const TagRow &row) { return row.flags; });
constexpr auto styleByTag = byTag([](const TagRow &row) { return row.style; });

struct Tables {
    std::array<TagInfo, tagCount> info;
    // By length and first letter: a lookup compares one to four names.
    std::array<std::vector<std::pair<QByteArrayView, Tag>>, (longestName + 1) * 26> buckets;

    static qsizetype bucket(QByteArrayView name) { return name.size() * 26 + (name[0] - 'a'); }

    Tables()
    {
        for (const TagRow &row : rows) {
            Q_ASSERT(int(row.tag) < tagCount && info[int(row.tag)].name.isEmpty());
            info[int(row.tag)] = TagInfo { QString(row.name), row.flags, row.style };
            if (row.tag != Tag::Other && row.tag != Tag::Root && row.tag != Tag::Text) {
                const QByteArrayView name(row.name.data(), row.name.size());
                Q_ASSERT(name.size() <= longestName);
                buckets[size_t(bucket(name))].push_back({ name, row.tag });
            }
        }
    }
};

const Tables &tables()
{
    static const Tables t;
    return t;
}

} // namespace

Tag tagFor(QByteArrayView lowerName)
{
    if (lowerName.isEmpty() || lowerName.size() > longestName || lowerName[0] < 'a' || lowerName[0] > 'z')
        return Tag::Other;
    for (const auto &[name, tag] : tables().buckets[size_t(Tables::bucket(lowerName))]) {
        if (name == lowerName)
            return tag;
    }
    return Tag::Other;
}

quint16 tagFlags(Tag tag)
{
    return flagsByTag[size_t(tag)];
}

quint32 tagStyle(Tag tag)
{
    return styleByTag[size_t(tag)];
}

const TagInfo &tagInfo(Tag tag)
{
    return tables().info[int(tag)];
}

} // namespace TarnMailHTML::detail
