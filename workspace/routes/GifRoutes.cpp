#include "workspace/routes/GifRoutes.h"

#include "workspace/WorkspaceGif.h"
#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;

// The most a search lists, and the largest file served (the client's limit).
constexpr qsizetype maxResults = 24;
constexpr qint64 maxGifBytes = 5 * 1024 * 1024;

QStringList wordsOf(const QString &text)
{
    static const QRegularExpression separators(u"[^\\p{L}\\p{N}]+"_s);
    return text.toLower().split(separators, Qt::SkipEmptyParts);
}

// "cats" finds "happy-cat.gif" and "cat" finds "cats.gif": one word starts
// with the other.
bool matches(const QStringList &query, const QStringList &name)
{
    return std::all_of(query.begin(), query.end(), [&name](const QString &q) {
        return std::any_of(
            name.begin(), name.end(), [&q](const QString &w) { return w.startsWith(q) || q.startsWith(w); });
    });
}

// The folder's GIFs small enough to serve, by name; the id is the name
// without ".gif", so a request can only name a file of the listing.
QFileInfoList gifsIn(const QString &folder)
{
    QFileInfoList out;
    const QFileInfoList files
        = QDir(folder).entryInfoList({ u"*.gif"_s, u"*.GIF"_s }, QDir::Files | QDir::Readable, QDir::Name);
    for (const QFileInfo &file : files) {
        if (file.size() <= maxGifBytes)
            out.append(file);
    }
    return out;
}

WorkspaceReply serve(const QString &folder, const QString &id)
{
    const QFileInfoList files = gifsIn(folder);
    const auto named
        = std::find_if(files.begin(), files.end(), [&id](const QFileInfo &f) { return f.completeBaseName() == id; });
    QFile file(named == files.end() ? QString() : named->filePath());
    if (!file.open(QIODevice::ReadOnly))
        return WorkspaceReply::error(404, u"No such GIF."_s);
    return WorkspaceReply { 200, "image/gif"_ba, file.readAll(), {} };
}

} // namespace

namespace GifRoutes {

void add(WorkspaceServer &server)
{
    WorkspaceRouter &router = server.router();
    const QString folder = server.options().gifFolder;
    router.add("GET", u"/api/gifs"_s, Access::Session, [folder](const WorkspaceRequest &request) {
        if (folder.isEmpty())
            return WorkspaceReply::json(QJsonObject { { u"configured"_s, false }, { u"results"_s, QJsonArray() },
                { u"message"_s, u"GIFs are not set up for this workspace."_s } });
        const QString text = request.query(u"q"_s).trimmed();
        const QStringList query = wordsOf(text);
        // Text without a word in it finds nothing rather than everything.
        const bool wordless = !text.isEmpty() && query.isEmpty();
        QJsonArray results;
        for (const QFileInfo &file : gifsIn(folder)) {
            const QStringList name = wordsOf(file.completeBaseName());
            if (wordless || results.size() >= maxResults || !matches(query, name))
                continue;
            QFile gif(file.filePath());
            const std::optional<QSize> size
                = gif.open(QIODevice::ReadOnly) ? WorkspaceGif::size(gif.read(10)) : std::nullopt;
            if (!size)
                continue;
            QString title = name.join(u' ');
            title[0] = title.at(0).toUpper();
            results.append(QJsonObject { { u"id"_s, file.completeBaseName() }, { u"title"_s, title },
                { u"width"_s, size->width() }, { u"height"_s, size->height() } });
        }
        QJsonObject answer { { u"configured"_s, true }, { u"results"_s, results } };
        if (results.isEmpty())
            answer.insert(u"message"_s, u"No GIFs match “%1”."_s.arg(request.query(u"q"_s)));
        return WorkspaceReply::json(answer);
    });
    // The folder's GIFs are small: the preview is the file itself.
    for (const QString &part : { u"preview"_s, u"file"_s }) {
        router.add("GET", u"/api/gifs/:id/"_s + part, Access::Session,
            [folder](const WorkspaceRequest &request) { return serve(folder, request.arguments().at(0)); });
    }
}

} // namespace GifRoutes
