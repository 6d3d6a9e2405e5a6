// The distribution views against data/reference.txt (make_reference.py, 60 digits from the
// fit formulas), each record kind one test reporting its worst error; then the cumulative
// window's figures: PercentRank counts equal values half, the read-outs round as TEXT does.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <map>
#include <tuple>
#include <sstream>
#include <string>
#include <vector>

#include "cumulative.h"
#include "estimators.h"
#include "plot_data.h"
#include "theoretical.h"

namespace qv {
namespace {

struct Record {
  std::vector<std::string> f;  // fields before '|'
  std::string text;            // after '| '
  double num(std::size_t i) const { return std::stod(f[i]); }
  std::string row() const {
    std::string r;
    for (const auto& w : f) r += w + " ";
    return r;
  }
};

struct Reference {
  std::map<std::string, std::vector<double>> samples;
  std::vector<Record> records;
  std::vector<Record> of(const std::string& kind) const {
    std::vector<Record> out;
    for (const auto& r : records)
      if (r.f[0] == kind) out.push_back(r);
    EXPECT_FALSE(out.empty()) << "no " << kind << " records";
    return out;
  }
};

const Reference& Data() {
  static const Reference data = [] {
    Reference d;
    std::ifstream in(std::string(QV_VIEWS_DATA_DIR) + "/reference.txt");
    EXPECT_TRUE(in.good()) << "cannot read reference.txt";
    for (std::string line; std::getline(in, line);) {
      if (line.empty() || line[0] == '#') continue;
      Record r;
      auto bar = line.find(" | ");
      if (bar != std::string::npos) {
        r.text = line.substr(bar + 3);
        line.resize(bar);
      }
      std::istringstream words(line);
      for (std::string w; words >> w;) r.f.push_back(w);
      if (r.f[0] == "sample") {
        auto& xs = d.samples[r.f[1]];
        for (std::size_t i = 2; i < r.f.size(); ++i) xs.push_back(std::stod(r.f[i]));
      } else {
        d.records.push_back(std::move(r));
      }
    }
    return d;
  }();
  return data;
}

Distribution DistributionNamed(const std::string& name) {
  for (int i = 0; i < kDistributionCount; ++i)
    if (name == DistributionCaption(static_cast<Distribution>(i))) return static_cast<Distribution>(i);
  ADD_FAILURE() << "no distribution " << name;
  return Distribution::Normal;
}

// One run per (sample, distribution, shown figures), kept for the tests that read it.
const FitRun& RunOf(const std::string& sample, Distribution d, double shownMean = 0,
                  double shownSd = 0) {
  static std::map<std::tuple<std::string, int, double, double>, FitRun> runs;
  auto key = std::make_tuple(sample, static_cast<int>(d), shownMean, shownSd);
  auto it = runs.find(key);
  if (it == runs.end())
    it = runs.emplace(key, GenerateArrays(d, Data().samples.at(sample), shownMean, shownSd)).first;
  return it->second;
}

// The worst relative error (absolute below `floor`) of one check, printed at the end.
class Worst {
 public:
  Worst(std::string what, double bound) : what_(std::move(what)), bound_(bound) {}
  ~Worst() {
    std::printf("[ worst    ] %-36s %.3g at %s\n", what_.c_str(), worst_, row_.c_str());
    EXPECT_LE(worst_, bound_) << what_ << " at " << row_;
  }
  void note(double got, double want, const std::string& row, double floor = 1e-300) {
    double e = std::abs(got - want) / std::max(std::abs(want), floor);
    if (!(e <= worst_)) {
      worst_ = e;
      row_ = row;
    }
  }

