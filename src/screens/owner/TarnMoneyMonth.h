#pragma once

#include <QString>

class TarnJSONObject;

// What went through the bank accounts in one month ("2026-11"), in cents.
struct TarnMoneyMonth {
    QString month;
    qint64 money_in = 0;
    qint64 money_out = 0;

    static TarnMoneyMonth fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnMoneyMonth &, const TarnMoneyMonth &) = default;
};
