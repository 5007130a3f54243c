#pragma once

#include <QDate>

class WorkPlanStore;

// The demo's work plan: last week, this week and next week of customer
// work, support tasks, calls, admin tasks and reminders for the team, the
// days before `today` mostly done, and coaching notes from Maren. A week
// that already has entries is left as it is, so a data folder made in an
// earlier week gets the weeks around the current one.
namespace WorkPlanSeed {

void plant(WorkPlanStore &plan, const QDate &today);

} // namespace WorkPlanSeed
