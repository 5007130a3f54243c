#pragma once

#include <QJsonObject>
#include <QString>

// What the bank showed an account holding at the end of a day, in cents.
struct TarnExternalBaseline {
    QString date;
    qint64 balance = 0;

    [[nodiscard]] QJsonObject toJSON() const;
};

// The day to reconcile the bank's balance against the books on.
struct TarnExternalReconcile {
    QString date;

    [[nodiscard]] QJsonObject toJSON() const;
};
