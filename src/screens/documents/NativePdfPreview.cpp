#include "screens/documents/NativePdfPreview.h"

#include "screens/documents/TarnDocumentCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"

#include <QPointer>

using namespace Qt::StringLiterals;

NativePdfPreview::NativePdfPreview(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
{
}

QImage NativePdfPreview::render(int page, QSize size)
{
    if (m_loading || page < 0 || page >= m_document.pageCount() || size.isEmpty())
        return {};
    const QSize fitted = m_document.pagePointSize(page).toSize().scaled(size, Qt::KeepAspectRatio);
    return m_document.render(page, fitted);
}

void NativePdfPreview::show(const QString &documentId, const QString &title)
{
    m_documentId = documentId;
    m_title = title;
    m_loading = true;
    m_error.clear();
    m_document.close();
    Q_EMIT changed();
    fetch(documentId);
}

void NativePdfPreview::close()
{
    m_documentId.clear();
    m_title.clear();
    m_loading = false;
    m_error.clear();
    m_document.close();
    Q_EMIT changed();
}

QCoro::Task<> NativePdfPreview::fetch(QString documentId)
{
    const QPointer<NativePdfPreview> self(this);
    QString error;
    QByteArray bytes;
    try {
        bytes = co_await TarnDocumentCalls::documentPdf(m_api, documentId);
    } catch (const TarnAPIError &failure) {
        error = failure.text();
    }
    // Another document was opened, or the preview closed, meanwhile.
    if (!self || documentId != m_documentId)
        co_return;
    if (error.isEmpty()) {
        m_document.close();
        m_bytes.close();
        m_bytes.setData(bytes);
        m_bytes.open(QIODevice::ReadOnly);
        m_document.load(&m_bytes);
        if (m_document.status() != QPdfDocument::Status::Ready)
            error = u"This document's PDF could not be read."_s;
    }
    m_loading = false;
    m_error = error;
    Q_EMIT changed();
    Q_EMIT loaded();
}
