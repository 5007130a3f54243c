#include "app/NativeLauncherBadge.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

using namespace Qt::StringLiterals;

NativeLauncherBadge::NativeLauncherBadge(QString desktopFileId)
    : m_appURI(u"application://"_s + desktopFileId)
{
}

void NativeLauncherBadge::setCount(qint64 count)
{
    const qint64 shown = qMax<qint64>(count, 0);
    if (shown == m_count)
        return;
    m_count = shown;
    publish();
}

void NativeLauncherBadge::publish() const
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    QDBusMessage update
        = QDBusMessage::createSignal(QString::fromLatin1(objectPath), QString::fromLatin1(interface), u"Update"_s);
    const QVariantMap properties {
        { u"count"_s, QVariant::fromValue(m_count) },
        { u"count-visible"_s, m_count > 0 },
    };
    update << m_appURI << properties;
    bus.send(update);
}
