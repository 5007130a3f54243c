#pragma once

#include "chat/TarnGif.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// The answer of a GIF search. Without a GIF provider `configured` is false
// and the picker shows `message` instead of results.
struct TarnGifSearch {
    bool configured = false;
    QList<TarnGif> results;
    std::optional<QString> message {};

    static TarnGifSearch fromJSON(const TarnJSONObject &json);
};
