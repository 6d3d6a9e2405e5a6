// The frequency table: bin labels and counts over the sorted sample.
//
// What: TabulateByCount (bins closed below and open above, the last closed at both
// ends; edges from the sample's Min and Max, or from the explicit From and To with
// Increment as a number of bins or as a width) and TabulateByWidth (bins open below
// and closed above, the first closed at both ends; Round(span/BinWidth, 0) + 1 bins).
// Algorithm: edges in doubles in the window's order of operations,
// lo = from + span*((i-1)/k), hi = from + span*(i/k) (explicit width:
// from + w*(i-1), from + w*i); bin i's hi is bin i+1's lo, bit for bit. Each edge is
// one binary search on the sorted values with the bin's closed side (lower_bound for a
// closed lower edge, upper_bound for a closed upper edge), so a count is the difference
// of two positions instead of a pass over the sample.
// Accuracy: the last bin's upper edge is the bound itself (Max, or To in explicit count
// mode): From + (To - From) can fall one unit in the last place below the maximum and
// leave it in no bin. In explicit width mode the values above the last edge, and in
// both explicit modes the values outside From..To, stay outside the table.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qv {

// Shown in the NumberOfValues label when the sample is too small to tabulate.
inline constexpr const char* kTooFewValuesText =
    "At least 2 non missing values are required in the range to analyze...";

struct FrequencyTable {
  std::vector<std::string> BinLabels;   // "1.25 to 2.5"
  std::vector<std::int64_t> BinCounts;  // counts; the record holds them as doubles
  int NumberOfBins() const { return static_cast<int>(BinCounts.size()); }
  std::vector<double> CountsAsDoubles() const;
};

struct Tabulation {
  enum class Status {
    Done,          // table holds the new BinLabels, BinCounts and NumberOfBins
    TooFewValues,  // message is kTooFewValuesText for the NumberOfValues label
    Refused,       // message (may be empty: nothing to show) for ShowNotice
  };
  Status status = Status::Refused;
  std::string message;
  FrequencyTable table;  // only with Done; otherwise the old table stays
};

// The explicit frame as TabulateByCount reads it: Val of FromBin, ToBin and Increment.
struct ExplicitBins {
  double from = 0;
  double to = 0;
  double increment = 0;
  bool incrementIsWidth = true;  // OptionIncrement(1) "Increment width"; else "Nb of bins"
};

ExplicitBins ReadExplicitBins(std::string_view fromText, std::string_view toText,
                              std::string_view incrementText, bool incrementIsWidth,
                              char decimalMark = '.');

// "Nb of bins" (no explicit frame): numberOfBins bins from Min to Max of the sample.
// With an explicit frame, numberOfBins is not read: Increment sets it.
// Refused: numberOfBins (or the explicit count) outside 1..32,767, an increment width
// of 0 or less, To below From.
Tabulation TabulateByCount(std::span<const double> sorted, int numberOfBins,
                           const std::optional<ExplicitBins>& explicitBins, int decimals,
                           char decimalMark = '.');

// "Bin width": binWidth is SSliderInterval's position. A width of 0 or less, or an
// empty sample, is refused with no message (the table stays); more than 32,767 bins is
// refused with a notice.
Tabulation TabulateByWidth(std::span<const double> sorted, double binWidth, int decimals,
                           char decimalMark = '.');

// The Calculate button's checks of the explicit boxes against the shown minimum and
// maximum (TextBox4, TextBox8), before it tabulates.
struct CalculateCheck {
  enum class Verdict {
    Tabulate,
    Silent,  // a box is empty: nothing happens
    Notice,  // notice for ShowNotice
  };
  Verdict verdict = Verdict::Tabulate;
  std::string notice;
};

CalculateCheck CheckCalculate(std::string_view fromText, std::string_view toText,
                              std::string_view incrementText, std::string_view textBox4,
                              std::string_view textBox8, char decimalMark = '.');

// The "Pct" view: each count becomes 100 * count / total, in place; a total of 0
// leaves them as they are. BinCounts then holds percentages until the next table.
void ConvertToPercentages(std::span<double> binCounts);

// A bar's key: "01" to "09", then "10", "11" ..., so the keys sort in bin order.
std::string BarKey(std::int64_t position);

}  // namespace qv
