#pragma once

#include <QString>

class TarnJSONObject;

// One GIF the service offers; its bytes are fetched by id.
struct TarnGif {
    QString id;
    QString title;
    qint64 width = 0; // pixels
    qint64 height = 0;

    static TarnGif fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnGif &, const TarnGif &) = default;
};
