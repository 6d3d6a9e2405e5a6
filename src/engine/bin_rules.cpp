#include "bin_rules.h"

#include <cmath>

#include "number_text.h"
#include "worksheet_functions.h"

namespace qv {

namespace {

// The runtime's conversion to a 16-bit integer: halves to even; empty on overflow.
std::optional<int> ToInt16(double x) {
  double r = std::nearbyint(x);  // default rounding mode: halves to even
  if (!(r >= -32768.0 && r <= 32767.0)) return std::nullopt;
  return static_cast<int>(r);
}

const char* RuleName(BinRule rule) {
  switch (rule) {
    case BinRule::Sturges:
      return "Sturges' rule";
    case BinRule::RiceRule:
      return "The Rice Rule";
    case BinRule::Doanes:
      return "Doane's rule";
    case BinRule::Scotts:
      return "Scott's rule";
    case BinRule::Manual:
      break;
  }
  return "Manual";
}

constexpr const char* kOtherChoice = ": choose another rule or type a number of bins.";

}  // namespace

std::optional<int> Ceiling(double x) {
  if (std::isnan(x)) return 0;
  std::optional<int> c = ToInt16(x);
  if (!c) return std::nullopt;
  if (*c < x) return *c == 32767 ? std::nullopt : std::optional<int>(*c + 1);
  return c;
}

const char* BinRuleText(BinRule rule) {
  switch (rule) {
    case BinRule::Manual:
      return "Manual";
    case BinRule::Sturges:
      return "Sturges";
    case BinRule::RiceRule:
      return "Rice Rule";
    case BinRule::Doanes:
      return "Doane's";
    case BinRule::Scotts:
      return "Scott's";
  }
  return "";
}

BinRuleInputs ReadBinRuleInputs(std::string_view textBox1, std::string_view textBox3,
                                std::string_view skw, char mark) {
  return {Val(textBox1, mark), Val(textBox3, mark), std::fabs(Val(skw, mark))};
}

double BinRuleValue(BinRule rule, const BinRuleInputs& in) {
  const double nan = std::nan("");
  const double n = in.n;
  switch (rule) {
    case BinRule::Manual:
      return 5;
    case BinRule::Sturges: {
      std::optional<double> ln = Ln(n);
      return ln ? *ln + 1 : nan;
    }
    case BinRule::RiceRule:
      return 2 * std::pow(n, 1.0 / 3);
    case BinRule::Doanes: {
      double sigma = std::sqrt(6 * (n - 2) / ((n + 1) * (n + 3)));
      std::optional<double> ln = Ln(n);
      std::optional<double> lnShape = Ln(1 + in.g / sigma);
      return ln && lnShape ? 1 + *ln + *lnShape : nan;
    }
    case BinRule::Scotts:
      return 3.5 * in.s / std::pow(n, 1.0 / 3);
  }
  return nan;
}

BinRuleResult ApplyBinRule(BinRule rule, const BinRuleInputs& in) {
  BinRuleResult r;
  if (rule == BinRule::Manual) {
    r.numberOfBins = 5;
    return r;
  }
  const double value = BinRuleValue(rule, in);
  if (!std::isfinite(value)) {
    // A logarithm of 0 or less, or a division by 0 (Doane's with n = 2).
    r.notice =
        std::string(RuleName(rule)) + " gives no number of bins for this sample" + kOtherChoice;
    return r;
  }
  std::optional<int> bins = Ceiling(value);
  if (bins && *bins >= 1 && *bins <= kMaxNumberOfBins) {
    r.numberOfBins = bins;
    return r;
  }
  double given = bins ? *bins : std::ceil(value);
  r.notice = std::string(RuleName(rule)) + " gives " + NumberText(given) + " bins" + kOtherChoice;
  return r;
}

TypedBins ReadTypedBins(std::string_view text, char mark) {
  TypedBins t;
  if (text.empty() || !IsNumericText(text, mark)) return t;
  std::optional<int> k = ToInt16(Val(text, mark));
  if (!k || *k < 1) return t;
  t.numberOfBins = *k;
  t.action = *k > kTypedBinsLimit ? TypedBins::Action::TooMany : TypedBins::Action::Accept;
  return t;
}

std::string TrimNonNumeric(std::string_view text, char mark) {
  std::string s(text);
  if (s.empty() || s == " to " || IsNumericText(s, mark)) return s;
  // One character, not one byte: drop the continuation bytes of a UTF-8 sequence too.
  std::size_t end = s.size() - 1;
  while (end > 0 && (static_cast<unsigned char>(s[end]) & 0xC0) == 0x80) --end;
  s.resize(end);
  return s;
}

}  // namespace qv
