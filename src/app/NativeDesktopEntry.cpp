#include "app/NativeDesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

// Quoting for the Exec key: the argument is quoted with backslash, quote,
// dollar and backtick escaped inside the quotes; then, as for every string
// value of a desktop file, each backslash is doubled.
QString execQuoted(const QString &path)
{
    QString escaped = path;
    for (const QChar c : { u'\\', u'"', u'$', u'`' })
        escaped.replace(c, u"\\"_s + c);
    QString quoted = u'"' + escaped + u'"';
    return quoted.replace(u"\\"_s, u"\\\\"_s);
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool isBuildTreeEntry(const QByteArray &contents)
{
    const QByteArray line = '\n' + QByteArray(NativeDesktopEntry::buildTreeKey) + '=';
    return contents.contains(line);
}

// Both tools are optional parts of a desktop; without them the entry still
// works once the desktop rescans its folder.
void announce(const QString &folder, bool makeDefault)
{
    QProcess::execute(u"update-desktop-database"_s, { folder });
    if (makeDefault) {
        QProcess::execute(u"xdg-mime"_s,
            { u"default"_s, QLatin1StringView(NativeDesktopEntry::fileName), u"x-scheme-handler/pilo-tarn"_s });
    }
}

} // namespace

QString NativeDesktopEntry::buildTreeContents(const QString &executable)
{
    const QString installed = QString::fromUtf8(readAll(u":/PiloTarn/pilo-tarn.desktop"_s));
    QStringList lines = installed.split(u'\n', Qt::SkipEmptyParts);
    for (QString &line : lines) {
        if (line.startsWith("Exec="_L1))
            line = u"Exec="_s + execQuoted(executable) + u" %u"_s;
    }
    lines.append(QLatin1StringView(buildTreeKey) + u"=true"_s);
    return lines.join(u'\n') + u'\n';
}

NativeDesktopEntry::Outcome NativeDesktopEntry::registerBuildTree(const QString &executable)
{
    const QString name = QLatin1StringView(fileName);
    const QStringList folders = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
    if (folder.isEmpty())
        return Outcome::failed;
    const QString path = folder + u'/' + name;
    const QByteArray existing = readAll(path);
    const bool ours = QFile::exists(path) && isBuildTreeEntry(existing);

    bool installed = QFile::exists(path) && !ours;
    for (const QString &other : folders)
        installed = installed || (other != folder && QFile::exists(other + u'/' + name));
    if (installed) {
        if (ours && QFile::remove(path))
            announce(folder, false);
        return Outcome::installedKept;
    }

    const QByteArray wanted = buildTreeContents(executable).toUtf8();
    if (existing == wanted)
        return Outcome::unchanged;
    QSaveFile file(path);
    if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly) || file.write(wanted) != wanted.size()
        || !file.commit())
        return Outcome::failed;
    announce(folder, true);
    return Outcome::written;
}
