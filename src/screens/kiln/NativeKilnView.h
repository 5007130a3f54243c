#pragma once

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QUrl>

class TarnAPI;
class QWebEngineCertificateError;

// The embedded web workspace's state: a one-time hand-off code asked for
// each time the screen appears, the address that spends it, and the rule
// the view keeps: it goes nowhere but the service's own host; any other
// address opens in the desktop's browser instead.
class NativeKilnView : public QObject {
    Q_OBJECT
    Q_PROPERTY(QUrl url READ url NOTIFY urlChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    explicit NativeKilnView(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] QUrl url() const { return m_url; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    // Whether the view may go to `url`: https on the service's own host.
    Q_INVOKABLE bool allowed(const QUrl &url) const;
    // Hands an address the view may not open to the desktop's browser.
    Q_INVOKABLE void openOutside(const QUrl &url) const;
    // A certificate the web view doubts is accepted only when it is the
    // very one the service is pinned to, on the service's own address.
    Q_INVOKABLE bool trusts(const QWebEngineCertificateError &error) const;
    // The page reports it finished loading, well or not.
    Q_INVOKABLE void pageLoaded(bool ok, const QString &error);
    // Forgets everything shown: the session ended.
    void clear();

Q_SIGNALS:
    void urlChanged();
    void busyChanged();
    void errorTextChanged();
    // The hand-off page has loaded or failed (for tests and the screenshot).
    void refreshed();

private:
    QCoro::Task<> handOff(int generation);
    void finish(const QString &error);

    TarnAPI &m_api;
    QUrl m_url;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    int m_generation = 0;
};
