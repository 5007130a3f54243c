#include "auth/NativeAuth.h"

#include "auth/AuthExchange.h"
#include "auth/AuthExchangeRequest.h"
#include "auth/NativeAuthError.h"
#include "auth/NativePlatformText.h"
#include "auth/NativeProofKey.h"
#include "service/TarnDeleteLater.h"
#include "service/TarnErrorBody.h"
#include "service/TarnRequestBody.h"
#include "service/TarnSessionStore.h"
#include "service/TarnTransport.h"

#include <QCoroSignal>
#include <QPointer>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

struct NativeAuth::Wait {
    QUrl address;
    bool ended = false;
    std::optional<QUrl> callback;
};

namespace {

QString queryValue(const QUrl &url, const QString &name)
{
    return QUrlQuery(url).queryItemValue(name, QUrl::FullyDecoded);
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
    TarnTransport::Request request;
    request.url = m_config.resolve(u"api/mobile/exchange"_s);
    if (!m_config.isServiceURL(request.url))
        throw NativeAuthError::failed(u"Could not start sign-in."_s);
    request.method = TarnMethod::Post;
    const AuthExchangeRequest body { std::move(code), std::move(verifier) };
    request.json = TarnJSON::encode(body);

    // A connection pool of its own, gone when the exchange ends: no session
    // cookie, no CSRF token, no redirect followed, nothing shared with the
    // session's requests. It is deleted from the event loop, because this
    // coroutine resumes inside its reply's `finished` signal.
    const TarnLaterPointer<TarnTransport> transport(new TarnTransport(m_config, TarnTransport::Redirects::never));
    const QPointer<NativeAuth> self(this);
    const TarnReply reply = co_await transport->send(std::move(request));
    if (!self)
        throw NativeAuthError::failed(u"Google sign-in did not finish. Try again."_s);

    if (reply.status == 0 || !m_config.isServiceURL(reply.url))
        throw NativeAuthError::failed(u"Sign-in returned an invalid response."_s);
    if (reply.status != 200) {
        throw NativeAuthError::failed(
            TarnErrorBody::messageIn(reply.body).value_or(u"Sign-in expired. Start again."_s));
    }
    const AuthExchange answer = reply.decode<AuthExchange>();
    QString token = answer.cookie.value;
    co_await m_store.save(std::move(token));
    co_return QString(answer.user.name);
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
