#pragma once

#include "screens/customers/CustomerTimelineRow.h"
#include "screens/customers/TarnCustomerSummary.h"
#include "screens/customers/TarnTimelineEvent.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// The customer register's rules: the stages a customer moves through, the
// timeline's rows, search matching, and the files a record takes.
namespace CustomerRules {

struct Stage {
    QString id;
    QString label;
};

// A record's file may be this large, as the service allows.
inline constexpr qint64 fileLimitBytes = 10 * 1024 * 1024;

// The stages in pipeline order: "Lead", "Qualified", "Proposal",
// "Customer", "Lost".
[[nodiscard]] const QList<Stage> &stages();
// An unknown stage (a newer service's) is shown as its id and sorts last.
[[nodiscard]] QString stageLabel(const QString &id);
[[nodiscard]] qsizetype stageOrder(const QString &id);

// "Note", "Call", "Message", "Mail", "Task", "Stage"; an unknown kind as "Activity".
[[nodiscard]] QString kindLabel(const QString &kind);

// The events (newest first, as pages arrive) as rows: times and days in
// this computer's time zone, a day header over the first row of each day,
// stage changes named by their labels.
[[nodiscard]] QList<CustomerTimelineRow> timelineRows(
    const QList<TarnTimelineEvent> &events, const QDateTime &now = QDateTime::currentDateTime());

// Whether a customer answers a search: every word of the text appears in
// the name, company or email (any case, accents ignored), or its digits in
// the phone number. Empty text matches everyone.
[[nodiscard]] bool matches(const TarnCustomerSummary &customer, const QString &text);

// A service day ("2026-03-12", or a time on it) as the register shows it:
// "12 Mar", with the year when it is not this one; empty when unreadable.
[[nodiscard]] QString dayText(const QString &serviceDay, const QDate &today = QDate::currentDate());

// Why a file cannot be added, naming it; nothing when it can.
[[nodiscard]] std::optional<QString> fileRefusal(const QString &name, qint64 size);

} // namespace CustomerRules
