#pragma once

#include "shell/TarnDestination.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QUrl>

class NativeAuth;
class TarnAPI;
class TarnNavigation;

// What the window shows before and around the signed-in shell: restoring
// the stored session at start, the sign-in screen with its messages, the
// wait for the browser, and sign-out. Signing in hands the person's access
// to the navigation and opens their home; signing out resets it, which also
// closes the settings window. QML only draws it and forwards clicks.
class NativeRootState : public QObject {
    Q_OBJECT
    Q_PROPERTY(Phase phase READ phase NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QString detail READ detail NOTIFY changed)
    Q_PROPERTY(bool busy READ busy NOTIFY changed)
    Q_PROPERTY(QString personName READ personName NOTIFY changed)
    Q_PROPERTY(QString personEmail READ personEmail NOTIFY changed)
    Q_PROPERTY(QString signInAddress READ signInAddress NOTIFY changed)

public:
    enum class Phase {
        Starting, // reading the stored session
        SignedOut, // the sign-in screen, perhaps with a message
        Unreachable, // the sign-in screen with the start-up error and "Retry"
        SigningIn, // waiting for the browser and the exchange
        SignedIn,
    };
    Q_ENUM(Phase)

    NativeRootState(TarnAPI &api, NativeAuth &auth, TarnNavigation &navigation, QObject *parent = nullptr);
    ~NativeRootState() override;

    [[nodiscard]] Phase phase() const { return m_phase; }
    [[nodiscard]] QString message() const { return m_message; }
    // What exactly failed, in the error's own words, beneath the message.
    [[nodiscard]] QString detail() const { return m_detail; }
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] QString personName() const;
    [[nodiscard]] QString personEmail() const;
    [[nodiscard]] QString signInAddress() const;

    // Restores the stored session (at start, and for "Retry").
    Q_INVOKABLE void start();
    Q_INVOKABLE void signIn();
    Q_INVOKABLE void cancelSignIn();
    // A "pilo-tarn:" address pasted by the person when the browser could not
    // hand it back; false (with a message) when it is not one.
    Q_INVOKABLE bool submitCallbackAddress(const QString &text);
    Q_INVOKABLE void signOut();

    // An address from a later start of the app.
    void openCallback(const QUrl &url);

    // Where the window opens after sign-in instead of the person's home,
    // when they may open it (fixed places for screenshots).
    void setStartDestination(const std::optional<TarnDestination> &destination);

Q_SIGNALS:
    void changed();
    // The session ended (sign-out or the service said so): screens reset.
    void signedOut();

private:
    QCoro::Task<> restore(int generation);
    QCoro::Task<> runSignIn(int generation);
    QCoro::Task<> loadSession(int generation);
    QCoro::Task<> runSignOut(int generation);
    int begin(bool busy);
    [[nodiscard]] bool current(int generation) const { return generation == m_generation; }
    void show(Phase phase, QString message = {}, QString detail = {});
    void endSession(QString message);

    TarnAPI &m_api;
    NativeAuth &m_auth;
    TarnNavigation &m_navigation;
    std::optional<TarnDestination> m_startDestination;
    Phase m_phase = Phase::Starting;
    QString m_message;
    QString m_detail;
    bool m_busy = false;
    int m_generation = 0;
};
