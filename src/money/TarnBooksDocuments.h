#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// Customer invoices and receipts, vendor bills and bill payments, and the
// lines they are made of. Amounts are cents.

struct TarnBooksCustomerInvoice {
    QString id;
    QString customer;
    std::optional<QString> invoice_number;
    QString due_on;
    qint64 amount = 0;
    qint64 remaining = 0;
    QString status;

    static TarnBooksCustomerInvoice fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksCustomerInvoice &, const TarnBooksCustomerInvoice &) = default;
};

struct TarnBooksBill {
    QString id;
    QString vendor;
    std::optional<QString> bill_number;
    QString due_date;
    qint64 amount = 0;
    qint64 remaining = 0;
    QString status;

    static TarnBooksBill fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksBill &, const TarnBooksBill &) = default;
};

// Payments and receipts are listed for voiding; only the id and amount are
// certain, the rest is shown when the service sends it.
struct TarnBooksBillPayment {
    QString id;
    qint64 amount = 0;
    std::optional<QString> bill_id;
    std::optional<QString> vendor;
    std::optional<QString> paid_on;
    std::optional<QString> status;

    static TarnBooksBillPayment fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksBillPayment &, const TarnBooksBillPayment &) = default;
};

struct TarnBooksCustomerReceipt {
    QString id;
    qint64 amount = 0;
    std::optional<QString> invoice_id;
    std::optional<QString> customer;
    std::optional<QString> received_on;
    std::optional<QString> status;

    static TarnBooksCustomerReceipt fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksCustomerReceipt &, const TarnBooksCustomerReceipt &) = default;
};

// A line of an invoice or bill; the quantity is kept as it was typed.
struct TarnBooksDocumentLine {
    QString id;
    QString document_kind;
    QString document_id;
    qint64 position = 0;
    QString description;
    QString quantity;
    qint64 unit_price_cents = 0;
    qint64 amount_cents = 0;
    QString account_id;

    static TarnBooksDocumentLine fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnBooksDocumentLine &, const TarnBooksDocumentLine &) = default;
};

// A line ready to send: its amount is quantity times unit price, in cents.
struct TarnBooksLinePosting {
    QString description;
    QString quantity;
    qint64 unitPriceCents = 0;
    QString accountID;
    qint64 amountCents = 0;

    friend bool operator==(const TarnBooksLinePosting &, const TarnBooksLinePosting &) = default;
};

// A line as the user edits it, all text.
struct TarnBooksLineDraft {
    QString id;
    QString description;
    QString quantity;
    QString unitPriceUSD;
    QString accountID;

    // None while the line cannot be posted: no description or account, a
    // quantity that is not a positive decimal of at most six whole digits and
    // four decimals, or a price that TarnMoneyInput refuses (zero is a valid
    // price, for free items). The amount is rounded to the cent, halves up,
    // from exact integer arithmetic.
    [[nodiscard]] std::optional<TarnBooksLinePosting> posting() const;

    friend bool operator==(const TarnBooksLineDraft &, const TarnBooksLineDraft &) = default;
};
