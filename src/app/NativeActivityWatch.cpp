#include "app/NativeActivityWatch.h"

#include "app/NativeDesktopNotifier.h"
#include "app/NativeUnreadCount.h"
#include "chat/TarnChatCalls.h"
#include "inbox/TarnInboxCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"

#include <QCoroTimer>
#include <QHash>
#include <QPointer>
#include <QTimer>

#include <utility>

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
    m_roomUnread.reset();
    m_unread.clear();
    // Nothing stays on the desktop for someone who signed out.
    if (m_notifier)
        m_notifier->withdraw();
}

void NativeActivityWatch::refresh()
{
    readOnce(m_generation);
}

void NativeActivityWatch::setNotifications(NativeDesktopNotifier *notifier, std::function<bool()> wanted)
{
    m_notifier = notifier;
    m_wanted = std::move(wanted);
}

void NativeActivityWatch::setInFront(const QString &target)
{
    m_inFront = target;
    if (target.isEmpty())
        return;
    if (m_notifier)
        m_notifier->withdraw(target);
    if (!m_raised.keys(target).isEmpty())
        dismissSeen(m_generation, target);
}

QCoro::Task<> NativeActivityWatch::dismissSeen(int generation, QString target)
{
    const QPointer<NativeActivityWatch> self(this);
    for (const QString &entry : m_raised.keys(target)) {
        try {
            co_await TarnInboxCalls::dismissInboxNotification(m_api, entry);
        } catch (const TarnAPIError &) {
            // Still raised: the next reading dismisses it while its thread is in front.
            co_return;
        }
        if (!self || generation != m_generation)
            co_return;
        m_raised.remove(entry);
    }
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
        QList<TarnRoom> rooms = co_await TarnChatCalls::rooms(m_api);
        qint64 unread = 0;
        for (const TarnRoom &room : rooms)
            unread += room.unread;
        if (self && generation == m_generation) {
            m_unread.setChatUnread(unread);
            co_await raiseChat(generation, std::move(rooms));
        }
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
        const QString target = u"inbox:"_s + notification.thread_id;
        const QString entry = notification.entry_id;
        const bool seen = target == m_inFront;
        // A raised one waits on the desktop until its thread is seen.
        if (!seen && m_raised.contains(entry))
            continue;
        if (!seen && (!m_wanted || m_wanted())) {
            const QString title = notification.reason == "mention"_L1
                ? u"Mentioned in a conversation"_s
                : notification.client_name.value_or(u"New customer message"_s);
            m_raised.insert(entry, target);
            m_notifier->notify(title, notification.body, target);
            continue;
        }
        co_await TarnInboxCalls::dismissInboxNotification(m_api, entry);
        if (self)
            m_raised.remove(entry);
    }
}

QCoro::Task<> NativeActivityWatch::raiseChat(int generation, QList<TarnRoom> rooms)
{
    QHash<QString, qint64> counts;
    for (const TarnRoom &room : rooms)
        counts.insert(room.id, room.unread);
    // The first reading only learns where the counts stand.
    const std::optional<QHash<QString, qint64>> before = std::exchange(m_roomUnread, counts);
    if (!m_notifier || !before || !m_api.session())
        co_return;
    const QPointer<NativeActivityWatch> self(this);
    const TarnSession me = *m_api.session();
    for (const TarnRoom &room : rooms) {
        const qint64 fresh = room.unread - before->value(room.id, 0);
        if (fresh <= 0)
            continue;
        const QString id = room.id;
        const TarnMessagePage page = co_await TarnChatCalls::messages(m_api, id);
        if (!self || generation != m_generation)
            co_return;
        const bool direct = room.kind == "dm"_L1;
        for (qsizetype i = qMax<qsizetype>(0, page.messages.size() - fresh); i < page.messages.size(); ++i) {
            const TarnMessage &message = page.messages.at(i);
            if (message.user_id == me.id || message.deleted_at || (!direct && !mentions(message.body, me.name)))
                continue;
            notifyIfWanted(direct ? message.author : u"%1 in #%2"_s.arg(message.author, room.name), message.body,
                u"chat:"_s + room.id);
        }
    }
}

void NativeActivityWatch::notifyIfWanted(const QString &title, const QString &body, const QString &target)
{
    if (target != m_inFront && (!m_wanted || m_wanted()))
        m_notifier->notify(title, body, target);
}

bool NativeActivityWatch::mentions(const QString &body, const QString &personName)
{
    const QString first = personName.section(u' ', 0, 0);
    for (const QString &name : { personName, first }) {
        for (qsizetype at = body.indexOf(u'@' + name, 0, Qt::CaseInsensitive); at >= 0;
             at = body.indexOf(u'@' + name, at + 1, Qt::CaseInsensitive)) {
            const qsizetype end = at + 1 + name.size();
            if (!name.isEmpty() && (end == body.size() || !body.at(end).isLetterOrNumber()))
                return true;
        }
    }
    return false;
}
