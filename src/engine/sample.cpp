#include "sample.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "number_text.h"

namespace qv {

namespace {

// A double's bits mapped so that unsigned order is numeric order: negatives have all
// bits flipped, non-negatives the sign bit set. The map is a bijection, so the sort
// gives back every bit it was given.
constexpr std::uint64_t kSign = std::uint64_t{1} << 63;

inline std::uint64_t ToKey(double v) {
  std::uint64_t u = std::bit_cast<std::uint64_t>(v);
  return (u & kSign) ? ~u : (u | kSign);
}

inline double FromKey(std::uint64_t k) {
  return std::bit_cast<double>((k & kSign) ? (k & ~kSign) : ~k);
}

// Key bits stored in double storage and read back by byte copy, which no floating
// operation touches.
inline void StoreBits(double* p, std::uint64_t k) { std::memcpy(p, &k, sizeof k); }
inline std::uint64_t LoadBits(const double* p) {
  std::uint64_t k;
  std::memcpy(&k, p, sizeof k);
  return k;
}

constexpr int kDigitBits = 11;
constexpr int kPasses = 6;  // 5 x 11 + 9 bits
constexpr std::size_t kBuckets = std::size_t{1} << kDigitBits;
constexpr std::size_t kSmall = 256;

inline std::size_t Digit(std::uint64_t k, int pass) {
  return static_cast<std::size_t>(k >> (pass * kDigitBits)) & (kBuckets - 1);
}

}  // namespace

void SortValues(std::span<double> values) {
  const std::size_t n = values.size();
  if (n < 2) return;
  if (n <= kSmall) {
    std::sort(values.begin(), values.end(), [](double a, double b) { return ToKey(a) < ToKey(b); });
    return;
  }

  // The key buffer stays with the thread: fresh pages for 8 MB cost more than the
  // sort itself on some systems, and a sample is sorted at every read of its cells.
  thread_local std::vector<std::uint64_t> scratch;
  if (scratch.size() < n) scratch.resize(n);
  std::uint64_t* buffer = scratch.data();
  std::vector<std::array<std::size_t, kBuckets>> counts(kPasses);
  for (auto& c : counts) c.fill(0);
  bool sorted = true;
  std::uint64_t previous = 0;
  for (std::size_t i = 0; i < n; ++i) {
    std::uint64_t k = ToKey(values[i]);
    buffer[i] = k;
    for (int p = 0; p < kPasses; ++p) ++counts[p][Digit(k, p)];
    sorted = sorted && previous <= k;
    previous = k;
  }
  if (sorted) return;  // a column that arrives sorted costs one pass

  // Ping-pong between the key buffer and the values' own storage.
  bool inBuffer = true;
  for (int p = 0; p < kPasses; ++p) {
    auto& c = counts[p];
    std::uint64_t first = inBuffer ? buffer[0] : LoadBits(&values[0]);
    if (c[Digit(first, p)] == n) continue;  // every key has this digit: nothing moves
    std::size_t offset = 0;
    for (std::size_t& b : c) {
      std::size_t count = b;
      b = offset;
      offset += count;
    }
    if (inBuffer) {
      for (std::size_t i = 0; i < n; ++i) {
        std::uint64_t k = buffer[i];
        StoreBits(&values[c[Digit(k, p)]++], k);
      }
    } else {
      for (std::size_t i = 0; i < n; ++i) {
        std::uint64_t k = LoadBits(&values[i]);
        buffer[c[Digit(k, p)]++] = k;
      }
    }
    inBuffer = !inBuffer;
  }
  if (inBuffer) {
    for (std::size_t i = 0; i < n; ++i) values[i] = FromKey(buffer[i]);
  } else {
    for (std::size_t i = 0; i < n; ++i) values[i] = FromKey(LoadBits(&values[i]));
  }
}

void ShellSortValues(std::span<double> a) {
  // Written 1-based as the routine is defined: a(i) is a[i - 1].
  const std::int64_t n = static_cast<std::int64_t>(a.size());
  auto at = [&](std::int64_t i) -> double& { return a[static_cast<std::size_t>(i - 1)]; };
  std::int64_t h = 1;
  if (n / 3.0 > 1) {
    while (n / 3.0 > h) h = 3 * h + 1;
    if (h > 3) h = (h - 1) / 3;
  }
  while (h >= 1) {
    for (std::int64_t i = h + 1; i <= n; ++i) {
      double t = at(i);
      std::int64_t j = i - h;
      while (j >= 1 && at(j) > t) {
        at(j + h) = at(j);
        j -= h;
      }
      at(j + h) = t;
    }
    h /= 3;
  }
}

std::vector<double> BuildSample(const CellBlock& cells, SampleFilter filter, char decimalMark) {
  std::vector<double> values;
  values.reserve(static_cast<std::size_t>(cells.size()));
  for (std::int64_t i = 0; i < cells.size(); ++i) {
    switch (cells.kinds[static_cast<std::size_t>(i)]) {
      case CellKind::Number:
        values.push_back(cells.numbers[static_cast<std::size_t>(i)]);
        break;
      case CellKind::Logical:
        // The block holds 1/0 as the office stores truth values; the runtime's True is -1.
        values.push_back(cells.numbers[static_cast<std::size_t>(i)] != 0.0 ? -1.0 : 0.0);
        break;
      case CellKind::Text:
        if (filter == SampleFilter::Discrete) {
          const std::string& t = cells.text(i);
          if (IsNumericText(t, decimalMark)) values.push_back(Val(t, decimalMark));
        }
        break;
      case CellKind::Empty:
      case CellKind::Date:  // a date is not numeric to the runtime
      case CellKind::Error:
        break;
    }
  }
  SortValues(values);
  return values;
}

std::span<const double> TruncateSorted(std::span<const double> sorted, double low, double high) {
  if (!(low <= high)) return {};
  auto first = std::lower_bound(sorted.begin(), sorted.end(), low);
  auto last = std::upper_bound(first, sorted.end(), high);
  return {first, last};
}

}  // namespace qv
