#pragma once

#include <QString>

class TarnJSONObject;

// Time logged on a task: `minutes` on `day`.
struct TarnSupportTimeEntry {
    QString id;
    QString task_id;
    QString task_title;
    QString person_id;
    QString person_name;
    qint64 minutes = 0;
    QString day;
    QString note;

    static TarnSupportTimeEntry fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportTimeEntry &, const TarnSupportTimeEntry &) = default;
};
