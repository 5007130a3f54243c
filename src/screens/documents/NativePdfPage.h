#pragma once

#include "screens/documents/NativePdfPreview.h"

#include <QPointer>
#include <QQuickPaintedItem>

// One page of a previewed PDF, drawn at the item's size on a white sheet.
class NativePdfPage : public QQuickPaintedItem {
    Q_OBJECT
    Q_PROPERTY(NativePdfPreview *preview READ preview WRITE setPreview NOTIFY pageChanged)
    Q_PROPERTY(int page READ page WRITE setPage NOTIFY pageChanged)

public:
    explicit NativePdfPage(QQuickItem *parent = nullptr);

    [[nodiscard]] NativePdfPreview *preview() const { return m_preview; }
    void setPreview(NativePdfPreview *preview);
    [[nodiscard]] int page() const { return m_page; }
    void setPage(int page);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void pageChanged();

private:
    QPointer<NativePdfPreview> m_preview;
    int m_page = 0;
};
