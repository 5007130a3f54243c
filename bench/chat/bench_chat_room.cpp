// The chat screen over a room of 10,000 messages in a real local workspace,
// drawn offscreen (or under Xvfb). Prints what it measured:
//  - the newest page: from the answer's bytes to the first frame showing it
//    (decoding and laying out the page, timed apart, plus the model's
//    insert to the frame swapped after it), target < 100 ms;
//  - paging back to the first message while scrolling up 600 px a frame:
//    the longest frame (update request to frame swapped) and the longest
//    any one event kept the window from drawing, target < 16 ms each;
//  - RSS of the screen holding all 10,000 messages above the signed-in
//    empty window, target < 60 MB;
//  - RSS growth over refreshes run back to back, reported per 75 (ten
//    minutes of the screen's 8 s loop), target < 2 MB.
// Not a Google Benchmark program (it drives a window and a server), so
// `make bench` does not run it. Run:
//   scripts/with-keyring build-bench/bench/chat/bench_chat_room
// (for a private session bus; the session itself is held in memory).
// BENCH_MESSAGES=N seeds a smaller room; BENCH_PROGRESS=1 prints where the
// timeline is every 2 s while paging.

#include "BenchTime.h"
#include "FrameClock.h"
#include "MemorySessionStore.h"
#include "TarnWaitFor.h"
#include "TimedApp.h"
#include "chat/NativeChatView.h"
#include "chat/TarnChatCalls.h"
#include "service/Config.h"
#include "service/TarnAPI.h"
#include "shell/TarnNavigation.h"
#include "shell/design/NativeTheme.h"
#include "support/TestWorkspace.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>
#include <QtQml/QQmlExtensionPlugin>

#include <algorithm>
#include <memory>

#include <malloc.h>

Q_IMPORT_QML_PLUGIN(PiloTarn_DesignPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_ChatPlugin)

using namespace Qt::StringLiterals;

using BenchTime::ms;
using BenchTime::spin;

