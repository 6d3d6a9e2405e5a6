// Visualize: the modal window that compares the sample with one of eight fitted
// distributions. A P-P plot (for the Normal also a Q-Q plot) above, and a lower panel
// that opens on the detrended plot or the theoretical distribution. The arithmetic is in
// plot_data.h and theoretical.h; this window shows what they return.
#pragma once

#include <QDialog>
#include <QString>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "cell_block.h"
#include "plot_data.h"

class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace qv {

class BusyIndicator;
class Plotter;
class ThemedButton;
class TitelBar;
class XYChart;

// Where the plot data go: the workbook of the analysis, by role.
struct PlotDataSheets {
  std::function<bool(const std::string& name)> exists;   // a sheet of that name, in any case
  std::function<int(const std::string& name)> addLast;   // a new sheet after the last; its index
  std::function<void(int sheet, const CellBlock& cells)> write;  // cells from A1 on
};

// What the window needs of the shared record and of the main window.
struct VisualizeInput {
  std::vector<double> sample;  // SampleValues, after truncation or the discrete filter
  // The main window's figures as shown: TextBox2, TextBox3, TextBox4 and TextBox8.
  double shownMean = 0, shownStdev = 0, shownMinimum = 0, shownMaximum = 0;
  bool truncated = false;  // MainForm's Label12 reads "*Max" or its Label8 "*Min"
  char decimalMark = '.';
  PlotDataSheets sheets;   // none: the export says the spreadsheet is not there
};

class Visualize : public QDialog {
  Q_OBJECT

 public:
  // Window heights with the lower panel out of sight and in sight (6168 and 10776 twips).
  static constexpr int kClosedHeight = 6168 / 15;
  static constexpr int kOpenHeight = 10776 / 15;
  static constexpr int kPlotDataSheets = 100;

  // Builds the window and runs Form_Load. Show it with exec().
  explicit Visualize(VisualizeInput input, QWidget* owner = nullptr);
  ~Visualize() override;

  // How a message reaches the user; tests replace it. By default a plain box, with the
  // window minimised while it is up, since the window stays on top of the others.
  static std::function<void(const QString&)> noticeSink;

  void Form_Load();
  // Option1 to Option8, by distribution.
  void Option_Click(Distribution d);
  void OptionBinning_Click(int index);
  void ThemedButton2_Click();
  void ThemedButton1_Click();
  void Command1_Click();
  void Excel_Click();

  void PlotPPs();
  void PlotQQs();
  void PlotTheoreticalDis();

  // The last GenerateArrays.
  const FitRun& run() const { return m_run; }
  // The chosen distribution's option.
  QRadioButton* option(Distribution d) const;

  // Controls under their names in the window's table.
  TitelBar* TitelBar1;
  QGroupBox* Frame1;
  std::array<QRadioButton*, kDistributionCount> Option;  // by Distribution, Option1..Option8
  QFrame* Frame6;
  std::array<QRadioButton*, 2> OptionBinning;
  QLabel* Label1;
  QLabel* Transform;
  QLineEdit* Text1;
  QLineEdit* Correl;
  XYChart* NormalDist;
  QLabel* Label3;
  QLabel* Label4;
  BusyIndicator* Gif89a1;
  ThemedButton* Excel;
  ThemedButton* Command1;
  ThemedButton* ThemedButton2;
  QLineEdit* Text2;
  XYChart* Detrended;
  Plotter* PlotterView;  // objectName "Plotter"
  QLabel* Label7;
  QLabel* Label6;
  ThemedButton* ThemedButton1;

 private:
  void buildControls();
  void ShowNotice(const QString& text);
  void showBusy(bool on);
  // The fit of d; while the window is shown it runs beside the event loop so the busy mark turns.
  FitRun fitWhilePainting(Distribution d);
  // The lower panel's detrended plot in place of the theoretical curve.
  void showDetrendedView();
  void closePanel();
  void beginPlot();
  void boldOption(Distribution chosen);
  void boldBinning(int index);

  VisualizeInput m_input;
  FitRun m_run;
};

}  // namespace qv
