#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// The ledger's standing records: who the books deal with, the chart of
// accounts and the journal entries of the overview. Amounts are cents.

struct TarnBooksParty {
    QString id;
    QString kind;
    QString name;
    QString email;
    QString phone;
    QString address;
    qint64 active = 0;

    static TarnBooksParty fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksParty &, const TarnBooksParty &) = default;
};

// `type` is one of "Asset", "Liability", "Equity", "Income", "Expense";
// `bank` is nonzero for an account that bank rows belong to.
struct TarnBooksAccount {
    QString id;
    QString code;
    QString name;
    QString type;
    qint64 debits = 0;
    qint64 credits = 0;
    qint64 bank = 0;

    static TarnBooksAccount fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksAccount &, const TarnBooksAccount &) = default;
};

// A journal entry; source_type and source_id name the workspace record it
// was posted from, if any.
struct TarnBooksEntry {
    QString id;
    QString entry_date;
    QString memo;
    std::optional<QString> source_type;
    std::optional<QString> source_id;
    qint64 amount = 0;

    static TarnBooksEntry fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksEntry &, const TarnBooksEntry &) = default;
};
