// Pictures of the distribution windows for the README: run with QUANTAVUE_SHOTS=<folder>.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QRadioButton>

#include <cmath>
#include <random>

#include "cumulative_window.h"
#include "plotter.h"
#include "themed_button.h"
#include "visualize_window.h"
#include "xy_chart.h"

namespace qv {
namespace {

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
