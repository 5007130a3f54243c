#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class TarnJSONObject;

// An attachment's bytes, as mail.attachment answers them.
struct TarnMailDownloadedFile {
    QString name;
    qint64 size = 0;
    QString dataBase64;

    static TarnMailDownloadedFile fromJSON(const TarnJSONObject &json);
    // The decoded bytes; nothing when dataBase64 is not base64.
    [[nodiscard]] std::optional<QByteArray> data() const;
};
