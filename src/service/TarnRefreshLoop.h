#pragma once

#include <QPointer>
#include <QTimer>
#include <QtCore/qtmetamacros.h>
#include <qcorotask.h>
#include <qcorotimer.h>

// A screen's state reads its data again while it is shown: once at once, then
// every `intervalMs` after the last reading ended, until the owner is gone or
// its generation moves on (the screen was hidden, or the loop was started
// again). Readings never overlap, so a slow service is asked less often.
namespace TarnRefreshLoop {

inline QCoro::Task<> pause(int ms)
{
    QTimer timer;
    timer.setSingleShot(true);
    timer.start(ms);
    co_await qCoro(timer).waitForTimeout();
}

template <typename Owner, typename Generation>
QCoro::Task<> run(
    Owner *owner, Generation Owner::*generation, Generation started, int intervalMs, QCoro::Task<> (Owner::*readOnce)())
{
    const QPointer<Owner> self(owner);
    while (self && owner->*generation == started) {
        co_await (owner->*readOnce)();
        if (!self || owner->*generation != started)
            co_return;
        co_await pause(intervalMs);
    }
}

} // namespace TarnRefreshLoop
