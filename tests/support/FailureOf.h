#pragma once

#include "TarnWaitFor.h"
#include "service/TarnAPIError.h"

#include <QCoroTask>
#include <QString>

// The error text of a call that must fail; empty when it succeeded.
template <typename T> QString failureOf(QCoro::Task<T> task)
{
    try {
        tarnWaitFor(std::move(task));
    } catch (const TarnAPIError &error) {
        return error.text();
    }
    return {};
}
