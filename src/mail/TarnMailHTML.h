#pragma once

#include "mail/LinkDecision.h"
#include "mail/TarnMailBlock.h"
#include "mail/TarnMailDocument.h"
#include "mail/TarnMailImage.h"
#include "mail/TarnMailRun.h"
#include "mail/TarnMailSegment.h"

#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringView>
#include <QUrl>

#include <optional>
#include <utility>

// Mail bodies to a small, safe document model that the mail views draw
// natively: never a web view. Pure, synchronous and deterministic.
//
// Nothing here throws. Hostile or huge input is bounded by the limits: the
// visible characters, the emitted blocks (nested ones included) and an element
// nesting depth of 220; hitting one truncates and sets `truncated`.
namespace TarnMailHTML {

// The limits the mail views use: a thread shows each message with the short
// ones, "show entire message" re-parses one message with the full ones.
inline constexpr int threadCharacterLimit = 150000;
inline constexpr int threadBlockLimit = 4000;
inline constexpr int fullCharacterLimit = 2000000;
inline constexpr int fullBlockLimit = 50000;

[[nodiscard]] TarnMailDocument parse(QStringView html, int characterLimit, int blockLimit);
// The same over UTF-8 bytes as they arrive; invalid sequences are repaired.
[[nodiscard]] TarnMailDocument parseUTF8(QByteArrayView html, int characterLimit, int blockLimit);
// For bodies without HTML.
[[nodiscard]] TarnMailDocument parsePlainText(QStringView text, int characterLimit);

// Flattened text, for table-cell measurement, copying and quoting in replies.
[[nodiscard]] QString plainText(const QList<TarnMailBlock> &blocks);
[[nodiscard]] QString plainText(const TarnMailBlock &block);

// Every image, depth first, including those inside lists, quotes and signatures.
[[nodiscard]] QList<TarnMailImage> images(const QList<TarnMailBlock> &blocks);
// Blocks for layout, consecutive images gathered for side-by-side drawing.
[[nodiscard]] QList<TarnMailSegment> segments(const QList<TarnMailBlock> &blocks);

// Links.
[[nodiscard]] LinkDecision linkDecision(const QUrl &url);
[[nodiscard]] std::optional<QUrl> safeLink(QStringView href);
[[nodiscard]] QUrl confirmationURL(const QUrl &target);
[[nodiscard]] bool isTrackerURL(const QUrl &url);
[[nodiscard]] bool isDeceptive(QStringView text, const QUrl &url);
[[nodiscard]] std::optional<QString> linkSummary(const QList<TarnMailRun> &runs);
[[nodiscard]] QList<TarnMailRun> linkified(QStringView text);

// An attachment as (id, name).
using AttachmentRef = std::pair<QString, QString>;
[[nodiscard]] std::optional<QString> attachmentID(QStringView contentID, const QList<AttachmentRef> &attachments);

[[nodiscard]] QString decodeEntities(const QString &text);

} // namespace TarnMailHTML
