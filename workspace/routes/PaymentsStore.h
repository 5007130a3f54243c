#pragma once

#include "workspace/WorkspaceReply.h"

#include <QDate>
#include <QJsonArray>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QString>

// The payments terminal's records beyond charges and refunds: payments taken
// outside it (recorded, then changed with a version), the recurring charges
// on saved cards, and the list every screen reads. Answers are the service's
// JSON; refusals carry the status and text the client shows.
namespace PaymentsStore {

// The terminal's own tables beyond the shared schema, and the payments'
// `version`, which data folders from before it lack.
[[nodiscard]] bool prepare(const QSqlDatabase &db);

// Charges every active schedule whose day has come, one card payment per run,
// and moves its day on: a workspace that was not running catches up.
void runDueSchedules(const QSqlDatabase &db, const QDate &today);
// A run's payment says what it was with its reference.
[[nodiscard]] QString runReference(const QString &interval);

[[nodiscard]] QJsonObject paymentJSON(const QSqlDatabase &db, const QString &id);
[[nodiscard]] QJsonArray paymentsJSON(const QSqlDatabase &db);
[[nodiscard]] QJsonArray clientsJSON(const QSqlDatabase &db);
// The client's saved cards and schedules.
[[nodiscard]] QJsonObject cardsJSON(const QSqlDatabase &db, const QString &clientID);

[[nodiscard]] WorkspaceReply recordPayment(const QSqlDatabase &db, const QJsonObject &body);
[[nodiscard]] WorkspaceReply updatePayment(const QSqlDatabase &db, const QString &id, const QJsonObject &body);
[[nodiscard]] WorkspaceReply manageSchedule(const QSqlDatabase &db, const QJsonObject &body);

} // namespace PaymentsStore
