// How the bins are made: the knob, the typed number, the rules, the width slider and
// the explicit bounds. Each ends with a table drawn and the width slider in step.
#include "analysis_state.h"
#include "bin_rules.h"
#include "main_form.h"
#include "tabulation.h"

namespace qv {

void MainForm::MoveIntervalSlider() {
  int k = std::max(State().NumberOfBins, 1);
  SSliderInterval->setPosition(SSliderInterval->upperBound() / k);  // from code: no handler
}

void MainForm::SwitchKnob4_Change() {
  AnalysisState& s = State();
  if (!OptionButton5->isChecked()) OptionButton5->click();
  if (OptionDiscrete->isChecked()) {
    SwitchKnob4->setEnabled(false);
    ShowNotice(QStringLiteral("Idle as long as the variable is in discrete mode"));
    return;
  }
  BinsBox->clear();
  if (s.InputRange) {
    s.NumberOfBins = SwitchKnob4->settingValue();
    TabulateByCount();
    DrawTable();
    s.BinMark = "Red";
  }
  MoveIntervalSlider();
}

void MainForm::BinsBox_Change() {
  AnalysisState& s = State();
  std::string text = BinsBox->text().toStdString();
  std::string trimmed = TrimNonNumeric(text, decimalMark());
  if (trimmed != text) {
    BinsBox->setText(QString::fromStdString(trimmed));  // runs this handler again
    return;
  }
  if (s.InputRange) {
    TypedBins typed = ReadTypedBins(text, decimalMark());
    if (typed.action == TypedBins::Action::TooMany) {
      ShowNotice(QStringLiteral("Limited to 100 intervals"));
      BinsBox->setText(SwitchKnob4->setting());
      return;
    }
    if (typed.action == TypedBins::Action::Accept) s.NumberOfBins = typed.numberOfBins;
    TabulateByCount();
    DrawTable();
  }
  MoveIntervalSlider();
}

void MainForm::BinsNumber_Click(int index) {
  AnalysisState& s = State();
  if (index == 0) {
    s.NumberOfBins = 5;
  } else {
    BinsBox->clear();
    BinRuleInputs in = ReadBinRuleInputs(TextBox1->text().toStdString(), TextBox3->text().toStdString(),
                                         skw->text().toStdString(), decimalMark());
    BinRuleResult r = ApplyBinRule(static_cast<BinRule>(index), in);
    if (!r.numberOfBins) {
      ShowNotice(QString::fromStdString(r.notice));
      return;
    }
    s.NumberOfBins = *r.numberOfBins;
  }
  if (s.InputRange) {
    TabulateByCount();
    DrawTable();
    s.BinMark = "Red";
  }
  MoveIntervalSlider();
}

void MainForm::OptionBinning_Click(int index) {
  for (int i = 0; i < 3; ++i) {
    setBold(OptionBinning[i], i == index);
    FrameBinning[i]->setVisible(i == index);
  }
  State().ExplicitMode = index == 2;
  Frame55->setEnabled(index != 2);
  Text2->setVisible(index == 2);
}

void MainForm::OptionIncrement_Click(int index) {
  setBold(OptionIncrement[0], index == 0);
  setBold(OptionIncrement[1], index == 1);
}

void MainForm::Calculate_Click() {
  AnalysisState& s = State();
  s.ExplicitMode = true;
  CalculateCheck c = CheckCalculate(FromBin->text().toStdString(), ToBin->text().toStdString(),
                                    Increment->text().toStdString(), TextBox4->text().toStdString(),
                                    TextBox8->text().toStdString(), decimalMark());
  if (c.verdict == CalculateCheck::Verdict::Silent) return;
  if (c.verdict == CalculateCheck::Verdict::Notice) {
    ShowNotice(QString::fromStdString(c.notice));
    return;
  }
  if (s.InputRange) {
    TabulateByCount();
    s.BinMark = "Red";
    DrawTable();
  }
}

void MainForm::SSliderInterval_Change() {
  AnalysisState& s = State();
  if (!OptionButton5->isChecked()) OptionButton5->click();
  s.BinWidth = SSliderInterval->position();
  if (*s.BinWidth == 0 || !s.InputRange) return;  // nothing can be divided
  TabulateByWidth();
  s.BinMark = "Blue";
  DrawTable();
}

}  // namespace qv
