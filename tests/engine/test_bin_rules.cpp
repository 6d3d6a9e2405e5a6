// Ceiling in 16 bits, the four rules on the figures of their table, refusals, and the
// filters of typed text.
#include <gtest/gtest.h>

#include <cmath>

#include "bin_rules.h"

namespace qv {
namespace {

TEST(BinRules, CeilingInSixteenBits) {
  // Converted by rounding with halves to even, plus one when that lies below x.
  const std::optional<int> overflow;
  struct Case { double x; std::optional<int> c; } cases[] = {
      {6, 6}, {0, 0}, {5.605, 6}, {2.5, 3}, {3.5, 4}, {-0.5, 0}, {-1.5, -1}, {32766.6, 32767},
      {32767, 32767}, {32767.2, overflow}, {32767.5, overflow}, {-32768, -32768},
      {-32768.6, overflow}, {std::nan(""), 0}};
  for (const Case& c : cases) EXPECT_EQ(Ceiling(c.x), c.c) << c.x;
}

TEST(BinRules, TheRulesAndTheirRefusals) {
  // The rules' table (n, s, g), then figures worked out from the formulas in Python:
  // Rice n = 27: 2 * 27^(1/3) is exactly 6; Scott's 3.5 s / 100^(1/3) = 0.0075, 15.08,
  // 754052.14 for s = 0.01, 20, 1e6.
  const char* more = ": choose another rule or type a number of bins.";
  struct Case { double n, s, g; BinRule rule; std::optional<int> bins; std::string notice; } cases[] = {
      {100, 2, 0, BinRule::Sturges, 6, ""}, {100, 2, 0, BinRule::RiceRule, 10, ""},
      {100, 2, 0, BinRule::Doanes, 6, ""}, {100, 2, 0, BinRule::Scotts, 2, ""},
      {1000, 0.5, 1, BinRule::Sturges, 8, ""}, {1000, 0.5, 1, BinRule::RiceRule, 20, ""},
      {1000, 0.5, 1, BinRule::Doanes, 11, ""}, {1000, 0.5, 1, BinRule::Scotts, 1, ""},
      {27, 1, 0, BinRule::RiceRule, 6, ""}, {100, 0.01, 0, BinRule::Scotts, 1, ""},
      {100, 20, 0, BinRule::Scotts, 16, ""}, {3, 0, 0, BinRule::Manual, 5, ""},
      {100, 0, 0, BinRule::Scotts, {}, std::string("Scott's rule gives 0 bins") + more},
      {100, 1e6, 0, BinRule::Scotts, {}, std::string("Scott's rule gives 754053 bins") + more},
      {2, 1, 0.5, BinRule::Doanes, {}, std::string("Doane's rule gives no number of bins for this sample") + more},
      {0, 1, 0, BinRule::Sturges, {}, std::string("Sturges' rule gives no number of bins for this sample") + more},
      {0, 1, 0, BinRule::RiceRule, {}, std::string("The Rice Rule gives 0 bins") + more}};
  for (const Case& c : cases) {
    BinRuleResult r = ApplyBinRule(c.rule, {c.n, c.s, c.g});
    EXPECT_EQ(r.numberOfBins, c.bins) << BinRuleText(c.rule) << " n " << c.n;
    EXPECT_EQ(r.notice, c.notice);
  }
  BinRuleInputs in = ReadBinRuleInputs("100", "2,5", "#DIV/0!", ',');
  EXPECT_EQ(in.n, 100);
  EXPECT_EQ(in.s, 2.5);
  EXPECT_EQ(in.g, 0);  // an error text reads 0
  EXPECT_EQ(ReadBinRuleInputs("1", "", "-1.5").g, 1.5);
}

TEST(BinRules, TypedTextFilters) {
  struct Trim { const char* in; const char* out; } trims[] = {
      {"12a", "12"},    {"12ab", "12a"}, {"12", "12"},    {"", ""},
      {" to ", " to "}, {"abc", "ab"},   {"1.5x", "1.5"}, {"12\xC3\xA9", "12"},
  };  // one character per change
  for (const Trim& t : trims) EXPECT_EQ(TrimNonNumeric(t.in), t.out) << t.in;
  EXPECT_EQ(TrimNonNumeric("1,5", ','), "1,5");

  using A = TypedBins::Action;
  struct Typed { const char* text; A action; int bins; } typed[] = {
      {"", A::Keep, 0},         {"x", A::Keep, 0},       {"100", A::Accept, 100},
      {"101", A::TooMany, 101}, {"12.5", A::Accept, 12}, {"13.5", A::Accept, 14},
      {"0", A::Keep, 0},        {"-3", A::Keep, 0},      {"40000", A::Keep, 0}};
  for (const Typed& t : typed) {
    TypedBins r = ReadTypedBins(t.text);
    EXPECT_EQ(r.action, t.action) << t.text;
    EXPECT_EQ(r.action == A::Keep ? 0 : r.numberOfBins, t.bins) << t.text;
  }
}

}  // namespace
}  // namespace qv
