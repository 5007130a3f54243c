#pragma once

#include "assistant/TarnPiloRun.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

// The body of asking the agent. `request_key` is made by the client once per
// request, so a send whose answer was lost can be repeated or looked up
// without the service storing the request twice.
struct TarnAgentAsk {
    QString content;
    QStringList attachments {};
    std::optional<QString> page {};
    TarnPiloRun run = TarnPiloRun::fast;
    QString request_key;

    [[nodiscard]] QJsonObject toJSON() const;
};
