#include "screens/schedule/TarnScheduleCalls.h"

#include "mail/TarnMailCalls.h"
#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnScheduleCalls {

QCoro::Task<QList<TarnCalendarEvent>> calendarEvents(TarnAPI &api, const QDateTime &from, const QDateTime &to)
{
    return api.request<QList<TarnCalendarEvent>>(TarnPath(u"/api/calendar/events"_s)
                                                     .query("from"_L1, from.toUTC().toString(Qt::ISODate))
                                                     .query("to"_L1, to.toUTC().toString(Qt::ISODate)));
}

QCoro::Task<QList<TarnBookingLink>> bookingLinks(TarnAPI &api)
{
    return api.request<QList<TarnBookingLink>>(TarnPath(u"/api/calendar/booking-links"_s));
}

QCoro::Task<TarnBookingLink> createBookingLink(TarnAPI &api, const TarnBookingLinkDraft &draft)
{
    return api.request<TarnBookingLink>(TarnPath(u"/api/calendar/booking-links"_s), TarnMethod::Post, draft);
}

QCoro::Task<QList<TarnBooking>> bookingLinkBookings(TarnAPI &api, const QString &linkId)
{
    return api.request<QList<TarnBooking>>(
        TarnPath(u"/api/calendar/booking-links"_s).id(linkId).segment("bookings"_L1));
}

QCoro::Task<TarnGoogleEvents> googleEvents(TarnAPI &api, const QDateTime &from, const QDateTime &to)
{
    return TarnMailCalls::rpc<TarnGoogleEvents>(api,
        TarnMailRPC { u"calendar.events"_s,
            { { u"from"_s, from.toUTC().toString(Qt::ISODate) }, { u"to"_s, to.toUTC().toString(Qt::ISODate) } } });
}

QCoro::Task<TarnCalendarEvent> createGoogleEvent(TarnAPI &api, const TarnCalendarEventDraft &draft)
{
    return TarnMailCalls::rpc<TarnCalendarEvent>(api, TarnMailRPC { u"calendar.create"_s, draft.toJSON() });
}

} // namespace TarnScheduleCalls
