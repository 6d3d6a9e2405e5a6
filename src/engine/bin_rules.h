// How many bins: the window's Ceiling, the four textbook rules of the BinsNumber list,
// and the filters of the typed number of bins.
//
// What: Sturges Ceiling(Ln(n) + 1); Rice Rule Ceiling(2 n^(1/3)); Doane's
// Ceiling(1 + Ln(n) + Ln(1 + g/sigma)), sigma = sqrt(6(n - 2)/((n + 1)(n + 3)));
// Scott's Ceiling(3.5 s / n^(1/3)), the width itself taken as the number of bins.
// n, s and g are read from the boxes as shown (rounded), g = |skewness|.
// Algorithm: natural logarithms; 1/3 is the double quotient; Ceiling converts to a
// 16-bit integer by rounding (halves to even) and adds one when that is below x.
// Notes: a rule that gives fewer than 1 or more than 32,767 bins (Scott's on a
// constant sample or on data in the millions, Doane's with n = 2) is refused with a
// notice and NumberOfBins stays.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qv {

inline constexpr int kMaxNumberOfBins = 32767;  // NumberOfBins is a 16-bit integer
inline constexpr int kTypedBinsLimit = 100;
inline constexpr const char* kTypedBinsNotice = "Limited to 100 intervals";

// The window's rounding up: the smallest whole number not below x, for x in 16-bit
// range. A value that is no number (NaN) gives 0; empty when the result does not fit
// in 16 bits, where the window's conversion overflows.
std::optional<int> Ceiling(double x);

// The entries of BinsNumber, by list index.
enum class BinRule { Manual = 0, Sturges = 1, RiceRule = 2, Doanes = 3, Scotts = 4 };

// The list's text of a rule: "Manual", "Sturges", "Rice Rule", "Doane's", "Scott's".
const char* BinRuleText(BinRule rule);

struct BinRuleInputs {
  double n = 0;  // Val(TextBox1.Text)
  double s = 0;  // Val(TextBox3.Text)
  double g = 0;  // |Val(skw.Text)|: "#DIV/0!" reads 0
};

BinRuleInputs ReadBinRuleInputs(std::string_view textBox1, std::string_view textBox3,
                                std::string_view skw, char decimalMark = '.');

// The rule's number before Ceiling; NaN where a logarithm or division has no value.
double BinRuleValue(BinRule rule, const BinRuleInputs& in);

struct BinRuleResult {
  std::optional<int> numberOfBins;  // empty: refused, NumberOfBins stays
  std::string notice;               // for ShowNotice when refused
};

// Manual gives 5; the rules give their Ceiling when it lies in 1..32,767.
BinRuleResult ApplyBinRule(BinRule rule, const BinRuleInputs& in);

// BinsBox's change: what its text means for NumberOfBins.
struct TypedBins {
  enum class Action {
    Keep,     // empty, no number or not a 16-bit integer, or below 1: NumberOfBins stays
    Accept,   // numberOfBins is the new NumberOfBins
    TooMany,  // above 100: kTypedBinsNotice, and the box falls back to the knob
  };
  Action action = Action::Keep;
  int numberOfBins = 0;
};

// The text as a 16-bit integer (halves to even, as the runtime converts).
TypedBins ReadTypedBins(std::string_view binsBoxText, char decimalMark = '.');

// The input filter of BinsBox and Increment: a text that is not empty, not numeric and
// not " to " loses its last character. One character per call; the window calls it on
// each change, and the removal is itself a change, so a paste is eaten from the right.
std::string TrimNonNumeric(std::string_view text, char decimalMark = '.');

}  // namespace qv
