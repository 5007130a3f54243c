#pragma once

#include <QLatin1StringView>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

// The few SQL helpers the money routes (the books and the payments terminal)
// share. A failing statement is logged without its bound values.
namespace BooksSql {

QSqlQuery run(const QSqlDatabase &db, const QString &sql, const QVariantList &values = {});
// The first column of the first row, or 0 when there is none.
[[nodiscard]] qint64 single(const QSqlDatabase &db, const QString &sql, const QVariantList &values = {});
// The first column of the first row as text, or a null string.
[[nodiscard]] QString text(const QSqlDatabase &db, const QString &sql, const QVariantList &values = {});
// A new record id: the prefix and twelve random hex digits.
[[nodiscard]] QString newID(QLatin1StringView prefix);
// SQL NULL for an empty text.
[[nodiscard]] QVariant orNull(const QString &value);

} // namespace BooksSql
