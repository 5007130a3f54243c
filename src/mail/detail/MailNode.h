#pragma once

#include "mail/detail/MailTag.h"

#include <QList>
#include <QString>

#include <utility>

namespace TarnMailHTML::detail {

// The attributes the block builder reads as strings. Others are skipped while
// scanning and never decoded, so they cost nothing however large; class, id,
// type, style and hidden are read once, into MailNode's marks and style facts.
enum class Attribute : quint8 {
    Alt,
    Colspan,
    Height,
    Href,
    Role,
    Src,
    Start,
    Title,
    Width,
};

// What class, id and type attributes say about a node.
namespace NodeMark {
enum : quint8 {
    HistoryClass = 1,   // gmail_quote, moz-cite-prefix, yahoo_quoted, ...
    Signature = 2,      // class gmail_signature or signature, or id signature
    EmojiClass = 4,     // a class containing "emoji"
    ReplySeparator = 8, // id divRplyFwdMsg, appendonsend, ...
    CiteType = 16,      // type="cite"
};
}

// One node of the tree a mail is read into. Nodes live in a MailTree's arena;
// children form a singly linked list so that a node costs no allocation of its own.
struct MailNode
{
    Tag tag = Tag::Other;
    bool hidden = false; // decided once, when the node is opened
    quint8 marks = 0;    // NodeMark bits
    quint8 style = 0;    // TarnMailStyle bits its style attribute adds
    int styleWidth = -1; // CSS pixels from the style attribute, -1 when not given
    int styleHeight = -1;
    // A text node's text; for an element of a tag the builders do not know
    // (Tag::Other), its lower-case name.
    QString text;
    QList<std::pair<Attribute, QString>> attributes;
    MailNode *firstChild = nullptr;
    MailNode *lastChild = nullptr;
    MailNode *next = nullptr;

    [[nodiscard]] bool isText() const { return tag == Tag::Text; }
    // Lower-case tag name, "#root" or "#text".
    [[nodiscard]] QString name() const { return tag == Tag::Other ? text : tagInfo(tag).name; }
    [[nodiscard]] bool hasMark(quint8 mark) const { return (marks & mark) != 0; }
    [[nodiscard]] bool hasAttribute(Attribute attribute) const;
    // The value, or an empty string when absent.
    [[nodiscard]] QString attribute(Attribute attribute) const;

    void append(MailNode *child);
};

} // namespace TarnMailHTML::detail
