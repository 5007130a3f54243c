#pragma once

#include "mail/TarnMailStyle.h"

#include <QUrl>

#include <optional>

namespace TarnMailHTML::detail {

// Inline state inherited down the tree; passed by value so that a child's
// additions never leak to its siblings.
struct Context
{
    TarnMailStyle style;
    std::optional<QUrl> link;
};

} // namespace TarnMailHTML::detail
