// MainForm: the program's one permanent window and its control centre. Its handlers
// carry the chains of the analysis; the arithmetic lives in the engine.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QWidget>

#include <functional>
#include <optional>
#include <span>

#include "address.h"
#include "bar_chart.h"
#include "check_list.h"
#include "double_slider.h"
#include "switch_knob.h"

namespace qv {

struct Tabulation;
struct RangeRead;
class Workbook;
class WindowShadow;
class TitelBar;

class MainForm : public QWidget {
  Q_OBJECT

 public:
  explicit MainForm(QWidget* parent = nullptr);
  ~MainForm() override;

  // How messages and the range picker reach the user; tests replace them. The picker is
  // given the document it opens over.
  static std::function<void(const QString&)> noticeSink;
  static std::function<std::optional<CellRangeRef>(Workbook&)> rangePicker;

  void Form_Load();
  void ShowNotice(const QString& text);
  void ShowNormalityTests();
  // The distribution window ("P-P plot") and the cumulative chart, on the sample of the moment.
  void ShowVisualize();
  void ShowCumulat();

  // Intake and refresh.
  void InputButton1_Click();
  bool LoadSample();
  void TextBox14_Change();
  void RefreshIt();
  void RefreshForm_TruncatedValues();
  // Reads the range again when a cell of it changed since the last read (the sample, the
  // figures of the whole range and the truncation sliders' ends follow); every refresh
  // starts here. True when it read the range again.
  bool RereadIfChanged();
  // The thirteen boxes, the marks and the width slider from the sample in hand.
  void FillStatisticsBoxes();
  void ResizeIt();

  // Bins.
  void SwitchKnob4_Change();
  void BinsBox_Change();
  void BinsNumber_Click(int index);
  void OptionBinning_Click(int index);
  void OptionIncrement_Click(int index);
  void Calculate_Click();
  void SSliderInterval_Change();
  void TabulateByCount();
  void TabulateByWidth();
  void MoveIntervalSlider();

  // Drawing.
  void DrawTable();
  void DrawView();
  void RefreshForm();
  void DecimalCombo_Click();

  // Truncation.
  void InitTruncationSliders();
  void SSlider11_MouseUp();
  void SSlider22_MouseUp();
  void Resetme_Click();
  void OptionContinuous_Click();

  // Chart view.
  void OptionButton5_Click();
  void OptionButton6_Click();
  void Option1_Click();
  void Option2_Click();
  void SlideGap_Change();

  // Discrete mode.
  void OptionDiscrete_Click();
  void UniqueValuesForCols(std::span<const double> values);
  void Check1_Click();
  bool LoadDiscreteSample();
  void TabulateDiscrete();

  // Output to the spreadsheet: the report, the highlight of the source range.
  void Excel_Click();
  void ComboHighlight_Click();
  void CondFormat_Click();

  int decimals() const;
  char decimalMark() const;

  // Controls, by their names in the design.
  QLabel* Label21;
  QPushButton* InputButton1;
  QLineEdit* TextBox14;
  QLabel* NumberOfValues;
  QPushButton* CopyPaste;
  QTabWidget* UnivarTab;
  QRadioButton* OptionBinning[3];
  QGroupBox* FrameBinning[3];
  SwitchKnob* SwitchKnob4;
  QLineEdit* BinsBox;
  QComboBox* BinsNumber;
  DoubleSlider* SSliderInterval;
  QLineEdit* FromBin;
  QLineEdit* ToBin;
  QLineEdit* Increment;
  QRadioButton* OptionIncrement[2];
  QPushButton* Calculate;
  QGroupBox* Frame1;
  QLineEdit *TextBox1, *Miss, *TextBox2, *TextBox3, *Range, *TextBox4, *TextBox5, *TextBox6,
      *TextBox7, *TextBox8, *CV, *krt, *skw;
  QLabel* Label8;
  QLabel* Label12;
  QPushButton* Normality;
  QPushButton* QQplot;
  QPushButton* Excel;
  QCheckBox* CheckInclude;
  QComboBox* ComboHighlight;
  QPushButton* CondFormat;
  QPushButton* ThemedButton6;
  QGroupBox* Frame55;
  QLabel* Label13[5] = {};  // [3] and [4] caption the truncation sliders
  DoubleSlider* SSlider11;
  DoubleSlider* SSlider22;
  QPushButton* Resetme;
  CheckList* ListView2;
  QCheckBox* Check1;
  QLineEdit* Text2;
  QLineEdit* Disabled;
  BarChart* DAS_BarChart1;
  DoubleSlider* SlideGap;
  QRadioButton *Option2, *Option1;
  QRadioButton *OptionContinuous, *OptionDiscrete;
  QRadioButton *OptionButton5, *OptionButton6;
  QComboBox* DecimalCombo;
  QPushButton* SonicClick16;
  // The "?" buttons: ThemedButton[1], [2], [3], [4], [5] and [8]; the others stay null.
  QPushButton* ThemedButton[9] = {};

  TitelBar* TitelBar1;
  WindowShadow* Shadow = nullptr;  // made at the first load

  bool UseSelection = false;
  QString SheetName;
  std::optional<double> LastSliderLow, LastSliderHigh;

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void buildStrip();
  void buildTab();
  void buildLower();
  void connectHandlers();
  void setBold(QWidget* w, bool bold);
  // The range's cells, read and sorted once and kept while they stay unchanged.
  const RangeRead& ReadCells(const CellRangeRef& range);
  // Resolves the workbook name and reads its cells; false, with the message shown, when
  // the office fails.
  bool ReadNamedRange();
  void applyTabulation(const Tabulation& t);
  // The range the workbook name refers to now; nothing before a range is taken.
  std::optional<CellRangeRef> HighlightRange();
  bool inHandler_ = false;
};

}  // namespace qv
