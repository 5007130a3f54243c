#include "workspace/WorkspaceFaults.h"

#include "workspace/WorkspaceLimits.h"
#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceResponder.h"

#include <QJsonObject>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

QJsonValue headerValue(const WorkspaceRequest &request, QByteArrayView name)
{
    const std::optional<QByteArray> value = request.header(name);
    return value ? QJsonValue(QString::fromUtf8(*value)) : QJsonValue(QJsonValue::Null);
}

// Paths are matched decoded, so "/api/rooms/a b" and "/api/rooms/a%20b" agree.
QString decoded(const QString &path)
{
    return QUrl::fromPercentEncoding(path.toUtf8());
}

} // namespace

std::optional<WorkspaceFaults::Fault> WorkspaceFaults::fromJSON(const QJsonObject &json, QString *error)
{
    const auto fail = [error](const QString &message) -> std::optional<Fault> {
        *error = message;
        return std::nullopt;
    };
    const auto wholeNumber = [&json](const QString &key, int fallback) -> std::optional<int> {
        const QJsonValue v = json.value(key);
        if (v.isUndefined() || v.isNull())
            return fallback;
        if (!v.isDouble() || v.toDouble() != double(v.toInt()) || v.toInt() < 0)
            return std::nullopt;
        return v.toInt();
    };

    Fault fault;
    const QString method = json.value(u"method"_s).toString();
    fault.path = json.value(u"path"_s).toString();
    if (method.isEmpty() || !fault.path.startsWith('/'_L1))
        return fail(u"A fault needs a method and a path beginning with /."_s);
    fault.method = method.toUpper().toLatin1();

    const std::optional<int> status = wholeNumber(u"status"_s, 0);
    const std::optional<int> delay = wholeNumber(u"delay_ms"_s, 0);
    const std::optional<int> times = wholeNumber(u"times"_s, 1);
    if (!status || !delay || !times)
        return fail(u"status, delay_ms and times must be whole numbers of at least 0."_s);
    fault.status = *status;
    fault.delayMs = *delay;
    fault.times = *times;
    fault.cut = json.value(u"cut"_s).toBool();
    if (fault.cut && (fault.status != 0 || fault.delayMs != 0))
        return fail(u"A cut fault has no status or delay of its own."_s);
    if (fault.status == 0 && fault.delayMs == 0 && !fault.cut)
        return fail(u"A fault needs a status, a delay to slow the real answer, or a cut."_s);
    if (fault.status != 0 && !WorkspaceResponder::canWrite(fault.status))
        return fail(u"Status %1 cannot be sent."_s.arg(fault.status));

    fault.contentType = json.value(u"content_type"_s).toString().toUtf8();
    fault.body = json.value(u"body"_s).toString().toUtf8();
    const QJsonValue location = json.value(u"location"_s);
    if (location.isString())
        fault.location = location.toString();
    return fault;
}

void WorkspaceFaults::add(Fault fault)
{
    m_faults.append(std::move(fault));
}

std::optional<WorkspaceFaults::Hit> WorkspaceFaults::take(QByteArrayView method, const QString &path)
{
    const QString wanted = decoded(path);
    for (qsizetype i = 0; i < m_faults.size(); ++i) {
        Fault &fault = m_faults[i];
        if (fault.method != method || decoded(fault.path) != wanted)
            continue;
        Hit hit { fault.delayMs, std::nullopt, fault.cut };
        if (fault.status != 0) {
            WorkspaceReply reply { fault.status, fault.contentType, fault.body, {} };
            if (fault.location)
                reply.headers.append({ "Location"_ba, fault.location->toUtf8() });
            hit.reply = std::move(reply);
        }
        if (fault.times > 0 && --fault.times == 0)
            m_faults.removeAt(i);
        return hit;
    }
    return std::nullopt;
}

void WorkspaceFaults::record(const WorkspaceRequest &request)
{
    m_requests.append(QJsonObject {
        { u"method"_s, QString::fromLatin1(request.method()) },
        { u"path"_s, request.path() },
        { u"query"_s, request.queryString() },
        { u"cookie"_s, !request.sessionToken().isEmpty() },
        { u"csrf"_s, headerValue(request, "X-CSRF-Token") },
        { u"accept"_s, headerValue(request, "Accept") },
        { u"content_type"_s, headerValue(request, "Content-Type") },
        { u"idempotency_key"_s, headerValue(request, "Idempotency-Key") },
        { u"body"_s, QString::fromUtf8(request.body().left(WorkspaceLimits::loggedBodyBytes)) },
    });
    if (m_requests.size() > WorkspaceLimits::loggedRequests)
        m_requests.removeFirst();
}
