#pragma once

#include "mail/TarnMailRun.h"
#include "mail/TarnMailStyle.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringView>

#include <optional>

// Small rules of the block builder, kept apart so that each can be read (and
// tested through the public interface) on its own.
namespace TarnMailHTML::detail::MailRules {

// A pattern optimized up front. Callers keep it in a function-local static,
// so each is compiled once; copies share the compiled pattern.
[[nodiscard]] QRegularExpression compiled(const QString &pattern, QRegularExpression::PatternOptions options = {});

// What a style attribute says, read once per element. Declarations are read
// with case and whitespace ignored ("FONT-WEIGHT : Bold" is bold).
struct StyleFacts {
    bool hidden = false; // display:none, visibility:hidden, mso-hide:all, opacity:0,
                         // or a zero (max-)height with overflow:hidden
    TarnMailStyle style; // font-weight bold|bolder|600-900, font-style italic,
                         // text-decoration(-line) underline / line-through
    std::optional<int> width;
    std::optional<int> height;
};
[[nodiscard]] StyleFacts styleFacts(QByteArrayView style);
// NodeMark bits of a class, id or type attribute's value.
[[nodiscard]] quint8 classMarks(QByteArrayView value);
[[nodiscard]] quint8 idMarks(QByteArrayView value);
[[nodiscard]] quint8 typeMarks(QByteArrayView value);

// A whole number of CSS pixels ("120", "120px"); nil for percentages and the rest.
[[nodiscard]] std::optional<int> dimension(QStringView value);
[[nodiscard]] std::optional<int> dimension(QByteArrayView value);
// 1...4 scalars, one of them an emoji: an inline emoji image that becomes text.
[[nodiscard]] bool isEmojiText(QStringView alt);
[[nodiscard]] bool isSpacerSource(const QString &source);
// The bytes of a data:image/...;base64 source, or nothing.
[[nodiscard]] std::optional<QByteArray> decodeDataImage(QStringView source);
// Runs without leading and trailing whitespace; runs left empty are dropped.
// Whitespace here includes the no-break space: inside a paragraph it is kept,
// but a paragraph of nothing else (a template's spacer cell) reads as empty.
[[nodiscard]] QList<TarnMailRun> trimmed(QList<TarnMailRun> runs);
// Zero-width and invisible characters that addText removes.
[[nodiscard]] inline bool isInvisible(char16_t c)
{
    return c == 0x00AD || c == 0x034F || (c >= 0x200B && c <= 0x200F) || c == 0x2060 || c == 0xFEFF;
}

} // namespace TarnMailHTML::detail::MailRules
