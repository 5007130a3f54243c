#pragma once

#include "mail/detail/MailNode.h"
#include "mail/detail/MailTree.h"

#include <QByteArrayView>

#include <vector>

namespace TarnMailHTML::detail {

// Reads the UTF-8 bytes of a mail into a tree of MailNodes in one forward scan
// with integer indexes. Forgiving the way mail needs: unclosed and stray tags,
// unterminated comments and quotes never fail, and nesting stops growing at
// `maxDepth` open elements (deeper elements are kept, their content flows into
// the deepest open one).
class TreeBuilder {
public:
    static constexpr int maxDepth = 220;

    explicit TreeBuilder(QByteArrayView utf8);

    [[nodiscard]] MailTree build();

private:
    // What a start tag's attributes say.
    struct Opening {
        QString value;
        QString alt;
        int width = -1;
        int height = -1;
        int number = 1;
        quint8 marks = 0;
        quint8 style = 0;
        bool hidden = false; // a hidden attribute, or a hiding style
        int styleWidth = -1;
        int styleHeight = -1;
    };

    struct Name {
        qsizetype end = 0; // first byte after the name
        Tag tag = Tag::Other;
        QString name; // the local name, lower-cased (kept for Tag::Other only)
        bool isOP = false; // the Office paragraph o:p, ignored
    };

    [[nodiscard]] Name readName(qsizetype from) const;
    // Index of the '>' that ends a tag whose attributes start at `from`, or the
    // input size; attributes the builder reads are collected when `out` is set.
    qsizetype scanAttributes(qsizetype from, Tag tag, Opening *out) const;
    // Index of the next '>' outside single or double quotes, or the input size.
    [[nodiscard]] qsizetype quotedEnd(qsizetype from) const;
    // End of `</name ...>` for a dropped element's content, or -1.
    [[nodiscard]] qsizetype droppedContentEnd(qsizetype from, const QString &lowerName) const;

    void flushText(qsizetype end);
    void open(Tag tag, const QString &name, Opening opening, bool selfClosing);
    void close(const Name &name);
    void push(MailNode *node);
    // Adds a child to the innermost open element.
    void append(MailNode *child);
    void popTo(qsizetype index);
    // Pops the matching entry (searched from the top, stopping at a barrier)
    // and all above it; `lowest` takes the deepest match instead of the first.
    template <typename Target, typename Barrier>
    bool closeImplicitly(Target target, Barrier barrier, bool lowest = false);
    [[nodiscard]] MailNode *top() const { return m_stack.back().node; }
    [[nodiscard]] MailNode *lastChild() const { return m_stack.back().lastChild; }

    // An open element and its last child so far: only open elements gain
    // children, so the nodes themselves need not remember their last.
    struct Open {
        MailNode *node = nullptr;
        MailNode *lastChild = nullptr;
    };

    QByteArrayView m_in;
    MailTree m_tree;
    std::vector<Open> m_stack;
    qsizetype m_textMark = 0;
    int m_rawDepth = 0; // open pre, listing and plaintext elements
};

} // namespace TarnMailHTML::detail
