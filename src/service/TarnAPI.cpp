#include "service/TarnAPI.h"

#include "service/TarnDeleteLater.h"
#include "service/TarnErrorBody.h"
#include "service/TarnOK.h"
#include "service/TarnSessionStore.h"

#include <QCoroNetworkReply>
#include <QCoroSignal>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

constexpr int requestTimeoutMs = 60'000;

QString mediaTypeOf(const QNetworkReply &reply)
{
    const QString header = reply.header(QNetworkRequest::ContentTypeHeader).toString();
    return header.section(u';', 0, 0).trimmed().toLower();
}

// A request as the service expects it: JSON wanted, cookies handled by hand.
QNetworkRequest serviceRequest(const QUrl &url, const Config &config)
{
    QNetworkRequest request(url);
    request.setTransferTimeout(requestTimeoutMs);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::PreferNetwork);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setSslConfiguration(config.sslConfiguration());
    return request;
}

} // namespace

TarnAPI::TarnAPI(Config config, TarnSessionStore &store, QSettings *preferences, QObject *parent)
    : QObject(parent)
    , m_config(std::move(config))
    , m_store(store)
    , m_preferences(preferences)
    , m_redirects(m_config)
    , m_transport(std::make_unique<QNetworkAccessManager>())
{
    // No jar: the platform never keeps or sends a cookie on its own; the one
    // session cookie is written by hand on every request.
    m_transport->setCookieJar(nullptr);
    m_transport->setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
}

TarnAPI::~TarnAPI() = default;

std::optional<QString> TarnAPI::okResponseError(const QByteArray &data, bool errorFieldIsData)
{
    if (errorFieldIsData)
        return std::nullopt;
    try {
        const TarnErrorBody body = TarnJSON::decode<TarnErrorBody>(data);
        if (body.error && !body.error->isEmpty())
            return body.error;
    } catch (const TarnDecodeError &) {
        // Not an error envelope; the record decoder will judge the answer.
    }
    return std::nullopt;
}

QCoro::Task<TarnAPI::Answer> TarnAPI::send(QNetworkRequest request, QByteArray method, QByteArray body)
{
    for (int hop = 0;; ++hop) {
        TarnLaterPointer<QNetworkReply> reply(m_transport->sendCustomRequest(request, method, body));
        if (!reply->isFinished())
            co_await qCoro(reply.get(), &QNetworkReply::finished);

        const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        if (!status.isValid()) {
            if (reply->error() != QNetworkReply::NoError)
                throw TarnAPIError::transport(reply->errorString());
            throw TarnAPIError::invalidResponse();
        }
        if (hop < TarnRedirectPolicy::maximumHops) {
            if (const std::optional<QUrl> target = m_redirects.follow(*reply)) {
                const int code = status.toInt();
                // As browsers do: 303, and 301/302 after a POST, continue as a GET without a body.
                if (code == 303 || ((code == 301 || code == 302) && method == "POST")) {
                    method = "GET";
                    body.clear();
                    request.setHeader(QNetworkRequest::ContentTypeHeader, QVariant());
                    request.setRawHeader("X-CSRF-Token", QByteArray());
                }
                request.setUrl(*target);
                continue;
            }
        }
        co_return Answer{status.toInt(), reply->url(), reply->readAll(), mediaTypeOf(*reply)};
    }
}

// Steps shared by JSON requests and downloads: send, then refuse answers
// that come from elsewhere or say the session is over.
QCoro::Task<TarnAPI::Answer> TarnAPI::sendChecked(QUrl url, QString token, QByteArray method, QByteArray csrf,
                                                  std::optional<QByteArray> json)
{
    QNetworkRequest request = serviceRequest(url, m_config);
    request.setRawHeader("Accept", "application/json");
    request.setRawHeader("Cookie", "tarn_session=" + token.toUtf8());
    if (!csrf.isEmpty())
        request.setRawHeader("X-CSRF-Token", csrf);
    if (json)
        request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);

    const QPointer<TarnAPI> self(this);
    QByteArray body = json.value_or(QByteArray());
    Answer answer = co_await send(std::move(request), std::move(method), std::move(body));
    if (!self)
        throw TarnAPIError::signedOut();

    if (!m_config.isServiceURL(answer.url))
        throw TarnAPIError::invalidResponse();
    if (answer.status == 401) {
        co_await signOutLocally();
        throw TarnAPIError::signedOut();
    }
    // An answer from another path (the service sent the call to its web
    // sign-in) or any HTML page means the session is no longer good.
    if (answer.url.path() != url.path() || answer.mediaType == "text/html"_L1) {
        co_await signOutLocally();
        throw TarnAPIError::signedOut();
    }
    co_return answer;
}

