#pragma once

#include "chat/ChatDraftFile.h"

#include <QByteArray>
#include <QString>

#include <variant>

class QImage;

// A file on its way into the composer: kept as it is within the 5 MiB
// limit, an image over it re-encoded smaller as JPEG, anything else over it
// refused with a message naming the file.
namespace ChatOutgoingFile {

// The staged file, or the text that says why it was refused.
using Outcome = std::variant<ChatDraftFile, QString>;

[[nodiscard]] Outcome prepare(const QString &name, const QByteArray &data, qint64 limit);
[[nodiscard]] Outcome prepare(const QString &name, const QByteArray &data);
// Raw image data from the clipboard, attached as "pasted-image.png".
[[nodiscard]] Outcome prepareImage(const QImage &image);

// "scan.png" -> "scan.jpg"; "image.jpg" when nothing is left before the extension.
[[nodiscard]] QString shrunkName(const QString &name);

} // namespace ChatOutgoingFile
