#include "main_form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QIntValidator>
#include <QMessageBox>
#include <QTimer>
#include <QWindow>

#include "analysis_state.h"
#include "chrome_icons.h"
#include "help_window.h"
#include "themed_button.h"
#include "titel_bar.h"
#include "window_shadow.h"
#include "bin_rules.h"
#include "copy_action.h"
#include "cumulative_window.h"
#include "normality_window.h"
#include "number_text.h"
#include "plot_data_sheets.h"
#include "visualize_window.h"
#include "worksheet_functions.h"

namespace qv {

std::function<void(const QString&)> MainForm::noticeSink;
std::function<std::optional<CellRangeRef>(Workbook&)> MainForm::rangePicker;

namespace {

// The design lays the window out in twips: 15 to a pixel at 96 dpi.
QRect Twips(int left, int top, int width, int height) {
  return QRect(left / 15, top / 15, width / 15, height / 15);
}

// A flat button of the program's own look.
qv::ThemedButton* Flat(QWidget* parent, const QString& caption, QColor back = QColor()) {
  auto* b = new qv::ThemedButton(caption, parent);
  b->setButtonThemeType(1);
  if (back.isValid()) b->setBackColor(back);
  return b;
}

// A button that shows only a picture of the given PictureSize and PictureAlign.
qv::ThemedButton* Pictured(QWidget* parent, const QIcon& picture, int size, int align, int themeType = 1,
                           QColor back = Qt::white) {
  auto* b = new qv::ThemedButton(parent);
  b->setButtonThemeType(themeType);
  if (themeType == 1) b->setBackColor(back);
  b->setPicture(picture);
  b->setPictureSize(size);
  b->setPictureAlign(align);
  return b;
}

QLineEdit* StatBox(QWidget* parent, const QString& caption, int row, int col, QLabel** label = nullptr) {
  auto* l = new QLabel(caption, parent);
  l->setGeometry(8 + col * 170, 14 + row * 27, 82, 22);
  auto* box = new QLineEdit(QStringLiteral("Text3"), parent);
  box->setReadOnly(true);
  box->setGeometry(90 + col * 170, 14 + row * 27, 74, 22);
  if (label) *label = l;
  return box;
}

}  // namespace

MainForm::MainForm(QWidget* parent) : QWidget(parent) {
  setWindowTitle(QStringLiteral("Quantavue-Interactive"));
  setFont(QFont(QStringLiteral("Tahoma"), 8));
  setFixedWidth(13872 / 15);
  TitelBar1 = TitelBar::Install(this, false);
  buildStrip();
  buildTab();
  buildLower();
  connectHandlers();
  State().mainForm = this;
}

MainForm::~MainForm() {
  if (State().mainForm == this) State().mainForm = nullptr;
}

void MainForm::buildStrip() {
  Label21 = new QLabel(QStringLiteral("Select the range to analyse"), this);
  Label21->setGeometry(Twips(1200, 540, 4000, 300));
  InputButton1 = Pictured(this, RangePickIcon(), 2, 2, 0);
  InputButton1->setGeometry(Twips(360, 720, 732, 612));
  InputButton1->setToolTip(QStringLiteral("Select the range to analyse"));
  TextBox14 = new QLineEdit(this);
  TextBox14->setGeometry(Twips(1200, 840, 6492, 492));
  TextBox14->setReadOnly(true);
  NumberOfValues = new QLabel(this);
  NumberOfValues->setGeometry(Twips(7800, 840, 5200, 492));
  NumberOfValues->setStyleSheet(QStringLiteral("color: rgb(192, 0, 0);"));
  NumberOfValues->setWordWrap(true);
  NumberOfValues->hide();
  CopyPaste = Pictured(this, CopyWindowIcon(), 1, 0);
  CopyPaste->setGeometry(Twips(13200, 600, 492, 492));
  CopyPaste->setToolTip(QStringLiteral("Copy this form to the clipboard as an image"));
}

void MainForm::buildTab() {
  UnivarTab = new QTabWidget(this);
  UnivarTab->setGeometry(Twips(120, 1800, 13332, 3612));
  auto* tab = new QWidget;
  UnivarTab->addTab(tab, QStringLiteral("&Univariate analysis"));

  const char* options[3] = {"Nb of bins", "Bin width", "Explicit"};
  const char* tips[3] = {
      "Choose the number of subdivisions of the X axis.The histogram will start at the minimum range value "
      "and ends at the maximum",
      "The number of subdivisions of the X axis will be according to the subdivision width you select.The "
      "histogram will start at the minimum range value and ends at the maximum",
      "Select explicitely at which value should the histogram starts and ends"};
  const char* frames[3] = {"Number of bins (intervals)", "Interval length", "Explicit"};
  for (int i = 0; i < 3; ++i) {
    OptionBinning[i] = new QRadioButton(QString::fromLatin1(options[i]), tab);
    OptionBinning[i]->setGeometry(8 + i * 120, 6, 115, 20);
    OptionBinning[i]->setToolTip(QString::fromLatin1(tips[i]));
    FrameBinning[i] = new QGroupBox(QString::fromLatin1(frames[i]), tab);
    FrameBinning[i]->setGeometry(8, 30, 370, 175);
    FrameBinning[i]->setVisible(i == 0);
  }
  OptionBinning[0]->setChecked(true);
  setBold(OptionBinning[0], true);

  QWidget* f0 = FrameBinning[0];
  SwitchKnob4 = new SwitchKnob(f0);
  SwitchKnob4->setGeometry(10, 22, 130, 130);
  auto* more = new QLabel(QStringLiteral("More bins"), f0);
  more->setGeometry(160, 28, 100, 20);
  BinsBox = new QLineEdit(f0);
  BinsBox->setGeometry(160, 50, 60, 24);
  auto* method = new QLabel(QStringLiteral("Method"), f0);
  method->setGeometry(160, 90, 100, 20);
  BinsNumber = new QComboBox(f0);
  BinsNumber->setGeometry(160, 112, 130, 24);

  QWidget* f1 = FrameBinning[1];
  SSliderInterval = new DoubleSlider(f1);
  SSliderInterval->setGeometry(10, 50, 340, 50);

  QWidget* f2 = FrameBinning[2];
  auto* from = new QLabel(QStringLiteral("From"), f2);
  from->setGeometry(10, 28, 50, 20);
  FromBin = new QLineEdit(f2);
  FromBin->setGeometry(60, 26, 90, 24);
  FromBin->setToolTip(QStringLiteral("Must be lower or equal to the range (or truncated range) minimum value"));
  auto* to = new QLabel(QStringLiteral("To"), f2);
  to->setGeometry(10, 62, 50, 20);
  ToBin = new QLineEdit(f2);
  ToBin->setGeometry(60, 60, 90, 24);
  ToBin->setToolTip(QStringLiteral("Must be greater or equal to the range (or truncated range) maximum value"));
  OptionIncrement[0] = new QRadioButton(QStringLiteral("Nb of bins"), f2);
  OptionIncrement[0]->setGeometry(170, 26, 150, 20);
  OptionIncrement[1] = new QRadioButton(QStringLiteral("Increment width"), f2);
  OptionIncrement[1]->setGeometry(170, 48, 150, 20);
  OptionIncrement[1]->setChecked(true);
  setBold(OptionIncrement[1], true);
  Increment = new QLineEdit(f2);
  Increment->setGeometry(170, 74, 90, 24);
  Increment->setToolTip(QStringLiteral("Must be lower or equal to the (From-To) span"));
  Calculate = Flat(f2, QStringLiteral("Calculate"));
  Calculate->setGeometry(170, 110, 100, 28);

  Frame1 = new QGroupBox(tab);
  Frame1->setGeometry(Twips(5880, 240, 5200, 3240));
  TextBox1 = StatBox(Frame1, QStringLiteral("Non missing"), 0, 0);
  Miss = StatBox(Frame1, QStringLiteral("Missing obs"), 0, 1);
  TextBox2 = StatBox(Frame1, QStringLiteral("Average"), 1, 0);
  TextBox3 = StatBox(Frame1, QStringLiteral("Std deviation"), 1, 1);
  Range = StatBox(Frame1, QStringLiteral("Range"), 2, 0);
  TextBox4 = StatBox(Frame1, QStringLiteral("MIN"), 2, 1, &Label8);
  TextBox5 = StatBox(Frame1, QStringLiteral("Q25"), 3, 0);
  TextBox6 = StatBox(Frame1, QStringLiteral("Median"), 3, 1);
  TextBox7 = StatBox(Frame1, QStringLiteral("Q75"), 4, 0);
  TextBox8 = StatBox(Frame1, QStringLiteral("MAX"), 4, 1, &Label12);
  CV = StatBox(Frame1, QStringLiteral("CV(%)"), 5, 0);
  krt = StatBox(Frame1, QStringLiteral("Kurtosis"), 5, 1);
  skw = StatBox(Frame1, QStringLiteral("Skewness"), 6, 0);

  Normality = Flat(tab, QStringLiteral("Test normality"), QColor(0xC0, 0xC0, 0xC0));
  Normality->setToolTip(QStringLiteral("Runs tests for trsting the hypothesis of normality"));
  QQplot = Flat(tab, QStringLiteral("P-P plot"), QColor(0xC0, 0xC0, 0xC0));
  QQplot->setToolTip(Normality->toolTip());
  Excel = Pictured(tab, SheetExportIcon(), 3, 2);
  Excel->setToolTip(QStringLiteral("Export to Excel"));
  CheckInclude = new QCheckBox(QStringLiteral("Include observations"), tab);
  CheckInclude->setToolTip(QStringLiteral("The observations on which the histogram is based are also exported"));
  int x = Frame1->geometry().right() + 6, w = tab->width();
  w = 13332 / 15 - x - 10;
  Normality->setGeometry(x, 30, w, 30);
  QQplot->setGeometry(x, 70, w, 30);
  Excel->setGeometry(x, 108, 56, 56);  // room for its 48-pixel picture
  CheckInclude->setGeometry(x, 168, w, 40);

  Disabled = new QLineEdit(QStringLiteral("Disabled in discrete mode"), tab);
  Disabled->setReadOnly(true);
  Disabled->setGeometry(80, 100, 220, 24);
  Disabled->hide();
}

void MainForm::buildLower() {
  auto help = [this](int n, QWidget* parent, QRect where) {
    auto* b = Flat(parent, QStringLiteral("?"), QColor(0x80, 0x80, 0x80));
    b->setForeColor(Qt::white);
    b->setPictureSize(0);
    ThemedButton[n] = b;
    ThemedButton[n]->setGeometry(where);
  };
  help(8, this, Twips(120, 5760, 300, 288));
  help(1, FrameBinning[0], QRect(340, 18, 22, 22));
  help(3, FrameBinning[1], QRect(340, 18, 22, 22));
  help(2, FrameBinning[2], QRect(340, 18, 22, 22));
  ComboHighlight = new QComboBox(this);
  ComboHighlight->setGeometry(Twips(480, 5760, 2532, 288));
  CondFormat = Flat(this, QStringLiteral("Clear highlight"));
  CondFormat->setGeometry(Twips(3120, 5760, 1500, 288));
  CondFormat->hide();  // shown once a highlight is chosen
  ThemedButton6 = Flat(this, QStringLiteral("Truncate range"), QColor(0xC0, 0xC0, 0xC0));
  ThemedButton6->setGeometry(Twips(480, 6180, 2532, 330));

  Frame55 = new QGroupBox(QStringLiteral("Truncate range"), this);
  Frame55->setGeometry(Twips(120, 6600, 4332, 2772));
  Frame55->hide();
  Label13[3] = new QLabel(QStringLiteral("From Right to Left"), Frame55);
  Label13[3]->setGeometry(10, 20, 200, 18);
  SSlider22 = new DoubleSlider(Frame55);
  SSlider22->setGeometry(10, 38, 240, 46);
  Label13[4] = new QLabel(QStringLiteral("From Left to Right "), Frame55);
  Label13[4]->setGeometry(10, 90, 200, 18);
  SSlider11 = new DoubleSlider(Frame55);
  SSlider11->setGeometry(10, 108, 240, 46);
  Resetme = Pictured(Frame55, ResetIcon(), 1, 2);
  Resetme->setGeometry(256, 60, 32, 32);
  Resetme->setToolTip(QStringLiteral("Reset sliders"));
  help(5, Frame55, QRect(256, 130, 32, 24));
  help(4, Frame55, QRect(256, 130, 32, 24));
  ThemedButton[4]->hide();  // the discrete mode's help
  ListView2 = new CheckList(Frame55);
  ListView2->setGeometry(10, 20, 240, 130);
  ListView2->hide();
  Check1 = new QCheckBox(QStringLiteral("Select/Deselect all"), Frame55);
  Check1->setGeometry(10, 154, 200, 20);
  Check1->hide();
  Text2 = new QLineEdit(QStringLiteral("Disabled in explicit mode"), Frame55);
  Text2->setReadOnly(true);
  Text2->setGeometry(10, 154, 200, 22);
  Text2->hide();

  DAS_BarChart1 = new BarChart(this);
  DAS_BarChart1->setFileBaseName(QStringLiteral("Histogram"));
  DAS_BarChart1->setGeometry(Twips(4800, 5640, 7692, 3972));
  DAS_BarChart1->hide();
  SlideGap = new DoubleSlider(this);
  SlideGap->setGeometry(Twips(4680, 5220, 2000, 420));
  SlideGap->setBounds(0, 100);
  SlideGap->setDecimals(0);
  SlideGap->hide();

  // Three option pairs under the chart: direction, mode, units.
  auto group = [this](int left, const char* a, const char* b, QRadioButton** ra, QRadioButton** rb) {
    auto* box = new QFrame(this);
    box->setGeometry(left, 9720 / 15, 198, 22);
    *ra = new QRadioButton(QString::fromLatin1(a), box);
    (*ra)->setGeometry(0, 0, 96, 20);
    *rb = new QRadioButton(QString::fromLatin1(b), box);
    (*rb)->setGeometry(100, 0, 96, 20);
    (*ra)->setChecked(true);
    setBold(*ra, true);
  };
  group(4800 / 15, "Vertical", "Horizontal", &Option2, &Option1);
  group(4800 / 15 + 205, "Continuous", "Discrete", &OptionContinuous, &OptionDiscrete);
  group(4800 / 15 + 410, "Freq", "Pct", &OptionButton5, &OptionButton6);

  auto* dec = new QLabel(QStringLiteral("Decimals "), this);
  dec->setGeometry(Twips(12600, 5760, 1100, 300));
  DecimalCombo = new QComboBox(this);
  DecimalCombo->setGeometry(Twips(12960, 6120, 700, 330));
  SonicClick16 = Flat(this, QStringLiteral("Cumulative chart"), QColor(0xC0, 0xC0, 0xC0));
  SonicClick16->setGeometry(Twips(12600, 6800, 1200, 700));
}

void MainForm::setBold(QWidget* w, bool bold) {
  QFont f = w->font();
  f.setBold(bold);
  w->setFont(f);
}

void MainForm::connectHandlers() {
  connect(InputButton1, &QPushButton::clicked, this, [this] { InputButton1_Click(); });
  connect(TextBox14, &QLineEdit::textChanged, this, [this] { TextBox14_Change(); });
  connect(SwitchKnob4, &SwitchKnob::userChangedSetting, this, [this] { SwitchKnob4_Change(); });
  connect(BinsBox, &QLineEdit::textChanged, this, [this] { BinsBox_Change(); });
  connect(BinsNumber, QOverload<int>::of(&QComboBox::activated), this, [this](int i) { BinsNumber_Click(i); });
  for (int i = 0; i < 3; ++i)
    connect(OptionBinning[i], &QRadioButton::clicked, this, [this, i] { OptionBinning_Click(i); });
  for (int i = 0; i < 2; ++i)
    connect(OptionIncrement[i], &QRadioButton::clicked, this, [this, i] { OptionIncrement_Click(i); });
  connect(Increment, &QLineEdit::textChanged, this, [this] {
    std::string t = Increment->text().toStdString();
    std::string trimmed = TrimNonNumeric(t, decimalMark());
    if (trimmed != t) Increment->setText(QString::fromStdString(trimmed));
  });
  connect(Calculate, &QPushButton::clicked, this, [this] { Calculate_Click(); });
  connect(SSliderInterval, &DoubleSlider::valueChanged, this, [this] { SSliderInterval_Change(); });
  connect(DecimalCombo, QOverload<int>::of(&QComboBox::activated), this, [this] { DecimalCombo_Click(); });
  connect(SSlider11, &DoubleSlider::mouseReleased, this, [this] { SSlider11_MouseUp(); });
  connect(SSlider22, &DoubleSlider::mouseReleased, this, [this] { SSlider22_MouseUp(); });
  connect(Resetme, &QPushButton::clicked, this, [this] { Resetme_Click(); });
  connect(ThemedButton6, &QPushButton::clicked, this, [this] { Frame55->setVisible(!Frame55->isVisible()); });
  // Option buttons act on a click that selects them; a click on the selected one is no
  // change and runs nothing.
  auto onSelect = [this](QRadioButton* b, void (MainForm::*handler)()) {
    connect(b, &QRadioButton::toggled, this, [this, handler](bool on) {
      if (on) (this->*handler)();
    });
  };
  onSelect(OptionButton5, &MainForm::OptionButton5_Click);
  onSelect(OptionButton6, &MainForm::OptionButton6_Click);
  onSelect(Option1, &MainForm::Option1_Click);
  onSelect(Option2, &MainForm::Option2_Click);
  onSelect(OptionContinuous, &MainForm::OptionContinuous_Click);
  onSelect(OptionDiscrete, &MainForm::OptionDiscrete_Click);
  connect(SlideGap, &DoubleSlider::valueChanged, this, [this] { SlideGap_Change(); });
  connect(Check1, &QCheckBox::clicked, this, [this] { Check1_Click(); });
  connect(Normality, &QPushButton::clicked, this, [this] { ShowNormalityTests(); });
  connect(QQplot, &QPushButton::clicked, this, [this] { ShowVisualize(); });
  connect(SonicClick16, &QPushButton::clicked, this, [this] { ShowCumulat(); });
  connect(Excel, &QPushButton::clicked, this, [this] { Excel_Click(); });
  // activated, not currentIndexChanged: choosing the entry already shown runs it again.
  connect(ComboHighlight, &QComboBox::activated, this, [this] { ComboHighlight_Click(); });
  connect(CondFormat, &QPushButton::clicked, this, [this] { CondFormat_Click(); });
  connect(CopyPaste, &QPushButton::clicked, this, [this] {
    SendPrintScreen(this);
    PlayCopySound();
  });
  for (int n : {1, 2, 3, 4, 5, 8})
    connect(ThemedButton[n], &QPushButton::clicked, this, [this, n] {
      State().HelpTopic = n;
      HelpMsg::ShowTopic(State().HelpTopic, this);
    });
  // The decimals are chosen from the list only: typed keys are discarded.
  DecimalCombo->installEventFilter(this);
}

void MainForm::Form_Load() {
  // Stays above the spreadsheet, as a tool window over the data. Changing the flags
  // hides a shown window: it is shown again.
  if (!windowFlags().testFlag(Qt::WindowStaysOnTopHint)) {
    bool shown = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, true);
    if (shown) show();
  }
  setWindowOpacity(0.99);
  if (!Shadow) {
    Shadow = new WindowShadow(this);
    Shadow->Shadow(this);
  }
  setFixedHeight(1600 / 15);
  for (int i = 1; i <= 9; ++i) SwitchKnob4->addPosition(QString::number(i), i);
  SwitchKnob4->setSetting(QStringLiteral("5"));
  State().TruncationActive = false;
  for (int i = 0; i <= 5; ++i) DecimalCombo->addItem(QString::number(i), i);
  BinsNumber->addItems({QStringLiteral("Manual"), QStringLiteral("Sturges"), QStringLiteral("Rice Rule"),
                        QStringLiteral("Doane's"), QStringLiteral("Scott's")});
  ComboHighlight->addItems({QStringLiteral("Highlight in range:"), QStringLiteral("Minimum/Maximum"),
                            QStringLiteral("10% highest values"), QStringLiteral("10% lowest values"),
                            QStringLiteral("25% highest values"), QStringLiteral("25% lowest values")});
  DAS_BarChart1->clear();
  DecimalCombo->setCurrentIndex(2);
  SSliderInterval->setLowerBound(0);
  State().BinMark = "Red";
  UnivarTab->setCurrentIndex(0);
  DAS_BarChart1->hide();