// The token every request starts from; without one nothing is sent and the
// session is over.
QCoro::Task<QString> TarnAPI::storedToken()
{
    const QPointer<TarnAPI> self(this);
    std::optional<QString> token = co_await m_store.token();
    if (!self)
        throw TarnAPIError::signedOut();
    if (!token) {
        setSession(std::nullopt);
        throw TarnAPIError::signedOut();
    }
    co_return std::move(*token);
}

QUrl TarnAPI::serviceURL(const QString &path) const
{
    QUrl url = m_config.resolve(path);
    if (!m_config.isServiceURL(url))
        throw TarnAPIError::invalidResponse(); // never sent anywhere else
    return url;
}

QCoro::Task<QByteArray> TarnAPI::requestData(QString path, QByteArray method, std::optional<QJsonObject> body,
                                             bool errorFieldIsData)
{
    QString token = co_await storedToken();
    const QByteArray csrf = m_session ? m_session->csrf.toUtf8() : QByteArray();
    QUrl url = serviceURL(path);

    const bool needsCSRF = method != "GET" && method != "HEAD";
    if (needsCSRF && csrf.isEmpty())
        throw TarnAPIError::signedOut();

    std::optional<QByteArray> json;
    if (body)
        json = QJsonDocument(*body).toJson(QJsonDocument::Compact);

    QByteArray sentCSRF = needsCSRF ? csrf : QByteArray();
    const Answer answer = co_await sendChecked(std::move(url), std::move(token), std::move(method),
                                               std::move(sentCSRF), std::move(json));

    if (answer.status < 200 || answer.status > 299) {
        try {
            const TarnErrorBody error = TarnJSON::decode<TarnErrorBody>(answer.body);
            if (error.error)
                throw TarnAPIError::server(*error.error);
        } catch (const TarnDecodeError &) {
        }
        throw TarnAPIError::server(u"Pilo Tarn returned HTTP "_s + QString::number(answer.status) + u'.');
    }
    if (const std::optional<QString> message = okResponseError(answer.body, errorFieldIsData))
        throw TarnAPIError::server(*message);
    co_return answer.body;
}

QCoro::Task<QByteArray> TarnAPI::downloadFile(QString path, qint64 maxBytes)
{
    QString token = co_await storedToken();
    QUrl url = serviceURL(path);
    QByteArray method = "GET";
    QByteArray noCSRF;
    std::optional<QByteArray> noBody;
    const Answer answer = co_await sendChecked(std::move(url), std::move(token), std::move(method), std::move(noCSRF),
                                               std::move(noBody));
    if (answer.status < 200 || answer.status > 299) {
        std::optional<QString> message;
        try {
            message = TarnJSON::decode<TarnErrorBody>(answer.body).error;
        } catch (const TarnDecodeError &) {
        }
        throw TarnAPIError::server(message.value_or(u"Could not download this file."_s));
    }
    if (answer.body.size() > maxBytes)
        throw TarnAPIError::server(u"This file is too large to open here."_s);
    co_return answer.body;
}

QCoro::Task<TarnSession> TarnAPI::refreshSession()
{
    const QPointer<TarnAPI> self(this);
    QString path = u"/api/session"_s;
    TarnSession session = co_await request<TarnSession>(std::move(path));
    if (!self)
        throw TarnAPIError::signedOut();
    if (session.text_size && m_preferences)
        m_preferences->setValue(u"tarn.textSize"_s, *session.text_size);
    setSession(session);
    co_return session;
}

QCoro::Task<> TarnAPI::logout()
{
    const QPointer<TarnAPI> self(this);
    std::exception_ptr failure;
    try {
        QString path = u"/api/logout"_s;
        QByteArray method = "POST";
        co_await request<TarnOK>(std::move(path), std::move(method));
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
