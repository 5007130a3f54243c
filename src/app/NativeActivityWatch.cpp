#include "app/NativeActivityWatch.h"

#include "app/NativeDesktopNotifier.h"
#include "app/NativeUnreadCount.h"
#include "chat/TarnChatCalls.h"
#include "inbox/TarnInboxCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"

#include <QCoroTimer>
#include <QPointer>
#include <QTimer>

using namespace Qt::StringLiterals;

NativeActivityWatch::NativeActivityWatch(TarnAPI &api, NativeUnreadCount &unread, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_unread(unread)
{
}

void NativeActivityWatch::start()
{
    if (m_running)
        return;
    m_running = true;
    loop(++m_generation);
}

void NativeActivityWatch::stop()
{
    m_running = false;
    ++m_generation;
    m_raised.clear();
    m_unread.clear();
}

void NativeActivityWatch::refresh()
{
    readOnce(m_generation);
}

void NativeActivityWatch::setNotifications(NativeDesktopNotifier *notifier, std::function<bool(const QString &)> quiet)
{
    m_notifier = notifier;
    m_quiet = std::move(quiet);
}

QCoro::Task<> NativeActivityWatch::loop(int generation)
{
    const QPointer<NativeActivityWatch> self(this);
    while (self && generation == m_generation) {
        co_await readOnce(generation);
        if (!self || generation != m_generation)
            co_return;
        QTimer pause;
        pause.setSingleShot(true);
        pause.start(intervalMs);
        co_await qCoro(pause).waitForTimeout();
    }
}

QCoro::Task<> NativeActivityWatch::readOnce(int generation)
{
    const QPointer<NativeActivityWatch> self(this);
    try {
        const QString scope = u"all"_s;
        const QString view = u"open"_s;
        const QString kind = u"all"_s;
        const TarnInboxList inbox = co_await TarnInboxCalls::inbox(m_api, scope, view, kind);
        if (self && generation == m_generation)
            m_unread.setInboxWaiting(inbox.unreplied_count);
    } catch (const TarnAPIError &error) {
        // The inbox is not everyone's: a refusal means nothing waits there for them.
        if (self && generation == m_generation && error.kind() == TarnAPIError::Kind::server)
            m_unread.setInboxWaiting(0);
    }
    if (!self || generation != m_generation)
        co_return;
    try {
        co_await raiseNotifications(generation);
    } catch (const TarnAPIError &) {
        // Raised on the next reading: only dismissed notifications are done with.
    }
    if (!self || generation != m_generation)
        co_return;
    try {
        const QList<TarnRoom> rooms = co_await TarnChatCalls::rooms(m_api);
        qint64 unread = 0;
        for (const TarnRoom &room : rooms)
            unread += room.unread;
        if (self && generation == m_generation)
            m_unread.setChatUnread(unread);
    } catch (const TarnAPIError &) {
    }
    if (self)
        Q_EMIT refreshed();
}

QCoro::Task<> NativeActivityWatch::raiseNotifications(int generation)
{
    if (!m_notifier)
        co_return;
    const QPointer<NativeActivityWatch> self(this);
    const QList<TarnInboxNotification> pending = co_await TarnInboxCalls::inboxNotifications(m_api);
    for (const TarnInboxNotification &notification : pending) {
        if (!self || generation != m_generation)
            co_return;
        // One whose dismissal failed before is dismissed again, not raised again.
        const bool raised = m_raised.contains(notification.entry_id);
        m_raised.insert(notification.entry_id);
        if (!raised && (!m_quiet || !m_quiet(notification.thread_id))) {
            const QString title = notification.reason == "mention"_L1
                ? u"Mentioned in a conversation"_s
                : notification.client_name.value_or(u"New customer message"_s);
            m_notifier->notify(title, notification.body, u"inbox:"_s + notification.thread_id);
        }
        const QString entry = notification.entry_id;
        co_await TarnInboxCalls::dismissInboxNotification(m_api, entry);
    }
}
