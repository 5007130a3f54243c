#include "screens/workplan/NativeWorkPersonModel.h"

using Row = WorkPlanProgress;

NativeWorkPersonModel::NativeWorkPersonModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "personId", [](const Row &r) { return r.id; } },
            { "name", [](const Row &r) { return r.name; } },
            { "role", [](const Row &r) { return r.role; } },
            { "planned", [](const Row &r) { return r.planned; } },
            { "done", [](const Row &r) { return r.done; } },
        },
        parent)
{
}
