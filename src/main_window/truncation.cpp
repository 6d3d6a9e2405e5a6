// Truncation: two sliders narrow the sample to a closed interval. The sample is rebuilt
// from the range each time, so a slider moved back brings the values back.
#include "analysis_state.h"
#include "main_form.h"

namespace qv {

namespace {

// The handles stop at every multiple of 10^-d between the range's exact ends, so a
// bound the label shows is the bound in force.
void SpanRange(DoubleSlider* slider, int decimals, double min, double max, double position) {
  slider->setDecimalSteps(true);
  slider->setDecimals(decimals);
  slider->setBounds(min, max);
  slider->setPosition(position);
}

}  // namespace

void MainForm::InitTruncationSliders() {
  AnalysisState& s = State();
  SSlider11->setVisible(true);
  SSlider22->setVisible(true);
  // The bounds come from the whole range: every numeric cell of it.
  const RangeFacts& f = ReadCells(*s.InputRange).facts;
  double min = f.min, max = f.max;
  SpanRange(SSlider11, decimals(), min, max, min);
  SpanRange(SSlider22, decimals(), min, max, max);
  s.TruncationActive = true;
}

void MainForm::SSlider11_MouseUp() {
  double high = SSlider22->position(), low = SSlider11->position();
  if (high <= low && LastSliderHigh && LastSliderLow) {
    ShowNotice(QStringLiteral("Maximum value should be greater than the Minimum value"));
    // Back to the last accepted position, so that the sliders never stay crossed.
    SSlider11->setPosition(*LastSliderLow);
    return;
  }
  RefreshIt();
  LastSliderLow = SSlider11->position();
}

void MainForm::SSlider22_MouseUp() {
  double high = SSlider22->position(), low = SSlider11->position();
  if (high <= low && LastSliderHigh && LastSliderLow) {
    ShowNotice(QStringLiteral("Maximum value should be greater than the Minimum value"));
    SSlider22->setPosition(*LastSliderHigh);
    return;
  }
  RefreshIt();
  LastSliderHigh = SSlider22->position();
}

void MainForm::Resetme_Click() {
  AnalysisState& s = State();
  if (!OptionContinuous->isChecked()) {
    // Discrete mode: the ticked rows become the filter of the reload.
    s.CheckedValues.clear();
    for (const QString& text : ListView2->checkedTexts()) s.CheckedValues.push_back(text.toStdString());
    RefreshIt();
    return;
  }
  if (!s.InputRange || !s.LastRead) return;  // no range taken yet
  RereadIfChanged();  // the ends come from the range as it is now
  if (!s.LastRead) return;
  NumberOfValues->hide();
  Label8->setText(QStringLiteral("MIN"));
  Label12->setText(QStringLiteral("MAX"));
  const RangeFacts& f = s.LastRead->facts;
  SpanRange(SSlider11, decimals(), f.min, f.max, f.min);
  SpanRange(SSlider22, decimals(), f.min, f.max, f.max);
  s.TruncationActive = true;
  RefreshIt();
}

}  // namespace qv
