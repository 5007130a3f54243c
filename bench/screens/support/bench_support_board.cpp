// A keystroke on a board of 2,000 cards as the screen takes it: the cards
// sorted into columns with their labels, and each of the four column models
// changed row by row. Must take under 16 ms (one frame). The columns start
// full, as the board opens, and a search is typed into them.
#include "screens/support/NativeSupportView.h"
#include "screens/support/SupportBoardRules.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

QList<TarnSupportTaskSummary> board(int count)
{
    const QStringList subjects { u"Printer drops off the network"_s, u"Reset the reception tablet"_s,
        u"Portal login loops"_s, u"Replace the switch"_s, u"Back up the server"_s, u"Mail moves to the new domain"_s,
        u"Card reader firmware"_s, u"Wi-Fi drops during uploads"_s, u"Kiosk freezes"_s, u"Renew the licence"_s };
    const QStringList clients { u"Brightwater Dental"_s, u"Oakline Studio"_s, u"Fernhill Bakery"_s,
        u"Marlow & Sons"_s, u"Tidewater Yoga"_s, u"Harbor Vet Clinic"_s, u"Quill & Ink"_s, u"Northfield Gym"_s };
    const QDate start(2026, 3, 1);
    QList<TarnSupportTaskSummary> tasks;
    for (int i = 0; i < count; ++i) {
        TarnSupportTaskSummary task;
        task.id = u"st-%1"_s.arg(i);
        task.title = subjects.at(i % subjects.size()) + u" #"_s + QString::number(i);
        task.status = SupportBoardRules::statuses().at(i % 4);
        task.priority = SupportBoardRules::priorities().at(i / 4 % 4);
        task.client_name = clients.at(i % clients.size());
        task.assignee_name = u"Jonah Whitfield"_s;
        if (i % 5 != 0)
            task.due_date = start.addDays(i % 90).toString(Qt::ISODate);
        tasks.append(task);
    }
    return tasks;
}

// Each iteration types "printer network" into full columns, one keystroke at
// a time, then clears the search; the time per keystroke is the
// iteration's divided by 16.
void typeIntoColumns(benchmark::State &state)
{
    const QList<TarnSupportTaskSummary> tasks = board(2'000);
    const QDate today(2026, 3, 20);
    const QString typed = u"printer network"_s;
    QList<NativeSupportCardModel *> models;
    for (int i = 0; i < 4; ++i)
        models.append(new NativeSupportCardModel(qApp));
    const auto show = [&](const QString &text) {
        const QList<QList<SupportCard>> columns
            = NativeSupportView::cardColumns(tasks, { .text = text }, today, false, u"st-7"_s);
        for (qsizetype c = 0; c < columns.size(); ++c)
            models.at(c)->setRows(columns.at(c));
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

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
