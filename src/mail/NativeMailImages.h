#pragma once

#include "mail/TarnMailHTML.h"

#include <QByteArray>
#include <QCache>
#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

class TarnAPI;

// The images of the open thread, as the screen asks for them: remote ones
// only through the service's signed proxy (never from their host), inline
// ones from their message's attachments. Remote images that could not be
// loaded are counted per message. Bytes are kept while they fit the cache.
class NativeMailImages : public QObject {
    Q_OBJECT

public:
    explicit NativeMailImages(TarnAPI &api, QObject *parent = nullptr);

    // The thread whose images are asked for next, with each message's
    // attachments as (id, name); forgets the previous thread's.
    void setThread(const QString &threadId, const QHash<QString, QList<TarnMailHTML::AttachmentRef>> &attachments);
    // Signs every remote image of a message at once, ahead of its loads.
    QCoro::Task<> sign(QStringList urls);
    // The bytes of an image of a message: an http(s) URL or "cid:ID".
    // Nothing when it could not be loaded (a remote one is then counted).
    QCoro::Task<std::optional<QByteArray>> load(QString messageId, QString source);

    [[nodiscard]] Q_INVOKABLE int failures(const QString &messageId) const;

Q_SIGNALS:
    void failuresChanged(const QString &messageId);

private:
    QCoro::Task<std::optional<QByteArray>> remote(QString url);
    QCoro::Task<std::optional<QByteArray>> inlineImage(QString messageId, QString contentId);
    void fail(const QString &messageId, const QString &source);

    TarnAPI &m_api;
    QString m_threadId;
    QHash<QString, QList<TarnMailHTML::AttachmentRef>> m_attachments;
    QHash<QString, QString> m_paths; // URL to proxy path
    QHash<QString, QSet<QString>> m_failed; // message to sources
    QCache<QString, QByteArray> m_bytes;
    int m_generation = 0;
};
