#pragma once

#include "shell/TarnDestination.h"
#include "shell/TarnNavChildGroup.h"
#include "shell/TarnScreen.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

// A sidebar item. It counts as active on any of its `screens`; the children
// tell apart the sections of those screens.
struct TarnNavItem {
    Q_GADGET
    Q_PROPERTY(QString key MEMBER key)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(TarnDestination destination MEMBER destination)
    Q_PROPERTY(QStringList screenNames READ screenNames)
    Q_PROPERTY(QList<TarnNavChildGroup> childGroups MEMBER childGroups)
    Q_PROPERTY(QString subtitle MEMBER subtitle)

public:
    QString key;
    QString label;
    QString symbol;
    TarnDestination destination;
    QList<TarnScreen> screens;
    QList<TarnNavChildGroup> childGroups;
    // The line under the trail on the item's own page.
    QString subtitle;

    [[nodiscard]] QStringList screenNames() const
    {
        QStringList names;
        for (const TarnScreen screen : screens)
            names.append(TarnScreens::rawValue(screen));
        return names;
    }

    friend bool operator==(const TarnNavItem &, const TarnNavItem &) = default;
};
