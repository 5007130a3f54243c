#pragma once

#include "shell/TarnAppearanceChoice.h"

#include <QList>
#include <QString>

#include <optional>

// The appearance choices the app offers. The account stores only the value;
// a value this version does not know (saved by a newer one, or never set)
// reads as the first choice of its list, which is the default.
namespace TarnAppearance {

// Standard, large and larger: body text of 16, 19.2 and 22.4 points.
[[nodiscard]] const QList<TarnAppearanceChoice> &textSizes();
[[nodiscard]] const QList<TarnAppearanceChoice> &accents();
[[nodiscard]] const QList<TarnAppearanceChoice> &backgrounds();

[[nodiscard]] TarnAppearanceChoice choice(
    const QList<TarnAppearanceChoice> &choices, const std::optional<QString> &value);

} // namespace TarnAppearance
