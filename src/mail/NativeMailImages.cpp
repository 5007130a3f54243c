#include "mail/NativeMailImages.h"

#include "mail/TarnMailCalls.h"
#include "mail/TarnMailProxy.h"
#include "service/TarnAPIError.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

// The decoded images of one thread rarely pass this; the cost is bytes.
constexpr qsizetype cacheBytes = 64 * 1024 * 1024;

} // namespace

NativeMailImages::NativeMailImages(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
{
    m_bytes.setMaxCost(cacheBytes);
}

void NativeMailImages::setThread(
    const QString &threadId, const QHash<QString, QList<TarnMailHTML::AttachmentRef>> &attachments)
{
    if (threadId == m_threadId && attachments == m_attachments)
        return;
    ++m_generation;
    m_threadId = threadId;
    m_attachments = attachments;
    m_failed.clear();
    m_bytes.clear();
}

int NativeMailImages::failures(const QString &messageId) const
{
    return int(m_failed.value(messageId).size());
}

void NativeMailImages::fail(const QString &messageId, const QString &source)
{
    QSet<QString> &failed = m_failed[messageId];
    if (failed.contains(source))
        return;
    failed.insert(source);
    Q_EMIT failuresChanged(messageId);
}

QCoro::Task<> NativeMailImages::sign(QStringList urls)
{
    const QPointer<NativeMailImages> self(this);
    urls.removeIf([this](const QString &url) { return m_paths.contains(url); });
    if (urls.isEmpty())
        co_return;
    try {
        QCoro::Task<TarnMailSignedImages> call = TarnMailCalls::signImages(m_api, urls);
        const TarnMailSignedImages signedImages = co_await std::move(call);
        if (!self)
            co_return;
        for (const TarnMailProxy::Path &path : TarnMailProxy::proxyPaths(urls, signedImages))
            m_paths.insert(path.url, path.path);
    } catch (const TarnAPIError &) {
        // Each image then signs itself when it is asked for, and counts if it fails.
    }
}

QCoro::Task<std::optional<QByteArray>> NativeMailImages::load(QString messageId, QString source)
{
    const QPointer<NativeMailImages> self(this);
    const int generation = m_generation;
    const QString key = messageId + u'\n' + source;
    if (const QByteArray *cached = m_bytes.object(key))
        co_return QByteArray(*cached);
    const bool inlined = source.startsWith("cid:"_L1, Qt::CaseInsensitive);
    QCoro::Task<std::optional<QByteArray>> task = inlined ? inlineImage(messageId, source.mid(4)) : remote(source);
    std::optional<QByteArray> bytes = co_await std::move(task);
    if (!self || generation != m_generation)
        co_return std::nullopt;
    if (!bytes || bytes->isEmpty()) {
        fail(messageId, source);
        co_return std::nullopt;
    }
    m_bytes.insert(key, new QByteArray(*bytes), bytes->size());
    co_return bytes;
}

QCoro::Task<std::optional<QByteArray>> NativeMailImages::remote(QString url)
{
    const QPointer<NativeMailImages> self(this);
    if (!m_paths.contains(url)) {
        QCoro::Task<> signing = sign({ url });
        co_await std::move(signing);
        if (!self || !m_paths.contains(url))
            co_return std::nullopt;
    }
    try {
        QCoro::Task<QByteArray> call = TarnMailCalls::proxyImage(m_api, m_paths.value(url));
        co_return co_await std::move(call);
    } catch (const TarnAPIError &) {
        co_return std::nullopt;
    }
}

QCoro::Task<std::optional<QByteArray>> NativeMailImages::inlineImage(QString messageId, QString contentId)
{
    const std::optional<QString> attachment = TarnMailHTML::attachmentID(contentId, m_attachments.value(messageId));
    if (!attachment)
        co_return std::nullopt;
    try {
        QCoro::Task<TarnMailDownloadedFile> call = TarnMailCalls::attachment(m_api, m_threadId, messageId, *attachment);
        const TarnMailDownloadedFile file = co_await std::move(call);
        co_return file.data();
    } catch (const TarnAPIError &) {
        co_return std::nullopt;
    }
}
