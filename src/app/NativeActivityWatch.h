#pragma once

#include <QCoroTask>
#include <QObject>
#include <QSet>
#include <QString>

#include <functional>

class NativeDesktopNotifier;
class NativeUnreadCount;
class TarnAPI;

// Keeps the unread count current while someone is signed in, whichever
// screen is shown: every 15 seconds it reads how many inbox threads wait for
// a reply and how many chat messages are unread. A person without the inbox
// counts none there; a failed read keeps the last count. With a notifier it
// also raises one desktop notification for each inbox notification the
// service holds for the person (unless `quiet` says the person is looking at
// that thread, or has turned them off) and dismisses it on the service, so
// none is raised twice.
class NativeActivityWatch : public QObject {
    Q_OBJECT

public:
    static constexpr int intervalMs = 15'000;

    NativeActivityWatch(TarnAPI &api, NativeUnreadCount &unread, QObject *parent = nullptr);

    // Reads now, then every interval until stop(); once started, again does nothing.
    void start();
    // Stops reading and clears the count: the session ended.
    void stop();
    void refresh();
    // `quiet(threadID)`: no desktop notification for that thread now.
    void setNotifications(NativeDesktopNotifier *notifier, std::function<bool(const QString &)> quiet);

Q_SIGNALS:
    // One reading has finished (for tests).
    void refreshed();

private:
    QCoro::Task<> loop(int generation);
    QCoro::Task<> readOnce(int generation);
    QCoro::Task<> raiseNotifications(int generation);

    TarnAPI &m_api;
    NativeUnreadCount &m_unread;
    NativeDesktopNotifier *m_notifier = nullptr;
    std::function<bool(const QString &)> m_quiet;
    QSet<QString> m_raised;
    bool m_running = false;
    int m_generation = 0;
};
