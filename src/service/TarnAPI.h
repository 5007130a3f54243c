#pragma once

#include "service/Config.h"
#include "service/TarnMethod.h"
#include "service/TarnPath.h"
#include "service/TarnReply.h"
#include "service/TarnRequestBody.h"
#include "service/TarnSession.h"

#include <QByteArray>
#include <QCoroFuture>
#include <QCoroTask>
#include <QObject>
#include <QPromise>
#include <QString>
#include <QThreadPool>

#include <memory>
#include <optional>
#include <type_traits>
#include <variant>

class QSettings;
class TarnSessionStore;
class TarnTransport;

// A successful answer whose "error" field is data, not a failure, says so in
// its record: `static constexpr bool errorFieldIsData = true;`. No record of
// the service needs it today; the rule lives with the answer's shape, never
// with a call.
template <typename T> constexpr bool tarnErrorFieldIsData = requires
{
    requires T::errorFieldIsData;
};

// The one client of the workspace service, shared by every screen. Each
// endpoint method (in its feature's folder) builds a TarnPath, a method and
// a body record and calls `request`, which attaches the session cookie and
// CSRF token, keeps traffic on the service's host over https, maps failures
// onto TarnAPIError and decodes the answer into the record the caller names.
// It also publishes the signed-in session; a request that finds the session
// dead clears it, which sends the window back to sign-in.
class TarnAPI : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool signedIn READ signedIn NOTIFY sessionChanged)

public:
    // `preferences` receives "tarn.textSize" when a session carries one; may be null.
    TarnAPI(Config config, TarnSessionStore &store, QSettings *preferences, QObject *parent = nullptr);
    ~TarnAPI() override;

    [[nodiscard]] const std::optional<TarnSession> &session() const { return m_session; }
    [[nodiscard]] bool signedIn() const { return m_session.has_value(); }
    [[nodiscard]] const Config &config() const { return m_config; }
    [[nodiscard]] TarnSessionStore &sessionStore() const { return m_store; }

    // One service call without a body, decoded as T. Arguments are taken by
    // value and read before the first suspension, so endpoint methods may
    // pass temporaries and return the task without awaiting it.
    template <typename T> QCoro::Task<T> request(TarnPath path, TarnMethod method = TarnMethod::Get)
    {
        std::optional<QByteArray> noBody;
        TarnReply reply = co_await send(std::move(path), method, std::move(noBody));
        co_return co_await read<T>(std::move(reply));
    }

    // One service call with a JSON body, decoded as T.
    template <typename T, TarnRequestBody Body> QCoro::Task<T> request(TarnPath path, TarnMethod method, Body body)
    {
        std::optional<QByteArray> json = TarnJSON::encode(body);
        TarnReply reply = co_await send(std::move(path), method, std::move(json));
        co_return co_await read<T>(std::move(reply));
    }

    // Answers at least this large are read on the thread pool, so that a
    // long mail thread or a year of books never stalls the window's drawing.
    static constexpr qsizetype largeAnswerBytes = 32 * 1024;

    // The failure message inside a successful answer: its non-empty "error".
    [[nodiscard]] static std::optional<QString> okResponseError(const QByteArray &data, bool errorFieldIsData);

    // Raw bytes (attachments, files) under the same credentials and host rules.
    QCoro::Task<QByteArray> downloadFile(TarnPath path, qint64 maxBytes);

    // Loads and publishes the session of the stored token.
    QCoro::Task<TarnSession> refreshSession();

    // Ends the session at the service, then always forgets it here, also
    // when the service could not be told (the error is then rethrown).
    QCoro::Task<> logout();

Q_SIGNALS:
    void sessionChanged();
    // The service said the session is over; the token is already gone.
    void signedOut();

private:
    // A call answered with a success status; its body is not read yet.
    QCoro::Task<TarnReply> send(TarnPath path, TarnMethod method, std::optional<QByteArray> json);

    // A successful answer's "error" (unless T says it is data), then T.
    template <typename T> static T readNow(const TarnReply &reply)
    {
        if (const std::optional<QString> message = okResponseError(reply.body, tarnErrorFieldIsData<T>))
            throw TarnAPIError::server(*message);
        return reply.decode<T>();
    }

    template <typename T> static QCoro::Task<T> read(TarnReply reply)
    {
        if constexpr (!std::is_void_v<T>) {
            if (reply.body.size() >= largeAnswerBytes) {
                // A failure crosses back as a value: the pool's future keeps
                // only exceptions of its own kind.
                using Read = std::variant<T, TarnAPIError>;
                auto promise = std::make_shared<QPromise<Read>>();
                QFuture<Read> future = promise->future();
                promise->start();
                QThreadPool::globalInstance()->start([promise, reply = std::move(reply)] {
                    try {
                        promise->addResult(Read(readNow<T>(reply)));
                    } catch (const TarnAPIError &error) {
                        promise->addResult(Read(error));
                    }
                    promise->finish();
                });
                Read answer = co_await future;
                if (const TarnAPIError *error = std::get_if<TarnAPIError>(&answer))
                    throw *error;
                co_return std::get<T>(std::move(answer));
            }
        }
        co_return readNow<T>(reply);
    }

    QCoro::Task<TarnReply> sendChecked(TarnPath path, TarnMethod method, std::optional<QByteArray> json);
    QCoro::Task<> signOutLocally();
    void setSession(std::optional<TarnSession> session);

    Config m_config;
    TarnSessionStore &m_store;
    QSettings *m_preferences;
    std::unique_ptr<TarnTransport> m_transport;
    std::optional<TarnSession> m_session;
};
