#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

// The bodies of the customer register's changes.

// The details as edited, with the version they were based on: the
// service refuses a stale one.
struct TarnCustomerDetails {
    qint64 version = 0;
    QString name;
    QString email;
    QString phone;
    QString company;
    QString address;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("version"), version }, { QStringLiteral("name"), name },
            { QStringLiteral("email"), email }, { QStringLiteral("phone"), phone },
            { QStringLiteral("company"), company }, { QStringLiteral("address"), address } };
    }
};

struct TarnStageChange {
    QString stage;
    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("stage"), stage } }; }
};

// Only the fields set are changed.
struct TarnCustomerTaskUpdate {
    std::optional<bool> done {};
    std::optional<QString> title {};
    std::optional<QString> due_on {};
    [[nodiscard]] QJsonObject toJSON() const
    {
        QJsonObject out;
        if (done)
            out.insert(QStringLiteral("done"), *done);
        if (title)
            out.insert(QStringLiteral("title"), *title);
        if (due_on)
            out.insert(QStringLiteral("due_on"), *due_on);
        return out;
    }
};

struct TarnCustomerNote {
    QString body;
    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("body"), body } }; }
};

struct TarnCRMContactRequest {
    QString name;
    QString role;
    QString email;
    QString phone;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("name"), name }, { QStringLiteral("role"), role }, { QStringLiteral("email"), email },
            { QStringLiteral("phone"), phone } };
    }
};

// A file's bytes travel as base64 "data".
struct TarnRecordUpload {
    QString name;
    QByteArray data;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("name"), name }, { QStringLiteral("data"), QString::fromLatin1(data.toBase64()) } };
    }
};

// `remind_at` is an ISO 8601 time.
struct TarnRecordReminderRequest {
    QString text;
    QString remind_at;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("text"), text }, { QStringLiteral("remind_at"), remind_at } };
    }
};

// `on` is a day, YYYY-MM-DD; empty clears the follow-up.
struct TarnSalesFollowUp {
    QString on;
    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("on"), on } }; }
};
