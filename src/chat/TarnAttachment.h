#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// A file attached to a message, downloaded on demand by its id.
struct TarnAttachment {
    QString id;
    QString name;
    qint64 size = 0; // bytes
    std::optional<QString> mime {};

    static TarnAttachment fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnAttachment &, const TarnAttachment &) = default;
};
