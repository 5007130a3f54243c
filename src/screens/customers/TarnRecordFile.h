#pragma once

#include <QString>

class TarnJSONObject;

// A file kept on a customer's record; `size` in bytes.
struct TarnRecordFile {
    QString id;
    QString name;
    qint64 size = 0;
    QString added_at;

    static TarnRecordFile fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnRecordFile &, const TarnRecordFile &) = default;
};
