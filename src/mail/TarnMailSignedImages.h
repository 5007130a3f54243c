#pragma once

#include <QHash>
#include <QString>

#include <optional>

class TarnJSONObject;

// The answer of mail.images.sign: per requested URL, the signed query that
// fetches it through the proxy (appended to `path`).
struct TarnMailSignedImages {
    std::optional<QString> path {};
    QHash<QString, QString> images;

    static TarnMailSignedImages fromJSON(const TarnJSONObject &json);
};
