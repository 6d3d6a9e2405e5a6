// The refresh chain: the sample is re-read, the statistics boxes filled, the table
// repeated and drawn.
#include "analysis_state.h"
#include "main_form.h"
#include "statistics.h"
#include "tabulation.h"
#include "worksheet_functions.h"

namespace qv {

void MainForm::RefreshIt() {
  AnalysisState& s = State();
  if (!s.InputRange) return;
  if (SSlider22->isVisibleTo(Frame55)) {
    LastSliderHigh = SSlider22->position();
    LastSliderLow = SSlider11->position();
  }
  if (OptionDiscrete->isChecked()) {
    if (LoadDiscreteSample()) {
      TabulateDiscrete();
      RefreshForm_TruncatedValues();
    }
    return;
  }
  if (LoadSample()) RefreshForm_TruncatedValues();
}

bool MainForm::RereadIfChanged() {
  AnalysisState& s = State();
  if (!s.InputRange || !s.LastRead || !s.ActiveBook) return false;
  bool changed = false;
  try {
    changed = s.ActiveBook->changed();
  } catch (const OfficeError&) {
    // The office is gone: the figures in hand stay.
  }
  if (!changed) return false;
  if (OptionDiscrete->isChecked()) return LoadDiscreteSample();
  if (!ReadNamedRange()) return false;
  // The sliders' ends are the range's ends as it is now; a handle beyond a new end is
  // pulled along, which leaves out no value of the range.
  if (s.TruncationActive) {
    const RangeFacts& f = s.LastRead->facts;
    SSlider11->setBounds(f.min, f.max);
    SSlider22->setBounds(f.min, f.max);
  }
  return LoadSample();
}

void MainForm::RefreshForm_TruncatedValues() {
  AnalysisState& s = State();
  RereadIfChanged();
  if (!s.LastRead) return;
  FillStatisticsBoxes();
  if (!OptionDiscrete->isChecked()) {
    if (s.BinMark == "Blue")
      TabulateByWidth();
    else
      TabulateByCount();
    DrawView();
  }
}

void MainForm::FillStatisticsBoxes() {
  AnalysisState& s = State();
  if (!s.LastRead) return;
  // The values arrive sorted: a slice or a filter of the values sorted at the read.
  StatisticsBoxes b = RefreshStatistics(s.SampleValues, s.LastRead->facts, decimals(), decimalMark());
  auto put = [](QLineEdit* box, const std::optional<std::string>& text) {
    if (text) box->setText(QString::fromStdString(*text));
  };
  put(TextBox1, b.TextBox1);
  put(Miss, b.Miss);
  put(TextBox2, b.TextBox2);
  put(TextBox3, b.TextBox3);
  put(TextBox4, b.TextBox4);
  put(TextBox5, b.TextBox5);
  put(TextBox6, b.TextBox6);
  put(TextBox7, b.TextBox7);
  put(TextBox8, b.TextBox8);
  put(krt, b.krt);
  put(skw, b.skw);
  put(Range, b.Range);
  put(CV, b.CV);
  // The marks stay until Resetme: a slider dragged back leaves them on.
  if (b.markMin) Label8->setText(QStringLiteral("*Min"));
  if (b.markMax) Label12->setText(QStringLiteral("*Max"));
  if (b.intervalMaximum) {
    SSliderInterval->setBounds(0, *b.intervalMaximum);
    SSliderInterval->setPosition(*b.intervalMaximum / 5);
  }
}

void MainForm::applyTabulation(const Tabulation& t) {
  AnalysisState& s = State();
  switch (t.status) {
    case Tabulation::Status::Done:
      s.BinLabels = t.table.BinLabels;
      s.BinCounts = t.table.CountsAsDoubles();
      s.NumberOfBins = t.table.NumberOfBins();
      break;
    case Tabulation::Status::TooFewValues:
      NumberOfValues->setText(QString::fromStdString(t.message));
      NumberOfValues->show();
      break;
    case Tabulation::Status::Refused:
      if (!t.message.empty()) ShowNotice(QString::fromStdString(t.message));
      break;
  }
}

void MainForm::TabulateByCount() {
  AnalysisState& s = State();
  if (RereadIfChanged()) FillStatisticsBoxes();
  std::optional<ExplicitBins> explicitBins;
  if (s.ExplicitMode)
    explicitBins = ReadExplicitBins(FromBin->text().toStdString(), ToBin->text().toStdString(),
                                    Increment->text().toStdString(), OptionIncrement[1]->isChecked(),
                                    decimalMark());
  applyTabulation(qv::TabulateByCount(s.SampleValues, s.NumberOfBins, explicitBins, decimals(), decimalMark()));
}

void MainForm::TabulateByWidth() {
  AnalysisState& s = State();
  if (RereadIfChanged()) FillStatisticsBoxes();
  if (!s.BinWidth) return;
  applyTabulation(qv::TabulateByWidth(s.SampleValues, *s.BinWidth, decimals(), decimalMark()));
}

namespace {

std::vector<BarChart::Bar> Bars(const AnalysisState& s, QColor colour) {
  std::vector<BarChart::Bar> bars;
  std::size_t k = std::min<std::size_t>({static_cast<std::size_t>(std::max(s.NumberOfBins, 0)),
                                         s.BinLabels.size(), s.BinCounts.size()});
  bars.reserve(k);
  for (std::size_t i = 0; i < k; ++i) {
    BarChart::Bar b;
    b.key = QString::fromStdString(BarKey(static_cast<std::int64_t>(i + 1)));
    b.label = QString::fromStdString(s.BinLabels[i]);
    b.color = colour;
    // The chart takes single precision, as the original control did.
    b.value = static_cast<float>(s.BinCounts[i]);
    bars.push_back(b);
  }
  return bars;
}

double ScaleTop(const std::vector<double>& counts) {
  return counts.empty() ? 0.0 : static_cast<float>(*Max(counts));
}

}  // namespace

void MainForm::DrawTable() {
  AnalysisState& s = State();
  DAS_BarChart1->setBars(Bars(s, palette().color(QPalette::Button)));
  DAS_BarChart1->setScaleTop(ScaleTop(s.BinCounts));
}

void MainForm::DrawView() {
  AnalysisState& s = State();
  bool pct = s.FrequencyView == "Pct";
  // The percentage view rewrites the counts in place, by design: the table then holds
  // what the chart shows until the next tabulation.
  if (pct) ConvertToPercentages(s.BinCounts);
  DAS_BarChart1->setPercentSettings(pct, pct, pct);
  DAS_BarChart1->setBars(Bars(s, palette().color(QPalette::Button)));
  DAS_BarChart1->setScaleTop(ScaleTop(s.BinCounts));
}

void MainForm::RefreshForm() {
  DecimalCombo->setCurrentIndex(2);
  DrawView();
}

void MainForm::DecimalCombo_Click() {
  if (!State().InputRange) return;
  RefreshForm_TruncatedValues();
}

}  // namespace qv
