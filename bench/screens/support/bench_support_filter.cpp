// A board of 2,000 cards filtered as a search is typed: each keystroke
// sorts the matching cards into their columns again and, as the screen
// takes it, changes the four column models row by row; it must take under
// 16 ms (one frame). The cards spread over every status, priority, customer,
// assignee and a quarter's due days, with titles from a support desk.
#include "screens/support/NativeSupportView.h"
#include "screens/support/SupportBoardRules.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

QList<TarnSupportTaskSummary> board(int count)
{
    const QStringList subjects { u"Printer drops off the network"_s, u"Reset the reception tablet"_s,
        u"Portal login loops"_s, u"Replace the switch"_s, u"Back up the server"_s, u"Mail moves to the new domain"_s,
        u"Card reader firmware"_s, u"Wi-Fi drops during uploads"_s, u"Kiosk freezes"_s, u"Renew the licence"_s };
    const QStringList clients { u"Brightwater Dental"_s, u"Oakline Studio"_s, u"Fernhill Bakery"_s, u"Marlow & Sons"_s,
        u"Tidewater Yoga"_s, u"Harbor Vet Clinic"_s, u"Quill & Ink"_s, u"Northfield Gym"_s };
    const QStringList people { u"Maren Holt"_s, u"Tomas Reyes"_s, u"Priya Nair"_s, u"Jonah Whitfield"_s };
    const QDate start(2026, 3, 1);
    QList<TarnSupportTaskSummary> tasks;
    tasks.reserve(count);
    for (int i = 0; i < count; ++i) {
        TarnSupportTaskSummary task;
        task.id = u"st-%1"_s.arg(i);
        task.title = subjects.at(i % subjects.size()) + u" #"_s + QString::number(i);
        task.status = SupportBoardRules::statuses().at(i % 4);
        task.priority = SupportBoardRules::priorities().at(i / 4 % 4);
        if (i % 9 != 0) {
            task.client_id = u"c-%1"_s.arg(i % clients.size());
            task.client_name = clients.at(i % clients.size());
        }
        task.assignee_id = u"p-%1"_s.arg(i % people.size());
        task.assignee_name = people.at(i % people.size());
        if (i % 5 != 0)
            task.due_date = start.addDays(i % 90).toString(Qt::ISODate);
        tasks.append(task);
    }
    return tasks;
}

// Each iteration is one keystroke of "printer network", typed over and over.
void typeSearch(benchmark::State &state)
{
    const QList<TarnSupportTaskSummary> tasks = board(2'000);
    const QString typed = u"printer network"_s;
    const QDate today(2026, 3, 20);
    const bool byClient = state.range(0) != 0;
    qsizetype keystroke = 0;
    for (auto _ : state) {
        const TarnSupportFilters filters { .text = typed.left(keystroke % typed.size() + 1) };
        auto columns = SupportBoardRules::columns(tasks, filters, today, byClient);
        benchmark::DoNotOptimize(columns.data());
        ++keystroke;
    }
}
BENCHMARK(typeSearch)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// A view's filters with no text: every card is looked at and sorted.
void switchView(benchmark::State &state)
{
    const QList<TarnSupportTaskSummary> tasks = board(2'000);
    const QDate today(2026, 3, 20);
    const TarnSupportFilters filters = SupportBoardRules::filtersOf(u"week"_s, u"p-1"_s);
    for (auto _ : state) {
        auto columns = SupportBoardRules::columns(tasks, filters, today, false);
        benchmark::DoNotOptimize(columns.data());
    }
}
BENCHMARK(switchView)->Unit(benchmark::kMillisecond);

// Each iteration types "printer network" into full columns, one keystroke at
// a time, then clears the search; the time per keystroke is the
// iteration's divided by 16.
void typeIntoColumns(benchmark::State &state)
{
    const QList<TarnSupportTaskSummary> tasks = board(2'000);
    const QDate today(2026, 3, 20);
    const QString typed = u"printer network"_s;
    std::vector<std::unique_ptr<NativeSupportCardModel>> models;
    for (int i = 0; i < 4; ++i)
        models.push_back(std::make_unique<NativeSupportCardModel>());
    const auto show = [&](const QString &text) {
        const QList<QList<SupportCard>> columns
            = NativeSupportView::cardColumns(tasks, { .text = text }, today, false, u"st-7"_s);
        for (qsizetype c = 0; c < columns.size(); ++c)
            models.at(static_cast<size_t>(c))->setRows(columns.at(c));
    };
    show({});
    for (auto _ : state) {
        for (qsizetype length = 1; length <= typed.size(); ++length)
            show(typed.left(length));
        show({});
    }
}
BENCHMARK(typeIntoColumns)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
