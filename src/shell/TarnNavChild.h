#pragma once

#include "shell/TarnDestination.h"

#include <QObject>
#include <QString>

// An entry under a sidebar item: one section of the item's screen.
struct TarnNavChild {
    Q_GADGET
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(TarnDestination destination MEMBER destination)
    Q_PROPERTY(QString subtitle MEMBER subtitle)

public:
    QString key;
    QString label;
    QString symbol;
    TarnDestination destination;
    // The line under the trail while this section is open.
    QString subtitle;

    friend bool operator==(const TarnNavChild &, const TarnNavChild &) = default;
};
