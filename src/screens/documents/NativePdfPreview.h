#pragma once

#include <QBuffer>
#include <QCoroTask>
#include <QImage>
#include <QObject>
#include <QPdfDocument>
#include <QSize>
#include <QString>

class TarnAPI;

// A document's PDF read into the app and drawn page by page (`NativePdfPage`
// shows one), never written to disk. Opening another document drops the
// answer still on its way for the one before.
class NativePdfPreview : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY changed)
    Q_PROPERTY(bool loading READ loading NOTIFY changed)
    Q_PROPERTY(QString errorText READ errorText NOTIFY changed)

public:
    explicit NativePdfPreview(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] bool isOpen() const { return !m_documentId.isEmpty(); }
    [[nodiscard]] QString title() const { return m_title; }
    [[nodiscard]] int pageCount() const { return m_loading ? 0 : m_document.pageCount(); }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] QString errorText() const { return m_error; }
    // The page drawn to fit `size`, keeping its proportions; a null image
    // for a page there is not.
    [[nodiscard]] QImage render(int page, QSize size);

    Q_INVOKABLE void show(const QString &documentId, const QString &title);
    Q_INVOKABLE void close();

Q_SIGNALS:
    void changed();
    // The PDF is in and readable, or refused (for tests).
    void loaded();

private:
    QCoro::Task<> fetch(QString documentId);

    TarnAPI &m_api;
    QString m_documentId;
    QString m_title;
    QBuffer m_bytes;
    QPdfDocument m_document;
    bool m_loading = false;
    QString m_error;
};
