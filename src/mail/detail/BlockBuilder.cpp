#include "mail/detail/BlockBuilder.h"

#include "mail/TarnMailImage.h"
#include "mail/TarnMailTable.h"
#include "mail/detail/BlockText.h"
#include "mail/detail/LinkRules.h"
#include "mail/detail/MailRules.h"

#include <optional>
#include <string_view>
#include <utility>

using namespace Qt::StringLiterals;

namespace TarnMailHTML::detail {

namespace {

// Quotation marks for `q`: the typographic pair, as the rest of the
// application's text is set.
const QString &openQuote()
{
    static const QString mark = u"\u201C"_s;
    return mark;
}

const QString &closeQuote()
{
    static const QString mark = u"\u201D"_s;
    return mark;
}

// A data table's cell holding more text or markup than this is page layout.
constexpr int maxDataCellCharacters = 240;
constexpr int maxDataRowCells = 10;
constexpr int layoutSearchDepth = 6;
// A data-table cell or a link's text is small; past this many nodes the walk
// stops (a layout table, a link too long to be an address), so that checking
// nested tables and links can never grow quadratic on hostile nesting.
constexpr int nodeBudget = 512;
constexpr int maxLinkText = 300;

bool isAsciiSpace(char16_t c)
{
    // Tab, line feed, form feed, carriage return and space, as one bit test.
    return c <= 0x20 && ((0x1'0000'3600ULL >> c) & 1);
}

bool isCell(const MailNode &node)
{
    return node.tag == Tag::Td || node.tag == Tag::Th;
}

int colspan(const MailNode &cell)
{
    return cell.number;
}

// The visible text of a link, whitespace collapsed, or nothing once it is too
// long (or too deep) to be a web address.
std::optional<QString> linkText(const MailNode &anchor)
{
    QString text;
    int budget = nodeBudget;
    bool tooLong = false;
    const auto collect = [&](const auto &self, const MailNode &node) -> void {
        for (const MailNode *child = node.firstChild; child && !tooLong; child = child->next) {
            // Raw text may be mostly layout whitespace: allow for it before giving up.
            if (--budget < 0 || text.size() > maxLinkText * 4) {
                tooLong = true;
                return;
            }
            if (child->isText())
                text.append(child->text);
            else if (!child->hidden)
                self(self, *child);
        }
    };
    collect(collect, anchor);
    if (tooLong || text.size() > maxLinkText * 4)
        return std::nullopt;
    return text.simplified();
}

// Scans one cell of a candidate data table: true when it holds a layout-only
// element near the top, too much text, or too much markup.
bool isLayoutCell(const MailNode &cell)
{
    int characters = 0;
    int budget = nodeBudget;
    const auto scan = [&](const auto &self, const MailNode &node, int depth) -> bool {
        for (const MailNode *child = node.firstChild; child; child = child->next) {
            if (--budget < 0)
                return true;
            if (child->isText()) {
                characters += int(QStringView(child->text).trimmed().size());
                if (characters > maxDataCellCharacters)
                    return true;
                continue;
            }
            if (child->hidden)
                continue;
            if (depth <= layoutSearchDepth && hasFlag(child->tag, TagFlag::LayoutOnly))
                return true;
            if (self(self, *child, depth + 1))
                return true;
        }
        return false;
    };
    return scan(scan, cell, 1);
}

} // namespace

TarnMailDocument BlockBuilder::document(const MailNode &root, int characterLimit, int blockLimit)
{
    Shared shared;
    shared.characterLimit = qMax(characterLimit, 0);
    shared.blockLimit = qMax(blockLimit, 0);
    BlockBuilder builder(shared, true);
    builder.walk(root, Context {});
    builder.flushParagraph();

    TarnMailDocument document;
    document.blocks = builder.takeBlocks();
    document.quoted = std::move(shared.quoted);
    document.blockedTrackers = shared.trackers;
    document.truncated = shared.truncated;
    // A message that is only a forward or a quote still shows its content.
    if (document.blocks.isEmpty())
        std::swap(document.blocks, document.quoted);
    return document;
}

BlockBuilder::BlockBuilder(Shared &shared, bool isRoot)
    : m_shared(shared)
    , m_isRoot(isRoot)
{
}

QList<TarnMailBlock> BlockBuilder::takeBlocks()
{
    return std::exchange(m_blocks, {});
}

void BlockBuilder::walk(const MailNode &node, const Context &context)
{
    for (const MailNode *child = node.firstChild; child; child = child->next) {
        if (m_shared.truncated)
            return;
        visit(*child, context);
    }
}

void BlockBuilder::visit(const MailNode &node, const Context &context)
{
    if (m_shared.truncated)
        return;
    if (node.isText()) {
        addText(node.text, context);
        return;
    }
    if (node.hidden)
        return;

    if (m_shared.quoteDepth == 0) {
        if (node.hasMark(NodeMark::HistoryClass) || (node.tag == Tag::Blockquote && node.hasMark(NodeMark::CiteType))) {
            history(node, context);
            return;
        }
        if (node.hasMark(NodeMark::ReplySeparator)) {
            flushParagraph();
            if (!(m_isRoot && !emittedContent()))
                m_shared.foldRest = true;
        }
    }
    if (node.hasMark(NodeMark::Signature)) {
        signature(node, context);
        return;
    }

    const quint16 flags = tagFlags(node.tag);
    if (flags & TagFlag::Skipped)
        return;
    Context inner = context;
    inner.style |= TarnMailStyle(tagStyle(node.tag) | node.style);

    switch (node.tag) { // the tags with a reading of their own
    case Tag::A:
        link(node, inner);
        return;
    case Tag::Q:
        addText(openQuote(), inner);
        walk(node, inner);
        addText(closeQuote(), inner);
        return;
    case Tag::Br:
        lineBreak(inner);
        return;
    case Tag::Img:
        image(node, inner);
        return;
    case Tag::Hr:
        flushParagraph();
        emitBlock(TarnMailBlock::rule());
        return;
    case Tag::Blockquote: {
        flushParagraph();
        BlockBuilder quote(m_shared, false);
        quote.walk(node, inner);
        quote.flushParagraph();
        QList<TarnMailBlock> blocks = quote.takeBlocks();
        if (!blocks.isEmpty())
            emitBlock(TarnMailBlock::quote(std::move(blocks)));
        return;
    }
    case Tag::Table:
        flushParagraph();
        table(node, inner);
        return;
    default:
        break;
    }
    static_assert(int(Tag::H6) - int(Tag::H1) == 5, "heading levels follow the tag order");
    if (flags & TagFlag::Heading) {
        heading(node, inner, int(node.tag) - int(Tag::H1) + 1);
    } else if (flags & TagFlag::List) {
        flushParagraph();
        list(node, inner);
    } else if (flags & TagFlag::Preformatted) {
        flushParagraph();
        preformatted(node);
    } else if (flags & TagFlag::Breaks) {
        // Every other block, an li outside a list among them, reads as
        // paragraphs of its own.
        flushParagraph();
        walk(node, inner);
        flushParagraph();
    } else {
        walk(node, inner);
    }
}

bool BlockBuilder::emittedContent() const
{
    // A leading rule (the line some clients draw above a forwarded message)
    // does not make the message's own part begin.
    return std::any_of(m_blocks.cbegin(), m_blocks.cend(),
        [](const TarnMailBlock &b) { return b.kind() != TarnMailBlock::Kind::Rule; });
}

void BlockBuilder::history(const MailNode &node, const Context &context)
{
    flushParagraph();
    ++m_shared.quoteDepth;
    BlockBuilder quoted(m_shared, false);
    quoted.walk(node, context);
    quoted.flushParagraph();
    --m_shared.quoteDepth;
    QList<TarnMailBlock> blocks = quoted.takeBlocks();
    if (node.tag == Tag::Blockquote) {
        if (!blocks.isEmpty())
            m_shared.quoted.append(TarnMailBlock::quote(std::move(blocks)));
    } else {
        m_shared.quoted.append(std::move(blocks));
    }
}

void BlockBuilder::signature(const MailNode &node, const Context &context)
{
    flushParagraph();
    Context inner = context;
    inner.style |= TarnMailStyle(node.style);
    BlockBuilder signature(m_shared, false);
    signature.walk(node, inner);
    signature.flushParagraph();
    QList<TarnMailBlock> blocks = signature.takeBlocks();
    if (!blocks.isEmpty())
        emitBlock(TarnMailBlock::signature(std::move(blocks)));
}

void BlockBuilder::link(const MailNode &node, Context context)
{
    context.link.reset();
    if (node.hasMark(NodeMark::HasHref)) {
        context.link = LinkRules::vetted(node.value());
        if (context.link) {
            const std::optional<QString> text = linkText(node);
            if (text && LinkRules::isDeceptive(*text, context.link->text()))
                context.link = TarnMailLink::fromEncoded(LinkRules::confirmationText(context.link->text()));
        }
    }
    walk(node, context);
}

void BlockBuilder::addText(const QString &text, const Context &context)
{
    if (m_shared.truncated || text.isEmpty())
        return;
    bool afterSpace = true;
    if (!m_runs.isEmpty()) {
        const QString &last = m_runs.last().text;
        afterSpace = last.isEmpty() || last.back() == u' ' || last.back() == u'\n';
    }
    // Most text needs no change: then the run shares the tree's string. The
    // loops are branch-free, as spaces fall too irregularly for prediction.
    bool unchanged = true;
    {
        // Written without a carried state so that the compiler vectorizes it:
        // a whitespace character needs rewriting unless it is a space after a
        // character that is not whitespace.
        const char16_t *p = QStringView(text).utf16();
        const qsizetype n = text.size();
        const auto space = [](char16_t u) { return (u == 32) | ((u >= 9) & (u <= 13) & (u != 11)); };
        unsigned rewrite = space(p[0]) & (afterSpace | (p[0] != u' '));
        unsigned wide = p[0] >= 0xAD;
        for (qsizetype i = 1; i < n; ++i) {
            rewrite |= space(p[i]) & ((p[i] != u' ') | space(p[i - 1]));
            wide |= p[i] >= 0xAD;
        }
        unchanged = !rewrite;
        if (unchanged && wide) {
            const QStringView view(text);
            unchanged
                = std::none_of(view.begin(), view.end(), [](QChar c) { return MailRules::isInvisible(c.unicode()); });
        }
    }
    QString out = unchanged ? text : collapsed(text, afterSpace);
    if (out.isEmpty())
        return;
    charge(out);
    if (!out.isEmpty())
        appendRun(out, context);
}

void BlockBuilder::charge(QString &text)
{
    const qsizetype room = qsizetype(m_shared.characterLimit) - m_shared.characters;
    if (text.size() > room) {
        qsizetype cut = qMax<qsizetype>(room, 0);
        if (cut > 0 && text.at(cut - 1).isHighSurrogate())
            --cut;
        text.truncate(cut);
        m_shared.truncated = true;
    }
    m_shared.characters += int(text.size());
}

QString BlockBuilder::collapsed(QStringView text, bool afterSpace)
{
    QString out(text.size(), Qt::Uninitialized);
    char16_t *write = reinterpret_cast<char16_t *>(out.data());
    char16_t *const begin = write;
    for (const char16_t u : std::u16string_view(text.utf16(), size_t(text.size()))) {
        const bool isSpace = isAsciiSpace(u);
        *write = isSpace ? u' ' : u;
        const bool skip = (isSpace & afterSpace) | (u >= 0xAD && MailRules::isInvisible(u));
        write += !skip;
        afterSpace = isSpace | (afterSpace & skip);
    }
    out.truncate(write - begin);
    return out;
}

void BlockBuilder::lineBreak(const Context &context)
{
    if (m_shared.truncated)
        return;
    // No space before a line break: "word <br>" ends the line at the word.
    while (!m_runs.isEmpty() && m_runs.last().text.endsWith(u' ')) {
        m_runs.last().text.chop(1);
        if (m_runs.last().text.isEmpty())
            m_runs.removeLast();
    }
    QString newline = u"\n"_s;
    charge(newline);
    if (!newline.isEmpty())
        appendRun(newline, context);
}

void BlockBuilder::appendRun(const QString &text, const Context &context)
{
    if (!m_runs.isEmpty()) {
        TarnMailRun &last = m_runs.last();
        if (last.style == context.style && last.link == context.link) {
            last.text.append(text);
            return;
        }
    }
    m_runs.append(TarnMailRun { text, context.style, context.link });
}

void BlockBuilder::flushParagraph()
{
    if (m_runs.isEmpty())
        return;
    QList<TarnMailRun> runs = MailRules::trimmed(std::exchange(m_runs, {}));
    if (!runs.isEmpty())
        emitBlock(TarnMailBlock::paragraph(std::move(runs)));
}

void BlockBuilder::emitBlock(TarnMailBlock block)
{
    // Containers are emitted after their content. One that was open when the
    // limit was hit still closes, so that what was read keeps its place (at
    // most one per nesting level, so the overrun is bounded).
    const TarnMailBlock::Kind kind = block.kind();
    const bool container = kind == TarnMailBlock::Kind::Quote || kind == TarnMailBlock::Kind::List
        || kind == TarnMailBlock::Kind::Signature;
    if (m_shared.blocksFull && !container)
        return;
    if (!m_shared.blocksFull && ++m_shared.blockCount > m_shared.blockLimit) {
        m_shared.blocksFull = true;
        m_shared.truncated = true;
        if (!container)
            return;
    }
    if (m_isRoot && m_shared.foldRest) {
        m_shared.quoted.append(std::move(block));
        return;
    }
    // Most nested builders (list items, cells, quotes) emit a single block:
    // their first gets a list of exactly one, later ones grow as usual.
    if (m_blocks.isEmpty())
        m_blocks.reserve(1);
    m_blocks.append(std::move(block));
}

void BlockBuilder::heading(const MailNode &node, const Context &context, int level)
{
    flushParagraph();
    walk(node, context);
    QList<TarnMailRun> runs = MailRules::trimmed(std::exchange(m_runs, {}));
    if (!runs.isEmpty())
        emitBlock(TarnMailBlock::heading(level, std::move(runs)));
}

void BlockBuilder::image(const MailNode &node, const Context &context)
{
    const QString alt = node.text.trimmed();
    const std::optional<int> width = node.width >= 0 ? std::optional<int>(node.width) : std::nullopt;
    const std::optional<int> height = node.height >= 0 ? std::optional<int>(node.height) : std::nullopt;

    if (node.hasMark(NodeMark::EmojiClass)) {
        addText(alt, context);
        return;
    }
    if (MailRules::isEmojiText(alt) && (!width || *width <= 40)) {
        addText(alt, context);
        return;
    }

    const QString source = node.value().trimmed();
    const bool httpSource = source.startsWith("http"_L1, Qt::CaseInsensitive);
    const bool pixelSized
        = (width && height && *width <= 2 && *height <= 2) || (width && *width < 2) || (height && *height <= 1);
    if (pixelSized) {
        if (httpSource)
            ++m_shared.trackers;
        return;
    }
    std::optional<TarnMailLink> remote;
    if (httpSource) {
        const LinkRules::RemoteImage checked = LinkRules::remoteImage(source);
        if (checked.tracker) {
            ++m_shared.trackers;
            return;
        }
        remote = checked.link;
    }
    if (alt.isEmpty() && MailRules::isSpacerSource(source))
        return;

    TarnMailImageSource imageSource;
    if (remote) {
        imageSource = TarnMailImageSource::remote(*remote);
    } else if (source.startsWith("cid:"_L1, Qt::CaseInsensitive)) {
        imageSource = TarnMailImageSource::cid(QUrl::fromPercentEncoding(QStringView(source).sliced(4).toUtf8()));
    } else if (source.startsWith("data:image/"_L1, Qt::CaseInsensitive)) {
        if (std::optional<QByteArray> bytes = MailRules::decodeDataImage(source))
            imageSource = TarnMailImageSource::embedded(*bytes);
    }
    if (imageSource.kind() == TarnMailImageSource::Kind::Unsupported && alt.isEmpty())
        return;

    flushParagraph();
    emitBlock(TarnMailBlock::image(TarnMailImage { alt, imageSource, width, height, context.link }));
}

void BlockBuilder::list(const MailNode &node, const Context &context)
{
    const bool ordered = node.tag == Tag::Ol;
    const int start = node.number;

    QList<QList<TarnMailBlock>> items;
    qsizetype itemCount = 0;
    for (const MailNode *child = node.firstChild; child; child = child->next)
        itemCount += child->tag == Tag::Li ? 1 : 0;
    items.reserve(itemCount);
    // Content directly inside the list but outside any item is gathered into
    // an item of its own rather than lost.
    std::optional<BlockBuilder> loose;
    const auto flushLoose = [&] {
        if (!loose)
            return;
        loose->flushParagraph();
        QList<TarnMailBlock> blocks = loose->takeBlocks();
        if (!blocks.isEmpty())
            items.append(std::move(blocks));
        loose.reset();
    };
    for (const MailNode *child = node.firstChild; child && !m_shared.truncated; child = child->next) {
        if (child->tag == Tag::Li) {
            if (child->hidden)
                continue;
            flushLoose();
            Context inner = context;
            inner.style |= TarnMailStyle(child->style);
            BlockBuilder item(m_shared, false);
            item.walk(*child, inner);
            item.flushParagraph();
            QList<TarnMailBlock> blocks = item.takeBlocks();
            if (!blocks.isEmpty())
                items.append(std::move(blocks));
        } else {
            if (!loose)
                loose.emplace(m_shared, false);
            loose->visit(*child, context);
        }
    }
    flushLoose();
    if (!items.isEmpty())
        emitBlock(TarnMailBlock::list(ordered, start, std::move(items)));
}

void BlockBuilder::preformatted(const MailNode &node)
{
    QString text;
    const auto collect = [&](const auto &self, const MailNode &parent) -> void {
        for (const MailNode *child = parent.firstChild; child; child = child->next) {
            if (child->isText())
                text.append(child->text);
            else if (child->tag == Tag::Br)
                text.append(u'\n');
            else if (!child->hidden)
                self(self, *child);
        }
    };
    collect(collect, node);
    // As in browsers, a line break right after the opening tag is not content.
    if (text.startsWith(u"\r\n"))
        text.remove(0, 2);
    else if (text.startsWith(u'\n'))
        text.remove(0, 1);
    if (text.trimmed().isEmpty())
        return;
    charge(text);
    if (!text.isEmpty())
        emitBlock(TarnMailBlock::preformatted(std::move(text)));
}

std::vector<BlockBuilder::Row> BlockBuilder::rows(const MailNode &table)
{
    std::vector<Row> result;
    for (const MailNode *child = table.firstChild; child; child = child->next) {
        if (child->hidden)
            continue;
        if (child->tag == Tag::Tr) {
            result.push_back({ child, false });
        } else if (child->tag == Tag::Thead || child->tag == Tag::Tbody || child->tag == Tag::Tfoot) {
            for (const MailNode *row = child->firstChild; row; row = row->next) {
                if (row->tag == Tag::Tr && !row->hidden)
                    result.push_back({ row, child->tag == Tag::Thead });
            }
        }
    }
    return result;
}

bool BlockBuilder::isDataTable(const MailNode &table, const std::vector<Row> &rows)
{
    if (table.hasMark(NodeMark::Presentation))
        return false;
    if (rows.size() < 2)
        return false;
    for (const Row &row : rows) {
        int cells = 0;
        for (const MailNode *cell = row.row->firstChild; cell; cell = cell->next) {
            if (!isCell(*cell) || cell->hidden)
                continue;
            cells += colspan(*cell);
            if (cells > maxDataRowCells || isLayoutCell(*cell))
                return false;
        }
    }
    return true;
}

void BlockBuilder::table(const MailNode &node, const Context &context)
{
    const std::vector<Row> tableRows = rows(node);
    if (isDataTable(node, tableRows)) {
        dataTable(node, tableRows, context);
        return;
    }
    // A layout table: its grid is flattened, each cell read like a div.
    walk(node, context);
    flushParagraph();
}

QList<TarnMailRun> BlockBuilder::cellRuns(const MailNode &cell, const Context &context)
{
    Context inner = context;
    inner.style |= TarnMailStyle(cell.style);
    BlockBuilder builder(m_shared, false);
    builder.walk(cell, inner);
    builder.flushParagraph();
    const QList<TarnMailBlock> blocks = builder.takeBlocks();

    BlockBuilder runs(m_shared, false); // only its run merging is used
    for (qsizetype i = 0; i < blocks.size(); ++i) {
        const TarnMailBlock &block = blocks.at(i);
        if (i > 0)
            runs.appendRun(u"\n"_s, Context {});
        if (block.kind() == TarnMailBlock::Kind::Paragraph || block.kind() == TarnMailBlock::Kind::Heading) {
            for (const TarnMailRun &run : block.runs())
                runs.appendRun(run.text, Context { run.style, run.link });
        } else {
            runs.appendRun(BlockText::flattened(block), Context {});
        }
    }
    return runs.m_runs;
}

void BlockBuilder::dataTable(const MailNode &node, const std::vector<Row> &rows, const Context &context)
{
    for (const MailNode *child = node.firstChild; child; child = child->next) {
        if (child->tag == Tag::Caption && !child->hidden) {
            walk(*child, context);
            flushParagraph();
        }
    }

    TarnMailTable table;
    bool leading = true;
    for (const Row &row : rows) {
        if (m_shared.truncated)
            break;
        TarnMailTable::Row cells;
        bool onlyHeaderCells = true;
        for (const MailNode *cell = row.row->firstChild; cell; cell = cell->next) {
            if (!isCell(*cell) || cell->hidden)
                continue;
            onlyHeaderCells = onlyHeaderCells && cell->tag == Tag::Th;
            cells.append(cellRuns(*cell, context));
            for (int span = colspan(*cell); span > 1; --span)
                cells.append(TarnMailTable::Cell {});
        }
        if (cells.isEmpty())
            continue;
        // A first row of th cells is a header row wherever it sits: that is
        // how it reads, with or without thead.
        leading = leading && (row.inHead || onlyHeaderCells);
        if (leading)
            ++table.headerRows;
        table.rows.append(std::move(cells));
    }
    if (!table.rows.isEmpty())
        emitBlock(TarnMailBlock::table(std::move(table)));
}

} // namespace TarnMailHTML::detail
