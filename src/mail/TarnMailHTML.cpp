#include "mail/TarnMailHTML.h"

#include "mail/TarnMailImage.h"
#include "mail/TarnMailTable.h"
#include "mail/detail/BlockBuilder.h"
#include "mail/detail/TreeBuilder.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace TarnMailHTML {

namespace {

TarnMailDocument blocksOf(const detail::MailTree &tree, int characterLimit, int blockLimit)
{
    detail::Shared shared;
    shared.characterLimit = qMax(characterLimit, 0);
    shared.blockLimit = qMax(blockLimit, 0);
    detail::BlockBuilder root(shared, true);
    root.walk(*tree.root(), detail::Context {});
    root.flushParagraph();

    TarnMailDocument document;
    document.blocks = root.takeBlocks();
    document.quoted = std::move(shared.quoted);
    document.blockedTrackers = shared.trackers;
    document.truncated = shared.truncated;
    // A message that is only a forward or a quote still shows its content.
    if (document.blocks.isEmpty())
        std::swap(document.blocks, document.quoted);
    return document;
}

} // namespace

TarnMailDocument parseUTF8(QByteArrayView html, int characterLimit, int blockLimit)
{
    return blocksOf(detail::TreeBuilder(html).build(), characterLimit, blockLimit);
}

TarnMailDocument parse(QStringView html, int characterLimit, int blockLimit)
{
    // The tree holds its own text, so the UTF-8 copy only lives while the
    // tree is read, not while the blocks are built.
    const detail::MailTree tree = detail::TreeBuilder(html.toUtf8()).build();
    return blocksOf(tree, characterLimit, blockLimit);
}

QString plainText(const TarnMailBlock &block)
{
    const auto runsText = [](const QList<TarnMailRun> &runs) {
        QString text;
        for (const TarnMailRun &run : runs)
            text.append(run.text);
        return text;
    };
    switch (block.kind()) {
    case TarnMailBlock::Kind::Paragraph:
    case TarnMailBlock::Kind::Heading:
        return runsText(block.runs());
    case TarnMailBlock::Kind::List: {
        QStringList lines;
        int number = block.start();
        for (const QList<TarnMailBlock> &item : block.items()) {
            const QString marker = block.ordered() ? QString::number(number++) + u". "_s : u"\u2022 "_s;
            const QString text = plainText(item);
            // Continuation lines of an item line up under its first line.
            lines.append(marker + QString(text).replace(u'\n', u'\n' + QString(marker.size(), u' ')));
        }
        return lines.join(u'\n');
    }
    case TarnMailBlock::Kind::Quote: {
        QStringList lines = plainText(block.blocks()).split(u'\n');
        for (QString &line : lines)
            line = line.isEmpty() ? u">"_s : u"> "_s + line;
        return lines.join(u'\n');
    }
    case TarnMailBlock::Kind::Preformatted:
        return block.text();
    case TarnMailBlock::Kind::Table: {
        QStringList lines;
        for (const TarnMailTable::Row &row : block.table().rows) {
            QStringList cells;
            for (const TarnMailTable::Cell &cell : row)
                cells.append(runsText(cell).replace(u'\n', u' '));
            lines.append(cells.join(u'\t'));
        }
        return lines.join(u'\n');
    }
    case TarnMailBlock::Kind::Image:
        return block.image().alt;
    case TarnMailBlock::Kind::Signature:
        return u"-- \n"_s + plainText(block.blocks());
    case TarnMailBlock::Kind::Rule:
        return u"\u2014\u2014\u2014"_s;
    }
    return {};
}

QString plainText(const QList<TarnMailBlock> &blocks)
{
    QStringList parts;
    parts.reserve(blocks.size());
    for (const TarnMailBlock &block : blocks) {
        QString text = plainText(block);
        if (!text.isEmpty())
            parts.append(std::move(text));
    }
    return parts.join(u"\n\n"_s);
}

QList<TarnMailImage> images(const QList<TarnMailBlock> &blocks)
{
    QList<TarnMailImage> result;
    const auto collect = [&](const auto &self, const QList<TarnMailBlock> &list) -> void {
        for (const TarnMailBlock &block : list) {
            switch (block.kind()) {
            case TarnMailBlock::Kind::Image:
                result.append(block.image());
                break;
            case TarnMailBlock::Kind::List:
                for (const QList<TarnMailBlock> &item : block.items())
                    self(self, item);
                break;
            case TarnMailBlock::Kind::Quote:
            case TarnMailBlock::Kind::Signature:
                self(self, block.blocks());
                break;
            default: // table cells hold text only
                break;
            }
        }
    };
    collect(collect, blocks);
    return result;
}

QList<TarnMailSegment> segments(const QList<TarnMailBlock> &blocks)
{
    QList<TarnMailSegment> result;
    QList<TarnMailImage> pending;
    for (const TarnMailBlock &block : blocks) {
        if (block.kind() == TarnMailBlock::Kind::Image) {
            pending.append(block.image());
            continue;
        }
        if (!pending.isEmpty())
            result.append(TarnMailSegment::images(std::exchange(pending, {})));
        result.append(TarnMailSegment::block(block));
    }
    if (!pending.isEmpty())
        result.append(TarnMailSegment::images(std::move(pending)));
    return result;
}

} // namespace TarnMailHTML
