#pragma once

#include "mail/TarnMailLink.h"
#include "mail/TarnMailStyle.h"

#include <QString>

#include <optional>

// A stretch of mail text with one style and at most one link. The link has
// already been vetted (TarnMailHTML::safeLink), or replaced by a confirmation
// URL when its visible text names another site.
struct TarnMailRun {
    QString text;
    TarnMailStyle style;
    std::optional<TarnMailLink> link;

    friend bool operator==(const TarnMailRun &, const TarnMailRun &) = default;
};
