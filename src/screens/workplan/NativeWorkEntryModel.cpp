#include "screens/workplan/NativeWorkEntryModel.h"

#include "screens/workplan/WorkPlanRules.h"

using Row = WorkPlanRow;

NativeWorkEntryModel::NativeWorkEntryModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "entryId", [](const Row &r) { return r.id; } },
            { "personId", [](const Row &r) { return r.entry.person_id; } },
            { "personName", [](const Row &r) { return r.person_name; } },
            { "kind", [](const Row &r) { return r.entry.kind; } },
            { "title", [](const Row &r) { return r.entry.title; } },
            { "day", [](const Row &r) { return WorkPlanRules::dayLabel(r.entry.day); } },
            { "isoDay", [](const Row &r) { return r.entry.day; } },
            { "time", [](const Row &r) { return r.entry.time.value_or(QString()); } },
            { "client", [](const Row &r) { return r.entry.client_name.value_or(QString()); } },
            { "notes", [](const Row &r) { return r.entry.notes; } },
            { "done", [](const Row &r) { return r.entry.done; } },
            { "doneBy", [](const Row &r) { return r.entry.done_by_name.value_or(QString()); } },
        },
        parent)
{
}
