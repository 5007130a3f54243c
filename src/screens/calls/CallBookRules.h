#pragma once

#include "screens/calls/TarnCall.h"
#include "screens/calls/TarnSalesLead.h"

#include <QDateTime>
#include <QList>
#include <QString>

// The call book's rules over its records, QtCore only.
namespace CallBookRules {

// How a call is placed through the service, remembered under "tarn.calls.mode".
struct Mode {
    QString key;
    QString label;
    QString detail;
};
// "phone-first": the service rings the person's own phone, then the
// customer's once they pick up; "computer": the call is placed from this
// computer's microphone and speakers. The first is the default.
[[nodiscard]] const QList<Mode> &modes();
[[nodiscard]] bool isMode(const QString &key);

// The number as it is dialled: spaces, dashes, dots and brackets dropped,
// a leading "00" written "+"; seven to fifteen digits after an optional "+".
// Empty when the text cannot be dialled.
[[nodiscard]] QString dialledNumber(const QString &typed);

// The book's filters: "all", "in", "out" and "missed" (inbound calls nobody
// answered, voicemail included).
[[nodiscard]] bool inFilter(const TarnCall &call, const QString &filter);
// Every word of `search` is found, ignoring case, in the customer's name,
// the number (also without its spacing), the person's name or the notes.
[[nodiscard]] bool matchesSearch(const TarnCall &call, const QString &search);

// "0:42", "12:05", "1:02:09".
[[nodiscard]] QString durationLabel(qint64 seconds);
// The time of a call as the book shows it: the time alone today,
// "Yesterday 14:05", the weekday within a week, else the date.
[[nodiscard]] QString startedLabel(const QString &startedAt, const QDateTime &now);
// Who was on the other end: the customer's name, else the number.
[[nodiscard]] QString partyOf(const TarnCall &call);

// A lead's status in words: "New", "Contacted", "Qualified", "Lost"; an
// unknown one as the service sent it.
[[nodiscard]] QString leadStatusLabel(const QString &status);
// Whether every word typed is in the lead's name, interest, source or
// owner (any case), or in its number with or without the spacing.
[[nodiscard]] bool leadMatchesSearch(const TarnSalesLead &lead, const QString &search);

} // namespace CallBookRules
