#include "screens/schedule/NativeScheduleDayModel.h"

using Row = ScheduleDay;

NativeScheduleDayModel::NativeScheduleDayModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "date", [](const Row &r) { return r.date; } },
            { "label", [](const Row &r) { return r.label; } },
            { "today", [](const Row &r) { return r.today; } },
            { "events", [](const Row &r) { return r.events; } },
        },
        parent)
{
}
