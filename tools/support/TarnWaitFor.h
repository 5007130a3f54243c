#pragma once

#include <QCoroTask>
#include <QEventLoop>

#include <exception>
#include <optional>
#include <type_traits>

// Runs a task to its end from code that is not a coroutine (a command-line
// main, a test) and returns its result or rethrows its error. QCoro's own
// waitFor never returns when the task throws, so it must not be used here.
template <typename T> T tarnWaitFor(QCoro::Task<T> task)
{
    QEventLoop loop;
    bool done = false;
    std::exception_ptr failure;
    std::conditional_t<std::is_void_v<T>, bool, std::optional<T>> result {};

    auto run = [&]() -> QCoro::Task<> {
        try {
            if constexpr (std::is_void_v<T>)
                co_await std::move(task);
            else
                result = co_await std::move(task);
        } catch (...) {
            failure = std::current_exception();
        }
        done = true;
        loop.quit();
    };
    const QCoro::Task<> runner = run();
    if (!done)
        loop.exec();
    if (failure)
        std::rethrow_exception(failure);
    if constexpr (!std::is_void_v<T>)
        return std::move(*result);
}
