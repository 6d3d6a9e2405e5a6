// The chart's view: counts or percentages, direction and gap; and the way back from
// discrete mode to the continuous setup.
#include <QLabel>

#include <cmath>

#include "analysis_state.h"
#include "main_form.h"

namespace qv {

namespace {

// Raises a flag for the outermost call only and lowers it when that call ends.
class ReentryGuard {
 public:
  explicit ReentryGuard(bool& flag) : flag_(flag), outer_(!flag) { flag_ = true; }
  ~ReentryGuard() {
    if (outer_) flag_ = false;
  }
  ReentryGuard(const ReentryGuard&) = delete;
  ReentryGuard& operator=(const ReentryGuard&) = delete;

 private:
  bool& flag_;
  bool outer_;
};

}  // namespace

void MainForm::OptionButton5_Click() {
  setBold(OptionButton5, true);
  setBold(OptionButton6, false);
  State().FrequencyView.clear();
  if (OptionDiscrete->isChecked()) {
    TabulateDiscrete();
    return;
  }
  // Back to counts in continuous mode resets the whole continuous setup (bins and
  // truncation): intended. When OptionContinuous_Click itself selected this option,
  // it is already under way and finishes the reset once.
  if (!inHandler_) OptionContinuous_Click();
}

void MainForm::OptionButton6_Click() {
  AnalysisState& s = State();
  setBold(OptionButton6, true);
  setBold(OptionButton5, false);
  // "Pct" lives only for this drawing; the option button keeps the user's choice.
  s.FrequencyView = "Pct";
  if (OptionDiscrete->isChecked())
    TabulateDiscrete();
  else
    RefreshForm();
  s.FrequencyView.clear();
}

void MainForm::Option1_Click() {
  setBold(Option1, true);
  setBold(Option2, false);
  DAS_BarChart1->setVertical(false);
  DAS_BarChart1->setGap(75);
  SlideGap->setVisible(true);
  SlideGap->setPosition(30);  // from code: the gap stays 75 until the user moves it
  DAS_BarChart1->setMargin(0);
}

void MainForm::Option2_Click() {
  setBold(Option2, true);
  setBold(Option1, false);
  DAS_BarChart1->setVertical(true);
  DAS_BarChart1->setGap(20);
  SlideGap->setVisible(true);
}

void MainForm::SlideGap_Change() {
  // The chart takes a 16-bit integer; a half goes to the even number, as the conversion does.
  DAS_BarChart1->setGap(static_cast<int>(std::nearbyint(SlideGap->position())));
  if (DAS_BarChart1->isVertical()) DAS_BarChart1->setMargin(25);
}

void MainForm::OptionContinuous_Click() {
  AnalysisState& s = State();
  // Selecting OptionButton5 below runs its handler, which would come back here: the flag
  // lets the chain run once.
  ReentryGuard once(inHandler_);
  setBold(OptionContinuous, true);
  setBold(OptionDiscrete, false);
  Frame55->setTitle(QStringLiteral("Truncarte range"));
  ListView2->setVisible(false);
  Check1->setVisible(false);
  SSlider11->setVisible(true);
  SSlider22->setVisible(true);
  Resetme->setVisible(true);
  Label13[3]->setVisible(true);
  Label13[4]->setVisible(true);
  Disabled->setVisible(false);
  ThemedButton[4]->setVisible(false);
  ThemedButton[5]->setVisible(true);
  OptionButton5->setChecked(true);
  SwitchKnob4->setEnabled(true);
  SSliderInterval->setEnabled(true);
  BinsBox->setEnabled(true);
  BinsNumber->setEnabled(true);
  for (QRadioButton* option : OptionBinning) option->setEnabled(true);  // the options' frame
  SwitchKnob4->setSetting(QStringLiteral("5"));
  for (QGroupBox* frame : FrameBinning) frame->setEnabled(true);
  if (!OptionBinning[0]->isChecked()) {
    OptionBinning[0]->setChecked(true);
    OptionBinning_Click(0);
  }
  s.NumberOfBins = 5;
  s.BinMark = "Red";  // five bins by number, as the controls now show, even after "Bin width"
  // Emptied once the bins are back to five by number: the change handler that this runs
  // then tabulates the new setup, not the discrete table's count of rows.
  BinsBox->setText(QString());
  Frame55->setVisible(false);
  Resetme_Click();
}

}  // namespace qv
