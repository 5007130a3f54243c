#pragma once

#include <QRect>
#include <QString>

class QSettings;
class QWindow;

// The main window's place and size, kept between runs. A place that no
// longer fits any screen (a monitor was unplugged) is not restored, so the
// window never opens out of sight.
class NativeWindowMemory {
public:
    explicit NativeWindowMemory(QSettings &preferences);

    // Applies the remembered geometry, if it still fits a screen; call
    // before the window is shown.
    void restore(QWindow &window) const;
    void save(const QWindow &window);

    static constexpr auto geometryKey = "window/geometry";
    static constexpr auto maximizedKey = "window/maximized";

private:
    QSettings &m_preferences;
};