 private:
  std::string what_;
  double bound_;
  double worst_ = 0;
  std::string row_;
};

// The two figures each record gives for a fit, read from the run's fields.
std::pair<double, double> FittedPair(Distribution d, const FitParameters& f) {
  switch (d) {
    case Distribution::Normal: return {f.FitMean, f.FitStdev};
    case Distribution::Exponential: return {1 / f.FitMean, 0};
    case Distribution::Weibull: return {f.WeibullSigma, f.WeibullZeta};
    case Distribution::Uniform: return {f.FitMinimum, f.FitMaximum};
    case Distribution::Gama: return {f.FitBeta, f.FitGama};
    case Distribution::LogNormal: return {f.LogMiu, f.LogSigma};
    case Distribution::Beta: return {f.FitAlpha, f.FitBeta};
    case Distribution::Pareto: return {f.FitMinimum, f.FitAlpha};
  }
  return {0, 0};
}

TEST(ViewsReference, FitsCaptionsAndCorrelation) {
  Worst moments("mean and deviation", 1e-15), params("fitted parameters", 1e-13),
      weibull("Weibull parameters (50 rounds)", 1e-12), r("correlation r", 1e-13);
  for (const Record& rec : Data().of("fit")) {
    Distribution d = DistributionNamed(rec.f[2]);
    const FitRun& run = RunOf(rec.f[1], d);
    ASSERT_FALSE(run.refused) << rec.row() << run.notice;
    EXPECT_EQ(run.fit.SampleSize, static_cast<std::size_t>(rec.num(3)));
    moments.note(run.fit.FitMean, rec.num(4), rec.row());
    moments.note(run.fit.FitStdev, rec.num(5), rec.row());
    auto [p1, p2] = FittedPair(d, run.fit);
    Worst& w = d == Distribution::Weibull ? weibull : params;
    w.note(p1, rec.num(6), rec.row());
    w.note(p2, rec.num(7), rec.row(), 1e-300 + (rec.num(7) == 0));
    EXPECT_EQ(run.caption.value_or("-"), rec.text) << rec.row();
  }
  for (const Record& rec : Data().of("r")) {
    const FitRun& run = RunOf(rec.f[1], DistributionNamed(rec.f[2]));
    r.note(run.r, rec.num(3), rec.row());
    EXPECT_EQ(run.correl, rec.text) << rec.row();
  }
}

TEST(ViewsReference, Refusals) {
  // The window's own texts, to the letter; the fits it does not foresee name the
  // distribution.
  const std::map<std::string, std::string> texts = {
      {"SIZE", "The sample size must be at least 4"},
      {"NEG", "Negative values are not allowed for this distribution"},
      {"NEGZERO", "Negative/0 values are not allowed for this distribution"},
      {"UNIT", "Range of values should be 0,1"},
      {"POSITIVE", "Range of values should be greater than 0"}};
  for (const Record& rec : Data().of("refuse")) {
    Distribution d = DistributionNamed(rec.f[2]);
    const FitRun& run = RunOf(rec.f[1], d);
    ASSERT_TRUE(run.refused) << rec.row();
    EXPECT_FALSE(run.caption) << rec.row();
    EXPECT_TRUE(run.arrays.SortedValues.empty() && run.arrays.ExpectedPercentiles.empty());
    const std::string& kind = rec.f[3];
    if (kind == "CONSTANT") {
      EXPECT_EQ(run.notice, ConstantSampleNotice(d)) << rec.row();
    } else if (kind == "NOESTIMATE") {
      EXPECT_EQ(run.notice, NoEstimateNotice(d)) << rec.row();
    } else {
      EXPECT_EQ(run.notice, texts.at(kind)) << rec.row();
      continue;
    }
    EXPECT_NE(run.notice.find(DistributionCaption(d)), std::string::npos) << run.notice;
  }
}

TEST(ViewsReference, Percentiles) {
  Worst expected("expected percentiles", 1e-12), detrended("detrended (abs, percent)", 1e-11);
  for (const Record& rec : Data().of("pp")) {
    const FitRun& run = RunOf(rec.f[1], DistributionNamed(rec.f[2]));
    std::size_t i = static_cast<std::size_t>(rec.num(3));
    ASSERT_LT(i, run.arrays.SortedValues.size()) << rec.row();
    EXPECT_EQ(run.arrays.SortedValues[i], rec.num(4)) << rec.row();
    // Mid-ranks are exact: (rank + 1) * 100 / N with one rounding.
    EXPECT_NEAR(run.arrays.ObservedPercentiles[i], rec.num(5), 1e-13) << rec.row();
    expected.note(run.arrays.ExpectedPercentiles[i], rec.num(6), rec.row(), 1e-10);
    detrended.note(run.arrays.DetrendedDifferences[i], rec.num(7), rec.row(), 1.0);
    EXPECT_GE(run.arrays.ExpectedPercentiles[i], 0);
    EXPECT_LE(run.arrays.ExpectedPercentiles[i], 100);
  }
}

TEST(ViewsReference, QQFromShownFigures) {
  Worst values("Q-Q expected values", 1e-14), bounds("Q-Q bounds", 1e-15);
  for (const Record& rec : Data().of("qq")) {
    const FitRun& run = RunOf(rec.f[1], Distribution::Normal, rec.num(3), rec.num(4));
    std::size_t i = static_cast<std::size_t>(rec.num(5));
    ASSERT_EQ(run.arrays.ExpectedValues.size(), run.arrays.SortedValues.size());
    // Relative to the spread of the plot: a value near 0 is a difference of two figures.
    values.note(run.arrays.ExpectedValues[i], rec.num(6), rec.row(), 1.0);
  }
  for (const Record& rec : Data().of("qqb")) {
    AxisBounds b = QQBounds(rec.num(3), rec.num(4));
    bounds.note(b.low, rec.num(5), rec.row(), 1.0);
    bounds.note(b.high, rec.num(6), rec.row(), 1.0);
  }
}

TEST(ViewsReference, TheoreticalCurve) {
  Worst heights("theoretical heights", 1e-12);
  std::map<std::string, TheoreticalCurve> curves;
  auto curve = [&](const Record& rec) -> const TheoreticalCurve& {
    std::string key = rec.f[1] + " " + rec.f[2];
    auto it = curves.find(key);
    if (it == curves.end())
      it = curves.emplace(key, TheoreticalDistribution(RunOf(rec.f[1], DistributionNamed(rec.f[2])))).first;
    return it->second;
  };
  std::map<std::string, std::size_t> seen;
  for (const Record& rec : Data().of("curve")) {
    const TheoreticalCurve& c = curve(rec);
    std::size_t k = seen[rec.f[1] + " " + rec.f[2]]++;  // the k-th point kept
    ASSERT_LT(k, c.x.size()) << rec.row();
    EXPECT_EQ(c.x[k], rec.num(4)) << rec.row();
    heights.note(c.y[k], rec.num(5), rec.row());
  }
  for (const Record& rec : Data().of("curvemeta")) {
    const TheoreticalCurve& c = curve(rec);
    EXPECT_EQ(c.x.size(), static_cast<std::size_t>(rec.num(3))) << rec.row();
    EXPECT_DOUBLE_EQ(c.curveMax, rec.num(4)) << rec.row();
    EXPECT_EQ(c.axisLow, static_cast<float>(rec.num(5))) << rec.row();
    EXPECT_EQ(c.axisHigh, static_cast<float>(rec.num(6))) << rec.row();
  }
}

// Small figures the window shows, beside the reference table (Q-Q bounds: records "qqb").
TEST(PlotData, SmallFigures) {
  EXPECT_EQ(PPDiagonal(4), (std::vector<double>{0, 25, 50, 75}));
  struct Ranks { std::vector<double> values, percentiles; } const ranks[] = {
      {{1, 2, 3, 4}, {50, 75, 100, 125}},
      {{4, 2, 1, 2}, {125, 87.5, 50, 87.5}},            // any order, ties share
      {{7, 7, 7, 7, 7}, {80, 80, 80, 80, 80}},          // ((N+1)/2 + 1) * 100 / N
  };
  for (const Ranks& r : ranks) EXPECT_EQ(AverageRanks(r.values), r.percentiles);
  EXPECT_EQ(PlotDataSheetName(2), "PP-PlotData2");
  // Captions and r carry the user's decimal mark.
  FitRun comma = GenerateArrays(Distribution::Gama, Data().samples.at("beta15"), 0, 0, ',');
  EXPECT_EQ(comma.caption.value_or(""), "Beta=0,125 , Gama=4");
  EXPECT_EQ(comma.correl, "r=0,998");

  const FitRun& run = RunOf("four", Distribution::Uniform);
  CellBlock block = PlotDataBlock(run.arrays);
  ASSERT_TRUE(block.rows == 5 && block.cols == 3);
  EXPECT_EQ(block.text(0) + "|" + block.text(1) + "|" + block.text(2),
            "Actual value|Observed percentile|Expected percentile");
  // Row 5 (the largest value): 4, 125 (above 100), and the uniform's 100.
  EXPECT_EQ(std::vector<double>(block.numbers.begin() + 12, block.numbers.end()),
            (std::vector<double>{4, 125, 100}));
  EXPECT_EQ(block.kinds[14], CellKind::Number);
}

// Long samples take the two-thread paths (split sort and merge, halves of the Weibull
// sums); they must agree with plain one-pass work.
TEST(PlotData, LongSampleMatchesPlainWork) {
  std::vector<double> sample(50001);
  for (std::size_t i = 0; i < sample.size(); ++i)
    sample[i] = std::round(std::fmod(static_cast<double>(i) * 0.618033988749895, 1.0) * 1e4) / 1.25e4 + 1e-3;
  std::vector<double> sorted = sample;
  std::sort(sorted.begin(), sorted.end());
  std::vector<double> byIndexSort = AverageRanks(sample);  // the unsorted path
  std::map<double, double> percentileOf;
  for (std::size_t i = 0; i < sample.size(); ++i) percentileOf[sample[i]] = byIndexSort[i];
  for (Distribution d : {Distribution::Gama, Distribution::Beta, Distribution::Weibull}) {
    FitRun run = GenerateArrays(d, sample, 0.5, 0.3);
    ASSERT_FALSE(run.refused) << run.notice;
    EXPECT_EQ(run.arrays.SortedValues, sorted);
    std::size_t differ = 0;
    for (std::size_t i = 0; i < sorted.size(); ++i)
      differ += run.arrays.ObservedPercentiles[i] != percentileOf[sorted[i]];
    EXPECT_EQ(differ, 0u);
    EXPECT_GT(run.r, 0.9) << DistributionCaption(d);
  }
}

TEST(Cumulative, CurvePoints) {
  struct Case { const char* name; std::vector<double> sorted; bool distinctOnly; std::vector<double> x, y; };
  const Case cases[] = {
      // Worked by hand from (ties * 0.5 + below) / n.
      {"ties", {1, 2, 2, 4}, false, {1, 2, 2, 4}, {12.5, 50, 50, 87.5}},
      {"ties, one per run", {1, 2, 2, 4}, true, {1, 2, 4}, {12.5, 50, 87.5}},
      {"distinct: 50/n to 100 - 50/n", {3, 5, 8, 13, 21}, false, {3, 5, 8, 13, 21}, {10, 30, 50, 70, 90}},
      {"all equal: 50 percent n times", {7, 7, 7}, false, {7, 7, 7}, {50, 50, 50}},
      {"all equal, one per run", {7, 7, 7}, true, {7}, {50}},
      {"one value", {-2}, false, {-2}, {50}},
      {"empty", {}, false, {}, {}},
  };
  for (const Case& c : cases) {
    CumulativeCurve curve = CumulativePoints(c.sorted, c.distinctOnly);
    EXPECT_EQ(curve.CumulativeValues, c.x) << c.name;
    ASSERT_EQ(curve.CumulativePercents.size(), c.y.size()) << c.name;
    for (std::size_t i = 0; i < c.y.size(); ++i) EXPECT_DOUBLE_EQ(curve.CumulativePercents[i], c.y[i]) << c.name << " " << i;
  }
}

TEST(Cumulative, PercentRankBetweenAndOutside) {
  const std::vector<double> s = {1, 2, 2, 4};
  struct Case { double v, expected; };
  // A value between sample values counts those below it whole: 3 has 3 below of 4.
  for (Case c : {Case{0, 0}, Case{1, 0.125}, Case{1.5, 0.25}, Case{2, 0.5}, Case{3, 0.75}, Case{4, 0.875}, Case{9, 1}})
    EXPECT_DOUBLE_EQ(PercentRank(s, c.v), c.expected) << c.v;
  EXPECT_EQ(PercentRank({}, 1), 0);
}

TEST(Cumulative, ScaleAndReadOut) {
  struct Scale { std::vector<double> sorted; float low, high; };
  for (const Scale& c : {Scale{{0.004, 3.14159}, 0.0f, 3.14f}, Scale{{-2.675, 2.675}, -2.68f, 2.68f},
                         Scale{{1e39, 2e39}, std::numeric_limits<float>::max(), std::numeric_limits<float>::max()}}) {
    CumulativeBounds b = CumulativeScale(c.sorted);
    EXPECT_EQ(b.low, c.low) << c.sorted.front();
    EXPECT_EQ(b.high, c.high) << c.sorted.back();
  }
  struct Text { float value; const char* y; const char* x; };
  for (const Text& t : {Text{50, "F(x)=50.0%", "x=50.0000"}, Text{2.5f, "F(x)=2.5%", "x=2.5000"},
                        Text{12.5f, "F(x)=12.5%", "x=12.5000"}, Text{0.1f, "F(x)=0.1%", "x=0.1000"},
                        Text{-0.00004f, "F(x)=0.0%", "x=0.0000"}}) {
    EXPECT_EQ(CumulativeYText(t.value), t.y);
    EXPECT_EQ(CumulativeXText(t.value), t.x);
  }
  EXPECT_EQ(CumulativeXText(2.5f, ','), "x=2,5000");
}

}  // namespace
}  // namespace qv
