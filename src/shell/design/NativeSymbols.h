#pragma once

#include <QLatin1StringView>
#include <QString>

#include <optional>
#include <span>

// Icons by symbol name ("message", "envelope", "square.and.pencil"...): the
// names the navigation tables give their places, drawn with the icon font
// the app carries, so icons look the same offscreen and under any desktop
// theme.
namespace NativeSymbols {

struct Symbol {
    QLatin1StringView name;
    // The font's name for the glyph.
    QLatin1StringView icon;
    char16_t codepoint;
};

[[nodiscard]] std::span<const Symbol> all();
[[nodiscard]] std::optional<char16_t> codepoint(const QString &name);
// The glyph to draw in the icon font; a question mark in a circle for a
// name the table lacks, which its test keeps from happening.
[[nodiscard]] QString glyph(const QString &name);

} // namespace NativeSymbols
