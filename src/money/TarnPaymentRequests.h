#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

// The bodies the payments terminal sends, one per operation; they share one
// file as the terminal's answer records do. Amounts are integer cents.

struct TarnPaymentRefundAsk {
    QString payment_id;
    qint64 amount = 0;
    QString reason;

    [[nodiscard]] QJsonObject toJSON() const;
};

// The note that goes with approving or denying a refund request.
struct TarnPaymentRefundNote {
    QString note;

    [[nodiscard]] QJsonObject toJSON() const;
};

// Charges a saved card against an open invoice. The caller keeps one
// request_key per attempt and sends it again when it retries, so the service
// charges once however often the answer is lost.
struct TarnPaymentCharge {
    QString client_id;
    QString invoice_id;
    qint64 amount = 0;
    QString description;
    QString request_key;
    QString payment_profile_id;

    // The service charges only on this exact phrase.
    static constexpr auto confirmation = "CHARGE CARD";

    [[nodiscard]] QJsonObject toJSON() const;
};

// An invoice paid outside the terminal (a cheque, a transfer).
struct TarnPaymentOfflineRecord {
    QString reference;
    QString paid_on;

    [[nodiscard]] QJsonObject toJSON() const;
};

// A change of an offline payment, based on the `version` it read; only the
// fields present change. `status` may only become "Paid".
struct TarnPaymentChange {
    qint64 version = 0;
    std::optional<QString> status;
    std::optional<QString> reference;
    std::optional<QString> paid_on;

    [[nodiscard]] QJsonObject toJSON() const;
};

// One action on a client's recurring charges: "create" names the client,
// card, amount, interval and first day; "pause", "resume" and "cancel" name
// the schedule.
struct TarnPaymentScheduleAction {
    QString action;
    std::optional<QString> schedule_id;
    std::optional<QString> client_id;
    std::optional<QString> payment_profile_id;
    std::optional<qint64> amount;
    std::optional<QString> interval;
    std::optional<QString> next_on;

    [[nodiscard]] QJsonObject toJSON() const;
};

// Opens the processor's page to save a card for the client.
struct TarnCardSessionStart {
    QString client_id;

    [[nodiscard]] QJsonObject toJSON() const;
};
