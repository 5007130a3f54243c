#include "app/NativeUnreadCount.h"

void NativeUnreadCount::setInboxWaiting(qint64 count)
{
    set(m_inbox, count);
}

void NativeUnreadCount::setChatUnread(qint64 count)
{
    set(m_chat, count);
}

void NativeUnreadCount::clear()
{
    const qint64 before = total();
    m_inbox = m_chat = 0;
    if (before != 0)
        Q_EMIT totalChanged(0);
}

void NativeUnreadCount::set(qint64 &part, qint64 count)
{
    const qint64 before = total();
    part = qMax<qint64>(count, 0);
    if (total() != before)
        Q_EMIT totalChanged(total());
}
