#include "app/NativeWindowMemory.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

// Enough of the title bar must be on a screen to grab the window with.
bool reachable(const QRect &frame)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    return std::any_of(screens.cbegin(), screens.cend(), [&](const QScreen *screen) {
        const QRect visible = screen->availableGeometry().intersected(frame);
        return visible.width() >= 100 && visible.top() <= frame.top() + 40 && visible.height() >= 40;
    });
}

} // namespace

NativeWindowMemory::NativeWindowMemory(QSettings &preferences)
    : m_preferences(preferences)
{
}

void NativeWindowMemory::restore(QWindow &window) const
{
    const QRect geometry = m_preferences.value(QLatin1StringView(geometryKey)).toRect();
    if (geometry.isValid() && reachable(geometry)) {
        const QSize size = geometry.size().expandedTo(window.minimumSize()).boundedTo(window.maximumSize());
        window.setGeometry(QRect(geometry.topLeft(), size));
    }
    if (m_preferences.value(QLatin1StringView(maximizedKey), false).toBool())
        window.setWindowStates(Qt::WindowMaximized);
}

void NativeWindowMemory::save(const QWindow &window)
{
    const bool maximized = window.windowStates().testFlag(Qt::WindowMaximized);
    m_preferences.setValue(QLatin1StringView(maximizedKey), maximized);
    // A maximised window keeps the size it had before, to return to.
    if (!maximized && !window.windowStates().testFlag(Qt::WindowFullScreen))
        m_preferences.setValue(QLatin1StringView(geometryKey), window.geometry());
}
