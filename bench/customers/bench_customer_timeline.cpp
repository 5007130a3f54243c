// A customer's timeline of 5,000 events opening in the profile: from the
// answer's bytes (decoded as the client decodes every answer) to the rows in
// the profile's timeline model, day headers and labels made. Target: under
// 100 ms. A second case times a change arriving over the open timeline:
// the model announces the one new row, but every row's labels are made
// again, so it costs about what opening does.
#include "MemorySessionStore.h"
#include "screens/customers/NativeCustomerProfile.h"
#include "screens/customers/TarnTimelinePage.h"
#include "service/Config.h"
#include "service/TarnAPI.h"
#include "service/TarnJSONObject.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int events = 5000;

// Five years of a busy customer: every kind, a few events a day.
QByteArray answer(int count, qint64 newestMs)
{
    const QStringList kinds { u"note"_s, u"inbox"_s, u"mail"_s, u"task"_s, u"stage"_s, u"call"_s };
    QJsonArray list;
    for (int i = 0; i < count; ++i) {
        const QString kind = kinds.at(i % kinds.size());
        list.append(QJsonObject { { u"id"_s, u"e-%1"_s.arg(count - i, 6, 10, QChar(u'0')) }, { u"kind"_s, kind },
            { u"at"_s,
                QDateTime::fromMSecsSinceEpoch(newestMs - qint64(i) * 7 * 3'600'000, Qt::UTC)
                    .toString(Qt::ISODateWithMs) },
            { u"title"_s, u"Event %1"_s.arg(i) },
            { u"body"_s, kind == "stage"_L1 ? u"lead → qualified"_s : u"Asked about the spring schedule again."_s },
            { u"author_name"_s, u"Maren Holt"_s } });
    }
    return QJsonDocument(QJsonObject { { u"events"_s, list }, { u"next_before"_s, QJsonValue() } })
        .toJson(QJsonDocument::Compact);
}

struct Client {
    MemorySessionStore store { QString() };
    std::unique_ptr<TarnAPI> api;

    Client()
    {
        const std::optional<Config> config = Config::fromOptions(u"https://127.0.0.1:1/"_s, {}, nullptr);
        api = std::make_unique<TarnAPI>(*config, store, nullptr);
    }
};

void openTimeline(benchmark::State &state)
{
    Client client;
    const QByteArray bytes = answer(events, QDateTime::currentMSecsSinceEpoch());
    for (auto _ : state) {
        NativeCustomerProfile profile(*client.api);
        TarnTimelinePage page = TarnJSON::decode<TarnTimelinePage>(bytes);
        profile.showTimeline(std::move(page.events), std::move(page.next_before));
        benchmark::DoNotOptimize(profile.timeline()->rowCount());
    }
}
BENCHMARK(openTimeline)->Unit(benchmark::kMillisecond);

void oneNewEvent(benchmark::State &state)
{
    Client client;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const TarnTimelinePage before = TarnJSON::decode<TarnTimelinePage>(answer(events, now - 3'600'000));
    NativeCustomerProfile profile(*client.api);
    profile.showTimeline(before.events, before.next_before);
    QList<TarnTimelineEvent> after = before.events;
    after.prepend({ .id = u"e-new"_s,
        .kind = u"note"_s,
        .at = QDateTime::fromMSecsSinceEpoch(now, Qt::UTC).toString(Qt::ISODateWithMs),
        .title = u"Note"_s,
        .body = u"Latest"_s,
        .author_name = std::nullopt });
    bool toggle = false;
    for (auto _ : state) {
        profile.showTimeline(toggle ? before.events : after, std::nullopt);
        toggle = !toggle;
    }
}
BENCHMARK(oneNewEvent)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
