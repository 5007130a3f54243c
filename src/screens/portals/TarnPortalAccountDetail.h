#pragma once

#include "screens/portals/TarnPortalAccount.h"
#include "screens/portals/TarnPortalPerson.h"
#include "screens/portals/TarnPortalReport.h"
#include "screens/portals/TarnPortalWork.h"

#include <QList>

class TarnJSONObject;

// One client's portal whole: its people by name, its reports newest month
// first, and its work.
struct TarnPortalAccountDetail {
    TarnPortalAccount account;
    QList<TarnPortalPerson> people;
    QList<TarnPortalReport> reports;
    QList<TarnPortalWork> work;

    static TarnPortalAccountDetail fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnPortalAccountDetail &, const TarnPortalAccountDetail &) = default;
};
