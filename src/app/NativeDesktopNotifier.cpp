#include "app/NativeDesktopNotifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

using namespace Qt::StringLiterals;

NativeDesktopNotifier::NativeDesktopNotifier(QString desktopEntry, QObject *parent)
    : QObject(parent)
    , m_desktopEntry(std::move(desktopEntry))
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(QString::fromLatin1(service), QString::fromLatin1(path), QString::fromLatin1(interface),
        u"ActionInvoked"_s, this, SLOT(actionInvoked(uint, QString)));
    bus.connect(QString::fromLatin1(service), QString::fromLatin1(path), QString::fromLatin1(interface),
        u"NotificationClosed"_s, this, SLOT(closed(uint, uint)));
}

QDBusMessage NativeDesktopNotifier::method(const QString &name)
{
    return QDBusMessage::createMethodCall(
        QString::fromLatin1(service), QString::fromLatin1(path), QString::fromLatin1(interface), name);
}

void NativeDesktopNotifier::notify(const QString &title, const QString &body, const QString &target)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    QDBusMessage call = method(u"Notify"_s);
    const QVariantMap hints {
        { u"desktop-entry"_s, m_desktopEntry },
        { u"category"_s, u"im.received"_s },
    };
    // No replaced id, the desktop entry's icon, the default action, the desktop's own timeout.
    call << u"Pilo Tarn"_s << 0U << m_desktopEntry << title << body << QStringList { u"default"_s, u"Open"_s } << hints
         << -1;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    const quint64 sent = ++m_sent;
    ++m_pending;
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, target, sent](QDBusPendingCallWatcher *finished) {
        const QDBusPendingReply<uint> reply = *finished;
        // Withdrawn before the desktop said which it was: closed as soon as it does.
        const bool withdrawn = qMax(m_withdrawnAt.value(target), m_withdrawnAt.value(QString())) >= sent;
        if (!reply.isError() && withdrawn)
            close(reply.value());
        else if (!reply.isError())
            m_targets.insert(reply.value(), target);
        if (--m_pending == 0)
            m_withdrawnAt.clear();
        finished->deleteLater();
    });
}

void NativeDesktopNotifier::close(uint id)
{
    QDBusMessage call = method(u"CloseNotification"_s);
    call << id;
    QDBusConnection::sessionBus().asyncCall(call);
}

void NativeDesktopNotifier::withdraw(const QString &target)
{
    if (m_pending > 0)
        m_withdrawnAt.insert(target, m_sent);
    for (auto it = m_targets.begin(); it != m_targets.end();) {
        if (!target.isEmpty() && it.value() != target) {
            ++it;
            continue;
        }
        close(it.key());
        it = m_targets.erase(it);
    }
}

void NativeDesktopNotifier::actionInvoked(uint id, const QString &action)
{
    if (action == "default"_L1 && m_targets.contains(id))
        Q_EMIT activated(m_targets.value(id));
}

void NativeDesktopNotifier::closed(uint id, uint)
{
    m_targets.remove(id);
}
