#include "screens/schedule/NativeScheduleMonthModel.h"

using Row = ScheduleMonthDay;

NativeScheduleMonthModel::NativeScheduleMonthModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "date", [](const Row &r) { return r.date; } },
            { "weekday", [](const Row &r) { return r.weekday; } },
            { "number", [](const Row &r) { return r.number; } },
            { "inMonth", [](const Row &r) { return r.inMonth; } },
            { "today", [](const Row &r) { return r.today; } },
            { "count", [](const Row &r) { return r.count; } },
            { "titles", [](const Row &r) { return r.titles; } },
        },
        parent)
{
}
