#pragma once

#include "money/TarnBankCSV.h"

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

// The bodies the books operations send. Each is a handful of keys sent by one
// or two calls, so they share one file; each keeps its encoding in its toJSON.
// Amounts are integer cents.

struct TarnBooksCompanyName {
    QString name;

    [[nodiscard]] QJsonObject toJSON() const;
};

struct TarnBooksSourceLink {
    bool enabled = false;

    [[nodiscard]] QJsonObject toJSON() const;
};

// Posts one workspace invoice or payment into the books; an income account
// is only ever named for an invoice.
struct TarnBooksSourcePost {
    QString kind;
    QString id;
    std::optional<QString> income_account_id;

    [[nodiscard]] QJsonObject toJSON() const;
};

struct TarnBooksBankImport {
    QString bank_account_id;
    QList<TarnBankCSV::Row> rows;

    [[nodiscard]] QJsonObject toJSON() const;
};

// Matches a bank row to a ledger entry.
struct TarnBooksEntryChoice {
    QString entry_id;

    [[nodiscard]] QJsonObject toJSON() const;
};

// Categorizes a bank row: the service posts an entry against this account.
struct TarnBooksAccountChoice {
    QString account_id;

    [[nodiscard]] QJsonObject toJSON() const;
};

struct TarnBooksStatementClose {
    QString bank_account_id;
    QString statement_date;
    qint64 statement_balance = 0;

    [[nodiscard]] QJsonObject toJSON() const;
};

// The day a reversal or a void takes effect, "YYYY-MM-DD".
struct TarnBooksEffectiveDate {
    QString date;

    [[nodiscard]] QJsonObject toJSON() const;
};
