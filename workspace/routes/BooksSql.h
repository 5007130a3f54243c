#pragma once

#include <QJsonValue>
#include <QLatin1StringView>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

#include <span>

// The few SQL helpers the stores share (they began with the books and the
// payments terminal, hence the name). A failing statement is logged without
// its bound values.
namespace BooksSql {

QSqlQuery run(const QSqlDatabase &db, const QString &sql, const QVariantList &values = {});
// Runs a store's schema statements in order; false at the first that fails.
[[nodiscard]] bool runAll(const QSqlDatabase &db, std::span<const char *const> statements);
// The first column of the first row, or 0 when there is none.
[[nodiscard]] qint64 single(const QSqlDatabase &db, const QString &sql, const QVariantList &values = {});
// The first column of the first row as text, or a null string.
[[nodiscard]] QString text(const QSqlDatabase &db, const QString &sql, const QVariantList &values = {});
// A new record id: the prefix and twelve random hex digits.
[[nodiscard]] QString newID(QLatin1StringView prefix);
// SQL NULL for an empty text.
[[nodiscard]] QVariant orNull(const QString &value);
// JSON null for SQL NULL or an empty text, else the text.
[[nodiscard]] QJsonValue optionalText(const QVariant &value);
// Times are kept as milliseconds since the epoch and answered as ISO 8601 in UTC.
[[nodiscard]] qint64 nowMs();
[[nodiscard]] QString isoTime(qint64 ms);

} // namespace BooksSql
