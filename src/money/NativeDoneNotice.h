#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>

// The short notice that a change went through ("Refund requested"): shown
// for a few seconds, replaced by the next one, closed early on request. The
// timing lives here so that the QML only draws it.
class NativeDoneNotice : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(bool shown READ shown NOTIFY changed)

public:
    static constexpr std::chrono::milliseconds standardTime { 5000 };

    explicit NativeDoneNotice(QObject *parent = nullptr);

    [[nodiscard]] QString text() const { return m_text; }
    [[nodiscard]] bool shown() const { return m_timer.isActive(); }

    Q_INVOKABLE void show(const QString &text);
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void changed();

private:
    QTimer m_timer;
    QString m_text;
};
