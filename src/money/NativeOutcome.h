#pragma once

#include "service/TarnAPIError.h"

#include <QCoroTask>
#include <QString>

#include <optional>
#include <type_traits>

// One service call as a screen's coroutine reads it: the answer, or the text
// of why there is none, which the screen shows where the call was made.
template <typename T> struct NativeOutcome {
    std::optional<T> value;
    QString error;
};

// Awaits the task that `call` makes and catches its failure. Pass a named
// callable moved in, never a temporary (see the coroutine rules in README).
template <typename Call>
QCoro::Task<NativeOutcome<typename std::invoke_result_t<Call &>::value_type>> nativeOutcome(Call call)
{
    using T = typename std::invoke_result_t<Call &>::value_type;
    try {
        T value = co_await call();
        co_return NativeOutcome<T> { std::move(value), {} };
    } catch (const TarnAPIError &error) {
        co_return NativeOutcome<T> { std::nullopt, error.text() };
    }
}
