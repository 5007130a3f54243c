#pragma once

#include "screens/portals/TarnPortalAccount.h"
#include "screens/portals/TarnPortalAlert.h"

#include <QList>

class TarnJSONObject;

// Every client's portal, live ones first, and the alerts nobody has acknowledged yet,
// newest first.
struct TarnPortalDashboard {
    QList<TarnPortalAccount> accounts;
    QList<TarnPortalAlert> alerts;

    static TarnPortalDashboard fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPortalDashboard &, const TarnPortalDashboard &) = default;
};
