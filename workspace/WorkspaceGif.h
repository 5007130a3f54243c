#pragma once

#include <QByteArray>
#include <QList>
#include <QSize>
#include <QString>

#include <optional>

// GIFs for the workspace's GIF folder: the size a file says it has, a small
// encoder (Debian's Qt reads GIFs but cannot write them) and the demo's own
// few animations, drawn here so the repository carries no image files.
namespace WorkspaceGif {

// The logical screen size in a GIF's header; nothing when it is no GIF.
[[nodiscard]] std::optional<QSize> size(const QByteArray &head);

// A looping animation of `frames`, each `width` * `height` palette indices,
// shown `delayCs` hundredths of a second apiece. `palette` holds at most 256
// colours as 0xRRGGBB.
[[nodiscard]] QByteArray encode(
    int width, int height, const QList<quint32> &palette, const QList<QByteArray> &frames, int delayCs);

// Writes the demo's GIFs into `folder` (made when missing); the error text
// when it cannot, empty when it did.
[[nodiscard]] QString writeDemo(const QString &folder);

} // namespace WorkspaceGif
