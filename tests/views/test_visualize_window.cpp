// Visualize driven as a user would: the eight options against GenerateArrays, the plot
// kinds, the lower panel, refusals and the plot-data export into a workbook stand-in.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cctype>
#include <map>
#include <stdexcept>

#include "busy_indicator.h"
#include "plotter.h"
#include "theoretical.h"
#include "themed_button.h"
#include "visualize_window.h"
#include "xy_chart.h"

namespace qv {
namespace {

// Positive values below 1, no two equal but two ties: every distribution fits them.
std::vector<double> UnitSample() {
  std::vector<double> s;
  for (int i = 1; i <= 40; ++i) s.push_back(std::fmod(i * 0.618034, 1.0) * 0.9 + 0.05);
  s.push_back(s[3]);
  s.push_back(s[7]);
  return s;
}

struct Notices {
  std::vector<QString> shown;
  Notices() {
    Visualize::noticeSink = [this](const QString& t) { shown.push_back(t); };
  }
  ~Notices() { Visualize::noticeSink = nullptr; }
};

VisualizeInput Input(std::vector<double> sample) {
  VisualizeInput in;
  in.sample = std::move(sample);
  const auto [lo, hi] = std::minmax_element(in.sample.begin(), in.sample.end());
  double sum = 0;
  for (double v : in.sample) sum += v;
  in.shownMean = in.sample.empty() ? 0 : std::round(sum / in.sample.size() * 100) / 100;
  in.shownStdev = 0.25;
  in.shownMinimum = in.sample.empty() ? 0 : std::round(*lo * 100) / 100;
  in.shownMaximum = in.sample.empty() ? 0 : std::round(*hi * 100) / 100;
  return in;
}

bool Bold(const QWidget* w) { return w->font().bold(); }

TEST(Visualize, OpensOnNormalAndPP) {
  for (bool truncated : {false, true}) {
    Notices notices;
    VisualizeInput in = Input(UnitSample());
    in.truncated = truncated;
    Visualize w(in);
    const FitRun expected = GenerateArrays(Distribution::Normal, in.sample, in.shownMean, in.shownStdev);
    EXPECT_TRUE(notices.shown.empty());
    EXPECT_EQ(w.height(), Visualize::kClosedHeight);
    EXPECT_TRUE(w.option(Distribution::Normal)->isChecked());
    EXPECT_TRUE(Bold(w.option(Distribution::Normal)));
    EXPECT_FALSE(Bold(w.option(Distribution::Beta)));
    EXPECT_FALSE(w.Frame6->isHidden());
    EXPECT_TRUE(w.OptionBinning[0]->isChecked());
    EXPECT_TRUE(w.Text1->isHidden());
    EXPECT_EQ(w.Label1->text(), "P-P plot");
    EXPECT_EQ(w.Correl->text().toStdString(), expected.correl);
    EXPECT_EQ(w.Transform->isHidden(), !truncated);
    EXPECT_TRUE(w.Gif89a1->isHidden());
    EXPECT_TRUE(w.testAttribute(Qt::WA_ShowModal) || w.isModal());
    EXPECT_TRUE(w.windowFlags() & Qt::WindowStaysOnTopHint);
  }
}

// Hidden, the fit runs inline; shown, it runs beside the event loop (the busy mark turns
// while events go on): the window ends the same either way.
TEST(Visualize, OptionsShowTheirFit) {
  for (bool shown : {false, true}) {
    Notices notices;
    VisualizeInput in = Input(UnitSample());
    Visualize w(in);
    if (shown) w.show();
    for (int k = kDistributionCount - 1; k >= 0; --k) {
      const auto d = static_cast<Distribution>(k);
      bool busyWhileWaiting = false;
      QTimer::singleShot(0, &w, [&] { busyWhileWaiting = w.Gif89a1->isVisible(); });
      w.option(d)->click();
      QCoreApplication::processEvents();
      if (shown && d != Distribution::Exponential) EXPECT_TRUE(busyWhileWaiting) << DistributionCaption(d);
      EXPECT_FALSE(w.Gif89a1->isVisible());
      const FitRun expected = GenerateArrays(d, in.sample, in.shownMean, in.shownStdev);
      const char* name = DistributionCaption(d);
      ASSERT_FALSE(expected.refused) << name;
      EXPECT_TRUE(notices.shown.empty()) << name;
      EXPECT_EQ(w.Correl->text().toStdString(), expected.correl) << name;
      EXPECT_EQ(w.Text1->isHidden(), !expected.caption.has_value()) << name;
      if (expected.caption) EXPECT_EQ(w.Text1->text().toStdString(), *expected.caption) << name;
      EXPECT_EQ(w.Frame6->isHidden(), d != Distribution::Normal) << name;
      for (int j = 0; j < kDistributionCount; ++j)
        EXPECT_EQ(Bold(w.option(static_cast<Distribution>(j))), j == k) << name << " " << j;
      // The P-P plot: the fit's percentiles, the diagonal at i * 100 / N.
      const std::size_t n = in.sample.size();
      const PlotArrays& a = expected.arrays;
      ASSERT_EQ(w.NormalDist->pointCount("Main"), n) << name;
      ASSERT_EQ(w.NormalDist->pointCount("Line"), n) << name;
      ASSERT_EQ(w.Detrended->pointCount("Detrend"), n) << name;
      for (std::size_t i : {std::size_t{0}, n / 2, n - 1}) {
        EXPECT_EQ(w.NormalDist->pointX("Main", i), a.ExpectedPercentiles[i]) << name << i;
        EXPECT_EQ(w.NormalDist->pointY("Main", i), a.ObservedPercentiles[i]) << name << i;
        EXPECT_EQ(w.NormalDist->pointX("Line", i), i * 100.0 / n) << name << i;
        EXPECT_EQ(w.Detrended->pointY("Detrend", i), a.DetrendedDifferences[i]) << name << i;
        EXPECT_EQ(w.Detrended->pointY("Line", i), 0) << name << i;
      }
      EXPECT_EQ(w.NormalDist->xHigh(), 100);
      EXPECT_EQ(w.Detrended->yLow(), -20);
      EXPECT_EQ(w.Detrended->yHigh(), 20);
      EXPECT_EQ(w.Label3->text(), "Observed percentiles (%)");
      EXPECT_EQ(w.Label4->text(), "Expected  percentiles (%)");
  }
  }
}

TEST(Visualize, QQForTheNormal) {
  Notices notices;
  VisualizeInput in = Input({-10, -4, -1, 0, 2, 3, 7, 10});
  in.shownMinimum = -10;
  in.shownMaximum = 10;
  in.shownMean = 0.88;
  in.shownStdev = 6.2;
  Visualize w(in);
  const std::size_t detrended = w.Detrended->pointCount("Detrend");
  w.OptionBinning[1]->click();
  const FitRun expected = GenerateArrays(Distribution::Normal, in.sample, in.shownMean, in.shownStdev);
  EXPECT_EQ(w.Label1->text(), "Q-Q plot");
  EXPECT_EQ(w.Label3->text(), "Expected normal values");
  EXPECT_EQ(w.Label4->text(), "Observed values");
  EXPECT_TRUE(w.ThemedButton2->isHidden());  // the lower panel can't be opened from here
  EXPECT_TRUE(Bold(w.OptionBinning[1]));
  EXPECT_FALSE(Bold(w.OptionBinning[0]));
  // Bounds -10 + 0.3 and 10 + 0.3: the lowest point lies left of the scale.
  EXPECT_FLOAT_EQ(w.NormalDist->xLow(), -9.7f);
  EXPECT_FLOAT_EQ(w.NormalDist->xHigh(), 10.3f);
  EXPECT_DOUBLE_EQ(w.NormalDist->yLow(), -9.7);
  for (std::size_t i = 0; i < in.sample.size(); ++i) {
    EXPECT_EQ(w.NormalDist->pointX("Main", i), expected.arrays.SortedValues[i]);
    EXPECT_EQ(w.NormalDist->pointY("Main", i), expected.arrays.ExpectedValues[i]);
    EXPECT_EQ(w.NormalDist->pointX("Line", i), w.NormalDist->pointY("Line", i));
  }
  EXPECT_EQ(w.Detrended->pointCount("Detrend"), detrended);  // left as P-P left it
  // Exponential refuses the negative values; back on Normal the plot is P-P again.
  w.option(Distribution::Exponential)->click();
  EXPECT_TRUE(w.Frame6->isHidden());
  EXPECT_EQ(w.Label1->text(), "P-P plot");
  w.option(Distribution::Normal)->click();
  EXPECT_FALSE(w.Frame6->isHidden());
  EXPECT_TRUE(w.OptionBinning[0]->isChecked());
  EXPECT_FALSE(w.ThemedButton2->isHidden());
}

TEST(Visualize, LowerPanel) {
  Notices notices;
  VisualizeInput in = Input(UnitSample());
  Visualize w(in);
  w.ThemedButton1->click();  // with the panel closed only the hidden panel changes
  EXPECT_EQ(w.height(), Visualize::kClosedHeight);
  EXPECT_FALSE(w.PlotterView->isHidden());
  w.ThemedButton1->click();
  w.ThemedButton2->click();
  EXPECT_EQ(w.height(), Visualize::kOpenHeight);
  EXPECT_FALSE(w.Detrended->isHidden());
  EXPECT_EQ(w.Text2->text(), "Detrended plot");
  const std::size_t n = w.Detrended->pointCount("Detrend");
  w.ThemedButton1->click();
  EXPECT_TRUE(w.Detrended->isHidden());
  EXPECT_TRUE(w.Label7->isHidden());
  EXPECT_EQ(w.Text2->text(), "Theoretical distribution");
  EXPECT_EQ(w.ThemedButton1->caption(), "Detrended plot");
  EXPECT_EQ(w.PlotterView->pointCount("Lie"), 101u);
  const TheoreticalCurve t = TheoreticalDistribution(w.run());
  EXPECT_EQ(w.PlotterView->xLow(), t.axisLow);
  EXPECT_EQ(w.PlotterView->pointY("Lie", 50), t.y[50]);
  w.ThemedButton1->click();  // twice: the detrended plot as it was
  EXPECT_FALSE(w.Detrended->isHidden());
  EXPECT_EQ(w.Text2->text(), "Detrended plot");
  EXPECT_EQ(w.ThemedButton1->caption(), "Theoretical distribution");
  EXPECT_EQ(w.Detrended->pointCount("Detrend"), n);
  // A choice of distribution closes the panel and empties the plotter.
  w.ThemedButton1->click();
  w.option(Distribution::Uniform)->click();
  EXPECT_EQ(w.height(), Visualize::kClosedHeight);
  EXPECT_TRUE(w.PlotterView->isHidden());
  EXPECT_EQ(w.PlotterView->curveCount(), 0);
  // Uniform's theoretical view is flat at 1 / R.
  w.ThemedButton2->click();
  w.ThemedButton1->click();
  const auto [lo, hi] = std::minmax_element(in.sample.begin(), in.sample.end());
  EXPECT_DOUBLE_EQ(w.PlotterView->pointY("Lie", 0), 1 / (*hi - *lo));
  EXPECT_DOUBLE_EQ(w.PlotterView->pointY("Lie", 100), 1 / (*hi - *lo));
}

TEST(Visualize, RefusalsKeepTheCaption) {
  struct Case {
    const char* name;
    std::vector<double> sample;
    Distribution first, refused;
    std::string notice;
  };
  std::vector<double> wide;
  for (int i = 1; i <= 30; ++i) wide.push_back(i * 1.5);
  std::vector<double> negative = wide;
  negative[4] = -3;
  const Case cases[] = {
      {"Beta above 1 after Gama", wide, Distribution::Gama, Distribution::Beta, kUnitRangeNotice},
      {"Weibull below 0 after Uniform", negative, Distribution::Uniform, Distribution::Weibull, kNegativeNotice},
      {"LogNormal below 0 after Normal", negative, Distribution::Normal, Distribution::LogNormal, kNegativeOrZeroNotice},
      {"constant after refusal", std::vector<double>(10, 2.0), Distribution::Normal, Distribution::Pareto,
       ConstantSampleNotice(Distribution::Pareto)},
  };
  for (const Case& c : cases) {
    Notices notices;
    VisualizeInput in = Input(c.sample);
    Visualize w(in);
    w.option(c.first)->click();
    const QString caption = w.Text1->text();
    const bool captionShown = !w.Text1->isHidden();
    const QString correl = w.Correl->text();
    notices.shown.clear();
    w.option(c.refused)->click();
    ASSERT_EQ(notices.shown.size(), 1u) << c.name;
    EXPECT_EQ(notices.shown[0].toStdString(), c.notice) << c.name;
    EXPECT_EQ(w.Text1->text(), caption) << c.name;
    EXPECT_EQ(!w.Text1->isHidden(), captionShown) << c.name;
    EXPECT_EQ(w.Correl->text(), correl) << c.name;
    EXPECT_TRUE(w.option(c.refused)->isChecked()) << c.name;
    EXPECT_TRUE(Bold(w.option(c.refused))) << c.name;
    EXPECT_TRUE(w.Gif89a1->isHidden()) << c.name;
    EXPECT_TRUE(w.Frame1->isEnabled()) << c.name;
    // Nothing of the earlier fit is drawn.
    EXPECT_EQ(w.NormalDist->pointCount("Main"), 0u) << c.name;
    EXPECT_EQ(w.Detrended->pointCount("Detrend"), 0u) << c.name;
    w.ThemedButton2->click();
    w.ThemedButton1->click();
    EXPECT_EQ(w.PlotterView->curveCount(), 0) << c.name;
  }
}

TEST(Visualize, FewerThanFourValues) {
  for (std::size_t n : {0, 1, 3}) {
    Notices notices;
    const std::vector<double> all = UnitSample();
    Visualize w(Input(std::vector<double>(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(n))));
    ASSERT_EQ(notices.shown.size(), 1u) << n;
    EXPECT_EQ(notices.shown[0].toStdString(), kFitSampleSizeNotice);
    EXPECT_EQ(w.NormalDist->pointCount("Main"), 0u);
    EXPECT_EQ(w.Correl->text(), "");
    w.OptionBinning[1]->click();
    EXPECT_EQ(w.NormalDist->pointCount("Main"), 0u);
  }
}

// A workbook stand-in: sheet names as the office compares them, in any case.
struct Book {
  std::vector<std::string> names = {"Sheet1"};
  std::map<int, CellBlock> written;
  static std::string Lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return std::tolower(c); });
    return s;
  }
  PlotDataSheets sheets() {
    return {[this](const std::string& n) {
              return std::any_of(names.begin(), names.end(), [&](const std::string& m) { return Lower(m) == Lower(n); });
            },
            [this](const std::string& n) {
              names.push_back(n);
              return static_cast<int>(names.size()) - 1;
            },
            [this](int sheet, const CellBlock& cells) { written[sheet] = cells; }};
  }
};

