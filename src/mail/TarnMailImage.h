#pragma once

#include "mail/TarnMailImageSource.h"
#include "mail/TarnMailLink.h"

#include <QString>

#include <optional>

// One image of a mail; every image is a block of its own.
struct TarnMailImage {
    QString alt;
    TarnMailImageSource source;
    std::optional<int> width; // CSS pixels
    std::optional<int> height; // CSS pixels
    std::optional<TarnMailLink> link; // the enclosing link, vetted

    friend bool operator==(const TarnMailImage &, const TarnMailImage &) = default;
};
