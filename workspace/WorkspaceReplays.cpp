#include "workspace/WorkspaceReplays.h"

#include "workspace/WorkspaceLimits.h"

#include <algorithm>

std::optional<WorkspaceReply> WorkspaceReplays::answerTo(const Key &key, qint64 nowMs)
{
    forgetOlderThan(nowMs);
    const auto kept = std::find_if(m_kept.begin(), m_kept.end(), [&key](const Kept &k) { return k.key == key; });
    if (kept == m_kept.end())
        return std::nullopt;
    return kept->reply;
}

void WorkspaceReplays::remember(Key key, const WorkspaceReply &reply, qint64 nowMs)
{
    if (reply.status >= 500)
        return;
    forgetOlderThan(nowMs);
    m_kept.push_back({ std::move(key), reply, nowMs });
    while (m_kept.size() > WorkspaceLimits::rememberedAnswers)
        m_kept.pop_front();
}

void WorkspaceReplays::forgetOlderThan(qint64 nowMs)
{
    while (!m_kept.empty() && nowMs - m_kept.front().atMs > WorkspaceLimits::rememberedAnswerMs)
        m_kept.pop_front();
}
