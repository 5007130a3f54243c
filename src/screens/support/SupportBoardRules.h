#pragma once

#include "screens/support/TarnSupportFilters.h"
#include "screens/support/TarnSupportTaskSummary.h"

#include <QDate>
#include <QList>
#include <QString>

#include <optional>

// The board's rules as functions over the cards: the built-in views, the
// filters, and the columns by status. Pure, so a keystroke in the search
// field costs one pass over the cards and nothing else.
namespace SupportBoardRules {

// The largest file a task takes, as the service keeps it.
inline constexpr qint64 fileLimit = 5 * 1024 * 1024;

// The statuses in column order.
[[nodiscard]] const QList<QString> &statuses();
// The priorities from least to most pressing.
[[nodiscard]] const QList<QString> &priorities();

struct BuiltInView {
    QString id;
    QString title;
};
// "all", "mine", "week", "overdue" and "client", in the picker's order.
[[nodiscard]] const QList<BuiltInView> &builtInViews();
[[nodiscard]] bool isBuiltIn(const QString &viewId);
// The filters a built-in view stands for; "mine" is the person's own cards.
[[nodiscard]] TarnSupportFilters filtersOf(const QString &viewId, const QString &me);
// `over`'s filters where set, `base`'s elsewhere.
[[nodiscard]] TarnSupportFilters merged(const TarnSupportFilters &base, const TarnSupportFilters &over);

// Whether a card passes every filter set. Done cards are neither overdue
// nor due; the text matches when each of its words is found in the title,
// the customer or the assignee, ignoring case.
[[nodiscard]] bool matches(const TarnSupportTaskSummary &task, const TarnSupportFilters &filters, const QDate &today);

struct Column {
    QString status;
    QList<qsizetype> rows; // indexes into the cards
};
// One column per status, each holding the matching cards: by due day (none
// last), then the most pressing first, then by title; with `byClient`, by
// customer first (none last).
[[nodiscard]] QList<Column> columns(
    const QList<TarnSupportTaskSummary> &tasks, const TarnSupportFilters &filters, const QDate &today, bool byClient);

// The refusal of a file too large for a task, naming it; none when it fits.
[[nodiscard]] std::optional<QString> fileRefusal(const QString &name, qint64 bytes);

} // namespace SupportBoardRules