  AnalysisState& s = State();
  if (!s.ActiveBook) return;
  try {
    s.ActiveBook->activate();
    // A spreadsheet's sheets are all worksheets here, so the intake is always tried.
    Selection sel = s.ActiveBook->selection();
    std::int64_t numbers = 0;
    for (const CellRangeRef& a : sel.areas) numbers += Count(s.ActiveBook->readUsed(a));
    if (numbers > 3) {
      UseSelection = true;
      InputButton1_Click();
    } else {
      setFixedHeight(1600 / 15);
    }
  } catch (const OfficeError&) {
    // Counting the selection failed (a picture is selected): the window closes.
    close();
  }
}

void MainForm::ShowNormalityTests() {
  AnalysisState& s = State();
  NormalityInput input;
  input.sample = s.SampleValues;
  input.rangeTaken = s.InputRange.has_value();
  input.rangeCount = s.LastRead ? Count(s.LastRead->cells) : 0;
  input.truncated = Label8->text() == QStringLiteral("*Min") || Label12->text() == QStringLiteral("*Max");
  input.significanceLevel = &s.SignificanceLevel;
  NormalityTests window(std::move(input), this);
  window.exec();  // modal: the sample stands still while it is open
}

void MainForm::ShowVisualize() {
  AnalysisState& s = State();
  const char mark = decimalMark();
  // The figures as the boxes show them, read with the mark they were written with.
  auto shown = [mark](const QLineEdit* box) { return Val(box->text().toStdString(), mark); };
  VisualizeInput input;
  input.sample = s.SampleValues;
  input.shownMean = shown(TextBox2);
  input.shownStdev = shown(TextBox3);
  input.shownMinimum = shown(TextBox4);
  input.shownMaximum = shown(TextBox8);
  input.truncated = Label8->text() == QStringLiteral("*Min") || Label12->text() == QStringLiteral("*Max");
  input.decimalMark = mark;
  input.sheets = WorkbookPlotData(s.ActiveBook);
  Visualize window(std::move(input), this);
  window.exec();  // modal: the sample stands still while it is open
}

