// NormalityTests: the modal window that tests the current sample for normality. A
// four-position knob picks the test; each runs at once and fills the same boxes, and a
// picture gives the outcome at a glance. The arithmetic is in normality_tests.h.
#pragma once

#include <QDialog>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;

namespace qv {

class BusyIndicator;
class DoubleSlider;
class SwitchKnob;

// What the window needs of the shared record and of the main window.
struct NormalityInput {
  std::vector<double> sample;     // SampleValues: ascending, after truncation or the discrete filter
  bool rangeTaken = false;        // InputRange is set
  std::int64_t rangeCount = 0;    // Count(InputRange): the numbers of the whole range, untruncated
  bool truncated = false;         // MainForm's Label8 reads "*Min" or its Label12 "*Max"
  // SignificanceLevel of the shared record, read and written by the window; the window
  // keeps a level of its own when none is given.
  std::optional<double>* significanceLevel = nullptr;
};

class NormalityTests : public QDialog {
  Q_OBJECT

 public:
  // Builds the window and runs Form_Load. Show it with exec().
  explicit NormalityTests(NormalityInput input, QWidget* owner = nullptr);
  ~NormalityTests() override;

  // How a test's message reaches the user; tests replace it. By default a plain box with
  // one OK button. Either way the window (or, for Lilliefors' count, its owner) is
  // minimised while it is up, since this window stays on top of the others.
  static std::function<void(const QString&)> noticeSink;

  // Handlers, in the order the window runs them.
  void Form_Load();
  void SwitchKnob4_Change(const QString& value);
  void AlphaSlider_Change();
  void CommandButton333_Click();

  void RunShapiroWilk();
  void RunAndersonDarling();
  void RunJarqueBera();
  void RunLilliefors();

  // The tests with their display.
  void ShapiroWilkTest();
  void AndersonDarlingTest();
  void JacquesBera();
  void Lillieforstest();

  int TestChoice = 2;  // knob position last read, 1 to 4

  // Controls under their names in the window's table.
  SwitchKnob* SwitchKnob4;
  DoubleSlider* AlphaSlider;
  QLabel* Label12;
  QLineEdit* Pval;
  QLineEdit* CriticalBox;
  QLineEdit* TestStat;
  QLabel* Label1;
  QLabel* Label2;
  QLabel* Label3;
  QLabel* Label11;
  QLabel* Label7;
  QLabel* Label8;
  QLabel* Label9;
  QLabel* Label10;
  QLabel* TestUsed;
  QLabel* Label5;
  QLabel* YesBell;
  QLabel* NoBell;
  QLabel* Transform;
  QLineEdit* JBFew;
  QLabel* Label4;
  BusyIndicator* Gif89a1;
  QPushButton* CommandButton333;

 private:
  void buildControls();
  void placeLegends();
  // Shows a test's message; `aside` (this window, or its owner) is minimised while the
  // message is up and then put back as it was.
  void ShowNotice(const QString& text, QWidget* aside);
  void boldLegend(QLabel* selected);
  // A runner: marks its legend, shows the busy mark, runs the test, puts the slider back.
  void runTest(QLabel* legend, void (NormalityTests::*test)(), bool hideSlider);
  void showBusy(bool on);
  void showBell(bool yes);
  void writeVerdict();
  void refuse(const QString& notice, bool hideSlider);
  void showSlider(bool on);
  double level() const;
  void setLevel(double value);
  char decimalMark() const;
  bool knobOn(const char* position) const;

  NormalityInput m_input;
  std::optional<double> m_ownLevel;
  // The p value behind Pval as the last run judged it (Jarque-Bera's four decimals where
  // the box shows three); none counts as 0.
  std::optional<double> m_heldP;
  std::optional<double>* m_level = nullptr;  // SignificanceLevel, the record's or m_ownLevel
};

}  // namespace qv
