#pragma once

#include <QString>

#include <optional>

// "/gif cats" in the composer opens the GIF picker instead of sending.
namespace ChatGifCommand {

// The search query of a composer text that is a GIF command: "/gif"
// (any case) alone or followed by whitespace, leading and trailing space
// ignored; the rest, trimmed, is the query (empty for "/gif" alone).
// Nothing for any other text, "/giffy" included.
[[nodiscard]] std::optional<QString> query(const QString &composerText);

// The name a picked GIF is sent under: its title lower-cased, every run of
// other characters than letters and digits made one "-", cut to 60
// characters, with ".gif"; "gif.gif" for a title with no letters or digits.
[[nodiscard]] QString fileName(const QString &title);

} // namespace ChatGifCommand
