// The timeline layout of a 10,000-message room: every row's dividers and
// header must take under 2 ms together. The room is a working day's talk
// repeated: bursts by one person, replies by others, a deleted message now
// and then, days changing.
#include "chat/ChatRowLayout.h"

#include <benchmark/benchmark.h>

#include <QDateTime>

namespace {

QList<TarnMessage> room(int count)
{
    const QStringList people { QStringLiteral("p-maren"), QStringLiteral("p-tomas"), QStringLiteral("p-priya") };
    QList<TarnMessage> messages;
    messages.reserve(count);
    qint64 at = QDateTime(QDate(2024, 3, 1), QTime(8, 0), Qt::UTC).toMSecsSinceEpoch();
    for (int i = 0; i < count; ++i) {
        at += (i % 7 == 0 ? 1'800'000 : 45'000) + (i % 3) * 1000;
        TarnMessage m;
        m.id = QString::number(i);
        m.user_id = people.at((i / 4) % people.size());
        m.created_at = QDateTime::fromMSecsSinceEpoch(at, Qt::UTC).toString(Qt::ISODateWithMs);
        m.seq = i + 1;
        if (i % 97 == 0)
            m.deleted_at = m.created_at;
        messages.append(m);
    }
    return messages;
}

void layoutRoom(benchmark::State &state)
{
    const QList<TarnMessage> messages = room(10'000);
    const std::optional<qint64> newFrom = 9'990;
    for (auto _ : state) {
        QList<ChatRowLayout> rows = ChatRowLayout::computeAll(messages, newFrom);
        benchmark::DoNotOptimize(rows.data());
    }
}
BENCHMARK(layoutRoom)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
