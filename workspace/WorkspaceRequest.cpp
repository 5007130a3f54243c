#include "workspace/WorkspaceRequest.h"

#include <QHostAddress>
#include <QHttpServerRequest>
#include <QJsonDocument>
#include <QMetaEnum>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

QByteArray methodName(QHttpServerRequest::Method method)
{
    const char *key = QMetaEnum::fromType<QHttpServerRequest::Method>().valueToKey(static_cast<int>(method));
    return key ? QByteArray(key).toUpper() : "UNKNOWN"_ba;
}

} // namespace

WorkspaceRequest::WorkspaceRequest(const QHttpServerRequest &request)
    : WorkspaceRequest(methodName(request.method()),
        request.url().toString(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::FullyEncoded), request.headers(),
        request.body())
{
    m_remoteAddress = request.remoteAddress().toString();
}

WorkspaceRequest::WorkspaceRequest(
    QByteArray method, const QString &target, QList<QPair<QByteArray, QByteArray>> headers, QByteArray body)
    : m_method(std::move(method))
    , m_headers(std::move(headers))
    , m_body(std::move(body))
{
    const qsizetype mark = target.indexOf('?'_L1);
    m_path = mark < 0 ? target : target.left(mark);
    if (m_path.isEmpty())
        m_path = u"/"_s;
    m_queryString = mark < 0 ? QString() : target.mid(mark + 1);
    m_query.setQuery(m_queryString);
}

QString WorkspaceRequest::query(const QString &key) const
{
    return m_query.queryItemValue(key, QUrl::FullyDecoded);
}

std::optional<QByteArray> WorkspaceRequest::header(QByteArrayView name) const
{
    for (const auto &[key, value] : m_headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return std::nullopt;
}

QString WorkspaceRequest::sessionToken() const
{
    const std::optional<QByteArray> cookie = header("Cookie");
    if (!cookie)
        return {};
    for (const QByteArray &part : cookie->split(';')) {
        const QByteArray pair = part.trimmed();
        if (pair.startsWith("tarn_session="))
            return QString::fromLatin1(pair.mid(qsizetype(sizeof "tarn_session=") - 1));
    }
    return {};
}

std::optional<QJsonObject> WorkspaceRequest::jsonBody() const
{
    QJsonParseError error {};
    const QJsonDocument document = QJsonDocument::fromJson(m_body, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    return document.object();
}
