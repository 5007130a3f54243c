#pragma once

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <functional>

class TarnAPIError;

// What the people screen's sections share: whether a change is on its way,
// whether the first load has come, the last refusal's text, and the signals
// tests and the screenshot wait for.
class NativePeopleSection : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

Q_SIGNALS:
    void busyChanged();
    void errorTextChanged();
    // A load or an action has finished.
    void refreshed();
    void actionFinished();
    void signedOut();

protected:
    explicit NativePeopleSection(QObject *parent);

    void setBusy(bool busy);
    void setLoaded();
    // A signed-out answer emits `signedOut`; any other shows its text.
    void fail(const TarnAPIError &error);
    void setError(const QString &text);
    // Back to nothing loaded: the session ended.
    void resetStatus();
    // Sends a change, then reads the section again, also after a refusal
    // (someone else's change came first), keeping the refusal's text.
    QCoro::Task<> changeAndReload(std::function<QCoro::Task<>()> change, std::function<QCoro::Task<>()> reload);

private:
    bool m_busy = false;
    bool m_loaded = false;
    QString m_error;
};
