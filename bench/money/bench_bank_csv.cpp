// The statement reader on the generated statements (`make bench` writes them
// into TARN_STRESS_DIR): the 900,000-byte, 500-row file must parse in under
// 3 ms median. Its descriptions are longer than a row may be, so the reader
// splits the whole file and then refuses row 2; the 500-row file of short rows
// is read to the end.
#include "money/TarnBankCSV.h"

#include <benchmark/benchmark.h>

#include <QFile>

namespace {

QByteArray stress(const char *name)
{
    QFile file(QStringLiteral(TARN_STRESS_DIR "/bank-csv/") + QLatin1StringView(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

void parse(benchmark::State &state, const char *name, bool expectRows)
{
    const QByteArray bytes = stress(name);
    if (bytes.isEmpty()) {
        state.SkipWithError("stress input missing: run `make bench`");
        return;
    }
    // Decoded once, as the file chooser does before handing the text over.
    const QString text = QString::fromUtf8(bytes);
    qsizetype rows = 0;
    for (auto _ : state) {
        try {
            rows = TarnBankCSV::parse(text).size();
        } catch (const TarnBankCSV::ParseError &) {
            rows = 0;
        }
        benchmark::DoNotOptimize(rows);
    }
    if (expectRows && rows != TarnBankCSV::maxRows)
        state.SkipWithError("statement was not read to the end");
    state.SetBytesProcessed(qint64(state.iterations()) * bytes.size());
}

void decodeAndParse(benchmark::State &state)
{
    const QByteArray bytes = stress("rows_500.csv");
    if (bytes.isEmpty()) {
        state.SkipWithError("stress input missing: run `make bench`");
        return;
    }
    for (auto _ : state) {
        const QList<TarnBankCSV::Row> rows = TarnBankCSV::parse(TarnBankCSV::decodeFile(bytes));
        benchmark::DoNotOptimize(rows.size());
    }
    state.SetBytesProcessed(qint64(state.iterations()) * bytes.size());
}

} // namespace

BENCHMARK_CAPTURE(parse, long_descriptions_500rows, "long_descriptions_500rows.csv", false)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parse, rows_500, "rows_500.csv", true)->Unit(benchmark::kMillisecond);
BENCHMARK(decodeAndParse)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
