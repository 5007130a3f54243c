#pragma once

#include "mail/TarnMailRun.h"
#include "mail/TarnMailStyle.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>

#include <optional>

// Small rules of the block builder, kept apart so that each can be read (and
// tested through the public interface) on its own.
namespace TarnMailHTML::detail::MailRules {

// Bits a normalized (lower-cased, space-free) style attribute adds.
[[nodiscard]] TarnMailStyle inlineStyle(const QString &normalizedStyle);
// A whole number of CSS pixels ("120", "120px"); nil for percentages and the rest.
[[nodiscard]] std::optional<int> dimension(QStringView value);
// "width" or "height" of a normalized style attribute.
[[nodiscard]] std::optional<int> styleDimension(const QString &normalizedStyle, QLatin1StringView property);
// 1...4 scalars, one of them an emoji: an inline emoji image that becomes text.
[[nodiscard]] bool isEmojiText(QStringView alt);
[[nodiscard]] bool isSpacerSource(const QString &source);
// The bytes of a data:image/...;base64 source, or nothing.
[[nodiscard]] std::optional<QByteArray> decodeDataImage(QStringView source);
// Runs without leading and trailing whitespace; runs left empty are dropped.
[[nodiscard]] QList<TarnMailRun> trimmed(QList<TarnMailRun> runs);
// Zero-width and invisible characters that addText removes.
[[nodiscard]] bool isInvisible(char16_t c);

} // namespace TarnMailHTML::detail::MailRules
