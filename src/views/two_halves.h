// Work split into two fixed halves, the second on a thread of its own. The split point
// depends on the length only, so a result is the same on any machine.
#pragma once

#include <cstddef>
#include <exception>
#include <thread>

namespace qv::views {

// Below this many elements a second thread costs more than it saves.
inline constexpr std::size_t kSplitThreshold = 16384;

// Runs f(0, n / 2, 0) here and f(n / 2, n, 1) on a second thread; a short range runs
// as f(0, n, 0) alone. Returns whether it split. An exception of either half is
// rethrown after both have ended.
template <class F>
bool InTwoHalves(std::size_t n, F&& f) {
  if (n < kSplitThreshold) {
    f(std::size_t{0}, n, 0);
    return false;
  }
  const std::size_t half = n / 2;
  std::exception_ptr failure;
  std::thread second([&] {
    try {
      f(half, n, 1);
    } catch (...) {
      failure = std::current_exception();
    }
  });
  try {
    f(std::size_t{0}, half, 0);
  } catch (...) {
    second.join();
    throw;
  }
  second.join();
  if (failure) std::rethrow_exception(failure);
  return true;
}

}  // namespace qv::views
