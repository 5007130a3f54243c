#include "chat/ChatRowLayout.h"

#include "chat/MessagesTime.h"

#include <QTimeZone>

#include <limits>

namespace {

// Later by this much starts a new group.
constexpr qint64 groupBreakMs = 300'000;

// One message as the layout needs it.
struct Row {
    const TarnMessage *message;
    std::optional<qint64> msecs;
    qint64 day = 0;
};

// The local day of each time. The offset from UTC is asked once and kept
// until the time zone's next or before its previous transition, rather than
// asked per message, which would cost more than the whole layout.
class DayCache {
public:
    qint64 day(qint64 msecs)
    {
        if (msecs < m_from || msecs >= m_until)
            refill(msecs);
        return MessagesTime::dayOf(msecs + m_offsetMs);
    }

private:
    void refill(qint64 msecs)
    {
        m_offsetMs = MessagesTime::utcOffsetMs(msecs);
        const QTimeZone zone = QTimeZone::systemTimeZone();
        const QDateTime when = QDateTime::fromMSecsSinceEpoch(msecs, Qt::UTC);
        const QTimeZone::OffsetData before = zone.previousTransition(when.addMSecs(1));
        const QTimeZone::OffsetData after = zone.nextTransition(when);
        m_from = before.atUtc.isValid() ? before.atUtc.toMSecsSinceEpoch() : std::numeric_limits<qint64>::min();
        m_until = after.atUtc.isValid() ? after.atUtc.toMSecsSinceEpoch() : std::numeric_limits<qint64>::max();
        // Never trust a range that does not hold the moment it was asked for.
        if (msecs < m_from || msecs >= m_until)
            m_from = m_until = msecs;
    }

    qint64 m_from = 0;
    qint64 m_until = 0;
    qint64 m_offsetMs = 0;
};

Row rowOf(const TarnMessage &message, DayCache &days)
{
    const std::optional<qint64> ms = MessagesTime::msecs(message.created_at);
    return { &message, ms, ms ? days.day(*ms) : 0 };
}

ChatRowLayout layout(const Row *previous, const Row &row, std::optional<qint64> newFrom)
{
    ChatRowLayout out;
    out.new_ = newFrom && *newFrom == row.message->seq;
    if (!previous) {
        out.day = true;
        out.header = true;
        return out;
    }
    const bool continues
        = previous->message->user_id == row.message->user_id && !previous->message->deleted_at.has_value();
    if (previous->msecs && row.msecs) {
        const bool sameDay = previous->day == row.day;
        const bool breaks = !continues || *row.msecs - *previous->msecs >= groupBreakMs;
        out.day = !sameDay;
        out.header = out.new_ || !sameDay || breaks;
    } else {
        out.header = out.new_ || !continues;
    }
    return out;
}

} // namespace

ChatRowLayout ChatRowLayout::compute(const QList<TarnMessage> &messages, qsizetype index, std::optional<qint64> newFrom)
{
    DayCache days;
    const Row row = rowOf(messages.at(index), days);
    if (index == 0)
        return layout(nullptr, row, newFrom);
    const Row previous = rowOf(messages.at(index - 1), days);
    return layout(&previous, row, newFrom);
}

QList<ChatRowLayout> ChatRowLayout::computeAll(const QList<TarnMessage> &messages, std::optional<qint64> newFrom)
{
    QList<ChatRowLayout> out;
    out.reserve(messages.size());
    DayCache days;
    std::optional<Row> previous;
    for (const TarnMessage &message : messages) {
        const Row row = rowOf(message, days);
        out.append(layout(previous ? &*previous : nullptr, row, newFrom));
        previous = row;
    }
    return out;
}
