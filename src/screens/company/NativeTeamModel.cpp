#include "screens/company/NativeTeamModel.h"

using Row = TarnTeamMember;

NativeTeamModel::NativeTeamModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "personId", [](const Row &r) { return r.id; } },
            { "name", [](const Row &r) { return r.name; } },
            { "email", [](const Row &r) { return r.email; } },
            { "role", [](const Row &r) { return r.role; } },
            { "owner", [](const Row &r) { return r.owner; } },
            { "apps", [](const Row &r) { return r.apps.value_or(QStringList()); } },
        },
        parent)
{
}
