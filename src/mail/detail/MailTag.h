#pragma once

#include <QByteArrayView>
#include <QString>

// The tags the tree and block builders know by name. Everything else is
// `Other`, compared by its name string and walked transparently.
namespace TarnMailHTML::detail {

// clang-format off
enum class Tag : quint8 {
    Other,
    Root,
    Text,
    A, Address, Applet, Area, Article, Aside, Audio,
    B, Base, Blockquote, Body, Br, Button,
    Canvas, Caption, Center, Cite, Code, Col, Colgroup,
    Datalist, Dd, Del, Details, Dfn, Dir, Div, Dl, Dt,
    Em, Embed,
    Fieldset, Figcaption, Figure, Footer, Form, Frameset,
    H1, H2, H3, H4, H5, H6, Head, Header, Hr, Html,
    I, Iframe, Img, Input, Ins,
    Kbd, Keygen,
    Label, Legend, Li, Link, Listing,
    Main, Map, Math, Menu, Meta,
    Nav, Noframes, Noscript,
    Object, Ol,
    P, Param, Plaintext, Pre,
    Q,
    S, Samp, Script, Section, Select, Source, Strike, Strong, Style, Summary, Svg,
    Table, Tbody, Td, Template, Textarea, Tfoot, Th, Thead, Title, Tr, Track, Tt,
    U, Ul,
    Var, Video,
    Wbr,
    Xml,
};
// clang-format on

namespace TagFlag {
enum : quint16 {
    Void = 1, // never pushed: has no content
    Dropped = 2, // content discarded by the tree builder
    BlockLevel = 4, // closes an open paragraph
    TableInner = 8, // tr, td, th, thead, tbody, tfoot, caption: closing stops at a table
    Breaks = 16, // the block builder ends the open paragraph at it, before and after
    Inline = 32, // adds at most a style to its content: an empty one has no effect
    ParagraphBarrier = 64, // td, th, table, li, blockquote, div: a paragraph is not closed across it
    Skipped = 128, // the block builder shows neither it nor its content: controls, metadata, columns
    List = 256, // ul, ol, menu, dir: a list block of its li children
    Preformatted = 512, // pre, listing, plaintext: whitespace as written
    Heading = 1024, // h1 to h6, in order
    LayoutOnly = 2048, // near the top of a table cell, makes the table one of layout
};
}

struct TagInfo {
    QString name;
    quint16 flags = 0;
    quint32 style = 0; // TarnMailStyle bits an inline style tag adds
};

// `lowerName` must be lower-case already. Unknown names give Tag::Other.
[[nodiscard]] Tag tagFor(QByteArrayView lowerName);
[[nodiscard]] const TagInfo &tagInfo(Tag tag);

// Without the name: a plain table lookup, no initialization to check.
[[nodiscard]] quint16 tagFlags(Tag tag);
[[nodiscard]] quint32 tagStyle(Tag tag);

[[nodiscard]] inline bool hasFlag(Tag tag, quint16 flag)
{
    return (tagFlags(tag) & flag) != 0;
}

} // namespace TarnMailHTML::detail
