#include "mail/TarnMailJSON.h"

#include "mail/TarnMailBlock.h"
#include "mail/TarnMailDocument.h"
#include "mail/TarnMailImage.h"
#include "mail/TarnMailRun.h"
#include "mail/TarnMailTable.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace TarnMailJSON {

namespace {

QJsonValue url(const std::optional<TarnMailLink> &link)
{
    return link ? QJsonValue(link->text()) : QJsonValue(QJsonValue::Null);
}

QJsonValue number(const std::optional<int> &value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}

QJsonArray runs(const QList<TarnMailRun> &list)
{
    QJsonArray array;
    for (const TarnMailRun &r : list)
        array.append(run(r));
    return array;
}

QJsonObject source(const TarnMailImageSource &source)
{
    switch (source.kind()) {
    case TarnMailImageSource::Kind::Remote:
        return { { "kind"_L1, u"remote"_s }, { "url"_L1, source.link().text() } };
    case TarnMailImageSource::Kind::Cid:
        return { { "kind"_L1, u"cid"_s }, { "id"_L1, source.contentID() } };
    case TarnMailImageSource::Kind::Embedded:
        return { { "kind"_L1, u"embedded"_s }, { "bytes"_L1, qint64(source.bytes().size()) } };
    case TarnMailImageSource::Kind::Unsupported:
        break;
    }
    return { { "kind"_L1, u"unsupported"_s } };
}

} // namespace

QJsonObject run(const TarnMailRun &run)
{
    return { { "text"_L1, run.text }, { "style"_L1, qint64(run.style.rawValue()) }, { "link"_L1, url(run.link) } };
}

QJsonArray blocks(const QList<TarnMailBlock> &list)
{
    QJsonArray array;
    for (const TarnMailBlock &b : list)
        array.append(block(b));
    return array;
}

QJsonObject block(const TarnMailBlock &block)
{
    switch (block.kind()) {
    case TarnMailBlock::Kind::Paragraph:
        return { { "type"_L1, u"paragraph"_s }, { "runs"_L1, runs(block.runs()) } };
    case TarnMailBlock::Kind::Heading:
        return { { "type"_L1, u"heading"_s }, { "level"_L1, block.level() }, { "runs"_L1, runs(block.runs()) } };
    case TarnMailBlock::Kind::List: {
        QJsonArray items;
        for (const QList<TarnMailBlock> &item : block.items())
            items.append(blocks(item));
        return { { "type"_L1, u"list"_s }, { "ordered"_L1, block.ordered() }, { "start"_L1, block.start() },
            { "items"_L1, items } };
    }
    case TarnMailBlock::Kind::Quote:
        return { { "type"_L1, u"quote"_s }, { "blocks"_L1, blocks(block.blocks()) } };
    case TarnMailBlock::Kind::Preformatted:
        return { { "type"_L1, u"preformatted"_s }, { "text"_L1, block.text() } };
    case TarnMailBlock::Kind::Table: {
        QJsonArray rows;
        for (const TarnMailTable::Row &row : block.table().rows) {
            QJsonArray cells;
            for (const TarnMailTable::Cell &cell : row)
                cells.append(runs(cell));
            rows.append(cells);
        }
        return { { "type"_L1, u"table"_s }, { "rows"_L1, rows }, { "headerRows"_L1, block.table().headerRows } };
    }
    case TarnMailBlock::Kind::Image: {
        const TarnMailImage &image = block.image();
        return { { "type"_L1, u"image"_s }, { "alt"_L1, image.alt }, { "source"_L1, source(image.source) },
            { "width"_L1, number(image.width) }, { "height"_L1, number(image.height) },
            { "link"_L1, url(image.link) } };
    }
    case TarnMailBlock::Kind::Signature:
        return { { "type"_L1, u"signature"_s }, { "blocks"_L1, blocks(block.blocks()) } };
    case TarnMailBlock::Kind::Rule:
        break;
    }
    return { { "type"_L1, u"rule"_s } };
}

QJsonObject document(const TarnMailDocument &document)
{
    QJsonArray cids;
    for (const QString &id : document.cidReferences())
        cids.append(id);
    QJsonArray remotes;
    for (const QUrl &u : document.remoteImageURLs())
        remotes.append(u.toString(QUrl::FullyEncoded));
    return {
        { "blocks"_L1, blocks(document.blocks) },
        { "quoted"_L1, blocks(document.quoted) },
        { "blockedTrackers"_L1, document.blockedTrackers },
        { "truncated"_L1, document.truncated },
        { "cidReferences"_L1, cids },
        { "remoteImageURLs"_L1, remotes },
    };
}

QByteArray encode(const TarnMailDocument &doc)
{
    return QJsonDocument(document(doc)).toJson(QJsonDocument::Compact);
}

} // namespace TarnMailJSON
