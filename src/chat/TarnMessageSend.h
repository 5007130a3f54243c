#pragma once

#include "chat/ChatDraftFile.h"

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

// The body of sending a message. The nonce is made once per message and
// kept for its retries, so the service stores a resent message only once.
struct TarnMessageSend {
    QString body;
    QString nonce;
    QList<ChatDraftFile> attachments {}; // sent as "name" and base64 "data"
    std::optional<QString> parent_id {};

    [[nodiscard]] QJsonObject toJSON() const;
};
