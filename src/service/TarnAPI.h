#pragma once

#include "service/Config.h"
#include "service/TarnAPIError.h"
#include "service/TarnDecodeError.h"
#include "service/TarnJSONObject.h"
#include "service/TarnRedirectPolicy.h"
#include "service/TarnSession.h"

#include <QByteArray>
#include <QCoroTask>
#include <QJsonObject>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class QNetworkAccessManager;
class QNetworkRequest;
class QSettings;
class TarnSessionStore;

// The one client of the workspace service, shared by every screen. Each
// endpoint method builds a path, a method and a body and calls `request`,
// which attaches the session cookie and CSRF token, keeps traffic on the
// service's host over https, maps failures onto TarnAPIError and decodes the
// answer into the record the caller names. It also publishes the signed-in
// session; a request that finds the session dead clears it, which sends the
// window back to sign-in.
class TarnAPI : public QObject
{
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

    // Coroutines here never pass a temporary into a co_awaited call: GCC 12
    // may destroy such temporaries twice. Arguments are named locals, moved.
    //
    // One service call: "GET", "POST", "PATCH" or "DELETE" on `path` (resolved
    // against the service's base URL), with an optional JSON body, decoded as T.
    // `errorFieldIsData` is for the few answers whose "error" field is data.
    template<typename T>
    QCoro::Task<T> request(QString path, QByteArray method = "GET", std::optional<QJsonObject> body = std::nullopt,
                           bool errorFieldIsData = false)
    {
        const QByteArray data = co_await requestData(std::move(path), std::move(method), std::move(body),
                                                     errorFieldIsData);
        co_return decodeAnswer<T>(data);
    }

    // The failure message inside a successful answer: its non-empty "error".
    [[nodiscard]] static std::optional<QString> okResponseError(const QByteArray &data, bool errorFieldIsData);

    // Raw bytes (attachments, files) under the same credentials and host rules.
    QCoro::Task<QByteArray> downloadFile(QString path, qint64 maxBytes);

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
    struct Answer
    {
        int status = 0;
        QUrl url;
        QByteArray body;
        QString mediaType;
    };

    QCoro::Task<QByteArray> requestData(QString path, QByteArray method, std::optional<QJsonObject> body,
                                        bool errorFieldIsData);
    QCoro::Task<Answer> send(QNetworkRequest request, QByteArray method, QByteArray body);
    QCoro::Task<Answer> sendChecked(QUrl url, QString token, QByteArray method, QByteArray csrf,
                                    std::optional<QByteArray> json);
    QCoro::Task<QString> storedToken();
    [[nodiscard]] QUrl serviceURL(const QString &path) const;
    QCoro::Task<> signOutLocally();
    void setSession(std::optional<TarnSession> session);

    template<typename T>
    static T decodeAnswer(const QByteArray &data)
    {
        try {
            return TarnJSON::decode<T>(data);
        } catch (const TarnDecodeError &) {
            throw TarnAPIError::invalidResponse();
        }
    }

    Config m_config;
    TarnSessionStore &m_store;
    QSettings *m_preferences;
    TarnRedirectPolicy m_redirects;
    std::unique_ptr<QNetworkAccessManager> m_transport;
    std::optional<TarnSession> m_session;
};

// Answers with no body worth reading.
template<>
inline void TarnAPI::decodeAnswer<void>(const QByteArray &)
{
}
