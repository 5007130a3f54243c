#include "screens/overview/NativeTeamActivityModel.h"

#include "screens/overview/OverviewRules.h"

using Row = TarnTeamActivity;

NativeTeamActivityModel::NativeTeamActivityModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "personId", [](const Row &r) { return r.id; } },
            { "name", [](const Row &r) { return r.name; } },
            { "role", [](const Row &r) { return r.role; } },
            { "clockedIn", [](const Row &r) { return r.clocked_in; } },
            { "doing", [](const Row &r) { return OverviewRules::doingLabel(r); } },
            { "openTasks", [](const Row &r) { return r.open_tasks; } },
            { "next", [](const Row &r) { return OverviewRules::nextLabel(r, QDateTime::currentDateTime()); } },
        },
        parent)
{
}
