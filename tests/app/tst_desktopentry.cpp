// Registering a build tree as the handler of pilo-tarn: addresses, in real
// folders named as the desktop names them (XDG_DATA_HOME, XDG_DATA_DIRS).
#include "app/NativeDesktopEntry.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using Outcome = NativeDesktopEntry::Outcome;

namespace {

struct EntryRow {
    const char *name;
    bool installedForEveryone; // an entry in XDG_DATA_DIRS
    QByteArray before; // the person's entry: "ours", "old" (another build tree's), an installed one, or none
    Outcome outcome;
    QByteArray after;
};

const QByteArray installed = "[Desktop Entry]\nType=Application\nName=Pilo Tarn\nExec=pilo-tarn %u\n";

} // namespace

class TestDesktopEntry : public QObject {
    Q_OBJECT

private slots:
    void registerBuildTree_data()
    {
        QTest::addColumn<EntryRow>("row");
        const EntryRow rows[] = {
            { "nothing yet", false, {}, Outcome::written, "ours" },
            { "already ours", false, "ours", Outcome::unchanged, "ours" },
            { "another build tree's", false, "old", Outcome::written, "ours" },
            { "installed in the person's folder", false, installed, Outcome::installedKept, installed },
            { "installed for everyone", true, {}, Outcome::installedKept, {} },
            { "ours would hide the installed one", true, "old", Outcome::installedKept, {} },
        };
        for (const EntryRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }

    void registerBuildTree()
    {
        QFETCH(EntryRow, row);
        const QTemporaryDir home;
        qputenv("XDG_DATA_HOME", home.filePath(u"data"_s).toUtf8());
        qputenv("XDG_DATA_DIRS", home.filePath(u"system"_s).toUtf8());
        qputenv("XDG_CONFIG_HOME", home.filePath(u"config"_s).toUtf8());
        // A path with a space and a quote, which the Exec line must quote and escape.
        const QString executable = home.filePath(u"my \"build\"/pilo-tarn"_s);
        const QString personal = home.filePath(u"data/applications/pilo-tarn.desktop"_s);
        const auto read = [](const QString &path) {
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        const auto write = [](const QString &path, const QByteArray &text) {
            QFile file(path);
            return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) && file.write(text) > 0;
        };
        const auto contents = [&](const QByteArray &name) {
            if (name == "ours" || name == "old")
                return NativeDesktopEntry::buildTreeContents(name == "ours" ? executable : u"/old/pilo-tarn"_s)
                    .toUtf8();
            return name;
        };
        QVERIFY(
            !row.installedForEveryone || write(home.filePath(u"system/applications/pilo-tarn.desktop"_s), installed));
        QVERIFY(row.before.isEmpty() || write(personal, contents(row.before)));

        QCOMPARE(NativeDesktopEntry::registerBuildTree(executable), row.outcome);
        QCOMPARE(read(personal), contents(row.after));
        const QByteArray exec = "Exec=\"" + home.path().toUtf8() + "/my \\\\\"build\\\\\"/pilo-tarn\" %u\n";
        QVERIFY(row.after != "ours" || read(personal).contains(exec));
    }
};

QTEST_GUILESS_MAIN(TestDesktopEntry)
#include "tst_desktopentry.moc"
