#include "FrameClock.h"

#include "BenchTime.h"

#include <QEvent>
#include <QQuickWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

FrameClock::FrameClock(QQuickWindow &window)
{
    window.installEventFilter(this);
    connect(&window, &QQuickWindow::frameSwapped, this, [this] {
        if (m_start >= 0) {
            m_frames.append(m_clock.nsecsElapsed() - m_start);
            m_cpu.append(BenchTime::threadNs() - m_cpuStart);
        }
        m_start = -1;
    });
    m_clock.start();
}

void FrameClock::reset()
{
    m_frames.clear();
    m_cpu.clear();
}

QString FrameClock::summary() const
{
    using BenchTime::ms;
    QList<qint64> wall = m_frames;
    std::sort(wall.begin(), wall.end());
    const auto at
        = [&wall](double share) { return wall.isEmpty() ? 0 : ms(wall.at(qsizetype(share * (wall.size() - 1)))); };
    const auto over = [](const QList<qint64> &times) {
        return std::count_if(times.begin(), times.end(), [](qint64 t) { return t >= budgetNs; });
    };
    const qint64 cpuLongest = m_cpu.isEmpty() ? 0 : *std::max_element(m_cpu.begin(), m_cpu.end());
    const auto number = [](auto value) { return QString::number(value); };
    return u"%1 frames; median %2 ms, 99th %3 ms, longest %4 ms, %5 of 16 ms or more; by processor time "
           "longest %6 ms, %7 of 16 ms or more"_s.arg(number(wall.size()), number(at(0.5)), number(at(0.99)),
               number(at(1)), number(over(m_frames)), number(ms(cpuLongest)), number(over(m_cpu)));
}

bool FrameClock::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::UpdateRequest) {
        m_start = m_clock.nsecsElapsed();
        m_cpuStart = BenchTime::threadNs();
    }
    return false;
}
