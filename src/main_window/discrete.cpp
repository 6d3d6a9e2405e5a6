// Discrete mode: one row per distinct value, ticked values stay in the sample.
#include <QLabel>

#include <algorithm>

#include "analysis_state.h"
#include "discrete.h"
#include "main_form.h"
#include "tabulation.h"

namespace qv {

void MainForm::OptionDiscrete_Click() {
  AnalysisState& s = State();
  setBold(OptionContinuous, false);
  setBold(OptionDiscrete, true);
  Frame55->setTitle(QStringLiteral("Discrete valuses to include/exclude"));
  ListView2->setVisible(true);
  Check1->setVisible(true);
  SSlider11->setVisible(false);
  SSlider22->setVisible(false);
  Label13[3]->setVisible(false);
  Label13[4]->setVisible(false);
  ListView2->clear();
  // Nothing here chooses bins: the table has one row per value.
  SwitchKnob4->setEnabled(false);
  SSliderInterval->setEnabled(false);
  Disabled->setVisible(true);
  ThemedButton[4]->setVisible(true);
  ThemedButton[5]->setVisible(false);
  BinsBox->setEnabled(false);
  BinsNumber->setEnabled(false);
  for (QRadioButton* option : OptionBinning) option->setEnabled(false);  // the options' frame
  Text2->setVisible(false);
  for (QGroupBox* frame : FrameBinning) frame->setEnabled(false);
  s.UniqueValues.clear();

  // With no range taken the sample is empty and this stops here too.
  DiscreteList list = ListDiscreteValues(s.SampleValues, decimalMark());
  if (list.status == DiscreteList::Status::TooFewValues) return;
  if (list.status == DiscreteList::Status::TooManyValues) {
    ShowNotice(QString::fromStdString(list.notice));
    DAS_BarChart1->clear();
    return;
  }
  s.UniqueValues = list.unique.values;
  for (std::size_t i = 0; i < list.unique.texts.size(); ++i)
    ListView2->addItem(QStringLiteral("K") + QString::number(i + 1),
                       QString::fromStdString(list.unique.texts[i]));
  ListView2->setAllChecked(true);
  Check1->setChecked(true);  // every row is ticked; from code, so Check1_Click does not run
  TabulateDiscrete();
}

void MainForm::UniqueValuesForCols(std::span<const double> values) {
  State().UniqueValues = qv::UniqueValuesForCols(values, decimalMark()).values;
}

void MainForm::Check1_Click() {
  // Ticks take effect at the next Resetme.
  ListView2->setAllChecked(Check1->isChecked());
}

bool MainForm::LoadDiscreteSample() {
  AnalysisState& s = State();
  if (!ReadNamedRange()) return false;
  // No bounds here: the ticks are the filter, and each cell keeps its multiplicity.
  s.SampleValues = FilterCheckedValues(s.LastRead->sortedDiscrete, s.CheckedValues, decimalMark());
  return true;
}

void MainForm::TabulateDiscrete() {
  AnalysisState& s = State();
  s.CheckedValues.clear();
  for (const QString& text : ListView2->checkedTexts()) s.CheckedValues.push_back(text.toStdString());
  s.NumberOfBins = static_cast<int>(s.CheckedValues.size());

  // Each count is taken over every cell of the named range as it stands in the sheet,
  // so it does not depend on the other rows' ticks.
  static const CellBlock kNoCells;
  const CellBlock* cells = &kNoCells;
  try {
    if (s.InputRange) cells = &ReadCells(*s.InputRange).cells;
  } catch (const OfficeError&) {
    // Passed over: the rows stay, with counts of 0.
  }
  FrequencyTable table = qv::TabulateDiscrete(*cells, s.CheckedValues, decimalMark());
  s.BinLabels = table.BinLabels;
  s.BinCounts = table.CountsAsDoubles();

  bool pct = s.FrequencyView == "Pct";
  // The percentage view rewrites the counts in place, by design, as in the continuous view.
  if (pct) ConvertToPercentages(s.BinCounts);
  DAS_BarChart1->setPercentSettings(pct, pct, pct);
  std::vector<BarChart::Bar> bars;
  bars.reserve(s.BinCounts.size());
  for (std::size_t i = 0; i < s.BinCounts.size(); ++i) {
    BarChart::Bar b;
    b.key = QString::fromStdString(BarKey(static_cast<std::int64_t>(i + 1)));
    b.label = QString::fromStdString(s.BinLabels[i]);
    b.color = QColor(255, 0, 0);
    b.value = static_cast<float>(s.BinCounts[i]);  // single precision, as the chart takes it
    bars.push_back(b);
  }
  DAS_BarChart1->setBars(bars);
  double top = s.BinCounts.empty() ? 0.0 : *std::max_element(s.BinCounts.begin(), s.BinCounts.end());
  DAS_BarChart1->setScaleTop(static_cast<float>(top));
  update();
}

}  // namespace qv
