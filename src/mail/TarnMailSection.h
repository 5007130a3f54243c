#pragma once

#include "mail/TarnMailCard.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// A titled group of threads in a list ("Pinned", "Today", ...).
struct TarnMailSection {
    QString id;
    QString title;
    QList<TarnMailCard> threads;

    static TarnMailSection fromJSON(const TarnJSONObject &json);
};
