#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// A file of a received message, fetched with mail.attachment when opened.
struct TarnMailAttachment {
    QString id;
    QString name;
    qint64 size = 0; // bytes
    std::optional<QString> mime {};

    static TarnMailAttachment fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnMailAttachment &, const TarnMailAttachment &) = default;
};
