#include "screens/schedule/NativeBookingLinkModel.h"

#include "screens/schedule/ScheduleLabels.h"

using namespace Qt::StringLiterals;
using Row = TarnBookingLink;

NativeBookingLinkModel::NativeBookingLinkModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "linkId", [](const Row &r) { return r.id; } },
            { "title", [](const Row &r) { return r.title; } },
            { "url", [](const Row &r) { return r.url; } },
            { "duration", [](const Row &r) { return ScheduleLabels::duration(r.duration); } },
            { "bookings", [](const Row &r) { return r.bookings; } },
            { "next",
                [](const Row &r) {
                    return r.next_at ? ScheduleLabels::when(*r.next_at, QDateTime::currentDateTime()) : QString();
                } },
        },
        parent)
{
}
