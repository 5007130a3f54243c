#pragma once

#include <QString>

class TarnJSONObject;

// The answer of the bank-row and void operations: the ledger entry they
// matched or posted.
struct TarnBooksEntryID {
    QString entry_id;

    static TarnBooksEntryID fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksEntryID &, const TarnBooksEntryID &) = default;
};
