#pragma once

#include "workspace/WorkspaceStore.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QUrlQuery>

#include <optional>

class QHttpServerRequest;

// One request as the routes see it: a copy of what arrived (so that it
// outlives the HTTP library's request during a delayed or held answer) plus
// what the router found out: the path's captured segments and the session.
class WorkspaceRequest {
public:
    explicit WorkspaceRequest(const QHttpServerRequest &request);
    WorkspaceRequest(
        QByteArray method, const QString &target, QList<QPair<QByteArray, QByteArray>> headers, QByteArray body);

    [[nodiscard]] const QByteArray &method() const { return m_method; }
    // Percent-encoded, as sent; compared against route patterns segment by segment.
    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] const QString &queryString() const { return m_queryString; }
    [[nodiscard]] QString query(const QString &key) const;
    [[nodiscard]] bool hasQuery(const QString &key) const { return m_query.hasQueryItem(key); }
    [[nodiscard]] const QByteArray &body() const { return m_body; }

    // Header names compare without regard to case; nothing when absent.
    [[nodiscard]] std::optional<QByteArray> header(QByteArrayView name) const;
    // The session token from "Cookie: tarn_session=..."; empty when not sent.
    [[nodiscard]] QString sessionToken() const;
    // The body as a JSON object; nothing when it is not one.
    [[nodiscard]] std::optional<QJsonObject> jsonBody() const;

    // The peer's address as text ("127.0.0.1"); empty for a request made in code.
    [[nodiscard]] const QString &remoteAddress() const { return m_remoteAddress; }

    [[nodiscard]] bool isSafeMethod() const { return m_method == "GET" || m_method == "HEAD"; }

    // Captured ":name" segments of the matched route, decoded, in order.
    [[nodiscard]] const QStringList &arguments() const { return m_arguments; }
    void setArguments(QStringList arguments) { m_arguments = std::move(arguments); }

    // Set for routes that need a session; always present inside their handlers.
    [[nodiscard]] const WorkspaceStore::Session &session() const { return *m_session; }
    [[nodiscard]] bool hasSession() const { return m_session.has_value(); }
    void setSession(WorkspaceStore::Session session) { m_session = std::move(session); }

private:
    QByteArray m_method;
    QString m_path;
    QString m_queryString;
    QUrlQuery m_query;
    QList<QPair<QByteArray, QByteArray>> m_headers;
    QByteArray m_body;
    QString m_remoteAddress;
    QStringList m_arguments;
    std::optional<WorkspaceStore::Session> m_session;
};
