#include "shell/design/NativeDesktopScheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString settingsInterface = u"org.freedesktop.portal.Settings"_s;
const QString appearance = u"org.freedesktop.appearance"_s;
const QString colourScheme = u"color-scheme"_s;

// Read answers a variant holding a variant; older portals hand one level less.
std::optional<uint> schemeIn(QVariant value)
{
    while (value.canConvert<QDBusVariant>() && value.userType() == qMetaTypeId<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    bool ok = false;
    const uint scheme = value.toUInt(&ok);
    return ok ? std::optional(scheme) : std::nullopt;
}

} // namespace

NativeDesktopScheme::NativeDesktopScheme(QObject *parent)
    : QObject(parent)
{
    if (QCoreApplication *application = QCoreApplication::instance())
        application->installEventFilter(this);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(portalService, portalPath, settingsInterface, u"SettingChanged"_s, this,
        SLOT(portalSettingChanged(QString, QString, QDBusVariant)));
    readPortal();
}

bool NativeDesktopScheme::prefersDark() const
{
    if (m_portal == 1)
        return true;
    if (m_portal == 2)
        return false;
    return QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5;
}

bool NativeDesktopScheme::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == QCoreApplication::instance())
        Q_EMIT changed();
    return QObject::eventFilter(watched, event);
}

void NativeDesktopScheme::readPortal()
{
    QDBusMessage call = QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, u"Read"_s);
    call << appearance << colourScheme;
    auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *finished) {
        finished->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *finished;
        if (!reply.isError())
            setPortalValue(schemeIn(QVariant::fromValue(reply.value())));
    });
}

void NativeDesktopScheme::portalSettingChanged(const QString &space, const QString &key, const QDBusVariant &value)
{
    if (space == appearance && key == colourScheme)
        setPortalValue(schemeIn(value.variant()));
}

void NativeDesktopScheme::setPortalValue(std::optional<uint> value)
{
    if (value == m_portal)
        return;
    m_portal = value;
    Q_EMIT changed();
}
