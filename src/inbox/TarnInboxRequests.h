#pragma once

#include <QJsonObject>
#include <QString>

// The bodies of the inbox calls other than thread actions.

// Asking the assistant for a reply, with what the person typed so far.
struct TarnInboxAssistRequest {
    QString draft;
    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("draft"), draft } }; }
};

// Turning a thread's unknown sender into a customer on a board.
struct TarnInboxCustomerRequest {
    QString board_id;
    QString name;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("board_id"), board_id }, { QStringLiteral("name"), name } };
    }
};

// Starting a conversation: the customer's phone number or address goes
// under `customer_address`, as threads name it.
struct TarnInboxNewConversation {
    QString kind;
    QString client_id;
    QString customer_address;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("kind"), kind }, { QStringLiteral("client_id"), client_id },
            { QStringLiteral("customer_address"), customer_address } };
    }
};

// Dismissing one inbox notification.
struct TarnInboxDismissal {
    QString entry_id;
    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("entry_id"), entry_id } }; }
};
