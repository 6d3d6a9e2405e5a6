// Visualize driven as a user would: the eight options against GenerateArrays, the plot
// kinds, the lower panel, refusals and the plot-data export into a workbook stand-in;
// Cumulat: the curve of the sample, the read-out held at the curve's ends, the help.
#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cctype>
#include <map>
#include <random>
#include <stdexcept>

#include "busy_indicator.h"
#include "cumulative_window.h"
#include "help_window.h"
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

// Counts the times a widget is shown on screen.
struct ShowCount : QObject {
  int shows = 0;
  explicit ShowCount(QWidget* w) { w->installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* e) override {
    shows += e->type() == QEvent::Show;
    return false;
  }
};

// Opens on Normal's P-P plot. Hidden, a fit runs inline; shown, it runs beside the event
// loop under the busy mark (none for the quick exponential): the window ends the same.
TEST(Visualize, OptionsShowTheirFit) {
  for (bool shown : {false, true}) {
    Notices notices;
    VisualizeInput in = Input(UnitSample());
    in.truncated = shown;
    Visualize w(in);
    EXPECT_EQ(w.Correl->text().toStdString(),
              GenerateArrays(Distribution::Normal, in.sample, in.shownMean, in.shownStdev).correl);
    EXPECT_TRUE(w.option(Distribution::Normal)->isChecked() && w.OptionBinning[0]->isChecked());
    EXPECT_EQ(w.height(), Visualize::kClosedHeight);
    EXPECT_EQ(w.Transform->isHidden(), !shown);
    if (shown) w.show();
    for (int k = kDistributionCount - 1; k >= 0; --k) {
      const auto d = static_cast<Distribution>(k);
      ShowCount busy(w.Gif89a1);  // counting shows, not sampling: a quick fit ends before a timer
      w.option(d)->click();
      QApplication::processEvents();
      EXPECT_EQ(busy.shows, shown && d != Distribution::Exponential ? 1 : 0) << DistributionCaption(d);
      EXPECT_FALSE(w.Gif89a1->isVisible());
      const FitRun expected = GenerateArrays(d, in.sample, in.shownMean, in.shownStdev);
      const char* name = DistributionCaption(d);
      ASSERT_FALSE(expected.refused) << name;
      EXPECT_TRUE(notices.shown.empty()) << name;
      EXPECT_EQ(w.Correl->text().toStdString(), expected.correl) << name;
      EXPECT_EQ(w.Text1->isHidden(), !expected.caption.has_value()) << name;
      if (expected.caption) { EXPECT_EQ(w.Text1->text().toStdString(), *expected.caption) << name; }
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
      EXPECT_EQ(w.Label3->text() + "|" + w.Label4->text(), "Observed percentiles (%)|Expected  percentiles (%)")
          << name;
    }
  }
}

