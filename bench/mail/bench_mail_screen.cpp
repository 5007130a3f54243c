// The mail screen over a real local workspace, drawn offscreen (or under
// Xvfb). Prints what it measured:
//  - an inbox of 500 more threads paged to its end while scrolling down
//    200 px a frame: the longest frame (update request to frame swapped, by
//    the wall clock and by this thread's processor time) and the longest
//    any one event kept the window from drawing, target < 16 ms each;
//  - the seeded 2 MB newsletter: from the thread's answer to the first frame
//    showing its blocks (the parse runs on the pool), target < 100 ms, and
//    the frames while it appears and while it is scrolled to its end,
//    target < 16 ms each.
// Not a Google Benchmark program (it drives a window and a server), so
// `make bench` does not run it. Run:
//   scripts/with-keyring build-bench/bench/mail/bench_mail_screen
// BENCH_THREADS=N sends a smaller inbox.

#include "BenchTime.h"
#include "FrameClock.h"
#include "MemorySessionStore.h"
#include "TarnWaitFor.h"
#include "TimedApp.h"
#include "mail/NativeMailImageProvider.h"
#include "mail/NativeMailView.h"
#include "service/Config.h"
#include "service/TarnAPI.h"
#include "shell/design/NativeTheme.h"
#include "support/TestWorkspace.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
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
#include <functional>
#include <memory>

Q_IMPORT_QML_PLUGIN(PiloTarn_DesignPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_MailPlugin)

using namespace Qt::StringLiterals;

using BenchTime::ms;
using BenchTime::spin;

