#include "mail/detail/TreeBuilder.h"

#include "mail/detail/MailEntities.h"
#include "mail/detail/MailRules.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <utility>

using namespace Qt::StringLiterals;

namespace TarnMailHTML::detail {

namespace {

// Byte classes of the scan, one table lookup each.
enum : quint8 {
    Space = 1, // tab, line feed, form feed, carriage return, space
    EndsName = 2, // ends a tag name: a space, '/' or '>'
    EndsAttribute = 4, // ends an attribute name: a space, '/', '>' or '='
};

constexpr std::array<quint8, 256> byteClasses = [] {
    std::array<quint8, 256> classes {};
    for (const unsigned char c : { ' ', '\t', '\n', '\f', '\r' })
        classes[c] = Space | EndsName | EndsAttribute;
    classes[unsigned('/')] = EndsName | EndsAttribute;
    classes[unsigned('>')] = EndsName | EndsAttribute;
    classes[unsigned('=')] = EndsAttribute;
    return classes;
}();

bool is(char c, quint8 byteClass)
{
    return (byteClasses[static_cast<unsigned char>(c)] & byteClass) != 0;
}

bool isSpace(char c)
{
    return is(c, Space);
}

bool isAsciiLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char lower(char c)
{
    return (c >= 'A' && c <= 'Z') ? char(c + ('a' - 'A')) : c;
}

bool endsName(char c)
{
    return is(c, EndsName);
}

bool isAnyOf(Tag tag, std::initializer_list<Tag> tags)
{
    for (const Tag t : tags) {
        if (t == tag)
            return true;
    }
    return false;
}

bool isAsciiWhitespaceOnly(QByteArrayView bytes)
{
    for (const char c : bytes) {
        if (!isSpace(c))
            return false;
    }
    return true;
}

// The attributes read, each into its own field of the node.
enum class Read : quint8 { Class, Id, Type, Style, Hidden, Href, Src, Alt, Title, Width, Height, Start, Colspan, Role };

template <qsizetype N> bool is(QByteArrayView name, const char (&literal)[N])
{
    return name.size() == N - 1 && std::memcmp(name.data(), literal, N - 1) == 0;
}

// Which attributes are worth reading on which element: the rest are skipped
// without being decoded (a width on every layout cell, a title on a paragraph).
std::optional<Read> attributeFor(Tag tag, QByteArrayView name)
{
    switch (name.size()) {
    case 2:
        if (is(name, "id"))
            return Read::Id;
        break;
    case 3:
        if (tag == Tag::Img && is(name, "alt"))
            return Read::Alt;
        if (tag == Tag::Img && is(name, "src"))
            return Read::Src;
        break;
    case 4:
        if (tag == Tag::A && is(name, "href"))
            return Read::Href;
        if (is(name, "type"))
            return Read::Type;
        if (tag == Tag::Table && is(name, "role"))
            return Read::Role;
        break;
    case 5:
        if (is(name, "class"))
            return Read::Class;
        if (is(name, "style"))
            return Read::Style;
        if (tag == Tag::Img && is(name, "width"))
            return Read::Width;
        if (tag == Tag::Img && is(name, "title"))
            return Read::Title;
        if (tag == Tag::Ol && is(name, "start"))
            return Read::Start;
        break;
    case 6:
        if (tag == Tag::Img && is(name, "height"))
            return Read::Height;
        if (is(name, "hidden"))
            return Read::Hidden;
        break;
    case 7:
        if ((tag == Tag::Td || tag == Tag::Th) && is(name, "colspan"))
            return Read::Colspan;
        break;
    default:
        break;
    }
    return std::nullopt;
}

// An ordered list's start: an optional sign and decimal digits, else 1.
int listStart(QByteArrayView value)
{
    value = value.trimmed();
    const bool negative = value.startsWith('-');
    if (negative || value.startsWith('+'))
        value = value.sliced(1);
    if (value.isEmpty() || value.size() > 10)
        return 1;
    qint64 number = 0;
    for (const char c : value) {
        if (c < '0' || c > '9')
            return 1;
        number = number * 10 + (c - '0');
    }
    number = negative ? -number : number;
    return (number < INT_MIN || number > INT_MAX) ? 1 : int(number);
}

// Whitespace between tags is most of the text nodes of a laid-out mail; outside
// preformatted text it only ever collapses to one space, so it shares one string.
const QString &sharedSpace()
{
    static const QString space = u" "_s;
    return space;
}

} // namespace

TreeBuilder::TreeBuilder(QByteArrayView utf8)
    : m_in(utf8)
{
}

TreeBuilder::Name TreeBuilder::readName(qsizetype from) const
{
    const qsizetype n = m_in.size();
    qsizetype end = from;
    while (end < n && !endsName(m_in[end]))
        ++end;

    Name result;
    result.end = end;
    // Names are short; a long one (no tag we know) gets a heap buffer.
    char small[32] = {}; // zeroed only to quiet a false maybe-uninitialized warning
    QByteArray large;
    char *buffer = small;
    if (end - from > qsizetype(sizeof small)) {
        large.resize(end - from);
        buffer = large.data();
    }
    qsizetype colon = -1;
    for (qsizetype i = from; i < end; ++i) {
        const char c = m_in[i];
        if (c == ':')
            colon = i - from;
        buffer[i - from] = lower(c);
    }
    const QByteArrayView lowered(buffer, end - from);
    result.isOP = lowered.size() == 3 && lowered[0] == 'o' && lowered[1] == ':' && lowered[2] == 'p';
    const QByteArrayView local = colon < 0 ? lowered : lowered.sliced(colon + 1);
    result.tag = local.isEmpty() ? Tag::Other : tagFor(local);
    if (result.tag == Tag::Other)
        result.name = QString::fromUtf8(local);
    return result;
}

qsizetype TreeBuilder::scanAttributes(qsizetype from, Tag tag, Opening *out) const
{
    const qsizetype n = m_in.size();
    const char *in = m_in.data();
    qsizetype i = from;
    quint32 seen = 0;
    while (i < n) {
        const char c = in[i];
        if (c == '>')
            return i;
        if (isSpace(c) || c == '/') {
            ++i;
            continue;
        }
        const qsizetype nameStart = i;
        ++i; // a leading '=' or quote belongs to the name
        while (i < n && !is(in[i], EndsAttribute))
            ++i;
        const qsizetype nameEnd = i;
        while (i < n && isSpace(in[i]))
            ++i;
        qsizetype valueStart = i;
        qsizetype valueEnd = i;
        if (i < n && in[i] == '=') {
            ++i;
            while (i < n && isSpace(in[i]))
                ++i;
            if (i < n && (in[i] == '"' || in[i] == '\'')) {
                const char *close = static_cast<const char *>(std::memchr(in + i + 1, in[i], size_t(n - i - 1)));
                valueStart = i + 1;
                valueEnd = close ? close - in : n;
                i = close ? valueEnd + 1 : n;
            } else {
                valueStart = i;
                while (i < n && !isSpace(in[i]) && in[i] != '>')
                    ++i;
                valueEnd = i;
            }
        }
        if (!out || nameEnd - nameStart > 8)
            continue;
        char lowered[8];
        for (qsizetype k = nameStart; k < nameEnd; ++k)
            lowered[k - nameStart] = lower(in[k]);
        const std::optional<Read> known = attributeFor(tag, QByteArrayView(lowered, nameEnd - nameStart));
        if (!known)
            continue;
        const Read read = *known;
        const quint32 bit = 1u << unsigned(read);
        if (seen & bit) // the first of a repeated attribute wins, as in browsers
            continue;
        seen |= bit;

        QByteArrayView raw(in + valueStart, valueEnd - valueStart);
        const bool asText = read == Read::Href || read == Read::Src || read == Read::Alt || read == Read::Title;
        QString text;
        QByteArray decoded;
        if (asText) {
            text = QString::fromUtf8(raw);
            if (raw.contains('&'))
                text = MailEntities::decoded(text);
        } else if (raw.contains('&')) {
            decoded = MailEntities::decoded(QString::fromUtf8(raw)).toUtf8();
            raw = decoded;
        }
        switch (read) {
        case Read::Class:
            out->marks |= MailRules::classMarks(raw);
            break;
        case Read::Id:
            out->marks |= MailRules::idMarks(raw);
            break;
        case Read::Type:
            out->marks |= MailRules::typeMarks(raw);
            break;
        case Read::Hidden:
            out->hidden = true;
            break;
        case Read::Style: {
            const MailRules::StyleFacts facts = MailRules::styleFacts(raw);
            out->hidden = out->hidden || facts.hidden;
            out->style = quint8(facts.style.rawValue());
            out->styleWidth = facts.width.value_or(-1);
            out->styleHeight = facts.height.value_or(-1);
            break;
        }
        case Read::Href:
            out->marks |= NodeMark::HasHref;
            out->value = std::move(text);
            break;
        case Read::Src:
            out->value = std::move(text);
            break;
        case Read::Alt: // the alt text wins over a title, wherever each stands
            out->alt = std::move(text);
            break;
        case Read::Title:
            if (!(seen & (1u << unsigned(Read::Alt))))
                out->alt = std::move(text);
            break;
        case Read::Width:
            out->width = MailRules::dimension(raw).value_or(-1);
            break;
        case Read::Height:
            out->height = MailRules::dimension(raw).value_or(-1);
            break;
        case Read::Start:
            out->number = listStart(raw);
            break;
        case Read::Colspan:
            out->number = qBound(1, MailRules::dimension(raw).value_or(1), 1000);
            break;
        case Read::Role: {
            const QByteArrayView role = raw.trimmed();
            if (role.compare("presentation", Qt::CaseInsensitive) == 0
                || role.compare("none", Qt::CaseInsensitive) == 0)
                out->marks |= NodeMark::Presentation;
            break;
        }
        }
    }
    return n;
}

qsizetype TreeBuilder::quotedEnd(qsizetype from) const
{
    const qsizetype n = m_in.size();
    char quote = 0;
    for (qsizetype i = from; i < n; ++i) {
        const char c = m_in[i];
        if (quote) {
            if (c == quote)
                quote = 0;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            return i;
        }
    }
    return n;
}

qsizetype TreeBuilder::droppedContentEnd(qsizetype from, const QString &lowerName) const
{
    const QByteArray name = lowerName.toUtf8();
    const qsizetype n = m_in.size();
    const char *in = m_in.data();
    qsizetype i = from;
    while (i < n) {
        const char *lt = static_cast<const char *>(std::memchr(in + i, '<', size_t(n - i)));
        if (!lt)
            return -1;
        const qsizetype at = lt - in;
        i = at + 1;
        if (at + 2 + name.size() > n || in[at + 1] != '/')
            continue;
        bool same = true;
        for (qsizetype k = 0; k < name.size() && same; ++k)
            same = lower(in[at + 2 + k]) == name[k];
        const qsizetype after = at + 2 + name.size();
        if (!same || (after < n && !endsName(in[after])))
            continue;
        const char *gt = static_cast<const char *>(std::memchr(in + after, '>', size_t(n - after)));
        return gt ? gt - in + 1 : n;
    }
    return -1;
}

MailTree TreeBuilder::build()
{
    m_stack.clear();
    m_stack.push_back({ m_tree.root() });
    const qsizetype n = m_in.size();
    const char *in = m_in.data();
    qsizetype pos = 0;
    m_textMark = 0;

    while (pos < n) {
        const char *lt = static_cast<const char *>(std::memchr(in + pos, '<', size_t(n - pos)));
        if (!lt)
            break;
        const qsizetype at = lt - in;
        if (at + 1 >= n)
            break;
        const char next = in[at + 1];

        if (next == '?') {
            flushText(at);
            const qsizetype end = quotedEnd(at + 2);
            pos = m_textMark = end < n ? end + 1 : n;
        } else if (next == '/') {
            if (at + 2 < n && isAsciiLetter(in[at + 2])) {
                flushText(at);
                const Name name = readName(at + 2);
                const qsizetype end = quotedEnd(name.end);
                pos = m_textMark = end < n ? end + 1 : n;
                if (end < n) // a tag cut off by the end of the input is dropped
                    close(name);
            } else {
                pos = at + 1;
            }
        } else if (next == '!') {
            flushText(at);
            if (at + 3 < n && in[at + 2] == '-' && in[at + 3] == '-') {
                const QByteArrayView rest = m_in.sliced(qMin(at + 4, n));
                const qsizetype close = rest.indexOf("-->");
                pos = close < 0 ? n : (at + 4) + close + 3;
            } else {
                const qsizetype end = quotedEnd(at + 2);
                pos = end < n ? end + 1 : n;
            }
            m_textMark = pos;
        } else if (isAsciiLetter(next)) {
            flushText(at);
            const Name name = readName(at + 1);
            const bool dropped = hasFlag(name.tag, TagFlag::Dropped);
            Opening opening;
            const qsizetype end = scanAttributes(name.end, name.tag, (dropped || name.isOP) ? nullptr : &opening);
            const bool selfClosing = end < n && end > name.end && in[end - 1] == '/';
            pos = m_textMark = end < n ? end + 1 : n;
            if (dropped && !selfClosing) {
                const qsizetype contentEnd = droppedContentEnd(pos, tagInfo(name.tag).name);
                if (contentEnd >= 0)
                    pos = m_textMark = contentEnd;
            } else if (!dropped && !name.isOP && end < n) {
                open(name.tag, name.name, std::move(opening), selfClosing);
            }
        } else {
            pos = at + 1;
        }
    }
    flushText(n);
    return std::move(m_tree);
}

void TreeBuilder::flushText(qsizetype end)
{
    if (end <= m_textMark)
        return;
    const QByteArrayView bytes = m_in.sliced(m_textMark, end - m_textMark);
    m_textMark = end;
    MailNode *parent = top();
    MailNode *last = lastChild();
    if (m_rawDepth == 0 && isAsciiWhitespaceOnly(bytes)) {
        // Whitespace right after a visible element that ends the paragraph, or
        // first inside one that starts it, is dropped by the block builder
        // anyway: laid-out mail is mostly such whitespace, so it is not kept.
        const bool afterBreak = last ? (!last->isText() && !last->hidden && hasFlag(last->tag, TagFlag::Breaks))
                                     : (parent->tag == Tag::Root || hasFlag(parent->tag, TagFlag::Breaks));
        if (afterBreak)
            return;
        if (last && last->isText()) {
            if (!last->text.endsWith(u' '))
                last->text.append(u' ');
        } else {
            MailNode *node = m_tree.create(Tag::Text);
            node->text = sharedSpace();
            append(node);
        }
        return;
    }
    QString text = QString::fromUtf8(bytes);
    if (bytes.contains('&'))
        text = MailEntities::decoded(text);
    if (last && last->isText()) {
        last->text.append(text);
    } else {
        MailNode *node = m_tree.create(Tag::Text);
        node->text = std::move(text);
        append(node);
    }
}

void TreeBuilder::append(MailNode *child)
{
    Open &open = m_stack.back();
    if (open.lastChild)
        open.lastChild->next = child;
    else
        open.node->firstChild = child;
    open.lastChild = child;
}

void TreeBuilder::push(MailNode *node)
{
    m_stack.push_back({ node });
    if (hasFlag(node->tag, TagFlag::Preformatted))
        ++m_rawDepth;
}

void TreeBuilder::popTo(qsizetype index)
{
    while (qsizetype(m_stack.size()) > index) {
        if (hasFlag(m_stack.back().node->tag, TagFlag::Preformatted))
            --m_rawDepth;
        m_stack.pop_back();
    }
}

template <typename Target, typename Barrier>
bool TreeBuilder::closeImplicitly(Target target, Barrier barrier, bool lowest)
{
    qsizetype found = -1;
    for (qsizetype i = qsizetype(m_stack.size()) - 1; i >= 1; --i) {
        const Tag tag = m_stack[size_t(i)].node->tag;
        if (target(tag)) {
            found = i;
            if (!lowest)
                break;
        } else if (barrier(tag)) {
            break;
        }
    }
    if (found < 1)
        return false;
    popTo(found);
    return true;
}

void TreeBuilder::open(Tag tag, const QString &name, Opening opening, bool selfClosing)
{
    const auto paragraphBarrier = [](Tag t) { return hasFlag(t, TagFlag::ParagraphBarrier); };
    if (hasFlag(tag, TagFlag::BlockLevel))
        closeImplicitly([](Tag t) { return t == Tag::P; }, paragraphBarrier);

    const auto isTable = [](Tag t) { return t == Tag::Table; };
    switch (tag) {
    case Tag::Li:
        closeImplicitly([](Tag t) { return t == Tag::Li; },
            [](Tag t) {
                return isAnyOf(t, { Tag::Ul, Tag::Ol, Tag::Menu, Tag::Table });
            });
        break;
    case Tag::Dt:
    case Tag::Dd:
        closeImplicitly(
            [](Tag t) { return t == Tag::Dt || t == Tag::Dd; }, [](Tag t) { return t == Tag::Dl || t == Tag::Table; });
        break;
    case Tag::Tr:
        // The lowest open row or cell of this table: a new row ends the cell
        // and the row it is in.
        closeImplicitly([](Tag t) { return isAnyOf(t, { Tag::Tr, Tag::Td, Tag::Th }); }, isTable, true);
        break;
    case Tag::Td:
    case Tag::Th:
        closeImplicitly(
            [](Tag t) { return t == Tag::Td || t == Tag::Th; }, [](Tag t) { return t == Tag::Tr || t == Tag::Table; });
        break;
    case Tag::Thead:
    case Tag::Tbody:
    case Tag::Tfoot:
        // A new section ends the whole previous one, not just its open cell.
        closeImplicitly(
            [](Tag t) {
                return isAnyOf(t, { Tag::Thead, Tag::Tbody, Tag::Tfoot, Tag::Tr, Tag::Td, Tag::Th });
            },
            isTable, true);
        break;
    default:
        break;
    }

    const bool full = m_stack.size() >= size_t(maxDepth);
    if (full && !hasFlag(tag, TagFlag::Void) && !selfClosing && opening.marks == 0) {
        // Past the depth cap an element's content flows into the open one, so
        // the element itself is empty. Hostile nesting is mostly such elements:
        // keep only those that still mean something, once.
        if (tag == Tag::Other || hasFlag(tag, TagFlag::Inline))
            return;
        const MailNode *last = lastChild();
        if (hasFlag(tag, TagFlag::Breaks) && !opening.hidden && last && last->tag == tag && !last->firstChild
            && !last->hidden && last->marks == 0)
            return;
    }
    MailNode *node = m_tree.create(tag);
    if (tag == Tag::Other)
        node->text = name;
    if (MailNode::isValued(tag))
        static_cast<MailNode::Valued *>(node)->value = std::move(opening.value);
    if (tag == Tag::Img)
        node->text = std::move(opening.alt);
    node->width = opening.width >= 0 ? opening.width : opening.styleWidth;
    node->height = opening.height >= 0 ? opening.height : opening.styleHeight;
    node->number = opening.number;
    node->hidden = opening.hidden;
    node->marks = opening.marks;
    node->style = opening.style;
    append(node);
    if (!hasFlag(tag, TagFlag::Void) && !selfClosing && !full)
        push(node);
}

void TreeBuilder::close(const Name &name)
{
    if (name.isOP)
        return;
    const Tag tag = name.tag;
    if (tag == Tag::Br) {
        open(Tag::Br, name.name, {}, true);
        return;
    }
    if (tag == Tag::P) {
        const bool closed = closeImplicitly(
            [](Tag t) { return t == Tag::P; }, [](Tag t) { return hasFlag(t, TagFlag::ParagraphBarrier); });
        // A stray </p> is a line break, as browsers draw it.
        if (!closed)
            open(Tag::Br, QString(), {}, true);
        return;
    }

    const auto target = [&](const MailNode *node) {
        return tag == Tag::Other ? (node->tag == Tag::Other && node->text == name.name) : node->tag == tag;
    };
    const auto barrier = [&](Tag t) {
        if (tag == Tag::Table)
            return false;
        if (hasFlag(tag, TagFlag::TableInner))
            return t == Tag::Table;
        return t == Tag::Td || t == Tag::Th || t == Tag::Table;
    };
    for (qsizetype i = qsizetype(m_stack.size()) - 1; i >= 1; --i) {
        const MailNode *node = m_stack[size_t(i)].node;
        if (target(node)) {
            popTo(i);
            return;
        }
        if (barrier(node->tag))
            return;
    }
}

} // namespace TarnMailHTML::detail
