#include "screens/people/NativeTimeEntryModel.h"

#include "screens/people/TimeClockRules.h"

#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;
using Row = TarnTimeEntry;

namespace {

QDateTime local(const QString &iso)
{
    return QDateTime::fromString(iso, Qt::ISODateWithMs).toLocalTime();
}

QString label(const QString &iso)
{
    return QLocale().toString(local(iso), u"ddd d MMM, HH:mm"_s);
}

} // namespace

NativeTimeEntryModel::NativeTimeEntryModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "entryId", [](const Row &r) { return r.id; } },
            { "clockIn", [](const Row &r) { return label(r.clock_in); } },
            { "clockOut", [](const Row &r) { return r.clock_out ? label(*r.clock_out) : QString(); } },
            // As the correction form edits them.
            { "clockInText", [](const Row &r) { return local(r.clock_in).toString(u"yyyy-MM-dd HH:mm"_s); } },
            { "clockOutText",
                [](const Row &r) {
                    return r.clock_out ? local(*r.clock_out).toString(u"yyyy-MM-dd HH:mm"_s) : QString();
                } },
            { "open", [](const Row &r) { return !r.clock_out; } },
            { "hours",
                [](const Row &r) {
                    const QDateTime end = r.clock_out ? local(*r.clock_out) : QDateTime::currentDateTime();
                    return TimeClockRules::hoursText(local(r.clock_in).secsTo(end));
                } },
            { "correction",
                [](const Row &r) {
                    return r.edit_reason
                        ? u"Corrected by %1: %2"_s.arg(r.edited_by_name.value_or(QString()), *r.edit_reason)
                        : QString();
                } },
        },
        parent)
{
}
