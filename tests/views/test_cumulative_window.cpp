// Cumulat: the curve of the sample of the moment, the read-out of the line, the line held
// at the curve's ends, and the help button.
#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>

#include "cumulative_window.h"
#include "help_window.h"
#include "plotter.h"
#include "themed_button.h"

namespace qv {
namespace {

TEST(Cumulat, CurveOfTheSample) {
  struct Case {
    const char* name;
    std::vector<double> sample;
    std::vector<double> x, y;
    float low, high;
  };
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
    EXPECT_EQ(w.PlotterView->yHigh(), 100) << c.name;
    EXPECT_TRUE(w.PlotterView->cursorEnabled()) << c.name;
    EXPECT_EQ(w.PlotterView->curve("Lie").Color, 255u) << c.name;
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
  struct Case {
    double to;
    const char* x;
    const char* y;
  };
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

TEST(Cumulat, HelpButtonAndLook) {
  HelpMsg::setHelpFolder(QV_HELP_DIR);
  int topic = 0;
  CumulatInput in;
  in.sample = {1, 2, 3, 4};
  in.helpTopic = &topic;
  in.truncated = true;
  Cumulat w(in);
  EXPECT_FALSE(w.Transform->isHidden());
  EXPECT_TRUE(w.windowFlags() & Qt::WindowStaysOnTopHint);
  EXPECT_TRUE(w.isModal());
  w.show();
  w.ThemedButton6->click();
  EXPECT_EQ(topic, 6);
  ASSERT_NE(HelpMsg::current(), nullptr);
  EXPECT_EQ(HelpMsg::current()->topic(), 6);
  HelpMsg::current()->close();
}

}  // namespace
}  // namespace qv
