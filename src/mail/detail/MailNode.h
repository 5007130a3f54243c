#pragma once

#include "mail/detail/MailTag.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <utility>

namespace TarnMailHTML::detail {

// The attributes the block builder reads. Others are skipped while scanning and
// never decoded: they cost nothing, however large (a 500 KB title attribute of
// anything but an image, say).
enum class Attribute : quint8 {
    Alt,
    Class,
    Colspan,
    Hidden,
    Href,
    Id,
    Role,
    Src,
    Start,
    Style, // kept lower-cased with all spaces removed: the only form it is read in
    Title,
    Type,
    Height,
    Width,
};

// One node of the tree a mail is read into. Nodes live in a MailTree's arena;
// children form a singly linked list so that a node costs no allocation of its own.
struct MailNode
{
    Tag tag = Tag::Other;
    bool hidden = false; // decided once, when the node is opened
    QString name;        // lower-case tag name, "#root" or "#text"
    QString text;        // "#text" only
    QList<std::pair<Attribute, QString>> attributes;
    MailNode *firstChild = nullptr;
    MailNode *lastChild = nullptr;
    MailNode *next = nullptr;

    [[nodiscard]] bool isText() const { return tag == Tag::Text; }
    [[nodiscard]] bool hasAttribute(Attribute attribute) const;
    // The value, or an empty string when absent.
    [[nodiscard]] QString attribute(Attribute attribute) const;
    // The class attribute split on whitespace, lower-cased, empty parts dropped.
    [[nodiscard]] QStringList classes() const;
    [[nodiscard]] bool hasClass(QStringView lowerClass) const;

    void append(MailNode *child);
};

} // namespace TarnMailHTML::detail
