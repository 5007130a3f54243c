#pragma once

#include <QString>

class TarnJSONObject;

// A file on a task; `size` in bytes.
struct TarnSupportFile {
    QString id;
    QString name;
    qint64 size = 0;
    QString uploaded_by_name;
    QString created_at;

    static TarnSupportFile fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportFile &, const TarnSupportFile &) = default;
};
