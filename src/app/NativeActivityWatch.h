#pragma once

#include <QCoroTask>
#include <QHash>
#include <QObject>
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
// also raises desktop notifications while they are wanted, none for the
// place in front of the person: one for each inbox notification the service
// holds for the person, and one for each chat message that came since the
// last reading in a direct room, or in a channel naming the person ("@Maren"
// or "@Maren Holt"). An inbox notification stays, on the desktop and on the
// service, until the person has seen its thread: bringing the thread in
// front dismisses it on the service and closes it on the desktop, so another
// device or the next session does not raise it again. One that arrives for
// the thread already in front, or while notifications are not wanted, is
// dismissed at once without being raised.
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
    // `wanted()`: whether the person wants desktop notifications now.
    void setNotifications(NativeDesktopNotifier *notifier, std::function<bool()> wanted);
    // The place in front of the person: "inbox:THREAD", "chat:ROOM", or none
    // while the window is not in front. What was raised for it is seen.
    void setInFront(const QString &target);

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
    QCoro::Task<> dismissSeen(int generation, QString target);
    void notifyIfWanted(const QString &title, const QString &body, const QString &target);

    TarnAPI &m_api;
    NativeUnreadCount &m_unread;
    NativeDesktopNotifier *m_notifier = nullptr;
    std::function<bool()> m_wanted;
    QString m_inFront;
    // Inbox notifications raised and not yet seen: entry to target.
    QHash<QString, QString> m_raised;
    // Each room's unread count at the last reading; none before the first.
    std::optional<QHash<QString, qint64>> m_roomUnread;
    bool m_running = false;
    int m_generation = 0;
};
