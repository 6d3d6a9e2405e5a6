// Array forms of the distribution functions: the scalar entry point applied to every
// element of a span, split into two halves that run on two threads.
//
// Method: each element goes through the very same scalar call, so an element's result
// has the same bits whichever form computed it and however the work is split. Parameters
// are checked once, before any thread starts; a ValueError therefore leaves the output
// untouched. Short arrays stay on the calling thread, where starting a thread would cost
// more than it saves.
#include <algorithm>
#include <cstddef>
#include <exception>
#include <stdexcept>
#include <thread>

#include "numeric_functions.h"

namespace qv {

namespace {

// Below this many elements a second thread does not pay for itself.
constexpr std::size_t kSplitThreshold = 8192;

// runRange(from, to) fills out[from, to) from x[from, to).
template <class RunRange>
void RangesInTwoHalves(std::span<const double> x, std::span<double> out, RunRange run) {
  if (out.size() != x.size()) throw std::invalid_argument("output and input differ in size");
  const std::size_t n = x.size();
  if (n < kSplitThreshold) {
    run(0, n);
    return;
  }
  const std::size_t half = n / 2;
  std::exception_ptr failure;
  std::thread second([&] {
    try {
      run(half, n);
    } catch (...) {
      failure = std::current_exception();
    }
  });
  try {
    run(0, half);
  } catch (...) {
    second.join();
    throw;
  }
  second.join();
  if (failure) std::rethrow_exception(failure);
}

template <class F>
void EachInTwoHalves(std::span<const double> x, std::span<double> out, F f) {
  RangesInTwoHalves(x, out, [&](std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i) out[i] = f(x[i]);
  });
}

}  // namespace

void CdfNormal(std::span<const double> x, std::span<double> out) {
  // Each half goes through the several-at-a-time form, which keeps the scalar's bits.
  RangesInTwoHalves(x, out, [&](std::size_t from, std::size_t to) {
    CdfNormalOneThread(x.subspan(from, to - from), out.subspan(from, to - from));
  });
}

void CdfExponential(std::span<const double> x, double lambda, std::span<double> out) {
  CdfExponential(0.0, lambda);  // the domain check, before any element is written
  EachInTwoHalves(x, out, [lambda](double v) { return CdfExponential(v, lambda); });
}

void CdfGamma(std::span<const double> x, double shape, double scale, std::span<double> out) {
  CdfGamma(1.0, shape, scale);
  EachInTwoHalves(x, out, [shape, scale](double v) { return CdfGamma(v, shape, scale); });
}

void CdfBeta(std::span<const double> x, double a, double b, std::span<double> out) {
  CdfBeta(0.5, a, b);
  EachInTwoHalves(x, out, [a, b](double v) { return CdfBeta(v, a, b); });
}

}  // namespace qv
