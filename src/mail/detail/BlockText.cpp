#include "mail/detail/BlockText.h"

#include "mail/TarnMailImage.h"
#include "mail/TarnMailTable.h"

#include <QStringList>

#include <utility>

using namespace Qt::StringLiterals;

namespace TarnMailHTML::detail::BlockText {

QString flattened(const TarnMailBlock &block)
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
            const QString text = flattened(item);
            // Continuation lines of an item line up under its first line.
            lines.append(marker + QString(text).replace(u'\n', u'\n' + QString(marker.size(), u' ')));
        }
        return lines.join(u'\n');
    }
    case TarnMailBlock::Kind::Quote: {
        QStringList lines = flattened(block.blocks()).split(u'\n');
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
        return u"-- \n"_s + flattened(block.blocks());
    case TarnMailBlock::Kind::Rule:
        return u"\u2014\u2014\u2014"_s;
    }
    return {};
}

QString flattened(const QList<TarnMailBlock> &blocks)
{
    QStringList parts;
    parts.reserve(blocks.size());
    for (const TarnMailBlock &block : blocks) {
        QString text = flattened(block);
        if (!text.isEmpty())
            parts.append(std::move(text));
    }
    return parts.join(u"\n\n"_s);
}

} // namespace TarnMailHTML::detail::BlockText
