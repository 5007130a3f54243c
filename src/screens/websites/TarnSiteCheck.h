#pragma once

#include <QList>
#include <QString>

class TarnJSONObject;

// One finding of a site check: `severity` "high", "medium" or "low".
struct TarnSiteFinding {
    QString severity;
    QString text;

    static TarnSiteFinding fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSiteFinding &, const TarnSiteFinding &) = default;
};

// A check of a site for a proposal: scores 0 to 100 for each side of it and
// overall, and what was found, worst first.
struct TarnSiteCheck {
    QString url;
    QString checked_at;
    qint64 overall = 0;
    qint64 speed = 0;
    qint64 mobile = 0;
    qint64 seo = 0;
    qint64 security = 0;
    qint64 accessibility = 0;
    QList<TarnSiteFinding> findings;

    static TarnSiteCheck fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSiteCheck &, const TarnSiteCheck &) = default;
};
