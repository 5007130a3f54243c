#include "screens/owner/NativeTeamWeekModel.h"

#include "screens/owner/OwnerFigures.h"

using Row = TarnTeamWeek;

NativeTeamWeekModel::NativeTeamWeekModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "personId", [](const Row &r) { return r.id; } },
            { "name", [](const Row &r) { return r.name; } },
            { "role", [](const Row &r) { return r.role; } },
            { "calls", [](const Row &r) { return r.calls; } },
            { "supportOpen", [](const Row &r) { return r.support_open; } },
            { "supportDone", [](const Row &r) { return r.support_done; } },
            { "supportTime", [](const Row &r) { return OwnerFigures::minutes(r.support_minutes); } },
        },
        parent)
{
}
