#pragma once

#include <QPointer>
#include <QQuickAsyncImageProvider>
#include <QString>

#include <optional>

class NativeMailImages;

// The images of the open thread for QML ("image://mail/" + imageId(...)):
// remote ones through the signed proxy, inline ones from the message's
// attachments, both by NativeMailImages on its own thread. A mail never
// names a remote host to the image loader.
class NativeMailImageProvider : public QQuickAsyncImageProvider {
public:
    explicit NativeMailImageProvider(NativeMailImages *images);

    // Called on the image loader's threads.
    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &requestedSize) override;

    // The id of an image of a message: its source is an http(s) URL or "cid:ID".
    [[nodiscard]] static QString imageId(const QString &messageId, const QString &source);

    struct Request {
        QString messageId;
        QString source;
    };
    // What an id made by imageId asks for; nothing when it is not one.
    [[nodiscard]] static std::optional<Request> request(const QString &id);

private:
    QPointer<NativeMailImages> m_images;
};
