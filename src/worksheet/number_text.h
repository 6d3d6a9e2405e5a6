// Numbers to text and back, as the spreadsheet and its macro runtime show and read them.
#pragma once

#include <string>
#include <string_view>

namespace qv {

// The shortest text that shows a double as the spreadsheet's General format does: at
// most 15 significant digits, trailing zeros dropped, never "-0". 2.50 reads "2.5".
std::string NumberText(double x, char decimalMark = '.');

// TEXT(x; "0.000...") with `decimals` places: the value taken at 15 significant digits,
// halves away from zero, no minus sign on a zero result.
std::string FormatFixed(double x, int decimals, char decimalMark = '.');
// The digits of round(|x|·10^decimals) on the 15-digit decimal value, halves away
// from zero, no leading zeros (empty for zero). decimals may be negative.
std::string RoundedDigits(double x, int decimals);
// The same on the shortest decimal text that reads back as x (up to 17 digits).
std::string RoundedDigitsOf(double x, int decimals, bool shortest);

// TEXT(x; "0.0%") style: 100·x with `decimals` places and a percent sign.
std::string FormatPercent(double x, int decimals, char decimalMark = '.');

// Val: the number at the start of a text, 0 when there is none ("12a" is 12, "a" is 0).
// Blanks are skipped as the runtime skips them.
double Val(std::string_view text, char decimalMark = '.');

// IsNumeric of a text: the whole text, blanks around it aside, reads as a number.
bool IsNumericText(std::string_view text, char decimalMark = '.');

}  // namespace qv
