#pragma once

#include <QtGlobal>

#include <functional>

// Clocks and waits shared by the programs that time a window.
namespace BenchTime {

[[nodiscard]] double ms(qint64 nanoseconds);
// This thread's processor time: unlike the wall clock, it does not count the
// time other programs on a busy machine had the processor.
[[nodiscard]] qint64 threadNs();
// Runs the event loop until `done` or `limitMs`; whether it is done.
bool spin(const std::function<bool()> &done, int limitMs);

} // namespace BenchTime
