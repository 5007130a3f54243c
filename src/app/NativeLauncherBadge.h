#pragma once

#include <QString>
#include <QtGlobal>

// The count on the app's launcher icon. On Linux docks that show one (and
// Plasma's task manager) it is the LauncherEntry signal on the session bus,
// naming the app by its desktop file; elsewhere, and without a session bus,
// setting it does nothing.
class NativeLauncherBadge {
public:
    explicit NativeLauncherBadge(QString desktopFileId);

    [[nodiscard]] qint64 count() const { return m_count; }
    // Zero hides the badge.
    void setCount(qint64 count);
    void clear() { setCount(0); }

    static constexpr auto objectPath = "/co/halvard/PiloTarn/LauncherEntry";
    static constexpr auto interface = "com.canonical.Unity.LauncherEntry";

private:
    void publish() const;

    QString m_appURI;
    qint64 m_count = -1;
};
