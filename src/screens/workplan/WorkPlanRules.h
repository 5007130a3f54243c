#pragma once

#include "screens/workplan/TarnWorkPlan.h"
#include "screens/workplan/WorkPlanProgress.h"
#include "screens/workplan/WorkPlanRow.h"

#include <QDate>
#include <QList>
#include <QString>

#include <optional>

// The work plan's rules over its records: which week a day falls in, how a
// week and a day are named, and the order the plan is read in.
namespace WorkPlanRules {

// The Monday of the week `day` falls in.
[[nodiscard]] QDate weekOf(const QDate &day);
// "23 – 29 Nov 2026", "30 Nov – 6 Dec 2026", "29 Dec 2025 – 4 Jan 2026".
[[nodiscard]] QString weekLabel(const QDate &monday);
// "Monday 23 Nov" for an ISO day; the text itself when it is not one.
[[nodiscard]] QString dayLabel(const QString &isoDay);
// The entries of `person` (everyone's when empty), by day, then in the
// team's order, then timed ones by their time after the rest of the day's.
[[nodiscard]] QList<WorkPlanRow> rows(const TarnWorkPlan &plan, const QString &person);
[[nodiscard]] QList<WorkPlanProgress> progress(const TarnWorkPlan &plan);
// A time as typed ("9:30", "09:30", "930") as "HH:mm"; an empty text is an
// empty time; nothing when it is not a time of day.
[[nodiscard]] std::optional<QString> normalizedTime(const QString &typed);

} // namespace WorkPlanRules
