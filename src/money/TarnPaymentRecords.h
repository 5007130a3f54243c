#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

class TarnJSONObject;

// The payments terminal's service records. They are small and always travel
// together, so they share one file; each keeps its decoding in its fromJSON.
// Amounts are integer cents.

// One card or offline payment as the terminal lists it. A refund is listed as
// a payment of its own whose id begins with "refund-". `date` is the day it
// was received, "YYYY-MM-DD" (a date-time is tolerated: only its first seven
// characters, the month, are ever compared).
struct TarnPayment {
    QString id;
    QString client;
    qint64 amount = 0;
    QString status;
    QString date;
    std::optional<QString> client_id;
    std::optional<QString> invoice_id;
    std::optional<QString> method;
    std::optional<QString> reference;
    // Offline payments can be changed; a change names the version it read.
    // Last and defaulted, so payments made in code need not name it.
    std::optional<qint64> version = std::nullopt;

    static TarnPayment fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnPayment &, const TarnPayment &) = default;
};

// An invoice of the workspace that still has money owed: what a card is
// charged against or an offline payment is recorded for.
struct TarnOpenInvoice {
    QString id;
    QString client_id;
    QString client;
    std::optional<QString> invoice_number;
    QString due_on;
    qint64 amount = 0;
    qint64 remaining = 0;

    static TarnOpenInvoice fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnOpenInvoice &, const TarnOpenInvoice &) = default;
};

// A customer the terminal can take a payment from.
struct TarnPaymentClient {
    QString id;
    QString name;

    static TarnPaymentClient fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnPaymentClient &, const TarnPaymentClient &) = default;
};

// A saved card of a client; the charge request names it by payment_profile_id.
struct TarnPaymentCard {
    QString payment_profile_id;
    QString card_type;
    QString last4;
    QString expiration;
    std::optional<bool> saved;

    static TarnPaymentCard fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnPaymentCard &, const TarnPaymentCard &) = default;
};

// A refund request as the service lists it; its status is "Requested" until
// someone decides it, then "Refunded" or another closing status.
struct TarnPaymentRefundRequest {
    QString id;
    QString payment_id;
    qint64 amount = 0;
    QString status;
    std::optional<QString> reason;

    static TarnPaymentRefundRequest fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnPaymentRefundRequest &, const TarnPaymentRefundRequest &) = default;
};

// The state of a refund request after a decision.
struct TarnRefundAction {
    QString status;

    static TarnRefundAction fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnRefundAction &, const TarnRefundAction &) = default;
};

// The answer to a card charge: the payment it created.
struct TarnChargeReceipt {
    QString id;
    QString status;
    qint64 amount = 0;

    static TarnChargeReceipt fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnChargeReceipt &, const TarnChargeReceipt &) = default;
};

// A client's recurring charge on a saved card. `interval` is "monthly" or
// "weekly"; `status` "Active", "Paused" or "Cancelled". Each run is listed as
// a card payment of its own.
struct TarnPaymentSchedule {
    QString id;
    QString client_id;
    QString payment_profile_id;
    qint64 amount = 0;
    QString interval;
    QString next_on;
    QString status;

    static TarnPaymentSchedule fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnPaymentSchedule &, const TarnPaymentSchedule &) = default;
};

// A card being saved on the processor's page: `url` opens in the browser,
// `id` is what the app follows it by.
struct TarnCardSession {
    QString id;
    QString url;
    QString expires_at;

    static TarnCardSession fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnCardSession &, const TarnCardSession &) = default;
};

// Where a card session stands: "open" until the page is completed, then
// "completed" with the card it saved, or "expired".
struct TarnCardSessionProgress {
    QString status;
    std::optional<TarnPaymentCard> card;

    static TarnCardSessionProgress fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnCardSessionProgress &, const TarnCardSessionProgress &) = default;
};

// The offline payment form as the user fills it, not tied to an invoice (a
// cheque, a bank transfer); never decoded, only sent. `status` is "Paid" or
// "Pending", `paidOn` a day "YYYY-MM-DD".
struct TarnPaymentRecordDraft {
    QString clientID;
    qint64 amount = 0;
    QString status;
    QString reference;
    QString paidOn;

    [[nodiscard]] QJsonObject toJSON() const;
    friend bool operator==(const TarnPaymentRecordDraft &, const TarnPaymentRecordDraft &) = default;
};