void MainForm::ShowCumulat() {
  AnalysisState& s = State();
  CumulatInput input;
  input.sample = s.SampleValues;
  input.truncated = Label8->text() == QStringLiteral("*Min") || Label12->text() == QStringLiteral("*Max");
  input.decimalMark = decimalMark();
  input.helpTopic = &s.HelpTopic;
  Cumulat window(std::move(input), this);
  window.exec();
}

void MainForm::ShowNotice(const QString& text) {
  if (noticeSink) {
    noticeSink(text);
    return;
  }
  // The window stays on top of everything: step aside while the message is up.
  showMinimized();
  QMessageBox box(QMessageBox::NoIcon, QApplication::applicationName(), text, QMessageBox::Ok);
  box.exec();
  showNormal();
}

void MainForm::ResizeIt() { setFixedHeight(10488 / 15); }

int MainForm::decimals() const { return DecimalCombo->currentText().toInt(); }

char MainForm::decimalMark() const {
  QChar c = locale().decimalPoint().at(0);
  return c.unicode() < 128 ? static_cast<char>(c.unicode()) : '.';
}

void MainForm::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange && isMinimized()) {
    for (QWidget* w : QApplication::topLevelWidgets())
      if (w != this && w->isVisible()) w->showMinimized();
  }
  QWidget::changeEvent(event);
}

bool MainForm::eventFilter(QObject* watched, QEvent* event) {
  if (watched == DecimalCombo && event->type() == QEvent::KeyPress) return true;
  return QWidget::eventFilter(watched, event);
}

void MainForm::closeEvent(QCloseEvent* event) {
  // Every step is tried: an office that has gone away makes them fail quietly.
  AnalysisState& s = State();
  if (s.ActiveBook && s.ActiveBook->picking()) {
    // The office's range picker is up: end it first; the close comes back after.
    s.ActiveBook->abortPick();
    event->ignore();
    QTimer::singleShot(0, this, [this] { close(); });
    return;
  }
  if (s.ActiveBook) {
    try {
      s.ActiveBook->deleteName(kDataName);
    } catch (const OfficeError&) {
    }
  }
  QWidget::closeEvent(event);
}

}  // namespace qv
