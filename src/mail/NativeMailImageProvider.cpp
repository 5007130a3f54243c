#include "mail/NativeMailImageProvider.h"

#include "mail/NativeMailImages.h"

#include <QFuture>
#include <QImage>
#include <QPromise>
#include <QThreadPool>
#include <QUrl>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

class Response : public QQuickImageResponse {
public:
    [[nodiscard]] QQuickTextureFactory *textureFactory() const override
    {
        return QQuickTextureFactory::textureFactoryForImage(m_image);
    }
    [[nodiscard]] QString errorString() const override { return m_error; }

    void deliver(const QImage &image, const QString &error)
    {
        m_image = image;
        m_error = error;
        Q_EMIT finished();
    }

private:
    QImage m_image;
    QString m_error;
};

QString failedText()
{
    return u"The image could not be loaded."_s;
}

// Decoding a large image takes longer than a frame: it runs on the pool.
QFuture<QImage> decodeOnPool(const QByteArray &bytes, QSize requested)
{
    // Shared because the pool copies the function it runs.
    auto promise = std::make_shared<QPromise<QImage>>();
    QFuture<QImage> future = promise->future();
    promise->start();
    QThreadPool::globalInstance()->start([promise, bytes, requested] {
        QImage image;
        if (image.loadFromData(bytes) && requested.isValid() && !requested.isEmpty() && image.size() != requested)
            image = image.scaled(requested, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        promise->addResult(image);
        promise->finish();
    });
    return future;
}

QCoro::Task<> deliver(
    QPointer<NativeMailImages> images, QPointer<Response> response, QString messageId, QString source, QSize requested)
{
    if (!images) {
        if (response)
            response->deliver({}, failedText());
        co_return;
    }
    QCoro::Task<std::optional<QByteArray>> load = images->load(messageId, source);
    const std::optional<QByteArray> bytes = co_await std::move(load);
    if (!response)
        co_return;
    if (!bytes) {
        response->deliver({}, failedText());
        co_return;
    }
    // Answered on the response's thread, and not at all once it is gone.
    Response *answering = response.data();
    decodeOnPool(*bytes, requested).then(answering, [answering](const QImage &image) {
        answering->deliver(image, image.isNull() ? failedText() : QString());
    });
}

} // namespace

NativeMailImageProvider::NativeMailImageProvider(NativeMailImages *images)
    : m_images(images)
{
}

QString NativeMailImageProvider::imageId(const QString &messageId, const QString &source)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(messageId)) + u'/'
        + QString::fromLatin1(QUrl::toPercentEncoding(source));
}

std::optional<NativeMailImageProvider::Request> NativeMailImageProvider::request(const QString &id)
{
    // The engine hands the id over as it was written, escapes and all: it
    // is decoded here once, so a URL's own "%xx" stay as they were.
    const qsizetype slash = id.indexOf(u'/');
    if (slash <= 0)
        return std::nullopt;
    Request out { QUrl::fromPercentEncoding(id.left(slash).toLatin1()),
        QUrl::fromPercentEncoding(id.mid(slash + 1).toLatin1()) };
    if (out.source.isEmpty())
        return std::nullopt;
    return out;
}

QQuickImageResponse *NativeMailImageProvider::requestImageResponse(const QString &id, const QSize &requestedSize)
{
    auto *response = new Response;
    const std::optional<Request> asked = request(id);
    NativeMailImages *images = m_images.data();
    if (!asked || !images) {
        response->deliver({}, failedText());
        return response;
    }
    // Loading lives on the images' thread; so does the response from now
    // on, so that its deletion and its answer never cross.
    response->moveToThread(images->thread());
    QMetaObject::invokeMethod(
        images,
        [images = QPointer(images), response = QPointer(response), asked = *asked, requestedSize] {
            deliver(images, response, asked.messageId, asked.source, requestedSize);
        },
        Qt::QueuedConnection);
    return response;
}
