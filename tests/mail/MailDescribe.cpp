#include "MailDescribe.h"

#include "mail/TarnMailImage.h"
#include "mail/TarnMailTable.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace MailDescribe {

QString runs(const QList<TarnMailRun> &list)
{
    QString out;
    for (const TarnMailRun &run : list) {
        QString text = run.text;
        text.replace(u'\n', "\\n"_L1);
        QString marks;
        const quint32 raw = run.style.rawValue();
        const char letters[] = { 'b', 'i', 'u', 's', 'c' };
        for (int bit = 0; bit < 5; ++bit) {
            if (raw & (1u << bit))
                marks.append(QLatin1Char(letters[bit]));
        }
        if (run.link)
            marks.append(u"->"_s + run.link->text());
        out.append(marks.isEmpty() ? text : u'[' + marks + u':' + text + u']');
    }
    return out;
}

namespace {

QString block(const TarnMailBlock &b)
{
    switch (b.kind()) {
    case TarnMailBlock::Kind::Paragraph:
        return u"P("_s + runs(b.runs()) + u')';
    case TarnMailBlock::Kind::Heading:
        return u"H"_s + QString::number(b.level()) + u'(' + runs(b.runs()) + u')';
    case TarnMailBlock::Kind::List: {
        QStringList items;
        for (const QList<TarnMailBlock> &item : b.items())
            items.append(blocks(item));
        const QString start = b.start() == 1 ? QString() : QString::number(b.start());
        return (b.ordered() ? u"OL"_s : u"UL"_s) + start + u'{' + items.join(u'|') + u'}';
    }
    case TarnMailBlock::Kind::Quote:
        return u"Q{"_s + blocks(b.blocks()) + u'}';
    case TarnMailBlock::Kind::Preformatted:
        return u"PRE("_s + QString(b.text()).replace(u'\n', "\\n"_L1) + u')';
    case TarnMailBlock::Kind::Table: {
        QStringList rows;
        for (const TarnMailTable::Row &row : b.table().rows) {
            QStringList cells;
            for (const TarnMailTable::Cell &cell : row)
                cells.append(runs(cell));
            rows.append(cells.join(u','));
        }
        return u"T"_s + QString::number(b.table().headerRows) + u'{' + rows.join(u'/') + u'}';
    }
    case TarnMailBlock::Kind::Image: {
        const TarnMailImage &image = b.image();
        QString source;
        switch (image.source.kind()) {
        case TarnMailImageSource::Kind::Remote:
            source = u"remote:"_s + image.source.link().text();
            break;
        case TarnMailImageSource::Kind::Cid:
            source = u"cid:"_s + image.source.contentID();
            break;
        case TarnMailImageSource::Kind::Embedded:
            source = u"embedded:"_s + QString::number(image.source.bytes().size());
            break;
        case TarnMailImageSource::Kind::Unsupported:
            source = u"unsupported"_s;
            break;
        }
        QString out = u"IMG("_s + image.alt + u' ' + source;
        if (image.width || image.height) {
            out += u' ' + (image.width ? QString::number(*image.width) : u"?"_s) + u'x'
                + (image.height ? QString::number(*image.height) : u"?"_s);
        }
        if (image.link)
            out += u" ->"_s + image.link->text();
        return out + u')';
    }
    case TarnMailBlock::Kind::Signature:
        return u"SIG{"_s + blocks(b.blocks()) + u'}';
    case TarnMailBlock::Kind::Rule:
        return u"HR"_s;
    }
    return {};
}

} // namespace

QString blocks(const QList<TarnMailBlock> &list)
{
    QStringList parts;
    for (const TarnMailBlock &b : list)
        parts.append(block(b));
    return parts.join(u' ');
}

QString document(const TarnMailDocument &document)
{
    const QString main = blocks(document.blocks);
    return document.quoted.isEmpty() ? main : main + u" || "_s + blocks(document.quoted);
}

} // namespace MailDescribe
