#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// Bank rows, their matches to the ledger, statement imports and month-end
// reconciliation. Amounts are signed cents: money in positive.

// A bank row; `source` says where it came from: a statement file import or
// the Mercury bank feed ("mercury").
struct TarnBooksBankRow {
    QString id;
    QString bank_account_id;
    QString row_date;
    QString description;
    qint64 amount = 0;
    QString source;
    std::optional<QString> mercury_status;

    [[nodiscard]] bool isMercury() const;

    static TarnBooksBankRow fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksBankRow &, const TarnBooksBankRow &) = default;
};

// A bank row already matched to a ledger entry.
struct TarnBooksMatchedRow {
    QString id;
    QString row_date;
    QString description;
    qint64 amount = 0;
    std::optional<QString> source_type;

    static TarnBooksMatchedRow fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksMatchedRow &, const TarnBooksMatchedRow &) = default;
};

// A ledger entry that a bank row can be matched to.
struct TarnBooksBankMatch {
    QString id;
    QString entry_date;
    QString memo;
    QString bank_account_id;
    qint64 amount = 0;

    static TarnBooksBankMatch fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksBankMatch &, const TarnBooksBankMatch &) = default;
};

// Rows stored by an import, and rows the server already had and skipped.
struct TarnBooksImportResult {
    qint64 imported = 0;
    qint64 duplicates = 0;

    static TarnBooksImportResult fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksImportResult &, const TarnBooksImportResult &) = default;
};

struct TarnBooksReconciliation {
    QString bank_account_id;
    QString statement_date;
    std::optional<QString> last_closed_date;
    qint64 ledger_balance = 0;
    qint64 outstanding_total = 0;
    qint64 adjusted_balance = 0;
    qint64 imported_count = 0;
    qint64 unmatched_count = 0;
    qint64 future_match_count = 0;

    static TarnBooksReconciliation fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksReconciliation &, const TarnBooksReconciliation &) = default;
};

// A closed reconciliation and its preview as it stood when closed.
struct TarnBooksReconciliationClosed {
    QString id;
    TarnBooksReconciliation preview;

    static TarnBooksReconciliationClosed fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksReconciliationClosed &, const TarnBooksReconciliationClosed &) = default;
};
