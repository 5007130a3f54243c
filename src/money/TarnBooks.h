#pragma once

#include "money/TarnBooksBank.h"
#include "money/TarnBooksDocuments.h"
#include "money/TarnBooksLedger.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// A workspace invoice or payment that may be posted into the books. Only its
// id and amount are certain; the rest labels it in the review list.
struct TarnBooksSourceRecord {
    QString id;
    qint64 amount = 0;
    std::optional<QString> title;
    std::optional<QString> date;

    static TarnBooksSourceRecord fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksSourceRecord &, const TarnBooksSourceRecord &) = default;
};

// The workspace records eligible for posting into the books.
struct TarnBooksSourceReview {
    QList<TarnBooksSourceRecord> invoices;
    QList<TarnBooksSourceRecord> payments;

    static TarnBooksSourceReview fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksSourceReview &, const TarnBooksSourceReview &) = default;
};

// The books overview: one legal company's ledger as the pages derive from it.
struct TarnBooks {
    QString company;
    bool source_linked = false;
    std::optional<TarnBooksSourceReview> source_review;
    std::optional<QList<TarnBooksParty>> parties;
    QList<TarnBooksAccount> accounts;
    QList<TarnBooksEntry> entries;
    qint64 entry_count = 0;
    QList<TarnBooksBill> bills;
    std::optional<QList<TarnBooksBillPayment>> bill_payments;
    QList<TarnBooksCustomerInvoice> customer_invoices;
    std::optional<QList<TarnBooksDocumentLine>> document_lines;
    std::optional<QList<TarnBooksCustomerReceipt>> customer_receipts;
    QList<TarnBooksBankRow> bank_rows;
    std::optional<QList<TarnBooksBankMatch>> bank_matches;
    std::optional<QList<TarnBooksMatchedRow>> bank_matched;

    static TarnBooks fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooks &, const TarnBooks &) = default;
};
