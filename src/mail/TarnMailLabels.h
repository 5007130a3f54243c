#pragma once

#include "mail/TarnMailLabel.h"

#include <QList>

class TarnJSONObject;

struct TarnMailLabels {
    QList<TarnMailLabel> labels;

    static TarnMailLabels fromJSON(const TarnJSONObject &json);
};
