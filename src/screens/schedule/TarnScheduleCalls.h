#pragma once

#include "screens/schedule/TarnBooking.h"
#include "screens/schedule/TarnBookingLink.h"
#include "screens/schedule/TarnBookingLinkDraft.h"
#include "screens/schedule/TarnCalendarEvent.h"
#include "screens/schedule/TarnCalendarEventDraft.h"
#include "screens/schedule/TarnGoogleEvents.h"

#include <QCoroTask>
#include <QDateTime>
#include <QList>

class TarnAPI;

// The schedule's endpoints: the person's calendar and their booking links,
// and the connected Google calendar through the mail service's RPC.
namespace TarnScheduleCalls {

// The events that overlap [from, to), by start.
QCoro::Task<QList<TarnCalendarEvent>> calendarEvents(TarnAPI &api, const QDateTime &from, const QDateTime &to);
QCoro::Task<QList<TarnBookingLink>> bookingLinks(TarnAPI &api);
QCoro::Task<TarnBookingLink> createBookingLink(TarnAPI &api, const TarnBookingLinkDraft &draft);
// A link's bookings still to come, soonest first.
QCoro::Task<QList<TarnBooking>> bookingLinkBookings(TarnAPI &api, const QString &linkId);

// The Google calendar's events overlapping [from, to) ("calendar.events").
QCoro::Task<TarnGoogleEvents> googleEvents(TarnAPI &api, const QDateTime &from, const QDateTime &to);
// Adds an event to the Google calendar ("calendar.create"), answered with it.
QCoro::Task<TarnCalendarEvent> createGoogleEvent(TarnAPI &api, const TarnCalendarEventDraft &draft);

} // namespace TarnScheduleCalls
