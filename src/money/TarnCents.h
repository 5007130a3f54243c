#pragma once

#include <QtGlobal>

// Sums of cents that must never wrap. The service's figures are trusted to be
// sane, but a wrapped total would show (or refund) the wrong money, so an
// overflow stops the program instead.
namespace TarnCents {

[[nodiscard]] inline qint64 add(qint64 a, qint64 b)
{
    qint64 sum = 0;
    if (__builtin_add_overflow(a, b, &sum))
        qFatal("sum of cents overflows 64 bits");
    return sum;
}

[[nodiscard]] inline qint64 subtract(qint64 a, qint64 b)
{
    qint64 difference = 0;
    if (__builtin_sub_overflow(a, b, &difference))
        qFatal("difference of cents overflows 64 bits");
    return difference;
}

} // namespace TarnCents
