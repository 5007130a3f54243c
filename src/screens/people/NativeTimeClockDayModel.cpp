#include "screens/people/NativeTimeClockDayModel.h"

#include "screens/people/TimeClockRules.h"

#include <QLocale>

using namespace Qt::StringLiterals;
using Row = TimeClockDay;

NativeTimeClockDayModel::NativeTimeClockDayModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "day", [](const Row &r) { return QLocale().toString(r.date, u"ddd d MMM"_s); } },
            { "hours", [](const Row &r) { return TimeClockRules::hoursText(r.seconds); } },
            { "worked", [](const Row &r) { return r.seconds > 0; } },
            { "today", [](const Row &r) { return r.today; } },
        },
        parent)
{
}
