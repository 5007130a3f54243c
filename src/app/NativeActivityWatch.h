#pragma once

#include <QCoroTask>
#include <QObject>

class NativeUnreadCount;
class TarnAPI;

// Keeps the unread count current while someone is signed in, whichever
// screen is shown: every 15 seconds it reads how many inbox threads wait for
// a reply and how many chat messages are unread. A person without the inbox
// counts none there; a failed read keeps the last count.
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

Q_SIGNALS:
    // One reading has finished (for tests).
    void refreshed();

private:
    QCoro::Task<> loop(int generation);
    QCoro::Task<> readOnce(int generation);

    TarnAPI &m_api;
    NativeUnreadCount &m_unread;
    bool m_running = false;
    int m_generation = 0;
};
