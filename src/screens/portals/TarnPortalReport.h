#pragma once

#include <QString>

class TarnJSONObject;

// A report on a client's portal for one `month` ("YYYY-MM"); clients see it once
// `published`.
struct TarnPortalReport {
    QString id;
    QString client_id;
    QString title;
    QString month;
    QString body;
    bool published = false;
    QString created_at;

    static TarnPortalReport fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPortalReport &, const TarnPortalReport &) = default;
};
