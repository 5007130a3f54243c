#pragma once

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

// The offline payment form as the user fills it; never decoded, only sent.
struct TarnPaymentRecordDraft {
    QString clientID;
    qint64 amount = 0;
    QString status;
    QString reference;
    QString paidOn;

    friend bool operator==(const TarnPaymentRecordDraft &, const TarnPaymentRecordDraft &) = default;
};
