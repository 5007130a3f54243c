#pragma once

#include <QDateTime>
#include <QHashFunctions>
#include <QString>

// One preset of the snooze menu: what it says and when the thread comes back.
struct TarnSnoozeChoice {
    QString label;
    QDateTime date;

    friend bool operator==(const TarnSnoozeChoice &, const TarnSnoozeChoice &) = default;
};

inline size_t qHash(const TarnSnoozeChoice &choice, size_t seed = 0) noexcept
{
    return qHashMulti(seed, choice.label, choice.date);
}
