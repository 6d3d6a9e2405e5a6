#include "number_text.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace qv {

namespace {

// Decimal digits of |x| at 15 significant digits: x = 0.d1 d2 ... d15 × 10^(exp10 + 1).
struct Decimal15 {
  char digits[16] = {};
  int exp10 = 0;  // exponent of the first digit
};

Decimal15 ToDecimal15(double x) {
  Decimal15 d;
  char buf[48];
  auto res = std::to_chars(buf, buf + sizeof buf, std::fabs(x), std::chars_format::scientific, 14);
  *res.ptr = '\0';
  // buf: "d.dddddddddddddde+XX"
  d.digits[0] = buf[0];
  std::memcpy(d.digits + 1, buf + 2, 14);
  d.digits[15] = '\0';
  d.exp10 = std::atoi(std::strchr(buf, 'e') + 1);
  return d;
}

std::string WithMark(std::string s, char mark) {
  if (mark != '.')
    for (char& c : s)
      if (c == '.') c = mark;
  return s;
}

}  // namespace

std::string NumberText(double x, char decimalMark) {
  if (x == 0.0 || std::isnan(x)) return std::isnan(x) ? "NaN" : "0";
  if (std::isinf(x)) return x > 0 ? "Inf" : "-Inf";
  Decimal15 d = ToDecimal15(x);
  int last = 14;
  while (last > 0 && d.digits[last] == '0') --last;
  std::string mant(d.digits, d.digits + last + 1);
  std::string out = x < 0 ? "-" : "";
  int e = d.exp10;
  if (e >= 15 || e < -5) {  // scientific, as General shows 1E+20 and 1E-06
    out += mant.substr(0, 1);
    if (mant.size() > 1) out += "." + mant.substr(1);
    std::string ex = std::to_string(std::abs(e));
    out += std::string("E") + (e < 0 ? "-" : "+") + (ex.size() < 2 ? "0" : "") + ex;
  } else if (e < 0) {
    out += "0." + std::string(-e - 1, '0') + mant;
  } else if (static_cast<int>(mant.size()) <= e + 1) {
    out += mant + std::string(e + 1 - mant.size(), '0');
  } else {
    out += mant.substr(0, e + 1) + "." + mant.substr(e + 1);
  }
  return WithMark(out, decimalMark);
}

std::string RoundedDigits(double x, int decimals) { return RoundedDigitsOf(x, decimals, false); }

std::string RoundedDigitsOf(double x, int decimals, bool shortest) {
  // The 15-digit decimal value rounded at 10^-decimals, halves away from zero.
  std::string digits;
  if (x == 0.0 || !std::isfinite(x)) return digits;
  std::string all;
  int exp10;
  if (shortest) {
    // The shortest text that reads back as the same double: 2.675 stays "2.675".
    char buf[48];
    auto res = std::to_chars(buf, buf + sizeof buf, std::fabs(x), std::chars_format::scientific);
    std::string t(buf, res.ptr);
    std::size_t e = t.find('e');
    all = t.substr(0, 1) + (e > 2 ? t.substr(2, e - 2) : "");
    exp10 = std::atoi(t.c_str() + e + 1);
  } else {
    Decimal15 d = ToDecimal15(x);
    all.assign(d.digits, 15);
    exp10 = d.exp10;
  }
  const int n = static_cast<int>(all.size());
  int keep = exp10 + 1 + decimals;  // significant digits that stay
  if (keep > n) {
    digits = all + std::string(keep - n, '0');
  } else if (keep >= 0) {
    digits = all.substr(0, keep);
    if (keep < n && all[keep] >= '5') {
      int i = keep - 1;
      while (i >= 0 && digits[i] == '9') digits[i--] = '0';
      if (i < 0)
        digits.insert(digits.begin(), '1');
      else
        ++digits[i];
    }
  }
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
  return digits;
}

std::string FormatFixed(double x, int decimals, char decimalMark) {
  if (std::isnan(x)) return "NaN";
  if (std::isinf(x)) return x > 0 ? "Inf" : "-Inf";
  std::string digits = RoundedDigits(x, decimals);
  bool negative = x < 0 && !digits.empty();
  if (static_cast<int>(digits.size()) <= decimals)
    digits.insert(0, decimals + 1 - digits.size(), '0');
  std::string out = negative ? "-" : "";
  out += digits.substr(0, digits.size() - decimals);
  if (decimals > 0) {
    out += decimalMark;
    out += digits.substr(digits.size() - decimals);
  }
  return out;
}

std::string FormatPercent(double x, int decimals, char decimalMark) {
  return FormatFixed(x * 100.0, decimals, decimalMark) + "%";
}

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// Reads sign, digits, one decimal mark and an exponent from the start of s (blanks
// skipped anywhere, as the runtime does); returns how many characters were used.
std::size_t ScanNumber(std::string_view s, char mark, std::string& clean) {
  std::size_t i = 0;
  auto skip = [&] {
    while (i < s.size() && IsBlank(s[i])) ++i;
  };
  skip();
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) clean += s[i++];
  skip();
  bool digits = false, point = false;
  std::size_t end = 0;
  while (i < s.size()) {
    char c = s[i];
    if (c >= '0' && c <= '9') {
      clean += c;
      digits = true;
      end = ++i;
    } else if (c == mark && !point) {
      clean += '.';
      point = true;
      ++i;
      if (digits) end = i;
    } else if (IsBlank(c)) {
      ++i;
    } else {
      break;
    }
  }
  if (!digits) return 0;
  // exponent
  if (i < s.size() && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
    std::size_t j = i + 1;
    std::string e = "e";
    if (j < s.size() && (s[j] == '+' || s[j] == '-')) e += s[j++];
    std::size_t k = j;
    while (k < s.size() && s[k] >= '0' && s[k] <= '9') e += s[k++];
    if (k > j) {
      clean += e;
      end = k;
    }
  }
  return end;
}

}  // namespace

double Val(std::string_view text, char decimalMark) {
  std::string clean;
  if (ScanNumber(text, decimalMark, clean) == 0) return 0.0;
  double v = std::strtod(clean.c_str(), nullptr);
  return v == 0.0 ? 0.0 : v;
}

bool IsNumericText(std::string_view text, char decimalMark) {
  std::string clean;
  std::size_t used = ScanNumber(text, decimalMark, clean);
  if (used == 0) return false;
  for (std::size_t i = used; i < text.size(); ++i)
    if (!IsBlank(text[i])) return false;
  return true;
}

}  // namespace qv
