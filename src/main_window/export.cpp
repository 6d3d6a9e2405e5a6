// The way out to the spreadsheet: the report export behind the Excel button, and the
// highlighting of the source range behind ComboHighlight and CondFormat.
#include "analysis_state.h"
#include "copy_action.h"
#include "highlight.h"
#include "main_form.h"
#include "report_writer.h"

namespace qv {

void MainForm::Excel_Click() {
  AnalysisState& s = State();
  if (!s.ActiveBook) return;
  const bool discrete = OptionDiscrete->isChecked();
  if (!discrete && s.InputRange && s.SampleValues.size() >= 2) {
    // The table of the screen, in counts even after a percentage drawing.
    if (s.BinMark == "Blue")
      TabulateByWidth();
    else
      TabulateByCount();
  }
  ReportInput in;
  const auto bins = static_cast<std::size_t>(std::max(s.NumberOfBins, 0));
  in.binLabels.assign(s.BinLabels.begin(), s.BinLabels.begin() + std::min(bins, s.BinLabels.size()));
  in.binCounts.assign(s.BinCounts.begin(), s.BinCounts.begin() + std::min(bins, s.BinCounts.size()));
  in.discrete = discrete;
  if (s.InputRange) in.rangeAddress = A1Address(*s.InputRange);
  QLineEdit* const boxes[8] = {TextBox1, TextBox2, TextBox3, TextBox4, TextBox5, TextBox6, TextBox7, TextBox8};
  for (int k = 0; k < 8; ++k) in.boxes[static_cast<std::size_t>(k)] = boxes[k]->text().toStdString();
  in.sample = s.SampleValues;
  in.decimals = decimals();
  in.decimalMark = decimalMark();
  in.includeObservations = CheckInclude->isChecked();
  ExportOutcome out = ExportReport(*s.ActiveBook, in);
  if (!out.done) {
    ShowNotice(QString::fromStdString(out.notice));
    return;
  }
  PlayCopySound();
}

// The range the workbook name refers to now: a renamed sheet or moved rows are followed.
std::optional<CellRangeRef> MainForm::HighlightRange() {
  AnalysisState& s = State();
  if (!s.ActiveBook || !s.InputRange) return std::nullopt;
  std::optional<CellRangeRef> r = s.ActiveBook->resolveName(kDataName);
  return r ? r : s.InputRange;
}

void MainForm::CondFormat_Click() {
  try {
    if (std::optional<CellRangeRef> r = HighlightRange()) ClearHighlight(*State().ActiveBook, *r);
  } catch (const OfficeError& e) {
    ShowNotice(QStringLiteral("The highlight could not be cleared: %1").arg(QString::fromUtf8(e.what())));
  }
}

void MainForm::ComboHighlight_Click() {
  CondFormat->setVisible(true);
  try {
    std::optional<CellRangeRef> r = HighlightRange();
    if (!r) return;
    // Each choice starts from a range without conditions.
    ApplyHighlight(*State().ActiveBook, *r, ComboHighlight->currentText().toStdString());
  } catch (const OfficeError& e) {
    ShowNotice(QStringLiteral("The highlight could not be changed: %1").arg(QString::fromUtf8(e.what())));
    return;
  }
  if (ComboHighlight->currentIndex() == 0) CondFormat->setVisible(false);
}

}  // namespace qv
