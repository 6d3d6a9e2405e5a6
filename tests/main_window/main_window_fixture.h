// A MainForm attached to a fresh, shown workbook of the test office, with messages and
// the range picker in the test's hands.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QStringList>

#include <chrono>
#include <thread>

#include "analysis_state.h"
#include "main_form.h"
#include "office_fixture.h"

namespace qv::testing {

class MainWindowTest : public OfficeTest {
 protected:
  bool hiddenBook() const override { return false; }

  void SetUp() override {
    OfficeTest::SetUp();
    // The intake reads the document in front; a busy office puts a new one there a little
    // later.
    for (int i = 0; i < 500; ++i) {
      std::shared_ptr<Workbook> front = HeadlessOffice::Get().office().activeWorkbook();
      if (front && front->sameDocument(*book)) break;
      book->activate();
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    AnalysisState& s = State();
    s = AnalysisState{};
    s.ExcelApp = HeadlessOffice::Get().shared();
    s.ActiveBook = book;
    notices.clear();
    MainForm::noticeSink = [this](const QString& t) { notices << t; };
    MainForm::rangePicker = [this](Workbook& over) {
      pickedOver = over.name();
      return picked;
    };
    form = new MainForm;
    form->setAttribute(Qt::WA_DeleteOnClose);
  }

  void TearDown() override {
    if (!closed()) {
      form->close();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QApplication::processEvents();
    State().LastRead.reset();
    State().ActiveBook.reset();
    if (book) OfficeTest::TearDown();
  }

  bool closed() const {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return State().mainForm != form;
  }

  // Writes a column at A1 and takes it through the range picker.
  void Take(const CellBlock& column, CellRangeRef at = {0, 0, 0, 0, 0}) {
    book->write(at, column);
    picked = CellRangeRef{at.sheet, at.firstCol, at.firstRow, at.firstCol,
                          static_cast<std::int32_t>(at.firstRow + column.rows - 1)};
    form->InputButton1->click();
  }

  static std::vector<double> BarValues(const MainForm& f) {
    std::vector<double> v;
    for (int i = 0; i < f.DAS_BarChart1->barCount(); ++i) v.push_back(f.DAS_BarChart1->barValue(i));
    return v;
  }

  MainForm* form = nullptr;
  QStringList notices;
  std::optional<CellRangeRef> picked;
  std::string pickedOver;  // the name of the document the picker opened over
};

// Twenty numbers 1..20 under a header, with three blanks among them.
inline CellBlock HeaderTwentyThreeBlanks() {
  CellBlock b;
  b.resize(24, 1);
  b.setText(0, "Weight");
  for (int i = 1, v = 1; i < 24; ++i) {
    if (i == 5 || i == 11 || i == 17) continue;
    b.setNumber(i, v++);
  }
  return b;
}

}  // namespace qv::testing
