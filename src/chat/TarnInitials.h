#pragma once

#include <QString>

// The letters an avatar shows for a person who has no photo.
namespace TarnInitials {

// The first character of each of the first two words, upper-cased; "?" for
// a name with no words.
[[nodiscard]] QString letters(const QString &name);

} // namespace TarnInitials
