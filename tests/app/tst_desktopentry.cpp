// Registering a build tree as the handler of pilo-tarn: addresses, in real
// folders named the way the desktop names them (XDG_DATA_HOME, XDG_DATA_DIRS).
#include "app/NativeDesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using Outcome = NativeDesktopEntry::Outcome;

namespace {

struct EntryRow {
    const char *name;
    bool systemEntry; // an installed package's, in XDG_DATA_DIRS
    QByteArray personsEntry; // what the person's folder holds first; "ours" for this build's, "old" for another's
    Outcome outcome;
    QByteArray personsEntryAfter; // as above, empty when there is none
};

const QByteArray installedEntry = "[Desktop Entry]\nType=Application\nName=Pilo Tarn\nExec=pilo-tarn %u\n";

} // namespace

class TestDesktopEntry : public QObject {
    Q_OBJECT

private slots:
    void registerBuildTree_data();
    void registerBuildTree();
    void entryIsValid();

private:
    static void write(const QString &path, const QByteArray &contents);
};

void TestDesktopEntry::write(const QString &path, const QByteArray &contents)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(contents);
}

void TestDesktopEntry::registerBuildTree_data()
{
    QTest::addColumn<EntryRow>("row");
    const EntryRow rows[] = {
        { "nothing yet", false, {}, Outcome::written, "ours" },
        { "already ours", false, "ours", Outcome::unchanged, "ours" },
        { "another build tree's", false, "old", Outcome::written, "ours" },
        { "installed in the person's folder", false, installedEntry, Outcome::installedKept, installedEntry },
        { "installed for everyone", true, {}, Outcome::installedKept, {} },
        { "ours would hide the installed one", true, "old", Outcome::installedKept, {} },
    };
    for (const EntryRow &row : rows)
        QTest::addRow("%s", row.name) << row;
}

void TestDesktopEntry::registerBuildTree()
{
    QFETCH(EntryRow, row);
    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", home.filePath(u"data"_s).toUtf8());
    qputenv("XDG_DATA_DIRS", home.filePath(u"system"_s).toUtf8());
    qputenv("XDG_CONFIG_HOME", home.filePath(u"config"_s).toUtf8());
    const QString executable = home.filePath(u"build/src/app/pilo-tarn"_s);
    const QString personal = home.filePath(u"data/applications/pilo-tarn.desktop"_s);
    const auto contents = [&](const QByteArray &name) {
        if (name == "ours")
            return NativeDesktopEntry::buildTreeContents(executable).toUtf8();
        if (name == "old")
            return NativeDesktopEntry::buildTreeContents(u"/elsewhere/pilo-tarn"_s).toUtf8();
        return name;
    };
    if (row.systemEntry)
        write(home.filePath(u"system/applications/pilo-tarn.desktop"_s), installedEntry);
    if (!row.personsEntry.isEmpty())
        write(personal, contents(row.personsEntry));

    QCOMPARE(NativeDesktopEntry::registerBuildTree(executable), row.outcome);
    QFile after(personal);
    QCOMPARE(after.open(QIODevice::ReadOnly) ? after.readAll() : QByteArray(), contents(row.personsEntryAfter));
}

void TestDesktopEntry::entryIsValid()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"pilo-tarn.desktop"_s);
    const QString contents = NativeDesktopEntry::buildTreeContents(u"/home/a \"b\"/build/pilo-tarn"_s);
    write(path, contents.toUtf8());
    // Exec quoting escapes the quote; the desktop file's string rule then doubles that backslash.
    QVERIFY(contents.contains(uR"(Exec="/home/a \\"b\\"/build/pilo-tarn" %u)"_s + u'\n'));
    QVERIFY(contents.contains("MimeType=x-scheme-handler/pilo-tarn;\n"_L1));
    QProcess validate;
    validate.start(u"desktop-file-validate"_s, { path });
    QVERIFY(validate.waitForFinished(20000));
    QCOMPARE(validate.readAllStandardOutput(), QByteArray());
    QCOMPARE(validate.exitCode(), 0);
}

QTEST_GUILESS_MAIN(TestDesktopEntry)
#include "tst_desktopentry.moc"
