// Two figures of huddles on this machine, through a local tarn-workspace on
// loopback with generated tones as microphones:
//  1. join to first decoded remote audio: one person is in the huddle, a
//     second joins; the time until both have decoded the other's audio
//     (ten rounds, median and worst);
//  2. a two-person call with both cameras on (generated pictures, 640x360 at
//     24 fps, VP8 both ways) held for 20 s: CPU per client;
//  3. a four-person mesh held for MESH_SECONDS (argument; 60 by default):
//     the process's CPU per client and its resident memory every ten seconds.

#include "MemorySessionStore.h"
#include "TarnWaitFor.h"
#include "chat/TarnChatCalls.h"
#include "chat/huddle/NativeHuddle.h"
#include "chat/huddle/NativeHuddleTrack.h"
#include "service/TarnAPI.h"
#include "support/TestWorkspace.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

QTextStream out(stdout);

struct Person {
    MemorySessionStore store { QString() };
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<TarnAPI> api;
    QString id;
};

bool runUntil(const std::function<bool()> &done, int ms)
{
    QTimer tick;
    tick.start(5);
    QSignalSpy ticks(&tick, &QTimer::timeout);
    const QDeadlineTimer deadline(ms);
    while (!done() && !deadline.hasExpired())
        (void)ticks.wait(50);
    return done();
}

double cpuSeconds()
{
    rusage usage {};
    ::getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec)
        + double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

qint64 residentKiB()
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toLongLong();
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int meshSeconds = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 60;
    TestWorkspace workspace;
    if (!workspace.isRunning()) {
        out << "the workspace did not start: " << workspace.error() << Qt::endl;
        return 1;
    }
    QString error;
    const std::optional<Config> config
        = Config::fromOptions(workspace.url().toString(), workspace.certificatePath(), &error);
    if (!config) {
        out << error << Qt::endl;
        return 1;
    }
    QTemporaryDir folder;
    std::vector<std::unique_ptr<Person>> people;
    for (const QString &email : { u"maren@halvard.example"_s, u"tomas@halvard.example"_s, u"priya@halvard.example"_s,
             u"ada@halvard.example"_s }) {
        auto person = std::make_unique<Person>();
        const QString token = workspace.signIn(email);
        if (token.isEmpty()) {
            out << email << " could not sign in" << Qt::endl;
            return 1;
        }
        tarnWaitFor(person->store.save(token));
        person->settings = std::make_unique<QSettings>(folder.filePath(email), QSettings::IniFormat);
        person->api = std::make_unique<TarnAPI>(*config, person->store, person->settings.get());
        person->id = tarnWaitFor(person->api->refreshSession()).id;
        people.push_back(std::move(person));
    }
    QString room;
    for (const TarnRoom &candidate : tarnWaitFor(TarnChatCalls::rooms(*people[0]->api))) {
        if (candidate.name == "sales"_L1)
            room = candidate.id;
    }
    const NativeHuddleMedia media { .testSources = true, .playAudio = false };
    const QString missing = NativeHuddleMedia::missingPlugin();
    if (!missing.isEmpty()) {
        out << missing << Qt::endl;
        return 1;
    }

    QList<qint64> joins;
    for (int round = 0; round < 10; ++round) {
        NativeHuddle first(media);
        NativeHuddle second(media);
        tarnWaitFor(first.join(room, *people[0]->api));
        QElapsedTimer clock;
        clock.start();
        tarnWaitFor(second.join(room, *people[1]->api));
        const bool heard = runUntil(
            [&] { return first.decodedAudioFrom(people[1]->id) > 0 && second.decodedAudioFrom(people[0]->id) > 0; },
            10'000);
        joins.append(heard ? clock.elapsed() : -1);
        tarnWaitFor(second.leave());
        tarnWaitFor(first.leave());
    }
    std::sort(joins.begin(), joins.end());
    out << "join to first decoded remote audio, both ways (ms): median " << joins.at(joins.size() / 2) << ", worst "
        << joins.last() << ", best " << joins.first() << Qt::endl;

    {
        NativeHuddle first(media);
        NativeHuddle second(media);
        tarnWaitFor(first.join(room, *people[0]->api));
        tarnWaitFor(second.join(room, *people[1]->api));
        runUntil([&] { return first.decodedAudioFrom(people[1]->id) > 0; }, 10'000);
        tarnWaitFor(first.toggleCamera());
        tarnWaitFor(second.toggleCamera());
        const auto framesAt = [](const NativeHuddle &huddle) {
            const TarnHuddleState state = huddle.state().value_or(TarnHuddleState());
            qint64 frames = 0;
            for (const TarnHuddleParticipant &p : state.participants.value_or(QList<TarnHuddleParticipant>())) {
                if (const NativeHuddleTrack *track = huddle.videoTrack(p.conn, false))
                    frames += track->frames();
            }
            return frames;
        };
        const bool seen = runUntil([&] { return framesAt(first) > 0 && framesAt(second) > 0; }, 10'000);
        const qint64 framesBefore = framesAt(first);
        const double cpuBefore = cpuSeconds();
        runUntil([] { return false; }, 20'000);
        out << "two-person call, both cameras on" << (seen ? "" : " (video did NOT arrive)") << ": CPU per client "
            << QString::number(100.0 * (cpuSeconds() - cpuBefore) / 20.0 / 2.0, 'f', 1) << " % of one core, "
            << QString::number(double(framesAt(first) - framesBefore) / 20.0, 'f', 1) << " frames/s decoded"
            << Qt::endl;
        tarnWaitFor(second.leave());
        tarnWaitFor(first.leave());
    }

    std::vector<std::unique_ptr<NativeHuddle>> mesh;
    for (const auto &person : people) {
        mesh.push_back(std::make_unique<NativeHuddle>(media));
        tarnWaitFor(mesh.back()->join(room, *person->api));
    }
    const bool meshed = runUntil(
        [&] {
            for (size_t i = 0; i < mesh.size(); ++i) {
                for (size_t j = 0; j < mesh.size(); ++j) {
                    if (i != j && mesh[i]->decodedAudioFrom(people[j]->id) == 0)
                        return false;
                }
            }
            return true;
        },
        20'000);
    out << "four-person mesh " << (meshed ? "connected" : "did NOT connect") << "; holding it " << meshSeconds << " s"
        << Qt::endl;
    double cpu = cpuSeconds();
    QElapsedTimer wall;
    wall.start();
    for (int elapsed = 10; elapsed <= meshSeconds; elapsed += 10) {
        runUntil([] { return false; }, 10'000);
        const double now = cpuSeconds();
        out << "  " << elapsed << " s: CPU per client " << QString::number(100.0 * (now - cpu) / 10.0 / 4.0, 'f', 1)
            << " % of one core, resident " << residentKiB() / 1024 << " MiB" << Qt::endl;
        cpu = now;
    }
    for (const auto &huddle : mesh)
        tarnWaitFor(huddle->leave());
    return 0;
}
