#include "BenchTime.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <time.h>

namespace BenchTime {

double ms(qint64 nanoseconds)
{
    return double(nanoseconds) / 1e6;
}

qint64 threadNs()
{
    timespec now {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return qint64(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}

bool spin(const std::function<bool()> &done, int limitMs)
{
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < limitMs)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    return done();
}

} // namespace BenchTime
