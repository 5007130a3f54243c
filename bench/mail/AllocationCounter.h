#pragma once

#include <cstddef>

// Counts the heap bytes the process holds, through every malloc family call
// (Qt's containers allocate with malloc, not operator new), so that a
// benchmark can report the peak memory of one parse.
namespace AllocationCounter {

[[nodiscard]] std::size_t current();
[[nodiscard]] std::size_t peak();
// Starts a new peak measurement from what is held now.
void resetPeak();
// Counting costs a little per allocation: throughput runs turn it off.
void setEnabled(bool enabled);

} // namespace AllocationCounter
