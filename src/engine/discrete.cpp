#include "discrete.h"

#include <algorithm>
#include <bit>
#include <unordered_set>

#include "number_text.h"
#include "worksheet_functions.h"

namespace qv {

namespace {

// Distinct values up to `limit` of them; stops once the limit is passed.
DistinctValues Distinct(std::span<const double> values, char mark, std::size_t limit) {
  DistinctValues d;
  std::unordered_set<std::string> seen;
  bool havePrevious = false;
  std::uint64_t previous = 0;
  for (double v : values) {
    // The same bits give the same text: a sorted sample's runs cost one text each.
    std::uint64_t bits = std::bit_cast<std::uint64_t>(v);
    if (havePrevious && bits == previous) continue;
    havePrevious = true;
    previous = bits;
    std::string t = NumberText(v, mark);
    if (!seen.insert(t).second) continue;
    d.values.push_back(v);
    d.texts.push_back(std::move(t));
    if (d.values.size() > limit) break;
  }
  return d;
}

// The criterion as COUNTIF reads it: a number written with the user's decimal mark is
// the same number to the spreadsheet.
std::string Criterion(const std::string& text, char mark) {
  if (mark == '.' || !IsNumericText(text, mark)) return text;
  std::string c = text;
  std::replace(c.begin(), c.end(), mark, '.');
  return c;
}

}  // namespace

DistinctValues UniqueValuesForCols(std::span<const double> values, char mark) {
  return Distinct(values, mark, values.size());
}

DiscreteList ListDiscreteValues(std::span<const double> sample, char mark) {
  DiscreteList list;
  if (sample.size() < 3) return list;
  list.unique = Distinct(sample, mark, kMaxDiscreteValues);
  if (list.unique.values.size() > kMaxDiscreteValues) {
    list.status = DiscreteList::Status::TooManyValues;
    list.notice = kTooManyDiscreteText;
    list.unique = {};
    return list;
  }
  list.status = DiscreteList::Status::Listed;
  return list;
}

std::vector<double> FilterCheckedValues(std::span<const double> sorted,
                                        std::span<const std::string> checkedValues, char mark) {
  std::vector<double> targets;
  targets.reserve(checkedValues.size());
  for (const std::string& t : checkedValues) targets.push_back(Val(t, mark));
  std::sort(targets.begin(), targets.end());
  // == merges -0 and +0, which match the same values.
  targets.erase(
      std::unique(targets.begin(), targets.end(), [](double a, double b) { return a == b; }),
      targets.end());
  std::vector<double> kept;
  auto from = sorted.begin();
  for (double x : targets) {
    auto [first, last] = std::equal_range(from, sorted.end(), x);
    kept.insert(kept.end(), first, last);
    from = last;
  }
  return kept;
}

FrequencyTable TabulateDiscrete(const CellBlock& range, std::span<const std::string> checkedValues,
                                char mark) {
  FrequencyTable table;
  table.BinLabels.assign(checkedValues.begin(), checkedValues.end());
  table.BinCounts.assign(checkedValues.size(), 0);
  // A number criterion matches the range's numbers equal to it (COUNTIF), and the text
  // cells that read the same: the numbers of all criteria are counted in one pass.
  std::vector<double> targets;
  std::vector<std::size_t> numeric;
  for (std::size_t i = 0; i < checkedValues.size(); ++i) {
    std::string c = Criterion(checkedValues[i], mark);
    if (IsNumericText(c)) {
      targets.push_back(Val(c));
      numeric.push_back(i);
    } else {
      table.BinCounts[i] = CountIf(range, c);
    }
  }
  if (targets.empty()) return table;
  std::vector<double> distinct = targets;
  std::sort(distinct.begin(), distinct.end());
  distinct.erase(
      std::unique(distinct.begin(), distinct.end(), [](double a, double b) { return a == b; }),
      distinct.end());
  std::vector<std::int64_t> hits(distinct.size(), 0);
  for (std::int64_t i = 0; i < range.size(); ++i) {
    if (!range.isRangeNumber(i)) continue;
    double v = range.numbers[static_cast<std::size_t>(i)];
    auto at = std::lower_bound(distinct.begin(), distinct.end(), v);
    if (at != distinct.end() && *at == v) ++hits[static_cast<std::size_t>(at - distinct.begin())];
  }
  for (std::size_t j = 0; j < numeric.size(); ++j) {
    auto at = std::lower_bound(distinct.begin(), distinct.end(), targets[j]);
    table.BinCounts[numeric[j]] = hits[static_cast<std::size_t>(at - distinct.begin())] +
                                  CountTextIf(range, Criterion(checkedValues[numeric[j]], mark));
  }
  return table;
}

}  // namespace qv
