#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QString>

class QQuickWindow;

// A window's frames, each from its update request to its frame swapped, by
// the wall clock and by this thread's processor time.
class FrameClock : public QObject {
public:
    static constexpr qint64 budgetNs = 16'000'000;

    explicit FrameClock(QQuickWindow &window);

    void reset();
    [[nodiscard]] const QList<qint64> &frames() const { return m_frames; }
    [[nodiscard]] const QList<qint64> &cpu() const { return m_cpu; }
    // "N frames; median, 99th and longest; how many over budget", by the
    // wall clock and by processor time.
    [[nodiscard]] QString summary() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QElapsedTimer m_clock;
    qint64 m_start = -1;
    qint64 m_cpuStart = 0;
    QList<qint64> m_frames;
    QList<qint64> m_cpu;
};
