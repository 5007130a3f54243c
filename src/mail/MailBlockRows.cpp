#include "mail/MailBlockRows.h"

#include "mail/TarnMailHTML.h"
#include "mail/TarnMailTable.h"

#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace {

struct Place {
    int depth = 0;
    bool quote = false;
    bool signature = false;
};

class Flattener {
public:
    void add(const QList<TarnMailBlock> &blocks, const Place &place)
    {
        for (const TarnMailSegment &segment : TarnMailHTML::segments(blocks)) {
            if (segment.kind() == TarnMailSegment::Kind::Images)
                addImages(segment.images(), place);
            else
                addBlock(segment.block(), place);
        }
    }

    QList<MailBlockRow> rows;

private:
    MailBlockRow &row(const QString &kind, const Place &place)
    {
        MailBlockRow next;
        next.key = QString::number(rows.size());
        next.kind = kind;
        next.depth = place.depth;
        next.quote = place.quote;
        next.signature = place.signature;
        if (!m_marker.isEmpty()) {
            next.marker = m_marker;
            m_marker.clear();
        }
        rows.append(next);
        return rows.last();
    }

    void addImages(const QList<TarnMailImage> &images, const Place &place)
    {
        QVariantList out;
        for (const TarnMailImage &image : images) {
            QString source;
            switch (image.source.kind()) {
            case TarnMailImageSource::Kind::Remote:
                source = image.source.link().text();
                break;
            case TarnMailImageSource::Kind::Cid:
                source = u"cid:"_s + image.source.contentID();
                break;
            case TarnMailImageSource::Kind::Embedded:
                source = u"data:;base64,"_s + QString::fromLatin1(image.source.bytes().toBase64());
                break;
            case TarnMailImageSource::Kind::Unsupported:
                break;
            }
            out.append(QVariantMap { { u"source"_s, source }, { u"alt"_s, image.alt },
                { u"width"_s, image.width.value_or(0) }, { u"height"_s, image.height.value_or(0) },
                { u"link"_s, image.link ? image.link->text() : QString() } });
        }
        row(u"images"_s, place).images = out;
    }

    void addBlock(const TarnMailBlock &block, const Place &place)
    {
        using K = TarnMailBlock::Kind;
        switch (block.kind()) {
        case K::Paragraph:
            row(u"paragraph"_s, place).text = MailBlockRows::richText(block.runs());
            break;
        case K::Heading: {
            MailBlockRow &heading = row(u"heading"_s, place);
            heading.text = MailBlockRows::richText(block.runs());
            heading.level = block.level();
            break;
        }
        case K::Preformatted:
            row(u"preformatted"_s, place).text = block.text().toHtmlEscaped();
            break;
        case K::Rule:
            row(u"rule"_s, place);
            break;
        case K::Image:
            addImages({ block.image() }, place);
            break;
        case K::Table: {
            QVariantList table;
            for (const TarnMailTable::Row &cells : block.table().rows) {
                QVariantList texts;
                for (const TarnMailTable::Cell &cell : cells)
                    texts.append(MailBlockRows::richText(cell));
                table.append(QVariant(texts));
            }
            MailBlockRow &grid = row(u"table"_s, place);
            grid.table = table;
            grid.headerRows = block.table().headerRows;
            break;
        }
        case K::Quote:
            add(block.blocks(), { place.depth + 1, true, place.signature });
            break;
        case K::Signature:
            add(block.blocks(), { place.depth, place.quote, true });
            break;
        case K::List: {
            int number = block.start();
            for (const QList<TarnMailBlock> &item : block.items()) {
                m_marker = block.ordered() ? u"%1."_s.arg(number++) : u"•"_s;
                add(item, { place.depth + 1, place.quote, place.signature });
                // An empty item still shows its marker.
                if (!m_marker.isEmpty())
                    row(u"paragraph"_s, { place.depth + 1, place.quote, place.signature });
            }
            break;
        }
        }
    }

    QString m_marker;
};

} // namespace

namespace MailBlockRows {

QString richText(const QList<TarnMailRun> &runs)
{
    static constexpr std::pair<TarnMailStyle::Flag, QLatin1StringView> tags[] {
        { TarnMailStyle::Bold, "b"_L1 },
        { TarnMailStyle::Italic, "i"_L1 },
        { TarnMailStyle::Underline, "u"_L1 },
        { TarnMailStyle::Strikethrough, "s"_L1 },
        { TarnMailStyle::Code, "code"_L1 },
    };
    QString out;
    for (const TarnMailRun &run : runs) {
        QString text = run.text.toHtmlEscaped();
        text.replace(u'\n', "<br>"_L1);
        for (const auto &[flag, tag] : tags)
            if (run.style.contains(flag))
                text = u'<' + tag + u'>' + text + "</"_L1 + tag + u'>';
        if (run.link)
            text = "<a href=\""_L1 + run.link->text().toHtmlEscaped() + "\">"_L1 + text + "</a>"_L1;
        out += text;
    }
    return out;
}

QList<MailBlockRow> rows(const QList<TarnMailBlock> &blocks)
{
    Flattener flattener;
    flattener.add(blocks, {});
    return flattener.rows;
}

} // namespace MailBlockRows
