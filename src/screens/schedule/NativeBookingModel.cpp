#include "screens/schedule/NativeBookingModel.h"

#include "screens/schedule/ScheduleLabels.h"

using Row = TarnBooking;

NativeBookingModel::NativeBookingModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "bookingId", [](const Row &r) { return r.id; } },
            { "name", [](const Row &r) { return r.name; } },
            { "email", [](const Row &r) { return r.email; } },
            { "when", [](const Row &r) { return ScheduleLabels::when(r.start_at, QDateTime::currentDateTime()); } },
            { "note", [](const Row &r) { return r.note.value_or(QString()); } },
        },
        parent)
{
}
