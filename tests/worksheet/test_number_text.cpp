// Number text as the spreadsheet shows it, and Val / IsNumeric as the runtime reads it.
#include <gtest/gtest.h>

#include "number_text.h"

namespace qv {
namespace {

TEST(NumberText, ShortestTextAtFifteenDigits) {
  struct Case { double x; const char* text; } cases[] = {
      {2.5, "2.5"}, {3.0, "3"}, {-0.0, "0"}, {100 * 0.57, "57"},  // 56.99999999999999 in binary
      {0.1 + 0.2, "0.3"}, {-1234.5678, "-1234.5678"}, {1e20, "1E+20"},
      {123456789012345.0, "123456789012345"}, {1e15, "1E+15"}, {0.00001, "0.00001"},
      {0.000001, "1E-06"}, {1.0 / 3.0, "0.333333333333333"}};
  for (const Case& c : cases) EXPECT_EQ(NumberText(c.x), c.text) << c.x;
  EXPECT_EQ(NumberText(-2.5, ','), "-2,5");
}

TEST(NumberText, FixedFormatRoundsTheDecimalValueHalvesAway) {
  struct Case { double x; int decimals; const char* text; } cases[] = {
      {0.16515, 4, "0.1652"}, {2.675, 2, "2.68"},  {-2.675, 2, "-2.68"},
      {0.05, 4, "0.0500"},    {-0.00004, 4, "0.0000"}, {0.99995, 4, "1.0000"},
      {5.991464547, 2, "5.99"}, {123.0, 0, "123"},  {0.5, 0, "1"},
      {1e-20, 3, "0.000"},    {9.99999, 2, "10.00"}};
  for (const Case& c : cases) EXPECT_EQ(FormatFixed(c.x, c.decimals), c.text) << c.x;
  EXPECT_EQ(FormatPercent(0.1234, 1), "12.3%");
  EXPECT_EQ(FormatFixed(0.5, 2, ','), "0,50");
}

// numeric: what IsNumericText says, -1 where not asked.
TEST(NumberText, ValTakesTheLeadingNumberIsNumericTheWholeText) {
  struct Case { const char* text; double v; int numeric; } cases[] = {
      {"12a", 12, 0}, {"a12", 0, -1}, {"", 0, 0}, {" to ", 0, 0}, {"  -3.5 ", -3.5, -1},
      {"1e3", 1000, -1}, {"2.5E-1x", 0.25, -1}, {".5", 0.5, -1}, {"1 2", 12, -1}, {"7.", 7, -1},
      {"1e", 1, -1}, {"-", 0, -1}, {"12", 12, 1}, {" -1.5e2 ", -150, 1}, {".", 0, 0}};
  for (const Case& c : cases) {
    EXPECT_DOUBLE_EQ(Val(c.text), c.v) << c.text;
    if (c.numeric >= 0) { EXPECT_EQ(IsNumericText(c.text), c.numeric == 1) << c.text; }
  }
  EXPECT_DOUBLE_EQ(Val("2,5", ','), 2.5);
}

}  // namespace
}  // namespace qv
