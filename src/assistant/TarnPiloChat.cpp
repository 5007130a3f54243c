#include "assistant/TarnPiloChat.h"

#include <QStringList>
#include <QTimeZone>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Texts that only check the line to the agent.
const QStringList probes
    = { u"ping"_s, u"test"_s, u"hello?"_s, u"are you there?"_s, u"health check"_s, u"connection test"_s };

// Work the assistant gives itself ("pilo" origin), never the person's words.
const QStringList systemPhrases = { u"daily digest"_s, u"scheduled summary"_s, u"background sync"_s, u"heartbeat"_s,
    u"warm-up"_s, u"self-check"_s };

const QString agentGroup = u"agent"_s;

} // namespace

namespace TarnPiloChat {

bool isNoise(const TarnAgentRequest &request)
{
    const QString content = request.content.trimmed().toLower();
    if (probes.contains(content) || content.startsWith("tarn bridge check"_L1))
        return true;
    return request.origin == u"pilo"_s
        && std::any_of(systemPhrases.begin(), systemPhrases.end(),
            [&content](const QString &phrase) { return content.contains(phrase); });
}

QString groupKey(const TarnAgentRequest &request)
{
    const QString page = request.page.value_or(QString());
    return page.isEmpty() ? agentGroup : page;
}

std::optional<QDateTime> cutoff(const QString &groupKey, bool showHistory, const QDateTime &now)
{
    if (showHistory)
        return std::nullopt;
    // The agent's own screen is where the history is read, so it keeps a
    // month; a page's panel keeps the last week of what was asked there.
    // Both fold from the start of a local day, never mid-day.
    const int days = groupKey == agentGroup ? 30 : 7;
    return now.date().addDays(-days).startOfDay(now.timeZone());
}

} // namespace TarnPiloChat
