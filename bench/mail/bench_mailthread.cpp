// The mail thread's way to the screen for the seeded ~2 MB newsletter: the
// service's thread answer decoded on the main thread, then parsed into
// blocks on a worker thread (as NativeMailView does) and handed back. Also
// "Show entire message" (the full limits) and, separately, the main thread's
// own share (decoding the answer) that the window waits for.
#include "mail/MailParse.h"
#include "mail/TarnMailThreadResponse.h"
#include "service/TarnJSONObject.h"
#include "workspace/routes/MailSeed.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFuture>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

// The thread answer as the mail service sends it.
const QByteArray &threadAnswer()
{
    static const QByteArray answer = [] {
        const QJsonObject message { { u"id"_s, u"msg-1"_s },
            { u"from"_s,
                QJsonObject { { u"name"_s, u"The Glaze Letter"_s }, { u"email"_s, u"hello@glazeletter.example"_s } } },
            { u"to"_s, QJsonArray { QJsonObject { { u"email"_s, u"maren@halvard.example"_s } } } },
            { u"date"_s, QDateTime::currentMSecsSinceEpoch() }, { u"text"_s, u"Every article of the year."_s },
            { u"html"_s, MailSeed::longNewsletter() }, { u"unread"_s, false }, { u"snippet"_s, u""_s },
            { u"attachments"_s, QJsonArray() } };
        const QJsonObject thread { { u"id"_s, u"thr-1"_s }, { u"subject"_s, u"The year in glazes"_s },
            { u"messages"_s, QJsonArray { message } }, { u"readOnly"_s, false } };
        return QJsonDocument(QJsonObject { { u"thread"_s, thread } }).toJson(QJsonDocument::Compact);
    }();
    return answer;
}

// Decoded here, parsed on the pool, the document back here: what the view
// waits for between the answer and drawing.
TarnMailDocument answerToBlocks(bool full)
{
    const TarnMailThreadResponse response = TarnJSON::decode<TarnMailThreadResponse>(threadAnswer());
    const TarnMailMessage &message = response.thread.messages.first();
    const MailParseInput input { message.id, message.html, message.text, message.snippet };
    return MailParse::documentOnPool(input, full).result();
}

void threadAnswerToBlocks(benchmark::State &state)
{
    const bool full = state.range(0) == 1;
    qsizetype blocks = 0;
    for (auto _ : state) {
        const TarnMailDocument document = answerToBlocks(full);
        blocks = document.blocks.size();
        benchmark::DoNotOptimize(blocks);
    }
    state.counters["answer_bytes"] = double(threadAnswer().size());
    state.counters["blocks"] = double(blocks);
    state.SetLabel(full ? "entire message" : "thread limits");
}
BENCHMARK(threadAnswerToBlocks)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

void mainThreadDecode(benchmark::State &state)
{
    for (auto _ : state) {
        const TarnMailThreadResponse response = TarnJSON::decode<TarnMailThreadResponse>(threadAnswer());
        benchmark::DoNotOptimize(response.thread.messages.size());
    }
}
BENCHMARK(mainThreadDecode)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
