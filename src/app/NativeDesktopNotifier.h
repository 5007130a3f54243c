#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class QDBusMessage;

// Desktop notifications over the freedesktop Notifications service on the
// session bus. Each names the app by its desktop entry (the
// "desktop-entry" hint), so the desktop groups them under Pilo Tarn, and
// carries a default action: choosing the notification emits `activated`
// with the target it was raised for; withdrawing a target closes its
// notifications. Without a session bus nothing is shown.
class NativeDesktopNotifier : public QObject {
    Q_OBJECT

public:
    static constexpr auto service = "org.freedesktop.Notifications";
    static constexpr auto path = "/org/freedesktop/Notifications";
    static constexpr auto interface = "org.freedesktop.Notifications";

    // `desktopEntry` without ".desktop": "pilo-tarn".
    explicit NativeDesktopNotifier(QString desktopEntry, QObject *parent = nullptr);

    // `target` is handed back by `activated`: "inbox:THREAD" for a thread.
    void notify(const QString &title, const QString &body, const QString &target);
    // Closes what was raised for `target`, or everything without one.
    void withdraw(const QString &target = {});

Q_SIGNALS:
    void activated(const QString &target);

private Q_SLOTS:
    void actionInvoked(uint id, const QString &action);
    void closed(uint id, uint reason);

private:
    [[nodiscard]] static QDBusMessage method(const QString &name);
    static void close(uint id);

    QString m_desktopEntry;
    QHash<uint, QString> m_targets;
    // Notify calls made, and those still waiting for their id.
    quint64 m_sent = 0;
    int m_pending = 0;
    // While some wait: the last call made when a target (none for all) was withdrawn.
    QHash<QString, quint64> m_withdrawnAt;
};
