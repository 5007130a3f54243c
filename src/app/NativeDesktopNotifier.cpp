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
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, target](QDBusPendingCallWatcher *finished) {
        const QDBusPendingReply<uint> reply = *finished;
        if (!reply.isError())
            m_targets.insert(reply.value(), target);
        finished->deleteLater();
    });
}

void NativeDesktopNotifier::withdraw(const QString &target)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    for (auto it = m_targets.begin(); it != m_targets.end();) {
        if (!target.isEmpty() && it.value() != target) {
            ++it;
            continue;
        }
        QDBusMessage call = method(u"CloseNotification"_s);
        call << it.key();
        bus.asyncCall(call);
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
