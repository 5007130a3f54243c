#include "workspace/WorkspaceReply.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

using namespace Qt::StringLiterals;

WorkspaceReply WorkspaceReply::json(const QJsonObject &object, int status)
{
    return { status, "application/json"_ba, QJsonDocument(object).toJson(QJsonDocument::Compact), {} };
}

WorkspaceReply WorkspaceReply::json(const QJsonArray &array, int status)
{
    return { status, "application/json"_ba, QJsonDocument(array).toJson(QJsonDocument::Compact), {} };
}

WorkspaceReply WorkspaceReply::error(int status, const QString &message)
{
    return json(QJsonObject { { u"error"_s, message } }, status);
}

WorkspaceReply WorkspaceReply::ok()
{
    return json(QJsonObject { { u"ok"_s, true } });
}

WorkspaceReply WorkspaceReply::html(const QString &page, int status)
{
    return { status, "text/html; charset=utf-8"_ba, page.toUtf8(), {} };
}

WorkspaceReply WorkspaceReply::page(const QString &title, const QString &content, int status)
{
    static const auto frame
        = QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>%1</title>"
                         "<style>body{font-family:sans-serif;max-width:36em;margin:3em auto;color:#222}"
                         "li{margin:.6em 0}a{color:#1d5fa8}.note{color:#666}</style></head>"
                         "<body><h1>%1</h1>\n%2\n</body></html>\n");
    return html(frame.arg(title.toHtmlEscaped(), content), status);
}

WorkspaceReply WorkspaceReply::redirect(const QString &location)
{
    WorkspaceReply reply { 302, "text/plain"_ba, {}, {} };
    reply.headers.append({ "Location"_ba, location.toUtf8() });
    return reply;
}

QString WorkspaceReply::withQuery(const QString &base, const QList<QPair<QString, QString>> &items)
{
    QString url = base;
    QChar separator = '?'_L1;
    for (const auto &[key, value] : items) {
        url += separator + QString::fromLatin1(QUrl::toPercentEncoding(key)) + '='_L1
            + QString::fromLatin1(QUrl::toPercentEncoding(value));
        separator = '&'_L1;
    }
    return url;
}

WorkspaceReply WorkspaceReply::notFound()
{
    return error(404, u"Not found."_s);
}

WorkspaceReply WorkspaceReply::signInRequired()
{
    return error(401, u"Sign in to continue."_s);
}

WorkspaceReply WorkspaceReply::csrfRefused()
{
    return error(403, u"The request was refused (CSRF check failed)."_s);
}
