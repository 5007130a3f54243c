#include "workspace/routes/BooksSql.h"

#include <algorithm>

#include <QDateTime>
#include <QSqlError>
#include <QUuid>
#include <QVariant>

namespace BooksSql {

QSqlQuery run(const QSqlDatabase &db, const QString &sql, const QVariantList &values)
{
    QSqlQuery q(db);
    q.setForwardOnly(true);
    q.prepare(sql);
    for (const QVariant &value : values)
        q.addBindValue(value);
    if (!q.exec())
        qWarning("workspace: %s: %s", qPrintable(sql), qPrintable(q.lastError().text()));
    return q;
}

bool runAll(const QSqlDatabase &db, std::span<const char *const> statements)
{
    return std::all_of(statements.begin(), statements.end(),
        [&db](const char *statement) { return run(db, QString::fromLatin1(statement)).isActive(); });
}

qint64 single(const QSqlDatabase &db, const QString &sql, const QVariantList &values)
{
    QSqlQuery q = run(db, sql, values);
    return q.next() ? q.value(0).toLongLong() : 0;
}

QString text(const QSqlDatabase &db, const QString &sql, const QVariantList &values)
{
    QSqlQuery q = run(db, sql, values);
    return q.next() ? q.value(0).toString() : QString();
}

QString newID(QLatin1StringView prefix)
{
    return prefix + QUuid::createUuid().toString(QUuid::Id128).left(12);
}

QVariant orNull(const QString &value)
{
    return value.isEmpty() ? QVariant(QMetaType::fromType<QString>()) : QVariant(value);
}

QJsonValue optionalText(const QVariant &value)
{
    return value.isNull() || value.toString().isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(value.toString());
}

qint64 nowMs()
{
    return QDateTime::currentMSecsSinceEpoch();
}

QString isoTime(qint64 ms)
{
    return QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC).toString(Qt::ISODateWithMs);
}

} // namespace BooksSql
