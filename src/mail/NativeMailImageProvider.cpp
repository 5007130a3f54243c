#include "mail/NativeMailImageProvider.h"

#include "mail/NativeMailImages.h"

#include <QImage>
#include <QUrl>

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

QCoro::Task<> deliver(
    QPointer<NativeMailImages> images, QPointer<Response> response, QString messageId, QString source, QSize requested)
{
    const QString failed = u"The image could not be loaded."_s;
    if (!images) {
        if (response)
            response->deliver({}, failed);
        co_return;
    }
    QCoro::Task<std::optional<QByteArray>> load = images->load(messageId, source);
    const std::optional<QByteArray> bytes = co_await std::move(load);
    if (!response)
        co_return;
    QImage image;
    if (!bytes || !image.loadFromData(*bytes)) {
        response->deliver({}, failed);
        co_return;
    }
    if (requested.isValid() && !requested.isEmpty() && image.size() != requested)
        image = image.scaled(requested, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    response->deliver(image, {});
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

QQuickImageResponse *NativeMailImageProvider::requestImageResponse(const QString &id, const QSize &requestedSize)
{
    auto *response = new Response;
    const qsizetype slash = id.indexOf(u'/');
    const QString messageId = QUrl::fromPercentEncoding(id.left(slash).toLatin1());
    const QString source = QUrl::fromPercentEncoding(id.mid(slash + 1).toLatin1());
    NativeMailImages *images = m_images.data();
    if (slash <= 0 || !images) {
        response->deliver({}, u"The image could not be loaded."_s);
        return response;
    }
    // Loading lives on the images' thread; so does the response from now
    // on, so that its deletion and its answer never cross.
    response->moveToThread(images->thread());
    QMetaObject::invokeMethod(
        images,
        [images = QPointer(images), response = QPointer(response), messageId, source, requestedSize] {
            deliver(images, response, messageId, source, requestedSize);
        },
        Qt::QueuedConnection);
    return response;
}
