#include "service/TarnAPI.h"

#include "service/TarnErrorBody.h"
#include "service/TarnOK.h"
#include "service/TarnSessionStore.h"
#include "service/TarnTransport.h"

#include <QPointer>
#include <QSettings>
#include <QUuid>

using namespace Qt::StringLiterals;

TarnAPI::TarnAPI(Config config, TarnSessionStore &store, QSettings *preferences, QObject *parent)
    : QObject(parent)
    , m_config(std::move(config))
    , m_store(store)
    , m_preferences(preferences)
    , m_transport(std::make_unique<TarnTransport>(m_config, TarnTransport::Redirects::toService))
{
}

TarnAPI::~TarnAPI() = default;

std::optional<QString> TarnAPI::okResponseError(const QByteArray &data, bool errorFieldIsData)
{
    if (errorFieldIsData)
        return std::nullopt;
    const std::optional<QString> message = TarnErrorBody::messageIn(data);
    if (message && !message->isEmpty())
        return message;
    return std::nullopt;
}

// Steps shared by JSON requests and downloads: the stored token, the CSRF
// token, the host check, then an answer that must come from the same place
// and must not say the session is over.
QCoro::Task<TarnReply> TarnAPI::sendChecked(TarnPath path, TarnMethod method, std::optional<QByteArray> json)
{
    const QPointer<TarnAPI> self(this);
    const std::optional<QString> token = co_await m_store.token();
    if (!self)
        throw TarnAPIError::signedOut();
    if (!token) {
        setSession(std::nullopt);
        throw TarnAPIError::signedOut();
    }

    TarnTransport::Request request { m_config.resolve(path.toString()), method, {}, std::move(json) };
    if (!m_config.isServiceURL(request.url))
        throw TarnAPIError::invalidResponse(); // never sent anywhere else
    request.headers = { { "Accept", "application/json" }, { "Cookie", "tarn_session=" + token->toUtf8() } };
    if (method != TarnMethod::Get) {
        const QByteArray csrf = m_session ? m_session->csrf.toUtf8() : QByteArray();
        if (csrf.isEmpty())
            throw TarnAPIError::signedOut();
        request.headers.append({ "X-CSRF-Token", csrf });
        // One key per call: when the network layer sends the change again on
        // its own (a reused connection closed before the answer), the service
        // recognises it and answers without carrying it out twice.
        request.headers.append({ "Idempotency-Key", QUuid::createUuid().toByteArray(QUuid::WithoutBraces) });
    }

    const QString requestedPath = request.url.path();
    const TarnReply reply = co_await m_transport->send(std::move(request));
    if (!self)
        throw TarnAPIError::signedOut();

    if (reply.status == 0 || !m_config.isServiceURL(reply.url))
        throw TarnAPIError::invalidResponse();
    // A 401, an answer from another path (the service sent the call to its
    // web sign-in) or any HTML page means the session is no longer good.
    if (reply.status == 401 || reply.url.path() != requestedPath || reply.mediaType == "text/html"_L1) {
        co_await signOutLocally();
        throw TarnAPIError::signedOut();
    }
    co_return TarnReply(reply);
}

QCoro::Task<TarnReply> TarnAPI::send(TarnPath path, TarnMethod method, std::optional<QByteArray> json)
{
    const TarnReply reply = co_await sendChecked(std::move(path), method, std::move(json));
    if (!reply.succeeded()) {
        const std::optional<QString> message = TarnErrorBody::messageIn(reply.body);
        throw TarnAPIError::server(
            message.value_or(u"Pilo Tarn returned HTTP "_s + QString::number(reply.status) + u'.'));
    }
    co_return TarnReply(reply);
}

QCoro::Task<QByteArray> TarnAPI::downloadFile(TarnPath path, qint64 maxBytes)
{
    std::optional<QByteArray> noBody;
    const TarnReply reply = co_await sendChecked(std::move(path), TarnMethod::Get, std::move(noBody));
    if (!reply.succeeded())
        throw TarnAPIError::server(TarnErrorBody::messageIn(reply.body).value_or(u"Could not download this file."_s));
    if (reply.body.size() > maxBytes)
        throw TarnAPIError::server(u"This file is too large to open here."_s);
    co_return QByteArray(reply.body);
}

QCoro::Task<TarnSession> TarnAPI::refreshSession()
{
    const QPointer<TarnAPI> self(this);
    TarnPath path(u"/api/session"_s);
    const TarnSession session = co_await request<TarnSession>(std::move(path));
    if (!self)
        throw TarnAPIError::signedOut();
    if (session.text_size && m_preferences)
        m_preferences->setValue(u"tarn.textSize"_s, *session.text_size);
    setSession(session);
    co_return TarnSession(session);
}

QCoro::Task<> TarnAPI::logout()
{
    const QPointer<TarnAPI> self(this);
    std::exception_ptr failure;
    try {
        TarnPath path(u"/api/logout"_s);
        co_await request<TarnOK>(std::move(path), TarnMethod::Post);
    } catch (...) {
        failure = std::current_exception();
    }
    if (!self)
        co_return;
    co_await m_store.clearEmbeddedSignIn();
    co_await m_store.clear();
    if (!self)
        co_return;
    setSession(std::nullopt);
    if (failure)
        std::rethrow_exception(failure);
}

QCoro::Task<> TarnAPI::signOutLocally()
{
    const QPointer<TarnAPI> self(this);
    co_await m_store.clear();
    if (!self)
        co_return;
    setSession(std::nullopt);
    Q_EMIT signedOut();
}

void TarnAPI::setSession(std::optional<TarnSession> session)
{
    if (m_session == session)
        return;
    m_session = std::move(session);
    Q_EMIT sessionChanged();
}
