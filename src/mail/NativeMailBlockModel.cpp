#include "mail/NativeMailBlockModel.h"

#include "mail/MailBlockRows.h"
#include "mail/NativeMailView.h"

#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// A table's cells in reading order, each with whether it is in a header row.
QVariantList cells(const MailBlockRow &row)
{
    QVariantList out;
    for (qsizetype r = 0; r < row.table.size(); ++r)
        for (const QVariant &cell : row.table.at(r).toList())
            out.append(QVariantMap { { u"text"_s, cell }, { u"header"_s, r < row.headerRows } });
    return out;
}

// A window's height of blocks first, then steps that each stay well
// inside a frame.
constexpr qsizetype firstRows = 40;
constexpr qsizetype stepRows = 40;

} // namespace

QVariantList NativeMailBlockModel::imagesWithURLs(const QVariantList &images) const
{
    QVariantList out;
    for (const QVariant &image : images) {
        QVariantMap map = image.toMap();
        const QString source = map.value(u"source"_s).toString();
        map.insert(u"url"_s,
            source.isEmpty() ? QString()
                             : u"image://mail/"_s + QString::fromLatin1(QUrl::toPercentEncoding(m_messageId)) + u'/'
                    + QString::fromLatin1(QUrl::toPercentEncoding(source)));
        out.append(map);
    }
    return out;
}

NativeMailBlockModel::NativeMailBlockModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "kind", [](const MailBlockRow &row) { return row.kind; } },
            { "depth", [](const MailBlockRow &row) { return row.depth; } },
            { "quote", [](const MailBlockRow &row) { return row.quote; } },
            { "signature", [](const MailBlockRow &row) { return row.signature; } },
            { "marker", [](const MailBlockRow &row) { return row.marker; } },
            { "level", [](const MailBlockRow &row) { return row.level; } },
            { "text", [](const MailBlockRow &row) { return row.text; } },
            { "table", [](const MailBlockRow &row) { return row.table; } },
            { "headerRows", [](const MailBlockRow &row) { return row.headerRows; } },
            { "images", [this](const MailBlockRow &row) { return imagesWithURLs(row.images); } },
            { "cells", [](const MailBlockRow &row) { return cells(row); } },
            { "columns",
                [](const MailBlockRow &row) {
                    return row.table.isEmpty() ? 1 : int(row.table.first().toList().size());
                } },
            // Each delegate reaches the screen's state through its row.
            { "mailView", [this](const MailBlockRow &) { return QVariant::fromValue(m_view.data()); } },
            { "messageId", [this](const MailBlockRow &) { return m_messageId; } },
        },
        parent)
{
    m_more.setSingleShot(true);
    m_more.setInterval(0);
    connect(&m_more, &QTimer::timeout, this, &NativeMailBlockModel::showMore);
}

void NativeMailBlockModel::setView(NativeMailView *view)
{
    if (view == m_view)
        return;
    if (m_view)
        disconnect(m_view, nullptr, this, nullptr);
    m_view = view;
    if (m_view)
        connect(m_view, &NativeMailView::documentChanged, this, [this](const QString &id) {
            if (id == m_messageId)
                reload();
        });
    reload();
    Q_EMIT sourceChanged();
}

void NativeMailBlockModel::setMessageId(const QString &id)
{
    if (id == m_messageId)
        return;
    m_messageId = id;
    reload();
    Q_EMIT sourceChanged();
}

void NativeMailBlockModel::setQuoted(bool quoted)
{
    if (quoted == m_quoted)
        return;
    m_quoted = quoted;
    reload();
    Q_EMIT sourceChanged();
}

void NativeMailBlockModel::reload()
{
    m_more.stop();
    const TarnMailDocument *document = m_view ? m_view->document(m_messageId) : nullptr;
    // A new document is another message's text: its rows start over.
    setRows({});
    m_all = document ? MailBlockRows::rows(m_quoted ? document->quoted : document->blocks) : QList<MailBlockRow>();
    showMore();
}

void NativeMailBlockModel::showMore()
{
    const qsizetype shown = std::min(m_all.size(), rowCount() + (rowCount() == 0 ? firstRows : stepRows));
    setRows(m_all.first(shown));
    if (shown < m_all.size())
        m_more.start();
}
