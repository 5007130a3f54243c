#pragma once

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>

#include <functional>
#include <optional>

#include "chat/TarnRoom.h"

class NativeDesktopNotifier;
class NativeUnreadCount;
class TarnAPI;

// Keeps the unread count current while someone is signed in, whichever
// screen is shown: every 15 seconds it reads how many inbox threads wait for
// a reply and how many chat messages are unread. A person without the inbox
// counts none there; a failed read keeps the last count. With a notifier it
// also raises desktop notifications, unless `quiet` says the person is
// looking at that place or has turned them off: one for each inbox
// notification the service holds for the person, dismissed there once
// raised so none is raised twice; and one for each chat message that came
// since the last reading in a direct room, or in a channel naming the person
// ("@Maren" or "@Maren Holt").
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
    // `quiet(target)`: no desktop notification for that place now; the
    // targets are "inbox:THREAD" and "chat:ROOM".
    void setNotifications(NativeDesktopNotifier *notifier, std::function<bool(const QString &)> quiet);

    // Whether a chat message names this person.
    [[nodiscard]] static bool mentions(const QString &body, const QString &personName);

Q_SIGNALS:
    // One reading has finished (for tests).
    void refreshed();

private:
    QCoro::Task<> loop(int generation);
    QCoro::Task<> readOnce(int generation);
    QCoro::Task<> raiseNotifications(int generation);
    QCoro::Task<> raiseChat(int generation, QList<TarnRoom> rooms);
    void notifyUnlessQuiet(const QString &title, const QString &body, const QString &target);

    TarnAPI &m_api;
    NativeUnreadCount &m_unread;
    NativeDesktopNotifier *m_notifier = nullptr;
    std::function<bool(const QString &)> m_quiet;
    QSet<QString> m_raised;
    // Each room's unread count at the last reading; none before the first.
    std::optional<QHash<QString, qint64>> m_roomUnread;
    bool m_running = false;
    int m_generation = 0;
};
