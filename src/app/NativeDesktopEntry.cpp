#include "app/NativeDesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

// Quoting for the Exec key: arguments with reserved characters are quoted
// and backslash, quote, dollar and backtick escaped inside the quotes.
QString execQuoted(const QString &path)
{
    QString escaped = path;
    for (const QChar c : { u'\\', u'"', u'$', u'`' })
        escaped.replace(c, u"\\"_s + c);
    return u'"' + escaped + u'"';
}

} // namespace

QString NativeDesktopEntry::contents(const QString &executable)
{
    return u"[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Pilo Tarn\n"
           "Comment=Your company's Tarn workspace\n"
           "Exec="_s
        + execQuoted(executable)
        + u" %u\n"
          "Icon=pilo-tarn\n"
          "Terminal=false\n"
          "Categories=Office;\n"
          "MimeType=x-scheme-handler/pilo-tarn;\n"
          "StartupWMClass=pilo-tarn\n"_s;
}

bool NativeDesktopEntry::install(const QString &executable)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
    if (folder.isEmpty() || !QDir().mkpath(folder))
        return false;
    const QString path = folder + u'/' + QLatin1StringView(fileName);
    const QByteArray wanted = contents(executable).toUtf8();

    QFile existing(path);
    if (existing.open(QIODevice::ReadOnly) && existing.readAll() == wanted)
        return true;

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(wanted) != wanted.size() || !file.commit())
        return false;
    // Both tools are optional parts of a desktop; without them the entry
    // still works once the desktop rescans its folder.
    QProcess::startDetached(u"update-desktop-database"_s, { folder });
    QProcess::startDetached(
        u"xdg-mime"_s, { u"default"_s, QLatin1StringView(fileName), u"x-scheme-handler/pilo-tarn"_s });
    return true;
}
