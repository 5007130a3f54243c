#pragma once

#include "mail/TarnMailLink.h"
#include "mail/TarnMailStyle.h"

#include <optional>

namespace TarnMailHTML::detail {

// Inline state inherited down the tree; passed by value so that a child's
// additions never leak to its siblings.
struct Context {
    TarnMailStyle style;
    std::optional<TarnMailLink> link;
};

} // namespace TarnMailHTML::detail
