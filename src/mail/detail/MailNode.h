#pragma once

#include "mail/detail/MailTag.h"

#include <QString>

namespace TarnMailHTML::detail {

// What the attributes of a node say, read once while scanning its tag. Only
// the attributes the block builder uses are read, and only on the elements it
// reads them on; the rest are skipped undecoded, however large.
namespace NodeMark {
enum : quint8 {
    HistoryClass = 1, // gmail_quote, moz-cite-prefix, yahoo_quoted, ...
    Signature = 2, // class gmail_signature or signature, or id signature
    EmojiClass = 4, // a class containing "emoji"
    ReplySeparator = 8, // id divRplyFwdMsg, appendonsend, ...
    CiteType = 16, // type="cite"
    HasHref = 32, // a link with an href (possibly empty)
    Presentation = 64, // role="presentation" or "none"
};
}

// One node of the tree a mail is read into. Nodes live in a MailTree's arena;
// children form a singly linked list so that a node costs no allocation of its
// own. Only links and images carry a value (see Valued), so the other nodes,
// most of any mail, stay small.
struct MailNode {
    struct Valued;

    Tag tag = Tag::Other;
    bool hidden = false; // decided once, when the node is opened
    quint8 marks = 0; // NodeMark bits
    quint8 style = 0; // TarnMailStyle bits its style attribute adds
    // img: the width and height attributes in CSS pixels, else those of the
    // style attribute; -1 when neither gives one.
    int width = -1;
    int height = -1;
    int number = 1; // ol: start; td, th: colspan
    // A text node's text; an img's alt text (else its title); for an element
    // of a tag the builders do not know (Tag::Other), its lower-case name.
    QString text;
    MailNode *firstChild = nullptr;
    MailNode *next = nullptr;

    [[nodiscard]] static bool isValued(Tag tag) { return tag == Tag::A || tag == Tag::Img; }
    // a: href; img: src; empty for every other node.
    [[nodiscard]] const QString &value() const;

    [[nodiscard]] bool isText() const { return tag == Tag::Text; }
    // Lower-case tag name, "#root" or "#text".
    [[nodiscard]] QString name() const { return tag == Tag::Other ? text : tagInfo(tag).name; }
    [[nodiscard]] bool hasMark(quint8 mark) const { return (marks & mark) != 0; }
};

// The node of a link or an image; MailTree makes one for those tags.
struct MailNode::Valued : MailNode {
    QString value;
};

} // namespace TarnMailHTML::detail
