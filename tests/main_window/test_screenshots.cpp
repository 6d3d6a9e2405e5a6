// Pictures of the main window for the README: run with QUANTAVUE_SHOTS=<folder>.
#include <gtest/gtest.h>

#include <QDir>
#include <QTimer>
#include <cmath>
#include <random>

#include "normality_window.h"
#include "switch_knob.h"

#include "main_window_fixture.h"

namespace qv::testing {
namespace {

TEST_F(MainWindowTest, Screenshots) {
  const QString dir = qEnvironmentVariable("QUANTAVUE_SHOTS");
  if (dir.isEmpty()) GTEST_SKIP() << "set QUANTAVUE_SHOTS to a folder to take the pictures";
  QDir().mkpath(dir);
  std::mt19937_64 gen(20261123);
  const auto column = [&](const char* header, int n, auto&& draw) {
    CellBlock b;
    b.resize(n + 1, 1);
    b.setText(0, header);
    for (int i = 1; i <= n; ++i) b.setNumber(i, draw());
    return b;
  };
  std::gamma_distribution<double> dist(4.0, 6.0);
  const CellBlock col = column("Delivery time (h)", 200, [&] { return std::round(dist(gen) * 10) / 10; });
  form->Form_Load();
  form->show();
  Take(col);
  form->SwitchKnob4->setSetting("9");
  form->SwitchKnob4_Change();
  auto shoot = [&](const char* name) {
    QApplication::processEvents();
    form->DAS_BarChart1->redraw();
    ASSERT_TRUE(form->grab().save(dir + "/" + name));
  };
  shoot("main-window.png");
  form->OptionButton6->click();
  shoot("main-window-pct.png");
  form->OptionButton5->click();  // back to counts: five bins again
  form->ThemedButton6->click();
  form->SSlider22->setPosition(45);
  form->SSlider22_MouseUp();
  shoot("main-window-truncated.png");
  // The normality window on the truncated sample, one picture per test.
  QTimer::singleShot(0, [&] {
    auto* w = qobject_cast<NormalityTests*>(QApplication::activeModalWidget());
    ASSERT_NE(w, nullptr);
    const char* names[] = {"", "normality-shapiro-wilk.png", "normality-anderson-darling.png",
                           "normality-jarque-bera.png", "normality-lilliefors.png"};
    for (int k : {2, 1, 3, 4}) {
      w->SwitchKnob4->setSetting(QString::number(k));
      w->SwitchKnob4_Change(QString::number(k));
      QApplication::processEvents();
      w->grab().save(dir + "/" + names[k]);
    }
    w->close();
  });
  form->Normality->click();
  form->OptionDiscrete->click();  // the truncated sample still has many values
  form->OptionContinuous->click();
  // A discrete variable: a rating from 1 to 6.
  std::discrete_distribution<int> r({2, 5, 9, 12, 7, 3});
  Take(column("Rating", 60, [&] { return r(gen) + 1.0; }), {0, 2, 0, 0, 0});
  form->OptionDiscrete->click();
  if (!form->Frame55->isVisible()) form->ThemedButton6->click();
  form->ListView2->setChecked(form->ListView2->count() - 1, false);  // leave out the largest value
  form->Resetme->click();
  shoot("main-window-discrete.png");
}

}  // namespace
}  // namespace qv::testing
