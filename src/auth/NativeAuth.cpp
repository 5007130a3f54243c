#include "auth/NativeAuth.h"

#include "auth/AuthExchange.h"
#include "auth/NativeAuthError.h"
#include "auth/NativePlatformText.h"
#include "auth/NativeProofKey.h"
#include "auth/NoAuthRedirects.h"
#include "service/TarnAPIError.h"
#include "service/TarnDeleteLater.h"
#include "service/TarnJSONObject.h"
#include "service/TarnSessionStore.h"

#include <QCoroNetworkReply>
#include <QCoroSignal>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

struct NativeAuth::Wait
{
    QUrl address;
    bool ended = false;
    std::optional<QUrl> callback;
};

namespace {

QString queryValue(const QUrl &url, const QString &name)
{
    return QUrlQuery(url).queryItemValue(name, QUrl::FullyDecoded);
}

template<typename T>
T decodeOrThrow(const QByteArray &data)
{
    try {
        return TarnJSON::decode<T>(data);
    } catch (const TarnDecodeError &) {
        throw TarnAPIError::invalidResponse();
    }
}

} // namespace

NativeAuth::NativeAuth(Config config, TarnSessionStore &store, Browser browser, QObject *parent)
    : QObject(parent)
    , m_config(std::move(config))
    , m_store(store)
    , m_browser(std::move(browser))
{
}

NativeAuth::~NativeAuth() = default;

QString NativeAuth::pendingAddress() const
{
    return m_wait ? m_wait->address.toString(QUrl::FullyEncoded) : QString();
}

bool NativeAuth::deliver(const QUrl &callback)
{
    if (!m_wait || callback.scheme() != QLatin1StringView(callbackScheme))
        return false;
    endWait(callback);
    return true;
}

void NativeAuth::cancel()
{
    if (m_wait)
        endWait(std::nullopt);
}

void NativeAuth::endWait(std::optional<QUrl> callback)
{
    const std::shared_ptr<Wait> wait = std::exchange(m_wait, nullptr);
    wait->ended = true;
    wait->callback = std::move(callback);
    Q_EMIT waitingChanged();
    Q_EMIT waitEnded();
}

QCoro::Task<QUrl> NativeAuth::browse(QUrl address, QString notStarted, QString notFinished)
{
    cancel(); // a newer sign-in replaces one still waiting
    auto wait = std::make_shared<Wait>();
    wait->address = address;
    m_wait = wait;
    Q_EMIT waitingChanged();

    if (!m_browser(address)) {
        m_wait.reset();
        Q_EMIT waitingChanged();
        throw NativeAuthError::failed(notStarted);
    }
    const QPointer<NativeAuth> self(this);
    while (!wait->ended && self)
        co_await qCoro(this, &NativeAuth::waitEnded);
    if (!wait->callback)
        throw NativeAuthError::failed(notFinished);
    co_return *wait->callback;
}

QCoro::Task<QString> NativeAuth::signIn()
{
    const std::optional<NativeProofKey> key = NativeProofKey::make();
    if (!key)
        throw NativeAuthError::failed(NativePlatformText::get(NativePlatformText::Id::secureRandomFailed));

    QUrl start = m_config.resolve(u"api/mobile/start"_s);
    if (!m_config.isServiceURL(start))
        throw NativeAuthError::failed(u"Could not start sign-in."_s);
    QUrlQuery query;
    query.addQueryItem(u"challenge"_s, key->challenge);
    start.setQuery(query);

    QString notStarted = u"Could not open Google sign-in."_s;
    QString notFinished = u"Google sign-in did not finish. Try again."_s;
    const QUrl callback = co_await browse(std::move(start), std::move(notStarted), std::move(notFinished));

    if (callback.scheme() != QLatin1StringView(callbackScheme) || callback.host() != "auth"_L1)
        throw NativeAuthError::failed(u"Sign-in returned an unexpected address."_s);
    if (const QString error = queryValue(callback, u"error"_s); !error.isEmpty())
        throw NativeAuthError::failed(error);
    QString code = queryValue(callback, u"code"_s);
    if (code.isEmpty())
        throw NativeAuthError::failed(u"Sign-in expired. Start again."_s);

    QString verifier = key->verifier;
    co_return co_await exchange(std::move(code), std::move(verifier));
}

QCoro::Task<QString> NativeAuth::exchange(QString code, QString verifier)
{
    const QUrl url = m_config.resolve(u"api/mobile/exchange"_s);
    if (!m_config.isServiceURL(url))
        throw NativeAuthError::failed(u"Could not start sign-in."_s);

    // A transport of its own, gone when the exchange ends: no cookies kept,
    // no redirect followed, nothing shared with the session's requests. It is
    // deleted from the event loop, because this coroutine resumes inside its
    // reply's `finished` signal.
    const TarnLaterPointer<QNetworkAccessManager> transport(new QNetworkAccessManager);
    transport->setCookieJar(nullptr);
    NoAuthRedirects::apply(*transport);

    QNetworkRequest request(url);
    request.setTransferTimeout(60'000);
    request.setSslConfiguration(m_config.sslConfiguration());
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
    NoAuthRedirects::apply(request);
    const QByteArray body = QJsonDocument(QJsonObject{{u"code"_s, code}, {u"verifier"_s, verifier}})
                                .toJson(QJsonDocument::Compact);

    QNetworkReply *reply = transport->post(request, body); // owned by the transport
    co_await reply;

    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!status.isValid() && reply->error() != QNetworkReply::NoError)
        throw TarnAPIError::transport(reply->errorString());
    if (!status.isValid() || !m_config.isServiceURL(reply->url()))
        throw NativeAuthError::failed(u"Sign-in returned an invalid response."_s);

    const QByteArray data = reply->readAll();
    if (status.toInt() != 200) {
        const AuthFailure failure = [&] {
            try {
                return TarnJSON::decode<AuthFailure>(data);
            } catch (const TarnDecodeError &) {
                return AuthFailure{};
            }
        }();
        throw NativeAuthError::failed(failure.error.value_or(u"Sign-in expired. Start again."_s));
    }
    const AuthExchange answer = decodeOrThrow<AuthExchange>(data);
    QString token = answer.cookie.value;
    co_await m_store.save(std::move(token));
    co_return answer.user.name;
}

QCoro::Task<> NativeAuth::connectGoogle(QUrl start, QString service)
{
    if (!m_config.isServiceURL(start) || start.path() != "/api/native/google/start"_L1)
        throw NativeAuthError::failed(u"Invalid Google connection request."_s);

    QString notStarted = u"Could not open Google connection."_s;
    QString notFinished = u"Google connection did not finish. Try again."_s;
    const QUrl callback = co_await browse(start, std::move(notStarted), std::move(notFinished));

    if (callback.scheme() != QLatin1StringView(callbackScheme) || callback.host() != "google-connected"_L1)
        throw NativeAuthError::failed(u"Google returned an unexpected address."_s);
    if (const QString error = queryValue(callback, u"error"_s); !error.isEmpty())
        throw NativeAuthError::failed(error);
    if (queryValue(callback, u"service"_s) != service)
        throw NativeAuthError::failed(u"Google connection was not confirmed. Try again."_s);
}