namespace {

constexpr int scrollStep = 200;
const QString newsletterSubject = u"The Glaze Letter: the year in glazes (archive issue)"_s;

QTextStream out(stdout);

// Another person of the company writes `count` mails to the owner, each
// delivered at once.
bool sendInbox(TestWorkspace &workspace, const QString &senderToken, int count)
{
    const QByteArray csrf = workspace.session(senderToken).value("csrf"_L1).toString().toUtf8();
    for (int i = 0; i < count; ++i) {
        const QJsonObject params { { u"to"_s, QJsonArray { u"maren@halvard.example"_s } },
            { u"subject"_s, u"Kiln log %1: firing notes for the week"_s.arg(i + 1) },
            { u"text"_s, u"Cone 6 reached at %1:40; the back shelf ran cooler again."_s.arg(8 + i % 10) },
            { u"idempotencyKey"_s, u"bench-%1"_s.arg(i) } };
        const TestWorkspace::Answer queued = workspace.send("POST", u"api/tarn-mail/rpc"_s, senderToken,
            QJsonObject { { u"method"_s, u"mail.send"_s }, { u"params"_s, params } }, { { "X-CSRF-Token"_ba, csrf } });
        const QString sendId = QJsonDocument::fromJson(queued.body).object().value("sendId"_L1).toString();
        const TestWorkspace::Answer due
            = workspace.send("POST", u"api/test/mail/due"_s, QString(), QJsonObject { { u"sendId"_s, sendId } });
        if (queued.status != 200 || due.status != 200) {
            out << "sending stopped at " << i << ": " << queued.body << due.body << Qt::endl;
            return false;
        }
    }
    return true;
}

// Whether any item drawn under `item` has this object name.
bool drawsNamed(const QQuickItem *item, const QString &name)
{
    const QList<QQuickItem *> children = item->childItems();
    return std::any_of(children.begin(), children.end(),
        [&name](const QQuickItem *child) { return child->objectName() == name || drawsNamed(child, name); });
}

// Scrolls `list` down a step a frame (drawing a frame every 16 ms) until
// `done`.
bool scrollDown(QQuickWindow &window, QQuickItem &list, const std::function<bool()> &done)
{
    QTimer keepDrawing;
    keepDrawing.setInterval(16);
    QObject::connect(&keepDrawing, &QTimer::timeout, &window, [&window] { window.update(); });
    keepDrawing.start();
    const QMetaObject::Connection stepping = QObject::connect(&window, &QQuickWindow::frameSwapped, &list, [&list] {
        const qreal end = list.property("contentHeight").toReal() + list.property("originY").toReal() - list.height();
        const qreal y = list.property("contentY").toReal();
        if (y < end)
            list.setProperty("contentY", std::min(end, y + scrollStep));
    });
    const bool reached = spin(done, 600'000);
    QObject::disconnect(stepping);
    return reached;
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    TimedApp app(argc, argv);
    const int inboxSize
        = qEnvironmentVariableIsSet("BENCH_THREADS") ? qEnvironmentVariableIntValue("BENCH_THREADS") : 500;
    QStandardPaths::setTestModeEnabled(true);

    TestWorkspace workspace;
    if (!workspace.isRunning()) {
        out << "the workspace did not start: " << workspace.error() << Qt::endl;
        return 1;
    }
    const QString token = workspace.signIn(u"maren@halvard.example"_s);
    const QString sender = workspace.signIn(u"tomas@halvard.example"_s);
    QString error;
    const std::optional<Config> config
        = Config::fromOptions(workspace.url().toString(), workspace.certificatePath(), &error);
    if (token.isEmpty() || sender.isEmpty() || !config) {
        out << "no session: " << error << Qt::endl;
        return 1;
    }
    QElapsedTimer seeding;
    seeding.start();
    if (!sendInbox(workspace, sender, inboxSize))
        return 1;
    out << "sent " << inboxSize << " threads in " << seeding.elapsed() / 1000.0 << " s" << Qt::endl;

    QTemporaryDir folder;
    QSettings settings(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    MemorySessionStore store(token);
    TarnAPI api(*config, store, &settings);
    tarnWaitFor(api.refreshSession());

    NativeMailView mail(api);
    QQmlEngine engine;
    NativeTheme theme(settings);
    theme.attach(engine);
    engine.addImageProvider(u"mail"_s, new NativeMailImageProvider(mail.images()));
    QQuickWindow window;
    window.resize(1100, 760);
    window.show();
    FrameClock frames(window);

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Mail\nMailScreen { width: 1100; height: 760 }", QUrl());
    bool listed = false;
    QObject::connect(&mail, &NativeMailView::listLoaded, [&listed] { listed = true; });
    const std::unique_ptr<QObject> screen(
        component.createWithInitialProperties({ { u"mail"_s, QVariant::fromValue(&mail) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    if (!item) {
        out << "the screen was not made: " << component.errorString() << Qt::endl;
        return 1;
    }
    item->setParentItem(window.contentItem());
    auto *threads = item->findChild<QQuickItem *>(u"mailThreads"_s);
    if (!spin([&listed] { return listed; }, 20'000) || !threads) {
        out << "the inbox was not listed" << Qt::endl;
        return 1;
    }

    // The inbox, paged to its end while scrolling.
    frames.reset();
    app.resetLongest();
    app.watching = true;
    QElapsedTimer paging;
    paging.start();
    const bool paged = scrollDown(window, *threads,
        [&] { return !mail.hasMore() && !mail.loadingMore() && threads->property("atYEnd").toBool(); });
    app.watching = false;
    out << (paged ? "scrolled the inbox to its end" : "scrolling did NOT reach the inbox's end") << " in "
        << paging.elapsed() / 1000.0 << " s: " << mail.threads()->rowCount() << " threads, " << frames.summary() << "; "
        << app.longestText() << Qt::endl;

    // The newsletter: its answer, its parse on the pool, its first frame.
    const NativeMailThreadModel &rows = *mail.threads();
    QString newsletter;
    for (const QString &id : rows.ids())
        if (rows.card(id)->subject == newsletterSubject)
            newsletter = id;
    auto *messages = item->findChild<QQuickItem *>(u"mailMessages"_s);
    if (newsletter.isEmpty() || !messages) {
        out << "the newsletter is not listed" << Qt::endl;
        return 1;
    }
    QElapsedTimer clock;
    qint64 answered = -1;
    qint64 parsed = -1;
    qint64 painted = -1;
    const QMetaObject::Connection answer = QObject::connect(&mail, &NativeMailView::threadChanged, [&] {
        if (answered < 0 && !mail.threadLoading() && mail.messages()->rowCount() > 0)
            answered = clock.nsecsElapsed();
    });
    const QMetaObject::Connection parse = QObject::connect(&mail, &NativeMailView::threadParsed, [&] {
        if (parsed < 0)
            parsed = clock.nsecsElapsed();
    });
    const QMetaObject::Connection paint = QObject::connect(&window, &QQuickWindow::frameSwapped, [&] {
        if (parsed >= 0 && painted < 0 && drawsNamed(messages, u"mailBlockText"_s))
            painted = clock.nsecsElapsed();
    });
    frames.reset();
    app.resetLongest();
    app.watching = true;
    clock.start();
    mail.select(newsletter);
    QTimer keepDrawing;
    keepDrawing.setInterval(16);
    QObject::connect(&keepDrawing, &QTimer::timeout, &window, [&window] { window.update(); });
    keepDrawing.start();
    const bool shown = spin([&painted] { return painted >= 0; }, 30'000);
    // Until the rest of its blocks have come in and its images arrived: its
    // height still for half a second.
    qreal height = -1;
    QElapsedTimer still;
    still.start();
    spin(
        [&] {
            const qreal now = messages->property("contentHeight").toReal();
            if (now != height) {
                height = now;
                still.restart();
            }
            return still.elapsed() > 500;
        },
        30'000);
    const qint64 complete = clock.nsecsElapsed() - 500'000'000;
    keepDrawing.stop();
    app.watching = false;
    QObject::disconnect(answer);
    QObject::disconnect(parse);
    QObject::disconnect(paint);
    if (!shown || answered < 0) {
        out << "the newsletter was not shown: answered " << answered << ", parsed " << parsed << Qt::endl;
        return 1;
    }
    out << "newsletter: answered " << ms(answered) << " ms after opening, parsed " << ms(parsed - answered)
        << " ms after its answer, first frame with its blocks " << ms(painted - answered)
        << " ms after its answer, all of it " << ms(complete - answered)
        << " ms after its answer; while it appears: " << frames.summary() << "; " << app.longestText() << Qt::endl;

    frames.reset();
    app.resetLongest();
    app.watching = true;
    QElapsedTimer scrolling;
    scrolling.start();
    const bool ended = scrollDown(window, *messages, [messages] { return messages->property("atYEnd").toBool(); });
    app.watching = false;
    out << (ended ? "scrolled the newsletter to its end" : "scrolling did NOT reach the newsletter's end") << " in "
        << scrolling.elapsed() / 1000.0 << " s (" << messages->property("contentHeight").toReal()
        << " px): " << frames.summary() << "; " << app.longestText() << Qt::endl;
    return 0;
}
