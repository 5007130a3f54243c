#pragma once

#include "assistant/TarnAgentRequest.h"

#include <QDateTime>

#include <optional>

// Which requests the assistant panel shows.
namespace TarnPiloChat {

// Requests that are not the person's conversation: connection probes and
// the assistant's own system work.
[[nodiscard]] bool isNoise(const TarnAgentRequest &request);

// The group a request is shown in: the page it was asked from, or the
// agent's own group when it came from nowhere in particular.
[[nodiscard]] QString groupKey(const TarnAgentRequest &request);

// The time before which a group's requests are folded away; nothing when
// every request shows (history on).
[[nodiscard]] std::optional<QDateTime> cutoff(const QString &groupKey, bool showHistory, const QDateTime &now);

} // namespace TarnPiloChat