namespace {

// A quick flick: 12,000 px a second at 60 frames a second.
constexpr int scrollStep = 200;
constexpr int refreshesPerTenMinutes = 75;
constexpr int refreshRounds = 4;

QTextStream out(stdout);

// Resident memory, after the heap has handed back what it can, so that
// freed memory the allocator keeps does not read as growth.
double rssMiB()
{
    malloc_trim(0);
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    TimedApp app(argc, argv);
    // BENCH_MESSAGES makes a smaller room, for trying the program out.
    const int roomSize
        = qEnvironmentVariableIsSet("BENCH_MESSAGES") ? qEnvironmentVariableIntValue("BENCH_MESSAGES") : 10'000;
    QStandardPaths::setTestModeEnabled(true);

    TestWorkspace workspace;
    if (!workspace.isRunning()) {
        out << "the workspace did not start: " << workspace.error() << Qt::endl;
        return 1;
    }
    const QString token = workspace.signIn(u"maren@halvard.example"_s);
    QString error;
    const std::optional<Config> config
        = Config::fromOptions(workspace.url().toString(), workspace.certificatePath(), &error);
    QTemporaryDir folder;
    QSettings settings(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    MemorySessionStore store(token);
    if (token.isEmpty() || !config) {
        out << "no session: " << error << Qt::endl;
        return 1;
    }
    TarnAPI api(*config, store, &settings);
    tarnWaitFor(api.refreshSession());

    // The room: three people talking, bodies of one to a few lines.
    const QString room
        = tarnWaitFor(TarnChatCalls::createChannel(api, u"bench-10k"_s, false, { u"p-tomas"_s, u"p-priya"_s })).id;
    const QStringList people { u"p-maren"_s, u"p-tomas"_s, u"p-priya"_s };
    QElapsedTimer seeding;
    seeding.start();
    for (int i = 0; i < roomSize; ++i) {
        QString body = u"Message %1 about the plan for the week"_s.arg(i + 1);
        if (i % 5 == 0)
            body += u", with a longer second thought that wraps onto another line in a window of usual width"_s;
        if (i % 11 == 0)
            body += u"\nand a line of its own"_s;
        const TestWorkspace::Answer posted = workspace.send("POST", u"api/test/rooms/%1/messages"_s.arg(room),
            QString(), QJsonObject { { u"user_id"_s, people.at((i / 3) % 3) }, { u"body"_s, body } });
        if (posted.status != 200) {
            out << "seeding stopped at " << i << ": " << posted.body << Qt::endl;
            return 1;
        }
    }
    out << "seeded " << roomSize << " messages in " << seeding.elapsed() / 1000.0 << " s" << Qt::endl;
    settings.setValue(NativeChatView::lastRoomKey + u"p-maren"_s, room);

    // The newest page's decoding and layout, timed apart from the network.
    const TestWorkspace::Answer raw = workspace.send("GET", u"api/rooms/%1/messages"_s.arg(room), token, {});
    QElapsedTimer decoding;
    decoding.start();
    const TarnMessagePage page = TarnJSON::decode<TarnMessagePage>(raw.body);
    const QList<ChatTimelineRow> rows
        = NativeChatTimelineModel::rowsOf(page.messages, std::nullopt, QDateTime::currentDateTime());
    const qint64 decodeNs = decoding.nsecsElapsed();

    // The signed-in empty window, as near as this program gets to it: the
    // design system's controls drawn (a sidebar's rows, a search field, an
    // empty screen).
    QQmlEngine engine;
    NativeTheme theme(settings);
    theme.attach(engine);
    QQuickWindow window;
    window.resize(1000, 700);
    window.show();
    QQmlComponent shell(&engine);
    shell.setData("import QtQuick\nimport QtQuick.Controls\nimport PiloTarn.Design\nPane { width: 1000; height: 700\n"
                  "Column { SearchField {} ListRow { text: \"Messages\" } ActionButton { text: \"New\" } "
                  "EmptyState { symbol: \"message\"; title: \"Nothing here\" } } }",
        QUrl());
    const std::unique_ptr<QObject> shellItem(shell.create());
    if (auto *drawn = qobject_cast<QQuickItem *>(shellItem.get()))
        drawn->setParentItem(window.contentItem());
    else
        out << "the empty window was not drawn: " << shell.errorString() << Qt::endl;
    FrameClock frames(window);
    int swapped = 0;
    QObject::connect(&window, &QQuickWindow::frameSwapped, [&swapped] { ++swapped; });
    window.update();
    spin([&swapped] { return swapped > 2; }, 10'000);
    const double emptyRss = rssMiB();

    // Opening the room: first as the screen opens (its delegates' types are
    // made then), then again after another room.
    TarnNavigation navigation(&settings);
    NativeChatView chat(api, navigation, settings);
    const auto timeShown = [&chat, &window](const std::function<void()> &open) -> std::optional<qint64> {
        QElapsedTimer clock;
        clock.start();
        qint64 inserting = -1;
        qint64 shown = -1;
        const QMetaObject::Connection inserted
            = QObject::connect(chat.timeline(), &QAbstractItemModel::rowsAboutToBeInserted, [&] {
                  if (inserting < 0)
                      inserting = clock.nsecsElapsed();
              });
        const QMetaObject::Connection drawn = QObject::connect(&window, &QQuickWindow::frameSwapped, [&] {
            if (inserting >= 0 && shown < 0)
                shown = clock.nsecsElapsed();
        });
        open();
        const bool done = spin([&shown] { return shown >= 0; }, 20'000);
        QObject::disconnect(inserted);
        QObject::disconnect(drawn);
        return done ? std::optional<qint64>(shown - inserting) : std::nullopt;
    };
    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Chat\nChatScreen { width: 1000; height: 700 }", QUrl());
    std::unique_ptr<QObject> screen;
    QQuickItem *item = nullptr;
    const std::optional<qint64> cold = timeShown([&] {
        screen.reset(component.createWithInitialProperties({ { u"chat"_s, QVariant::fromValue(&chat) } }));
        item = qobject_cast<QQuickItem *>(screen.get());
        if (item)
            item->setParentItem(window.contentItem());
    });
    if (!item || !cold) {
        out << "the newest page was not shown " << component.errorString() << Qt::endl;
        return 1;
    }
    spin([&chat] { return !chat.loading(); }, 20'000);
    const QList<ChatRoomRow> &listed = chat.rooms()->rows();
    const auto other
        = std::find_if(listed.begin(), listed.end(), [&room](const ChatRoomRow &r) { return r.room.id != room; });
    const QString otherRoom = other == listed.end() ? QString() : other->room.id;
    const std::optional<qint64> away = timeShown([&] { chat.selectRoom(otherRoom); });
    const std::optional<qint64> warm = timeShown([&] { chat.selectRoom(room); });
    if (!away || !warm) {
        out << "switching rooms showed nothing" << Qt::endl;
        return 1;
    }
    for (const auto &[label, insertToFrame] :
        { std::pair { "opening the screen", *cold }, { "switching back", *warm } })
        out << "newest page, " << label << ": shown " << ms(decodeNs) + ms(insertToFrame) << " ms after its answer ("
            << ms(decodeNs) << " ms decoding and laying out " << rows.size() << " rows, " << ms(insertToFrame)
            << " ms from the model's insert to the frame)" << Qt::endl;

    // Paging back to the first message.
    auto *list = item->findChild<QQuickItem *>(u"chatTimeline"_s);
    if (!list) {
        out << "no timeline" << Qt::endl;
        return 1;
    }
    frames.reset();
    QElapsedTimer paging;
    paging.start();
    QTimer keepDrawing;
    keepDrawing.setInterval(16);
    QObject::connect(&keepDrawing, &QTimer::timeout, &window, [&window] { window.update(); });
    keepDrawing.start();
    QObject::connect(&window, &QQuickWindow::frameSwapped, list, [list] {
        const qreal top = list->property("originY").toReal();
        const qreal y = list->property("contentY").toReal();
        // A reader scrolling up is no longer following the newest row.
        list->setProperty("following", false);
        if (y > top)
            list->setProperty("contentY", std::max(top, y - scrollStep));
    });
    app.watching = true;
    QTimer progress;
    QObject::connect(&progress, &QTimer::timeout, [&] {
        out << "  " << chat.timeline()->rowCount() << " rows, contentY " << list->property("contentY").toReal()
            << ", originY " << list->property("originY").toReal() << ", height "
            << list->property("contentHeight").toReal()
            << (list->property("atYBeginning").toBool() ? ", at the top" : "")
            << (list->property("following").toBool() ? ", following" : "") << (chat.loadingOlder() ? ", loading" : "")
            << Qt::endl;
    });
    if (qEnvironmentVariableIsSet("BENCH_PROGRESS"))
        progress.start(2000);
    const bool allPaged = spin(
        [&] {
            return !chat.hasMore() && !chat.loadingOlder()
                && list->property("contentY").toReal() <= list->property("originY").toReal();
        },
        600'000);
    keepDrawing.stop();
    app.watching = false;
    out << (allPaged ? "paged back to the first message" : "paging back did NOT reach the first message") << " in "
        << paging.elapsed() / 1000.0 << " s: " << chat.timeline()->rowCount() << " rows, " << frames.summary() << "; "
        << app.longestText() << Qt::endl;

    const double fullRss = rssMiB();
    out << "RSS: empty window " << emptyRss << " MiB, with the room's " << chat.timeline()->rowCount() << " messages "
        << fullRss << " MiB: the screen costs " << fullRss - emptyRss << " MiB" << Qt::endl;

    // Refreshes back to back instead of every 8 s.
    for (int round = 1; round <= refreshRounds; ++round) {
        const double before = rssMiB();
        for (int i = 0; i < refreshesPerTenMinutes; ++i) {
            bool done = false;
            const QMetaObject::Connection heard
                = QObject::connect(&chat, &NativeChatView::refreshed, [&done] { done = true; });
            chat.refresh();
            spin([&done] { return done; }, 20'000);
            QObject::disconnect(heard);
        }
        out << "refreshes " << (round - 1) * refreshesPerTenMinutes + 1 << "-" << round * refreshesPerTenMinutes
            << ": RSS " << before << " -> " << rssMiB() << " MiB (" << rssMiB() - before << ")" << Qt::endl;
    }
    screen.reset();
    return 0;
}
