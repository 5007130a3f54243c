#pragma once

#include <QObject>

// The one count of what waits for the person: inbox threads waiting for a
// reply and unread chat messages, each reported by whoever read it last. The
// launcher badge shows the total; signing out clears it.
class NativeUnreadCount : public QObject {
    Q_OBJECT
    Q_PROPERTY(qint64 total READ total NOTIFY totalChanged)

public:
    using QObject::QObject;

    [[nodiscard]] qint64 inboxWaiting() const { return m_inbox; }
    [[nodiscard]] qint64 chatUnread() const { return m_chat; }
    [[nodiscard]] qint64 total() const { return m_inbox + m_chat; }

    void setInboxWaiting(qint64 count);
    void setChatUnread(qint64 count);
    void clear();

Q_SIGNALS:
    void totalChanged(qint64 total);

private:
    void set(qint64 &part, qint64 count);

    qint64 m_inbox = 0;
    qint64 m_chat = 0;
};