// A long fit in a shown window leaves the event loop running under the busy mark.
TEST(Visualize, EventsGoOnDuringALongFit) {
  std::vector<double> sample;
  for (int i = 1; i <= 200000; ++i) sample.push_back(std::fmod(i * 0.618034, 1.0) * 0.9 + 0.05);
  Visualize w(Input(std::move(sample)));
  w.show();
  bool ranUnderTheMark = false;
  QTimer::singleShot(0, &w, [&] { ranUnderTheMark = w.Gif89a1->isVisible(); });
  w.option(Distribution::Weibull)->click();
  EXPECT_TRUE(ranUnderTheMark);
  EXPECT_FALSE(w.Gif89a1->isVisible());
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
  EXPECT_EQ(w.Label1->text() + "|" + w.Label3->text() + "|" + w.Label4->text(),
            "Q-Q plot|Expected normal values|Observed values");
  EXPECT_TRUE(w.ThemedButton2->isHidden());  // the lower panel can't be opened from here
  EXPECT_TRUE(Bold(w.OptionBinning[1]) && !Bold(w.OptionBinning[0]));
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
  EXPECT_EQ(w.Text2->text() + "|" + w.ThemedButton1->caption(), "Theoretical distribution|Detrended plot");
  EXPECT_EQ(w.PlotterView->pointCount("Lie"), 101u);
  const TheoreticalCurve t = TheoreticalDistribution(w.run());
  EXPECT_EQ(w.PlotterView->xLow(), t.axisLow);
  EXPECT_EQ(w.PlotterView->pointY("Lie", 50), t.y[50]);
  w.ThemedButton1->click();  // twice: the detrended plot as it was
  EXPECT_FALSE(w.Detrended->isHidden());
  EXPECT_EQ(w.Text2->text() + "|" + w.ThemedButton1->caption(), "Detrended plot|Theoretical distribution");
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
    EXPECT_EQ(cells.numbers, expected.numbers) << c.name;
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

TEST(Cumulat, CurveOfTheSample) {
  struct Case { const char* name; std::vector<double> sample; std::vector<double> x, y; float low, high; };
  const Case cases[] = {
      {"ties, in any order", {4, 2, 1, 2}, {1, 2, 2, 4}, {12.5, 50, 50, 87.5}, 1, 4},
      // A truncated sample is what is left inside the bounds: only it counts.
      {"truncated", {2, 2, 4}, {2, 2, 4}, {100.0 / 3, 100.0 / 3, 500.0 / 6}, 2, 4},
      // A discrete sample repeats its ticked values; the bound is two decimals.
      {"discrete", {0.004, 0.004, 1.5, 1.5, 1.5}, {0.004, 0.004, 1.5, 1.5, 1.5}, {20, 20, 70, 70, 70}, 0, 1.5f},
  };
  for (const Case& c : cases) {
    CumulatInput in;
    in.sample = c.sample;
    Cumulat w(in);
    ASSERT_EQ(w.PlotterView->pointCount("Lie"), c.x.size()) << c.name;
    for (std::size_t i = 0; i < c.x.size(); ++i) {
      EXPECT_EQ(w.PlotterView->pointX("Lie", i), c.x[i]) << c.name << " " << i;
      EXPECT_DOUBLE_EQ(w.PlotterView->pointY("Lie", i), c.y[i]) << c.name << " " << i;
    }
    EXPECT_EQ(w.PlotterView->xLow(), c.low) << c.name;
    EXPECT_EQ(w.PlotterView->xHigh(), c.high) << c.name;
  }
}

TEST(Cumulat, ManyValuesOnePointPerDistinctValue) {
  CumulatInput in;
  for (int i = 0; i < 40000; ++i) in.sample.push_back(i % 1000);
  Cumulat w(in);
  ASSERT_EQ(w.PlotterView->pointCount("Lie"), 1000u);
  EXPECT_DOUBLE_EQ(w.PlotterView->pointY("Lie", 0), 0.05);  // 40 ties of 40,000 count half
  EXPECT_DOUBLE_EQ(w.PlotterView->pointY("Lie", 999), 99.95);
}

TEST(Cumulat, ReadOut) {
  CumulatInput in;
  in.sample = {1, 2, 2, 4};
  Cumulat w(in);
  EXPECT_EQ(w.ValueX->text(), "");  // empty until the line first moves
  EXPECT_EQ(w.ValueY->text(), "");
  struct Case { double to; const char* x; const char* y; };
  const Case cases[] = {
      {2, "x=2.0000", "F(x)=50.0%"},
      {2.5, "x=2.5000", "F(x)=59.4%"},  // a quarter of the way from 50 to 87.5
      {100, "x=4.0000", "F(x)=87.5%"},  // beyond the right end: held at it
      {-100, "x=1.0000", "F(x)=12.5%"},
  };
  for (const Case& c : cases) {
    w.PlotterView->moveCursor(c.to);
    EXPECT_EQ(w.ValueX->text(), c.x) << c.to;
    EXPECT_EQ(w.ValueY->text(), c.y) << c.to;
  }
  CumulatInput comma;
  comma.sample = {1, 2, 2, 4};
  comma.decimalMark = ',';
  Cumulat w2(comma);
  w2.PlotterView->moveCursor(2.5);
  EXPECT_EQ(w2.ValueX->text(), "x=2,5000");
}

TEST(Cumulat, HelpButtonAndTruncatedMark) {
  HelpMsg::setHelpFolder(QV_HELP_DIR);
  int topic = 0;
  CumulatInput in;
  in.sample = {1, 2, 3, 4};
  in.helpTopic = &topic;
  in.truncated = true;
  Cumulat w(in);
  EXPECT_FALSE(w.Transform->isHidden());
  w.show();
  w.ThemedButton6->click();
  EXPECT_EQ(topic, 6);
  ASSERT_NE(HelpMsg::current(), nullptr);
  EXPECT_EQ(HelpMsg::current()->topic(), 6);
  HelpMsg::current()->close();
}

// Pictures of the distribution windows for the README: run with QUANTAVUE_SHOTS=<folder>.
TEST(ViewShots, Screenshots) {
  QString dir = qEnvironmentVariable("QUANTAVUE_SHOTS");
  if (dir.isEmpty()) GTEST_SKIP() << "set QUANTAVUE_SHOTS to a folder to take the pictures";
  QDir().mkpath(dir);
  // Delivery times in hours, as the main window's pictures use.
  std::mt19937_64 gen(20261123);
  std::gamma_distribution<double> dist(4.0, 6.0);
  std::vector<double> sample;
  for (int i = 0; i < 200; ++i) sample.push_back(std::round(dist(gen) * 10) / 10);
  double sum = 0, squares = 0;
  for (double v : sample) sum += v;
  const double mean = sum / sample.size();
  for (double v : sample) squares += (v - mean) * (v - mean);
  VisualizeInput in;
  in.sample = sample;
  in.shownMean = std::round(mean * 100) / 100;
  in.shownStdev = std::round(std::sqrt(squares / (sample.size() - 1)) * 100) / 100;
  in.shownMinimum = *std::min_element(sample.begin(), sample.end());
  in.shownMaximum = *std::max_element(sample.begin(), sample.end());
  Visualize w(in);
  w.show();
  auto shoot = [&](QWidget* window, const char* name) {
    QApplication::processEvents();
    ASSERT_TRUE(window->grab().save(dir + "/" + name));
  };
  w.option(Distribution::Gama)->click();
  w.ThemedButton2->click();
  shoot(&w, "distribution-pp.png");
  w.ThemedButton1->click();
  shoot(&w, "distribution-theoretical.png");
  w.option(Distribution::Normal)->click();
  w.OptionBinning[1]->click();
  shoot(&w, "distribution-qq.png");
  w.close();

  CumulatInput cin;
  cin.sample = sample;
  Cumulat c(cin);
  c.show();
  c.PlotterView->moveCursor(24);
  shoot(&c, "cumulative.png");
}

}  // namespace
}  // namespace qv