TEST(Visualize, PlotDataExport) {
  struct Case {
    const char* name;
    std::vector<std::string> present;
    const char* added;  // nullptr: nothing added
  };
  std::vector<std::string> all = {"Sheet1"};
  for (int k = 1; k <= 100; ++k) all.push_back(PlotDataSheetName(k));
  const Case cases[] = {
      {"first", {"Sheet1"}, "PP-PlotData1"},
      {"lowest free number", {"Sheet1", "PP-PlotData1", "PP-PlotData3"}, "PP-PlotData2"},
      {"names compare in any case", {"pp-plotdata1"}, "PP-PlotData2"},
      {"all taken", all, nullptr},
  };
  for (const Case& c : cases) {
    Notices notices;
    Book book;
    book.names = c.present;
    VisualizeInput in = Input(UnitSample());
    in.sheets = book.sheets();
    Visualize w(in);
    w.option(Distribution::Weibull)->click();
    w.OptionBinning[1]->click();  // the plot kind plays no part
    w.Excel->click();
    if (!c.added) {
      EXPECT_EQ(book.names.size(), c.present.size()) << c.name;
      EXPECT_TRUE(book.written.empty()) << c.name;
      ASSERT_EQ(notices.shown.size(), 1u) << c.name;
      continue;
    }
    EXPECT_TRUE(notices.shown.empty()) << c.name;
    ASSERT_EQ(book.names.size(), c.present.size() + 1) << c.name;
    EXPECT_EQ(book.names.back(), c.added) << c.name;
    const CellBlock& cells = book.written.at(static_cast<int>(book.names.size()) - 1);
    const CellBlock expected = PlotDataBlock(w.run().arrays);
    EXPECT_EQ(cells.rows, static_cast<std::int64_t>(in.sample.size()) + 1) << c.name;
    EXPECT_EQ(cells.cols, 3) << c.name;
    EXPECT_EQ(cells.numbers, expected.numbers) << c.name;
    EXPECT_EQ(cells.text(0), "Actual value") << c.name;
    EXPECT_EQ(w.run().distribution, Distribution::Weibull);
  }
}

