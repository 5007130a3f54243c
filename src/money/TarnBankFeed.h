#pragma once

#include "money/TarnBooksBank.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// The Mercury bank feed as the books see it. Amounts are signed cents.

// One bank account connected to the feed, and the books' bank account it
// feeds. `balance` is what the bank shows today, known once a baseline (the
// bank's balance on a day) is set; `uncategorized` counts its fed rows no
// ledger entry explains yet.
struct TarnMercuryAccount {
    QString id;
    QString bank_account_id;
    QString name;
    QString mask;
    QString connected_at;
    std::optional<qint64> balance;
    qint64 books_balance = 0;
    qint64 uncategorized = 0;
    std::optional<QString> baseline_date;
    std::optional<qint64> baseline_balance;
    std::optional<QString> reconciled_on;
    std::optional<qint64> reconciled_difference;

    static TarnMercuryAccount fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnMercuryAccount &, const TarnMercuryAccount &) = default;
};

// The feed at a glance: the connected accounts, the rows still to
// categorize across them, how many of the bank's accounts are not connected
// yet, and the newest rows fed in.
struct TarnMercurySummary {
    QList<TarnMercuryAccount> accounts;
    qint64 uncategorized = 0;
    qint64 available = 0;
    QList<TarnBooksBankRow> rows;

    static TarnMercurySummary fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnMercurySummary &, const TarnMercurySummary &) = default;
};

// The bank's balance on a day set against the books' balance of its account
// on that day; `uncategorized` fed rows by then explain some of a difference.
struct TarnExternalReconciliation {
    QString id;
    QString account_id;
    QString date;
    qint64 external_balance = 0;
    qint64 books_balance = 0;
    qint64 difference = 0;
    qint64 uncategorized = 0;
    bool balanced = false;

    static TarnExternalReconciliation fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnExternalReconciliation &, const TarnExternalReconciliation &) = default;
};
