// NormalityTests: the runners of the knob's four positions and each test's display.
// A runner marks its legend, shows the busy mark, runs the test and puts the slider
// back to 0.05; the test writes the boxes, one picture and the verdict, or refuses.
#include <QLabel>
#include <QLineEdit>
#include <exception>

#include "busy_indicator.h"
#include "double_slider.h"
#include "normality_tests.h"
#include "normality_window.h"

namespace qv {

namespace {

constexpr double kStartLevel = 0.05;

QString Text(const std::string& s) { return QString::fromStdString(s); }

}  // namespace

void NormalityTests::runTest(QLabel* legend, void (NormalityTests::*test)(), bool hideSlider) {
  boldLegend(legend);
  if (!m_input.rangeTaken) return;  // no sample: the knob only turns
  showBusy(true);
  if (hideSlider) showSlider(false);
  try {
    (this->*test)();
  } catch (const std::exception&) {
    showBusy(false);  // a failed run leaves the boxes as they were
  }
  AlphaSlider->setPosition(kStartLevel);
}

void NormalityTests::RunShapiroWilk() { runTest(Label9, &NormalityTests::ShapiroWilkTest, true); }
void NormalityTests::RunAndersonDarling() { runTest(Label8, &NormalityTests::AndersonDarlingTest, false); }
void NormalityTests::RunJarqueBera() { runTest(Label7, &NormalityTests::JacquesBera, false); }
void NormalityTests::RunLilliefors() { runTest(Label10, &NormalityTests::Lillieforstest, false); }

void NormalityTests::ShapiroWilkTest() {
  showBusy(true);
  // Compared with the level as the slider last left it; the critical value is always
  // that of 0.05.
  const ShapiroWilkResult r = ShapiroWilk(m_input.sample, level(), decimalMark());
  if (r.refused) {
    refuse(Text(r.notice), true);
    return;
  }
  Pval->setText(Text(r.pval));
  m_heldP = r.core.p;
  TestStat->setText(Text(r.testStat));
  showBell(*r.bell == Bell::Yes);
  CriticalBox->setText(Text(r.criticalBox));
  TestUsed->setText(QStringLiteral("Shapiro-Wilk test"));
  showBusy(false);
  showSlider(false);
  CriticalBox->show();
  Label2->show();
  writeVerdict();
}

void NormalityTests::AndersonDarlingTest() {
  const AndersonDarlingResult r = AndersonDarling(m_input.sample, decimalMark());
  if (r.refused) {
    refuse(Text(r.notice), false);
    return;
  }
  setLevel(0.05);  // this test knows no other level
  TestStat->setText(Text(r.testStat));
  Pval->setText(Text(r.pval));
  m_heldP = r.p;
  showBell(*r.bell == Bell::Yes);
  CriticalBox->hide();
  Label2->hide();
  TestUsed->setText(QStringLiteral("Anderson Darling test"));
  showSlider(false);
  showBusy(false);
  writeVerdict();
}

void NormalityTests::JacquesBera() {
  const JarqueBeraResult r = JarqueBera(m_input.sample, m_input.rangeCount, level(), decimalMark());
  // The p-value step shows or hides JBFew before the deviation is looked at.
  if (r.jbFew) {
    JBFew->setText(Text(*r.jbFew));
    JBFew->show();
  } else {
    JBFew->hide();
  }
  if (r.refused) {
    refuse(Text(r.notice), true);
    return;
  }
  showBell(*r.bell == Bell::Yes);
  CriticalBox->show();
  Label2->show();
  TestStat->setText(Text(r.testStat));
  CriticalBox->setText(Text(r.criticalBox));
  Pval->setText(Text(r.pval));
  m_heldP = r.p;
  showSlider(true);
  TestUsed->setText(QStringLiteral("Jacques Bera test"));
  showBusy(false);
  writeVerdict();
}

void NormalityTests::Lillieforstest() {
  if (!m_input.rangeTaken) return;
  const LillieforsResult r = Lilliefors(m_input.sample, decimalMark());
  // The count's message is the one for which the owner steps aside, not this window.
  if (!r.notice.empty() && !r.refused) ShowNotice(Text(r.notice), parentWidget());
  if (r.refused) {
    refuse(Text(r.notice), false);
    return;
  }
  // With fewer than 4 values there is no verdict of its own: the picture on show stays.
  if (r.bell) showBell(*r.bell == Bell::Yes);
  CriticalBox->show();
  Label2->show();
  TestStat->setText(Text(r.testStat));
  CriticalBox->setText(Text(r.criticalBox));
  Pval->setText(Text(r.pval));
  m_heldP.reset();
  TestUsed->setText(QStringLiteral("Lilliefors test"));
  showSlider(false);
  showBusy(false);
  writeVerdict();
}

}  // namespace qv