TEST(Visualize, ExportRefusals) {
  Notices notices;
  Book book;
  std::vector<double> negative = UnitSample();
  negative[0] = -1;
  VisualizeInput in = Input(negative);
  in.sheets = book.sheets();
  Visualize w(in);
  w.option(Distribution::Gama)->click();  // refused: nothing to export
  notices.shown.clear();
  w.Excel->click();
  EXPECT_EQ(notices.shown.size(), 1u);
  EXPECT_EQ(book.names.size(), 1u);
  // The office fails in mid-export: a notice, and the window goes on.
  in.sheets.write = [](int, const CellBlock&) { throw std::runtime_error("gone"); };
  Visualize broken(in);
  notices.shown.clear();
  broken.Excel->click();
  ASSERT_EQ(notices.shown.size(), 1u);
  EXPECT_TRUE(notices.shown[0].contains("did not complete"));
  // No workbook at all.
  Visualize none(Input(UnitSample()));
  notices.shown.clear();
  none.Excel->click();
  EXPECT_EQ(notices.shown.size(), 1u);
}

}  // namespace
}  // namespace qv

namespace qv {
namespace {

bool FiniteText(const QString& t) {
  const QString l = t.toLower();
  return !l.contains("nan") && !l.contains("inf");
}

template <class Chart>
bool FinitePoints(const Chart& chart, const char* key) {
  for (std::size_t i = 0; i < chart.pointCount(key); ++i)
    if (!std::isfinite(chart.pointX(key, i)) || !std::isfinite(chart.pointY(key, i))) return false;
  return std::isfinite(chart.xLow()) && std::isfinite(chart.xHigh()) && std::isfinite(chart.yLow()) &&
         std::isfinite(chart.yHigh());
}

// Samples at the ends of the doubles: whatever each fit makes of them, no figure that
// is not a number reaches a box or a chart.
TEST(Visualize, NoNonNumberShown) {
  const std::vector<std::vector<double>> samples = {
      {1e300, 2e300, 3e300, 5e300, 8e300},
      {1, 1 + 2.3e-16, 1 + 4.5e-16, 1 + 6.7e-16, 1 + 8.9e-16},
      {0, 1e-320, 0.5, 1, 1},
      {1e-300, 2e-300, 0.9, 0.95, 0.99},
  };
  for (const std::vector<double>& sample : samples) {
    Notices notices;
    VisualizeInput in = Input(sample);
    in.shownMaximum = std::min(in.shownMaximum, 1e300);
    Visualize w(in);
    for (int k = 0; k < kDistributionCount; ++k) {
      const auto d = static_cast<Distribution>(k);
      w.option(d)->click();
      const std::string what = std::string(DistributionCaption(d)) + " on " + std::to_string(sample.front());
      EXPECT_TRUE(FiniteText(w.Text1->text())) << what;
      EXPECT_TRUE(FiniteText(w.Correl->text())) << what;
      EXPECT_TRUE(FinitePoints(*w.NormalDist, "Main")) << what;
      EXPECT_TRUE(FinitePoints(*w.Detrended, "Detrend")) << what;
      w.ThemedButton2->click();
      w.ThemedButton1->click();
      EXPECT_TRUE(FinitePoints(*w.PlotterView, "Lie")) << what;
      if (d == Distribution::Normal) {
        w.OptionBinning[1]->click();
        EXPECT_TRUE(FinitePoints(*w.NormalDist, "Main")) << what;
      }
    }
  }
}

}  // namespace
}  // namespace qv
