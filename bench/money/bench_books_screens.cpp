// The books screens against the demo company on a local workspace, end to
// end over HTTPS:
// - how soon the Dashboard draws once the books overview has arrived (budget
//   200 ms): the page is opened afresh each round; the clock starts when the
//   overview reaches the Dashboard (it then asks for the twelve months'
//   reports) and stops at the first frame drawn with the chart;
// - a 500-row statement imported from its file (budget 300 ms): read,
//   checked, sent and stored with the workspace's duplicate check, new rows
//   each round, then the same file again (all duplicates).
// Not a Google Benchmark program: it drives a window and a workspace.
// Run: build-bench/bench/money/bench_books_screens
#include "MemorySessionStore.h"
#include "TarnWaitFor.h"
#include "money/NativeBankImport.h"
#include "money/NativeBooksView.h"
#include "service/Config.h"
#include "service/TarnAPI.h"
#include "shell/design/NativeTheme.h"
#include "support/TestWorkspace.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>
#include <QtQml/QQmlExtensionPlugin>

#include <algorithm>
#include <memory>

Q_IMPORT_QML_PLUGIN(PiloTarn_DesignPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_MoneyPlugin)

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 15;

struct Round {
    qint64 reportsIn = -1;
    qint64 drawn = -1;
};

// Milliseconds from choosing the file to the import's answer shown, or -1.
qint64 importFile(NativeBankImport &statement, const QString &path)
{
    QElapsedTimer clock;
    clock.start();
    QEventLoop loop;
    QObject::connect(&statement, &NativeBankImport::changed, &loop, [&] {
        if (!statement.importing() && !statement.result().isEmpty())
            loop.quit();
    });
    statement.choose(QUrl::fromLocalFile(path), u"acct-1000"_s, u"Operating checking"_s);
    if (!statement.ready())
        return -1;
    statement.send();
    QTimer::singleShot(10'000, &loop, &QEventLoop::quit);
    loop.exec();
    return statement.result().isEmpty() ? -1 : clock.elapsed();
}

// Each run's statement of 500 new rows, imported, then imported again.
void importStatements(NativeBankImport &statement, const QTemporaryDir &folder, QTextStream &out)
{
    QList<qint64> fresh;
    QList<qint64> again;
    QString lastResult;
    for (int run = 0; run < 5; ++run) {
        const QString path = folder.filePath(u"statement-%1.csv"_s.arg(run));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return;
        QString csv = u"Date,Description,Amount,Reference\n"_s;
        for (int i = 0; i < 500; ++i)
            csv += u"2026-03-%1,Card sale %2 of run %3,%4.25,R%2\n"_s.arg(1 + i % 28, 2, 10, QChar(u'0'))
                       .arg(i)
                       .arg(run)
                       .arg(10 + i);
        file.write(csv.toUtf8());
        file.close();
        fresh.append(importFile(statement, path));
        again.append(importFile(statement, path));
        lastResult = statement.result();
    }
    std::ranges::sort(fresh);
    std::ranges::sort(again);
    out << "A 500-row statement imported end to end (budget 300 ms), " << fresh.size() << " runs:\n"
        << "  new rows: median " << fresh.at(fresh.size() / 2) << " ms, worst " << fresh.constLast() << " ms\n"
        << "  the same file again: median " << again.at(again.size() / 2) << " ms, worst " << again.constLast()
        << " ms (" << lastResult << ")" << Qt::endl;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QApplication application(argc, argv);
    QTextStream out(stdout);

    TestWorkspace workspace;
    if (!workspace.isRunning()) {
        out << workspace.error() << Qt::endl;
        return 1;
    }
    QString error;
    const std::optional<Config> config
        = Config::fromOptions(workspace.url().toString(), workspace.certificatePath(), &error);
    QTemporaryDir folder;
    QSettings settings(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    // The session for this run only: no keyring in a benchmark.
    MemorySessionStore store(workspace.signIn(u"maren@halvard.example"_s));
    TarnAPI api(*config, store, &settings);
    tarnWaitFor(api.refreshSession());

    NativeTheme theme(settings);
    QQmlEngine engine;
    theme.attach(engine);
    QQuickWindow window;
    window.resize(1100, 800);
    window.show();
    NativeBooksView view(api);
    NativeBooksDashboard &dashboard = *view.dashboard();

    QList<Round> results;
    for (int round = 0; round < rounds; ++round) {
        Round result;
        QElapsedTimer clock;
        QEventLoop loop;
        const QMetaObject::Connection arrived = QObject::connect(&dashboard, &NativeBooksDashboard::changed, [&] {
            if (dashboard.loading() && !clock.isValid())
                clock.start();
            else if (!dashboard.loading() && clock.isValid() && result.reportsIn < 0)
                result.reportsIn = clock.elapsed();
        });
        const QMetaObject::Connection drawn = QObject::connect(&window, &QQuickWindow::frameSwapped, [&] {
            if (result.reportsIn >= 0 && result.drawn < 0) {
                result.drawn = clock.elapsed();
                loop.quit();
            }
        });
        QQmlComponent component(&engine);
        component.setData("import PiloTarn.Money\nBooksDashboard { width: 1100; height: 800 }", QUrl());
        const std::unique_ptr<QQuickItem> page(qobject_cast<QQuickItem *>(
            component.createWithInitialProperties({ { u"view"_s, QVariant::fromValue(&view) } })));
        if (!page) {
            out << component.errorString() << Qt::endl;
            return 1;
        }
        page->setParentItem(window.contentItem());
        QTimer::singleShot(10'000, &loop, &QEventLoop::quit);
        loop.exec();
        QObject::disconnect(arrived);
        QObject::disconnect(drawn);
        if (result.drawn < 0 || !view.error().isEmpty()) {
            out << "round " << round << " did not draw: " << view.error() << Qt::endl;
            return 1;
        }
        results.append(result);
    }

    // The first round also warms the QML caches and the connection; it is
    // reported on its own.
    const Round first = results.takeFirst();
    std::ranges::sort(results, {}, &Round::drawn);
    const Round median = results.at(results.size() / 2);
    const Round worst = results.constLast();
    out << "Dashboard drawn after the overview arrived (budget 200 ms), " << results.size() << " rounds:\n"
        << "  first round: reports in " << first.reportsIn << " ms, drawn " << first.drawn << " ms\n"
        << "  median: reports in " << median.reportsIn << " ms, drawn " << median.drawn << " ms\n"
        << "  worst: reports in " << worst.reportsIn << " ms, drawn " << worst.drawn << " ms" << Qt::endl;
    importStatements(*view.statementImport(), folder, out);
    return 0;
}
