#include "chat/ChatOutgoingFile.h"

#include "chat/TarnChatCalls.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QLocale>
#include <QPainter>
#include <QUuid>

#include <array>

using namespace Qt::StringLiterals;

namespace {

// Each attempt smaller than the one before: first the quality drops at full
// size, then the picture shrinks with it.
struct Attempt {
    double scale;
    int quality;
};
constexpr std::array<Attempt, 8> attempts { {
    { 1.0, 85 },
    { 1.0, 70 },
    { 0.8, 70 },
    { 0.64, 65 },
    { 0.5, 60 },
    { 0.35, 55 },
    { 0.25, 50 },
    { 0.15, 45 },
} };

ChatDraftFile staged(const QString &name, const QByteArray &data)
{
    return { QUuid::createUuid().toString(QUuid::WithoutBraces), name, data };
}

QString tooLarge(const QString &name, qint64 limit)
{
    return u"“%1” is larger than %2 and cannot be sent."_s.arg(name, QLocale().formattedDataSize(limit));
}

// Transparent areas come out white rather than black.
QByteArray jpeg(const QImage &image, const Attempt &attempt)
{
    const QSize size = (QSizeF(image.size()) * attempt.scale).toSize().expandedTo(QSize(1, 1));
    QImage flat(size, QImage::Format_RGB32);
    flat.fill(Qt::white);
    {
        QPainter painter(&flat);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRect(QPoint(0, 0), size), image);
    }
    QByteArray out;
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(attempt.quality);
    writer.write(flat);
    return out;
}

} // namespace

namespace ChatOutgoingFile {

Outcome prepare(const QString &name, const QByteArray &data, qint64 limit)
{
    if (data.size() <= limit)
        return staged(name, data);
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QImage image = reader.read();
    if (image.isNull())
        return tooLarge(name, limit);
    for (const Attempt &attempt : attempts) {
        QByteArray smaller = jpeg(image, attempt);
        if (!smaller.isEmpty() && smaller.size() <= limit)
            return staged(shrunkName(name), smaller);
    }
    return tooLarge(name, limit);
}

Outcome prepare(const QString &name, const QByteArray &data)
{
    return prepare(name, data, TarnChatCalls::maxFileBytes);
}

Outcome prepareImage(const QImage &image)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (image.isNull() || !image.save(&buffer, "png"))
        return u"The pasted image could not be read."_s;
    return prepare(u"pasted-image.png"_s, png);
}

QString shrunkName(const QString &name)
{
    const QString base = QFileInfo(name).completeBaseName();
    return (base.isEmpty() ? u"image"_s : base) + u".jpg"_s;
}

} // namespace ChatOutgoingFile
