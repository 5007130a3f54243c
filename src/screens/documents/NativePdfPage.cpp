#include "screens/documents/NativePdfPage.h"

#include <QPainter>

NativePdfPage::NativePdfPage(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
}

void NativePdfPage::setPreview(NativePdfPreview *preview)
{
    if (m_preview == preview)
        return;
    if (m_preview)
        disconnect(m_preview, nullptr, this, nullptr);
    m_preview = preview;
    if (m_preview)
        connect(m_preview, &NativePdfPreview::changed, this, [this] { update(); });
    Q_EMIT pageChanged();
    update();
}

void NativePdfPage::setPage(int page)
{
    if (m_page == page)
        return;
    m_page = page;
    Q_EMIT pageChanged();
    update();
}

void NativePdfPage::paint(QPainter *painter)
{
    if (!m_preview)
        return;
    const QImage image = m_preview->render(m_page, size().toSize());
    if (image.isNull())
        return;
    // Paper stays white in either scheme, as it does on paper.
    const QRect sheet(QPoint((int(width()) - image.width()) / 2, 0), image.size());
    painter->fillRect(sheet, Qt::white);
    painter->drawImage(sheet.topLeft(), image);
}
