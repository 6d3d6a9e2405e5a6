#include "rounded_text.h"

#include <charconv>
#include <cmath>
#include <cstdint>

#include "number_text.h"
#include "worksheet_functions.h"

namespace qv {

std::string RoundedText(double x, int decimals, char mark) {
  static constexpr double kScale[] = {1, 10, 100, 1000, 10000, 100000};
  if (decimals >= 0 && decimals <= 5 && std::isfinite(x)) {
    const double a = std::fabs(x * kScale[decimals]);
    if (a < 1e9) {
      const double whole = std::floor(a);
      const double fraction = a - whole;  // exact
      if (std::fabs(fraction - 0.5) > 1e-5) {
        auto m = static_cast<std::uint64_t>(whole) + (fraction > 0.5 ? 1 : 0);
        if (m == 0) return "0";  // never "-0"
        char digits[24];
        char* end = std::to_chars(digits, digits + sizeof digits, m).ptr;
        int length = static_cast<int>(end - digits);
        int places = decimals;
        while (places > 0 && end[-1] == '0') {  // trailing zeros of the decimals
          --end;
          --length;
          --places;
        }
        std::string out = x < 0 ? "-" : "";
        if (places == 0) return out.append(digits, end);
        if (length <= places) {
          out += '0';
          out += mark;
          out.append(static_cast<std::size_t>(places - length), '0');
          return out.append(digits, end);
        }
        out.append(digits, end - places);
        out += mark;
        return out.append(end - places, end);
      }
    }
  }
  return NumberText(Round(x, decimals), mark);
}

}  // namespace qv
