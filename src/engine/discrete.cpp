#include "discrete.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
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

namespace {

// The numbers that show as the checked texts. A value shows as a text when its 15-digit
// form is that text; such values lie within a relative 1e-14 of the text's own number,
// so a window around it is searched and only values inside it are turned into text.
struct ShownAs {
  double x, lo, hi;
  std::string text;
  std::size_t slot;
};

std::vector<ShownAs> NumericTargets(std::span<const std::string> texts, char mark,
                                    std::vector<std::size_t>* slotOf) {
  std::vector<ShownAs> targets;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (!IsNumericText(texts[i], mark)) continue;
    double x = Val(texts[i], mark);
    double reach = std::fabs(x) * 1e-14;
    targets.push_back({x, x - reach, x + reach, NumberText(x, mark), i});
  }
  std::sort(targets.begin(), targets.end(), [](const ShownAs& a, const ShownAs& b) { return a.x < b.x; });
  // One target per shown text; each checked text points at its target.
  std::vector<ShownAs> distinct;
  if (slotOf) slotOf->assign(texts.size(), SIZE_MAX);
  for (ShownAs& t : targets) {
    if (distinct.empty() || distinct.back().text != t.text) {
      std::size_t slot = t.slot;
      distinct.push_back(std::move(t));
      distinct.back().slot = distinct.size() - 1;
      if (slotOf) (*slotOf)[slot] = distinct.size() - 1;
    } else if (slotOf) {
      (*slotOf)[t.slot] = distinct.size() - 1;
    }
  }
  return distinct;
}

bool Shows(double v, const ShownAs& t, char mark) {
  return v == t.x || (t.lo <= v && v <= t.hi && NumberText(v, mark) == t.text);
}

}  // namespace

std::vector<double> FilterCheckedValues(std::span<const double> sorted,
                                        std::span<const std::string> checkedValues, char mark) {
  std::vector<ShownAs> targets = NumericTargets(checkedValues, mark, nullptr);
  std::vector<double> kept;
  // Rounding keeps order, so the values of each text follow those of the texts below it.
  for (const ShownAs& t : targets) {
    auto first = std::lower_bound(sorted.begin(), sorted.end(), t.lo);
    auto last = std::upper_bound(first, sorted.end(), t.hi);
    // The values equal to the text's own number in one piece; only their neighbours in
    // the window are turned into text.
    auto [same, past] = std::equal_range(first, last, t.x);
    for (auto it = first; it != same; ++it)
      if (Shows(*it, t, mark)) kept.push_back(*it);
    kept.insert(kept.end(), same, past);
    for (auto it = past; it != last; ++it)
      if (Shows(*it, t, mark)) kept.push_back(*it);
  }
  return kept;
}

FrequencyTable TabulateDiscrete(const CellBlock& range, std::span<const std::string> checkedValues,
                                char mark) {
  FrequencyTable table;
  table.BinLabels.assign(checkedValues.begin(), checkedValues.end());
  table.BinCounts.assign(checkedValues.size(), 0);
  // A number criterion matches the range's numbers shown with its text (COUNTIF reads
  // =0.1+0.2 as 0.3), and the text cells that read the same: the numbers of all criteria
  // are counted in one pass.
  std::vector<std::size_t> slotOf;
  std::vector<ShownAs> targets = NumericTargets(checkedValues, mark, &slotOf);
  for (std::size_t i = 0; i < checkedValues.size(); ++i)
    if (slotOf[i] == SIZE_MAX) table.BinCounts[i] = CountIf(range, Criterion(checkedValues[i], mark));
  if (targets.empty()) return table;
  std::vector<std::int64_t> hits(targets.size(), 0);
  std::vector<double> xs, his;
  for (const ShownAs& t : targets) {
    xs.push_back(t.x);
    his.push_back(t.hi);
  }
  for (std::int64_t i = 0; i < range.size(); ++i) {
    if (!range.isRangeNumber(i)) continue;
    double v = range.numbers[static_cast<std::size_t>(i)];
    auto j = static_cast<std::size_t>(std::lower_bound(his.begin(), his.end(), v) - his.begin());
    if (j < xs.size() && xs[j] == v) {
      ++hits[j];
      continue;
    }
    for (; j < targets.size() && targets[j].lo <= v; ++j) {
      if (Shows(v, targets[j], mark)) {
        ++hits[j];
        break;
      }
    }
  }
  for (std::size_t i = 0; i < checkedValues.size(); ++i)
    if (slotOf[i] != SIZE_MAX)
      table.BinCounts[i] = hits[slotOf[i]] + CountTextIf(range, Criterion(checkedValues[i], mark));
  return table;
}

}  // namespace qv
