// Taking a range: the user's pick or selection is checked, named in the workbook, and
// read into the sample. The workbook name, not the first pick, is the lasting link.
#include <QApplication>

#include "analysis_state.h"
#include "main_form.h"
#include "sample.h"
#include "tabulation.h"
#include "worksheet_functions.h"

namespace qv {

void MainForm::InputButton1_Click() {
  AnalysisState& s = State();
  NumberOfValues->hide();
  if (!s.ActiveBook) return;
  std::optional<CellRangeRef> picked;
  const std::optional<CellRangeRef> previous = s.InputRange;
  try {
    std::shared_ptr<Workbook> current = s.ExcelApp ? s.ExcelApp->activeWorkbook() : nullptr;
    if (!current) throw OfficeError("The spreadsheet shows no workbook");
    current->activate();
    if (!UseSelection) {
      showMinimized();
      // The picker opens over the document the user is looking at; a pick there in
      // another workbook than the attached one is refused below.
      if (rangePicker) {
        picked = rangePicker(*current);
      } else {
        picked = current->pickRange("Select a range in one column, header is first cell", [] {
          QApplication::processEvents(QEventLoop::AllEvents, 50);
        });
      }
      showNormal();
      if (!picked) return;  // cancelled: InputRange keeps its value
      s.InputRange = picked;
    } else {
      Selection sel = current->selection();
      if (sel.areas.empty()) throw OfficeError("empty selection");
      // Each area is cut to the used range first: an area with nothing in it (a block
      // below the data) is no second area.
      std::vector<CellRangeRef> areas;
      for (const CellRangeRef& a : sel.areas) {
        std::optional<CellRangeRef> used = current->usedRange(a.sheet);
        std::optional<CellRangeRef> cut = used ? Intersect(a, *used) : std::nullopt;
        if (cut) areas.push_back(*cut);
      }
      if (areas.empty()) {
        s.InputRange.reset();
        showNormal();
        return;
      }
      s.InputRange = areas.front();
      if (areas.size() > 1) {
        std::int64_t nonEmpty = 0;
        for (const CellRangeRef& a : areas) nonEmpty += CountA(current->readUsed(a));
        if (nonEmpty < 3) {
          s.InputRange.reset();
          showNormal();
          return;
        }
        ShowNotice(QStringLiteral("Binsight does not work with non contiguous range"));
        showNormal();
        return;
      }
    }
    CellRangeRef range = *s.InputRange;
    // A header and two values are the least that is taken.
    if (CountA(current->readUsed(range)) < 3) {
      s.InputRange.reset();
      showNormal();
      return;
    }
    SheetName = QString::fromStdString(current->sheetName(range.sheet));
    if (!current->sameDocument(*s.ActiveBook)) {
      // A range of another workbook: back to the one attached at start, whose range
      // stays in force.
      s.InputRange = previous;
      showNormal();
      s.ActiveBook->activate();
      TextBox14->setText(QString());
      return;
    }
    std::optional<CellRangeRef> used = s.ActiveBook->usedRange(range.sheet);
    std::optional<CellRangeRef> cut = used ? Intersect(range, *used) : std::nullopt;
    if (!cut) {
      s.InputRange.reset();
      showNormal();
      return;
    }
    s.InputRange = *cut;
    InitTruncationSliders();
    std::vector<CellRangeRef> errors = s.ActiveBook->errorFormulaCells(*cut);
    std::int64_t errorCells = 0;
    for (const CellRangeRef& e : errors) errorCells += e.count();
    s.PercentileIndex = errorCells;
    if (errorCells >= 1) {
      ShowNotice(QStringLiteral("The selected range contains ") + QString::number(errorCells) +
                 QStringLiteral(" cells values errors begining with a # sign!") + QChar('\r') +
                 QStringLiteral("              Binsight does not support ranges with error values"));
      s.ActiveBook->select(errors);
      close();  // the program ends
      return;
    }
    // Accept the range.
    s.ActiveBook->defineName(kDataName, *cut);
    QString address = QString::fromStdString(s.ActiveBook->address(*cut, true));
    if (address == TextBox14->text()) {
      // Same address: the text does not change and the sample is not read again.
    } else {
      TextBox14->setText(address);  // runs LoadSample and the refresh
    }
    s.NumberOfBins = SwitchKnob4->settingValue();
    TabulateByCount();
    DecimalCombo->setCurrentIndex(2);  // no click: nothing is recomputed now
    DrawTable();
    DAS_BarChart1->show();
    ResizeIt();
    UseSelection = false;
  } catch (const OfficeError& e) {
    NumberOfValues->setText(QString::fromStdString(e.what()));
    NumberOfValues->show();
  }
  showNormal();
}

void MainForm::TextBox14_Change() {
  if (!State().InputRange) return;
  if (LoadSample()) RefreshForm_TruncatedValues();
}

const RangeRead& MainForm::ReadCells(const CellRangeRef& range) {
  AnalysisState& s = State();
  // Unchanged cells are not read again: the listener on the range says when they change.
  if (s.LastRead && s.LastRead->range == range && !s.ActiveBook->changed()) return *s.LastRead;
  s.LastRead.reset();
  RangeRead read;
  read.range = range;
  s.ActiveBook->watch(range);
  read.cells = s.ActiveBook->read(range);
  read.sortedNumbers = BuildSample(read.cells, SampleFilter::Continuous, decimalMark());
  read.sortedDiscrete = BuildSample(read.cells, SampleFilter::Discrete, decimalMark());
  read.facts = ReadRangeFacts(read.cells);
  s.LastRead = std::move(read);
  return *s.LastRead;
}

bool MainForm::ReadNamedRange() {
  AnalysisState& s = State();
  // A read that fails leaves the sample in hand, not half a record.
  try {
    std::optional<CellRangeRef> named = s.ActiveBook->resolveName(kDataName);
    if (!named) throw OfficeError("The workbook no longer holds the range's name");
    s.InputRange = named;
    ReadCells(*named);
  } catch (const OfficeError& e) {
    s.LastRead.reset();
    NumberOfValues->setText(QString::fromStdString(e.what()));
    NumberOfValues->show();
    return false;
  }
  return true;
}

bool MainForm::LoadSample() {
  AnalysisState& s = State();
  if (!ReadNamedRange()) return false;
  const std::vector<double>& all = s.LastRead->sortedNumbers;
  if (s.TruncationActive) {
    s.TruncationHigh = SSlider22->position();
    s.TruncationLow = SSlider11->position();
    auto slice = TruncateSorted(all, *s.TruncationLow, *s.TruncationHigh);
    s.SampleValues.assign(slice.begin(), slice.end());
  } else {
    s.SampleValues = all;
  }
  return true;
}

}  // namespace qv
