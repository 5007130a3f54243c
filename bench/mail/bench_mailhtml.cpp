// Mail HTML to blocks: throughput over the real-world corpus (beside a
// tree-only HTML parser on the same files), time and peak memory for each
// generated large or hostile mail, and growth with 1x, 2x and 4x the content.
#include "AllocationCounter.h"

#include "mail/TarnMailHTML.h"

#include <QDir>
#include <QFile>
#include <QList>
#include <QString>

#include <benchmark/benchmark.h>
#include <gumbo.h>

#include <climits>
#include <cstdio>
#include <map>

using namespace Qt::StringLiterals;

namespace {

struct Mail {
    QString name;
    QByteArray bytes;
    QString text;
};

QList<Mail> readFolder(const QString &folder)
{
    QList<Mail> mails;
    const QDir dir(folder);
    for (const QString &file : dir.entryList({ u"*.html"_s }, QDir::Files, QDir::Name)) {
        QFile f(dir.filePath(file));
        if (!f.open(QIODevice::ReadOnly))
            continue;
        Mail mail { file, f.readAll(), {} };
        mail.text = QString::fromUtf8(mail.bytes);
        mails.append(mail);
    }
    return mails;
}

const QList<Mail> &corpus()
{
    static const QList<Mail> mails = readFolder(QStringLiteral(TARN_CORPUS_DIR "/html-mail"));
    return mails;
}

qint64 corpusBytes()
{
    qint64 total = 0;
    for (const Mail &mail : corpus())
        total += mail.bytes.size();
    return total;
}

void corpusParse(benchmark::State &state)
{
    for (auto _ : state) {
        for (const Mail &mail : corpus()) {
            TarnMailDocument document
                = TarnMailHTML::parse(mail.text, TarnMailHTML::threadCharacterLimit, TarnMailHTML::threadBlockLimit);
            benchmark::DoNotOptimize(document);
        }
    }
    state.SetBytesProcessed(state.iterations() * corpusBytes());
}

void corpusParseUTF8(benchmark::State &state)
{
    for (auto _ : state) {
        for (const Mail &mail : corpus()) {
            TarnMailDocument document = TarnMailHTML::parseUTF8(
                mail.bytes, TarnMailHTML::threadCharacterLimit, TarnMailHTML::threadBlockLimit);
            benchmark::DoNotOptimize(document);
        }
    }
    state.SetBytesProcessed(state.iterations() * corpusBytes());
}

void corpusGumbo(benchmark::State &state)
{
    for (auto _ : state) {
        for (const Mail &mail : corpus()) {
            GumboOutput *output
                = gumbo_parse_with_options(&kGumboDefaultOptions, mail.bytes.constData(), size_t(mail.bytes.size()));
            benchmark::DoNotOptimize(output);
            gumbo_destroy_output(&kGumboDefaultOptions, output);
        }
    }
    state.SetBytesProcessed(state.iterations() * corpusBytes());
}

// One generated mail: time per parse, and the peak of heap bytes held during
// it over the input's size.
void stressParse(benchmark::State &state, const Mail &mail, int characterLimit, int blockLimit)
{
    // Only blocks allocated while counting are counted when freed, so the
    // count starts from zero here and stays balanced across one parse.
    std::size_t peak = 0;
    for (auto _ : state) {
        AllocationCounter::setEnabled(true);
        AllocationCounter::resetPeak();
        const std::size_t before = AllocationCounter::current();
        {
            TarnMailDocument document = TarnMailHTML::parse(mail.text, characterLimit, blockLimit);
            benchmark::DoNotOptimize(document);
        }
        peak = qMax(peak, AllocationCounter::peak() - before);
        AllocationCounter::setEnabled(false);
    }
    state.SetBytesProcessed(state.iterations() * mail.bytes.size());
    state.counters["input_bytes"] = double(mail.bytes.size());
    state.counters["peak_bytes"] = double(peak);
    state.counters["peak_x_input"] = double(peak) / double(qMax<qsizetype>(mail.bytes.size(), 1));
}

// The whole corpus repeated 1, 2 and 4 times, parsed without limits: the time
// per byte must stay flat.
void linearGrowth(benchmark::State &state)
{
    QByteArray content;
    for (const Mail &mail : corpus())
        content += mail.bytes;
    const QString text = QString::fromUtf8(content.repeated(qsizetype(state.range(0))));
    for (auto _ : state) {
        TarnMailDocument document = TarnMailHTML::parse(text, INT_MAX, INT_MAX);
        benchmark::DoNotOptimize(document);
    }
    state.SetBytesProcessed(state.iterations() * text.toUtf8().size());
    state.SetComplexityN(state.range(0));
}

// Prints how many times faster than the tree-only parser ours runs on the corpus.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            const auto rate = run.counters.find("bytes_per_second");
            if (rate == run.counters.end())
                continue;
            const std::string name = run.benchmark_name();
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            const bool single = run.run_type == Run::RT_Iteration;
            if (median || single)
                m_rates[name.substr(0, name.find('_'))] = rate->second.value;
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void Finalize() override
    {
        ConsoleReporter::Finalize();
        const auto ours = m_rates.find("CorpusParse");
        const auto gumbo = m_rates.find("CorpusGumbo");
        if (ours != m_rates.end() && gumbo != m_rates.end() && gumbo->second > 0) {
            std::printf("corpus: ours %.1f MB/s, tree-only gumbo %.1f MB/s, ratio %.1fx\n", ours->second / 1e6,
                gumbo->second / 1e6, ours->second / gumbo->second);
        }
    }

private:
    std::map<std::string, double> m_rates;
};

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    std::printf("corpus: %lld files, %lld bytes\n", qint64(corpus().size()), corpusBytes());

    benchmark::RegisterBenchmark("CorpusParse", corpusParse)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("CorpusParseUTF8", corpusParseUTF8)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("CorpusGumbo", corpusGumbo)->Unit(benchmark::kMillisecond);

    static const QList<Mail> stress = readFolder(QStringLiteral(TARN_STRESS_DIR "/html-mail"));
    if (stress.isEmpty())
        std::printf("no generated inputs in %s: run make_stress.py (make bench does)\n", TARN_STRESS_DIR);
    for (const Mail &mail : stress) {
        const std::string name = mail.name.toStdString();
        benchmark::RegisterBenchmark(("Stress/thread/" + name).c_str(), [&mail](benchmark::State &state) {
            stressParse(state, mail, TarnMailHTML::threadCharacterLimit, TarnMailHTML::threadBlockLimit);
        })->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("Stress/full/" + name).c_str(), [&mail](benchmark::State &state) {
            stressParse(state, mail, TarnMailHTML::fullCharacterLimit, TarnMailHTML::fullBlockLimit);
        })->Unit(benchmark::kMillisecond);
    }

    benchmark::RegisterBenchmark("LinearGrowth", linearGrowth)
        ->RangeMultiplier(2)
        ->Range(1, 4)
        ->Complexity(benchmark::oN)
        ->Unit(benchmark::kMillisecond);

    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
