#include "mail/TarnMailHTML.h"

#include "mail/TarnMailImage.h"
#include "mail/detail/BlockBuilder.h"
#include "mail/detail/BlockText.h"
#include "mail/detail/MailEntities.h"
#include "mail/detail/PlainTextReader.h"
#include "mail/detail/TreeBuilder.h"

#include <utility>

namespace TarnMailHTML {

TarnMailDocument parseUTF8(QByteArrayView html, int characterLimit, int blockLimit)
{
    const detail::MailTree tree = detail::TreeBuilder(html).build();
    return detail::BlockBuilder::document(*tree.root(), characterLimit, blockLimit);
}

TarnMailDocument parse(QStringView html, int characterLimit, int blockLimit)
{
    // The tree holds its own text, so the UTF-8 copy only lives while the
    // tree is read, not while the blocks are built.
    const detail::MailTree tree = detail::TreeBuilder(html.toUtf8()).build();
    return detail::BlockBuilder::document(*tree.root(), characterLimit, blockLimit);
}

TarnMailDocument parsePlainText(QStringView text, int characterLimit)
{
    return detail::PlainTextReader::read(text, characterLimit);
}

QList<TarnMailRun> linkified(QStringView text)
{
    return detail::PlainTextReader::linkified(text);
}

QString plainText(const TarnMailBlock &block)
{
    return detail::BlockText::flattened(block);
}

QString plainText(const QList<TarnMailBlock> &blocks)
{
    return detail::BlockText::flattened(blocks);
}

QString decodeEntities(const QString &text)
{
    return detail::MailEntities::decoded(text);
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
