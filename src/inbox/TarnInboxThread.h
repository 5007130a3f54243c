#pragma once

#include "inbox/TarnInboxEntry.h"
#include "inbox/TarnInboxPerson.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// One conversation with all its entries, oldest first, and what the
// signed-in person may do with it.
struct TarnInboxThread {
    QString id;
    QString kind;
    std::optional<QString> client_id {};
    QString customer_address;
    QString business_address;
    std::optional<QString> owner_id {};
    std::optional<QString> snoozed_until {};
    QString client_name;
    QList<TarnInboxEntry> entries {};
    bool can_edit = false;
    bool can_send = false;
    bool ai_configured = false;
    std::optional<QString> sending_address {};
    QList<TarnInboxPerson> assignees {};
    QList<TarnInboxPerson> mention_targets {};

    static TarnInboxThread fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnInboxThread &, const TarnInboxThread &) = default;
};
