#pragma once

#include <QObject>

#include <memory>

// Owner for QObjects that a coroutine holds across a co_await. The coroutine
// resumes inside the signal that woke it (a reply's or job's `finished`), so
// the emitter must not be deleted there: it goes from the event loop instead.
struct TarnDeleteLater {
    void operator()(QObject *object) const
    {
        if (object)
            object->deleteLater();
    }
};

template <typename T> using TarnLaterPointer = std::unique_ptr<T, TarnDeleteLater>;
