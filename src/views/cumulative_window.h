// Cumulat: the modal window with the empirical cumulative distribution of the sample and
// a vertical line that the user drags along it to read x and F(x).
#pragma once

#include <QDialog>

#include <vector>

class QLabel;
class QLineEdit;

namespace qv {

class Plotter;
class ThemedButton;
class TitelBar;

struct CumulatInput {
  std::vector<double> sample;  // SampleValues, after truncation or the discrete filter
  bool truncated = false;      // MainForm's Label8 reads "*Min" or its Label12 "*Max"
  char decimalMark = '.';
  int* helpTopic = nullptr;    // HelpTopic of the shared record, set by the help button
};

class Cumulat : public QDialog {
  Q_OBJECT

 public:
  // Builds the window and runs Form_Load. Show it with exec().
  explicit Cumulat(CumulatInput input, QWidget* owner = nullptr);
  ~Cumulat() override;

  void Form_Load();
  void PlotCumul();
  void Plotter_CursorMoved(float x, float y);
  void Command1_Click();
  void ThemedButton6_Click();

  // The sorted sample the curve was made from.
  const std::vector<double>& sortedValues() const { return m_sorted; }

  TitelBar* TitelBar1;
  QLabel* Label7;
  QLabel* Label8;
  QLabel* Transform;
  Plotter* PlotterView;  // objectName "Plotter"
  QLineEdit* ValueY;
  QLineEdit* ValueX;
  ThemedButton* Command1;
  ThemedButton* ThemedButton6;

 private:
  void buildControls();

  CumulatInput m_input;
  std::vector<double> m_sorted;
};

}  // namespace qv
