#pragma once

#include "service/Config.h"

#include <QCoroTask>
#include <QObject>
#include <QUrl>

#include <functional>
#include <memory>

class TarnSessionStore;

// Web sign-in with a proof-key code exchange, and connecting a Google
// account. On the desktop the "web-authentication sheet" is the system
// browser: the app opens the workspace's sign-in page there and waits until
// the browser hands a "pilo-tarn:" address back, either through a second
// start of the app (the URL scheme) or pasted by the person. Whatever the
// route, a waiting sign-in resumes exactly once; only one waits at a time.
class NativeAuth : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool waiting READ waiting NOTIFY waitingChanged)
    Q_PROPERTY(QString pendingAddress READ pendingAddress NOTIFY waitingChanged)

public:
    // Opens an address in the system browser; false when it could not.
    using Browser = std::function<bool(const QUrl &)>;

    NativeAuth(Config config, TarnSessionStore &store, Browser browser, QObject *parent = nullptr);
    ~NativeAuth() override;

    // The whole sign-in; stores the token and answers the person's name.
    QCoro::Task<QString> signIn();
    // `start` comes from the service ("/api/native/google/start"); `service`
    // names the Google-backed service being connected.
    QCoro::Task<> connectGoogle(QUrl start, QString service);

    // Hands a "pilo-tarn:" address to the waiting sign-in. False when nothing
    // waits (a late or repeated callback), in which case it is ignored.
    bool deliver(const QUrl &callback);
    // Ends the waiting sign-in as if the browser had been closed.
    Q_INVOKABLE void cancel();

    [[nodiscard]] bool waiting() const { return m_wait != nullptr; }
    // The address the browser was sent to, for copying into another browser.
    [[nodiscard]] QString pendingAddress() const;

    static constexpr auto callbackScheme = "pilo-tarn";

Q_SIGNALS:
    void waitingChanged();
    void waitEnded();

private:
    struct Wait;

    QCoro::Task<QUrl> browse(QUrl address, QString notStarted, QString notFinished);
    QCoro::Task<QString> exchange(QString code, QString verifier);
    void endWait(std::optional<QUrl> callback);

    Config m_config;
    TarnSessionStore &m_store;
    Browser m_browser;
    std::shared_ptr<Wait> m_wait;
};
