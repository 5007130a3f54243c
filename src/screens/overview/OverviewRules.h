#pragma once

#include "screens/overview/TarnOrder.h"
#include "screens/overview/TarnTeamActivity.h"

#include <QDate>
#include <QDateTime>
#include <QString>

// The overview's words and the order of fulfilment, QtCore only.
namespace OverviewRules {

// "Reply to the review request · Brightwater Dental", or "Nothing in progress".
[[nodiscard]] QString doingLabel(const TarnTeamActivity &person);
// "Next: Team stand-up at 14:00" in `now`'s zone; empty without one.
[[nodiscard]] QString nextLabel(const TarnTeamActivity &person, const QDateTime &now);
// The status an order moves on to: "packing" → "shipped" → "delivered";
// empty once delivered.
[[nodiscard]] QString nextStatus(const QString &status);
// "Packing", "Shipped", "Delivered".
[[nodiscard]] QString statusLabel(const QString &status);
// When it is due, against `today`: "Due today", "Due tomorrow",
// "Due Thu 26 Nov", "1 day late", "3 days late"; "Delivered" once it is.
[[nodiscard]] QString etaLabel(const TarnOrder &order, const QDate &today);
// Whether it is past its day and not yet delivered.
[[nodiscard]] bool late(const TarnOrder &order, const QDate &today);

} // namespace OverviewRules
