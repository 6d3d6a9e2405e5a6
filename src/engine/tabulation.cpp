#include "tabulation.h"

#include <algorithm>
#include <cmath>

#include "bin_rules.h"
#include "number_text.h"
#include "rounded_text.h"
#include "worksheet_functions.h"

namespace qv {

namespace {

constexpr const char* kBinCountNotice =
    "The number of bins must be a whole number from 1 to 32767.";
constexpr const char* kWidthNotice = "The increment width must be greater than 0.";
constexpr const char* kBoundsNotice =
    "The -From- value must be smaller/equal than then minimum range and the -To- value "
    "must be greater/equal than the maximum";
constexpr const char* kOrderNotice = "The -From- value must be smaller/equal thantthe -To- value ";
constexpr const char* kWideSpanNotice =
    "The values span more than the largest number: bins by width cannot be made. "
    "Choose a number of bins.";

Tabulation Refuse(std::string message) {
  Tabulation t;
  t.status = Tabulation::Status::Refused;
  t.message = std::move(message);
  return t;
}

std::string TooManyBinsNotice(double bins) {
  if (!std::isfinite(bins)) return kWideSpanNotice;
  return "This width gives " + NumberText(bins) + " bins; at most 32767 are possible.";
}

// An edge a share f of the way from `from` to `to`, in the window's order of operations;
// where the span itself overflows, on the halves, which cannot.
double EdgeAt(double from, double to, double span, double f) {
  if (std::isfinite(span)) return from + span * f;
  return (from / 2 + (to / 2 - from / 2) * f) * 2;
}

// The first position at or after `start` whose value lies past the edge: above or at
// it (closedAbove false, the edge opens a bin closed below: lower_bound), or above it
// (closedAbove true, the edge closes a bin above: upper_bound). Galloping from the
// previous edge's position keeps a table of many narrow bins cheap.
std::size_t EdgePosition(std::span<const double> a, std::size_t start, double edge,
                         bool closedAbove) {
  auto before = [&](double v) { return closedAbove ? !(edge < v) : v < edge; };
  const std::size_t n = a.size();
  std::size_t lo = start, hi = start, step = 1;
  while (hi < n && before(a[hi])) {
    lo = hi + 1;
    hi = lo + step;
    step *= 2;
  }
  std::span<const double> bracket = a.subspan(lo, std::min(hi, n) - lo);
  return lo + static_cast<std::size_t>(
                  std::partition_point(bracket.begin(), bracket.end(), before) - bracket.begin());
}

// Counts and labels from the k + 1 edges. Bin i holds the values between the positions
// of edges i and i + 1; the first bin is closed below and the last closed above, and
// innerClosedAbove says which side of a bin an inner edge closes.
Tabulation Build(std::span<const double> a, const std::vector<double>& edges, bool innerClosedAbove,
                 int decimals, char mark) {
  // No edge beyond the largest double reaches a label.
  for (double e : edges)
    if (!std::isfinite(e)) return Refuse(kWideSpanNotice);
  const std::size_t k = edges.size() - 1;
  std::vector<std::size_t> position(k + 1);
  for (std::size_t i = 0; i <= k; ++i) {
    bool closedAbove = i == 0 ? false : i == k ? true : innerClosedAbove;
    // Positions grow with the edges (the first edge is a lower_bound, the last an
    // upper_bound); an edge below the one before it searches from the start.
    std::size_t start = i > 0 && edges[i] >= edges[i - 1] ? position[i - 1] : 0;
    position[i] = EdgePosition(a, start, edges[i], closedAbove);
  }

  Tabulation t;
  t.status = Tabulation::Status::Done;
  FrequencyTable& table = t.table;
  table.BinCounts.resize(k);
  table.BinLabels.resize(k);
  std::string previous = RoundedText(edges[0], decimals, mark);
  for (std::size_t i = 0; i < k; ++i) {
    table.BinCounts[i] = position[i + 1] > position[i]
                             ? static_cast<std::int64_t>(position[i + 1] - position[i])
                             : 0;
    std::string next = RoundedText(edges[i + 1], decimals, mark);
    table.BinLabels[i].reserve(previous.size() + 4 + next.size());
    table.BinLabels[i] = previous;
    table.BinLabels[i] += " to ";
    table.BinLabels[i] += next;
    previous = std::move(next);
  }
  return t;
}

}  // namespace

std::vector<double> FrequencyTable::CountsAsDoubles() const {
  return std::vector<double>(BinCounts.begin(), BinCounts.end());
}

ExplicitBins ReadExplicitBins(std::string_view fromText, std::string_view toText,
                              std::string_view incrementText, bool incrementIsWidth, char mark) {
  return {Val(fromText, mark), Val(toText, mark), Val(incrementText, mark), incrementIsWidth};
}

Tabulation TabulateByCount(std::span<const double> a, int numberOfBins,
                           const std::optional<ExplicitBins>& explicitBins, int decimals,
                           char mark) {
  if (a.size() < 2) {
    Tabulation t;
    t.status = Tabulation::Status::TooFewValues;
    t.message = kTooFewValuesText;
    return t;
  }
  double from = a.front(), to = a.back(), width = 0;
  int k = numberOfBins;
  if (explicitBins) {
    from = explicitBins->from;
    to = explicitBins->to;
    if (to < from) return Refuse(kOrderNotice);
    if (explicitBins->incrementIsWidth) {
      width = explicitBins->increment;
      if (!(width > 0)) return Refuse(kWidthNotice);
      // From = To spans nothing; one bin of the given width still holds the values at From.
      double bins = to == from ? 1 : CeilingOne((to - from) / width);
      if (bins > kMaxNumberOfBins) return Refuse(TooManyBinsNotice(bins));
      k = static_cast<int>(bins);
    } else {
      double bins = std::nearbyint(explicitBins->increment);  // halves to even
      if (!(bins >= 1 && bins <= kMaxNumberOfBins)) return Refuse(kBinCountNotice);
      k = static_cast<int>(bins);
    }
  } else if (k < 1 || k > kMaxNumberOfBins) {
    return Refuse(kBinCountNotice);
  }

  const double span = to - from;
  std::vector<double> edges(static_cast<std::size_t>(k) + 1);
  for (int i = 0; i <= k; ++i) {
    edges[static_cast<std::size_t>(i)] =
        width > 0 ? from + width * i : EdgeAt(from, to, span, static_cast<double>(i) / k);
  }
  // Every value up to the bound is counted; an explicit width's last edge stays computed.
  if (!(width > 0)) edges.back() = to;
  return Build(a, edges, /*innerClosedAbove=*/false, decimals, mark);
}

Tabulation TabulateByWidth(std::span<const double> a, double binWidth, int decimals, char mark) {
  if (a.empty() || !(binWidth > 0)) return Refuse("");
  const double min = a.front(), max = a.back(), span = max - min;
  if (!std::isfinite(span)) return Refuse(kWideSpanNotice);
  const double bins = Round(span / binWidth, 0) + 1;
  if (!(bins <= kMaxNumberOfBins)) return Refuse(TooManyBinsNotice(bins));
  const int k = static_cast<int>(bins);
  std::vector<double> edges(static_cast<std::size_t>(k) + 1);
  for (int i = 0; i <= k; ++i)
    edges[static_cast<std::size_t>(i)] = min + span * (static_cast<double>(i) / k);
  edges.back() = max;
  return Build(a, edges, /*innerClosedAbove=*/true, decimals, mark);
}

CalculateCheck CheckCalculate(std::string_view fromText, std::string_view toText,
                              std::string_view incrementText, std::string_view textBox4,
                              std::string_view textBox8, char mark) {
  CalculateCheck c;
  if (fromText.empty() || toText.empty() || incrementText.empty()) {
    c.verdict = CalculateCheck::Verdict::Silent;
    return c;
  }
  const double from = Val(fromText, mark), to = Val(toText, mark);
  const double lowest = Val(textBox4, mark), highest = Val(textBox8, mark);
  if (lowest < from || highest > to) {
    c.verdict = CalculateCheck::Verdict::Notice;
    c.notice = kBoundsNotice;
  } else if (to < from) {
    c.verdict = CalculateCheck::Verdict::Notice;
    c.notice = kOrderNotice;
  }
  return c;
}

void ConvertToPercentages(std::span<double> counts) {
  double total = 0;
  for (double c : counts) total += c;
  if (total == 0) return;
  for (double& c : counts) c = 100 * c / total;
}

std::string BarKey(std::int64_t position) {
  std::string s = std::to_string(position);
  return position >= 1 && position <= 9 ? "0" + s : s;
}

}  // namespace qv
