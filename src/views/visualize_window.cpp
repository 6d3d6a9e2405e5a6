// Visualize: controls, loading, the option handlers, the plots and the plot-data export.
#include "visualize_window.h"

#include <QApplication>
#include <QButtonGroup>
#include <QFont>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QTimer>

#include <chrono>
#include <exception>
#include <future>

#include "busy_indicator.h"
#include "chrome_icons.h"
#include "copy_action.h"
#include "plotter.h"
#include "theoretical.h"
#include "themed_button.h"
#include "titel_bar.h"
#include "xy_chart.h"

namespace qv {

std::function<void(const QString&)> Visualize::noticeSink;

namespace {

constexpr double kWindowOpacity = 0.92;
constexpr std::uint32_t kBlue = 0xFF0000;
constexpr std::uint32_t kRed = 0x0000FF;
// The most rows a sheet holds.
constexpr std::size_t kSheetRows = 1048576;

// Places in twips, as the window's table gives them, turned into pixels.
QRect Twips(int left, int top, int width, int height) {
  return QRect(left / 15, top / 15, width / 15, height / 15);
}

template <class W>
W* Named(W* widget, const char* name) {
  widget->setObjectName(QString::fromLatin1(name));
  return widget;
}

QLabel* Caption(QWidget* parent, const char* name, const QString& text, const QRect& where) {
  auto* label = Named(new QLabel(text, parent), name);
  label->setGeometry(where);
  label->setWordWrap(true);
  return label;
}

QLineEdit* Box(QWidget* parent, const char* name, const QRect& where) {
  auto* box = Named(new QLineEdit(parent), name);
  box->setReadOnly(true);
  box->setFrame(false);
  box->setAlignment(Qt::AlignCenter);
  box->setGeometry(where);
  box->setFocusPolicy(Qt::NoFocus);
  QObject::connect(box, &QLineEdit::textChanged, box, [box] { box->setCursorPosition(0); });
  return box;
}

ThemedButton* Button(QWidget* parent, const char* name, const QString& caption, const QRect& where) {
  auto* button = Named(new ThemedButton(caption, parent), name);
  button->setButtonThemeType(1);
  if (!caption.isEmpty()) {
    // A face of its own, so that a caption reads as a button on the window's colour.
    button->setBackColor(QColor(212, 220, 234));
    button->setOverColor(QColor(232, 238, 248));
    button->setButtonRounding(4);
  }
  button->setGeometry(where);
  button->setAutoDefault(false);
  return button;
}

void SetBold(QWidget* w, bool bold) {
  QFont f = w->font();
  f.setBold(bold);
  w->setFont(f);
}

ChartCurve Curve(const char* key, double min, double max, std::uint32_t color, int curveStyle,
                 int lineStyle, std::uint32_t pointColor, int pointSize, int pointStyle, bool showScale) {
  ChartCurve c;
  c.Key = QString::fromLatin1(key);
  c.Min = min;
  c.Max = max;
  c.Color = color;
  c.Width = 3;
  c.CurveStyle = curveStyle;
  c.LineStyle = lineStyle;
  c.PointColor = pointColor;
  c.PointSize = pointSize;
  c.PointStyle = pointStyle;
  c.SubTickerNum = 10;
  c.bShowScale = showScale;
  return c;
}

}  // namespace

Visualize::Visualize(VisualizeInput input, QWidget* owner) : QDialog(owner), m_input(std::move(input)) {
  setObjectName(QStringLiteral("Visualize"));
  setWindowTitle(QStringLiteral("Quantavue-Interactive"));
  setModal(true);
  buildControls();
  Form_Load();
}

Visualize::~Visualize() = default;

void Visualize::buildControls() {
  setFixedSize(11028 / 15, kClosedHeight);
  QPalette pal = palette();
  pal.setColor(QPalette::Window, QColor(236, 239, 244));
  setPalette(pal);
  setAutoFillBackground(true);

  Frame1 = Named(new QGroupBox(QStringLiteral(" Distribution"), this), "Frame1");
  Frame1->setGeometry(Twips(720, 1320, 9828, 732));
  auto* options = new QButtonGroup(this);
  struct Place {
    Distribution d;
    const char* name;
    int left;
  };
  const Place places[] = {{Distribution::Normal, "Option1", 120},   {Distribution::Exponential, "Option2", 1560},
                          {Distribution::Uniform, "Option4", 3240}, {Distribution::Weibull, "Option3", 4440},
                          {Distribution::Gama, "Option5", 5640},    {Distribution::LogNormal, "Option6", 6600},
                          {Distribution::Beta, "Option7", 7920},    {Distribution::Pareto, "Option8", 8760}};
  for (const Place& p : places) {
    auto* o = Named(new QRadioButton(QString::fromLatin1(DistributionCaption(p.d)), Frame1), p.name);
    o->move(p.left / 15, 240 / 15);
    o->adjustSize();
    options->addButton(o);
    Option[static_cast<std::size_t>(p.d)] = o;
    connect(o, &QRadioButton::clicked, this, [this, d = p.d] { Option_Click(d); });
  }

  Frame6 = Named(new QFrame(this), "Frame6");
  Frame6->setGeometry(Twips(840, 600, 2772, 492));
  auto* kinds = new QButtonGroup(this);
  const char* kindNames[2] = {"OptionBinning(0)", "OptionBinning(1)"};
  const QString kindCaptions[2] = {QStringLiteral("P-P plot"), QStringLiteral("Q-Q plot")};
  for (int i = 0; i < 2; ++i) {
    OptionBinning[i] = Named(new QRadioButton(kindCaptions[i], Frame6), kindNames[i]);
    OptionBinning[i]->move((i == 0 ? 120 : 1560) / 15, 120 / 15);
    OptionBinning[i]->adjustSize();
    kinds->addButton(OptionBinning[i], i);
    connect(OptionBinning[i], &QRadioButton::clicked, this, [this, i] { OptionBinning_Click(i); });
  }

  Label1 = Caption(this, "Label1", QStringLiteral("P-P plot"), Twips(3240, 600, 5292, 492));
  Label1->setAlignment(Qt::AlignCenter);
  QFont title = Label1->font();
  title.setBold(true);
  title.setPointSizeF(title.pointSizeF() * 1.6);
  Label1->setFont(title);
  Label1->setStyleSheet(QStringLiteral("color: rgb(0, 0, 128);"));

  Transform = Caption(this, "Transform", QStringLiteral("For y="), Twips(3720, 1080, 2556, 252));
  Transform->setAlignment(Qt::AlignCenter);
  QFont note = Transform->font();
  note.setItalic(true);
  note.setBold(true);
  Transform->setFont(note);
  Transform->setStyleSheet(QStringLiteral("color: rgb(128, 0, 0);"));

  NormalDist = Named(new XYChart(this), "NormalDist");
  NormalDist->setFileBaseName(QStringLiteral("Distribution"));
  NormalDist->setGeometry(Twips(2160, 2160, 7092, 3612));
  Text1 = Box(this, "Text1", Twips(3480, 2400, 2892, 252).adjusted(0, 0, 0, 4));
  Text1->setText(QStringLiteral("Text1"));
  Text1->setStyleSheet(QStringLiteral("background: transparent; color: rgb(0, 0, 160);"));
  Correl = Box(this, "Correl", Twips(9480, 2280, 1212, 375));
  QFont figure = Correl->font();
  figure.setBold(true);
  Correl->setFont(figure);
  Correl->setStyleSheet(QStringLiteral("background: transparent;"));
  Label3 = Caption(this, "Label3", QStringLiteral("Observed percentiles (%)"), Twips(240, 3720, 1932, 252).adjusted(0, -10, 0, 14));
  Label3->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  Label4 = Caption(this, "Label4", QStringLiteral("Expected  percentiles (%)"), Twips(6240 - 900, 5880 - 60, 2052 + 900, 252));
  Label4->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  Label4->setWordWrap(false);

  Gif89a1 = Named(new BusyIndicator(this), "Gif89a1");
  const QRect busy = Twips(5040, 3600, 1536, 180);
  Gif89a1->setGeometry(QRect(busy.center() - QPoint(14, 14), QSize(28, 28)));

  Excel = Button(this, "Excel", QString(), Twips(9840, 4800, 612, 492));
  Excel->setPicture(SheetExportIcon());
  Excel->setPictureAlign(ThemedButton::Centred);
  Excel->setPictureSize(1);
  Excel->setToolTip(QStringLiteral("Export the plot data to a new sheet"));
  Command1 = Button(this, "Command1", QString(), Twips(10440, 600, 492, 492));
  Command1->setPicture(CopyWindowIcon());
  Command1->setPictureAlign(ThemedButton::Centred);
  Command1->setPictureSize(1);
  Command1->setToolTip(QStringLiteral("Copy this form to the clipboard as an image"));
  ThemedButton2 = Button(this, "ThemedButton2", QStringLiteral("Detrended plot"), Twips(9360, 5640, 1600, 372));

  // Wider than the table's place, centred on it: the bold title fits in either wording.
  Text2 = Box(this, "Text2", Twips(4200 - 900, 6480, 2652 + 1800, 375));
  Text2->setText(QStringLiteral("Theoretical distribution"));
  QFont panel = Text2->font();
  panel.setBold(true);
  panel.setPointSizeF(panel.pointSizeF() * 1.2);
  Text2->setFont(panel);
  Text2->setStyleSheet(QStringLiteral("background: transparent; color: rgb(0, 0, 128);"));
  Detrended = Named(new XYChart(this), "Detrended");
  Detrended->setFileBaseName(QStringLiteral("Distribution detail"));
  Detrended->setGeometry(Twips(2040, 6840, 7092, 3252));
  PlotterView = Named(new Plotter(this), "Plotter");
  PlotterView->setFileBaseName(QStringLiteral("Distribution detail"));
  PlotterView->setGeometry(Twips(2040, 6840, 7092, 3372));
  Label7 = Caption(this, "Label7", QStringLiteral("(Observed -Expected) percentiles (%)"), Twips(120, 8040, 1812, 612));
  Label7->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  Label6 = Caption(this, "Label6", QStringLiteral("Observed percentiles (%)"), Twips(4320 - 600, 10140, 1932 + 1200, 252));
  Label6->setAlignment(Qt::AlignCenter);
  Label6->setWordWrap(false);
  ThemedButton1 = Button(this, "ThemedButton1", QStringLiteral("Theoretical distribution"), Twips(9360, 8760, 1600, 492));
  ThemedButton1->setToolTip(QStringLiteral("Display the theoretical distribution in the same range"));

  connect(ThemedButton2, &QPushButton::clicked, this, &Visualize::ThemedButton2_Click);
  connect(ThemedButton1, &QPushButton::clicked, this, &Visualize::ThemedButton1_Click);
  connect(Command1, &QPushButton::clicked, this, &Visualize::Command1_Click);
  connect(Excel, &QPushButton::clicked, this, &Visualize::Excel_Click);

  // The bar takes the top 492 twips that the table leaves free.
  TitelBar1 = TitelBar::Install(this, false);
}

QRadioButton* Visualize::option(Distribution d) const { return Option[static_cast<std::size_t>(d)]; }

void Visualize::Form_Load() {
  // Top-most over its owner and the rest, as long as it is open.
  setWindowFlag(Qt::WindowStaysOnTopHint, true);
  setWindowOpacity(kWindowOpacity);
  closePanel();
  // The sample cannot change while the window is open: the note is decided here only.
  Transform->setText(QStringLiteral("Truncated Range"));
  Transform->setVisible(m_input.truncated);
  option(Distribution::Normal)->setChecked(true);
  Option_Click(Distribution::Normal);
  Text1->hide();
  Text2->show();
}

void Visualize::showDetrendedView() {
  PlotterView->hide();
  Detrended->show();
  Text2->setText(QStringLiteral("Detrended plot"));
  Label7->show();
  Label6->show();
  ThemedButton1->setCaption(QStringLiteral("Theoretical distribution"));
}

void Visualize::closePanel() {
  showDetrendedView();
  setFixedHeight(kClosedHeight);
}

void Visualize::Option_Click(Distribution d) {
  closePanel();
  ThemedButton2->show();
  Label1->setText(QStringLiteral("P-P plot"));
  const bool normal = d == Distribution::Normal;
  Frame6->setVisible(normal);
  if (normal) {
    OptionBinning[0]->setChecked(true);
    boldBinning(0);
  }
  if (normal || d == Distribution::Exponential || d == Distribution::Uniform) Text1->hide();
  // The exponential fit is a division: no mark for it.
  if (d != Distribution::Exponential) showBusy(true);

  FitRun run = fitWhilePainting(d);
  if (run.refused) {
    showBusy(false);
    ShowNotice(QString::fromStdString(run.notice));
    // Text1 and Correl keep what they showed; the charts show nothing of an earlier fit.
  } else {
    if (run.caption) {
      Text1->setText(QString::fromStdString(*run.caption));
      Text1->show();
    }
    Correl->setText(QString::fromStdString(run.correl));
  }
  m_run = std::move(run);
  PlotPPs();
  showBusy(false);
  boldOption(d);
  option(d)->setChecked(true);
}

void Visualize::OptionBinning_Click(int index) {
  OptionBinning[index]->setChecked(true);
  boldBinning(index);
  ThemedButton2->setVisible(index == 0);
  Label1->setText(index == 0 ? QStringLiteral("P-P plot") : QStringLiteral("Q-Q plot"));
  if (index == 0) {
    PlotPPs();
  } else {
    PlotQQs();
  }
}

void Visualize::ThemedButton2_Click() { setFixedHeight(kOpenHeight); }

void Visualize::ThemedButton1_Click() {
  if (PlotterView->isHidden()) {
    PlotterView->show();
    Detrended->hide();
    Label7->hide();
    Label6->hide();
    ThemedButton1->setCaption(QStringLiteral("Detrended plot"));
    PlotTheoreticalDis();
    Text2->setText(QStringLiteral("Theoretical distribution"));
  } else {
    PlotterView->hide();
    Detrended->show();
    Label7->show();
    Label6->show();
    ThemedButton1->setCaption(QStringLiteral("Theoretical distribution"));
    Text2->setText(QStringLiteral("Detrended plot"));
  }
}

void Visualize::Command1_Click() {
  SendPrintScreen(this);
  PlayCopySound();
}

void Visualize::beginPlot() {
  showDetrendedView();
  PlotterView->removeAllCurves();
  NormalDist->removeAllCurves();
}

void Visualize::PlotPPs() {
  beginPlot();
  const PlotArrays& a = m_run.arrays;
  const std::size_t n = a.SortedValues.size();

  NormalDist->setXBounds(0, 1);
  NormalDist->addCurve(Curve("Main", 0, 100, kBlue, 1, 1, 0, 2, 2, true));
  NormalDist->setCurveData(QStringLiteral("Main"), n, a.ExpectedPercentiles, a.ObservedPercentiles);
  const std::vector<double> diagonal = PPDiagonal(n);
  NormalDist->setXBounds(0, 100);
  NormalDist->addCurve(Curve("Line", 0, 100, kRed, 0, 2, 0, 2, 5, false));
  NormalDist->setCurveData(QStringLiteral("Line"), n, diagonal, diagonal);

  Detrended->removeAllCurves();
  Detrended->setXBounds(0, 100);
  ChartCurve detrend = Curve("Detrend", -20, 20, kBlue, 1, 1, kBlue, 2, 2, true);
  Detrended->addCurve(detrend);
  Detrended->setCurveData(QStringLiteral("Detrend"), n, a.ObservedPercentiles, a.DetrendedDifferences);
  const std::vector<double> zeros(n, 0.0);
  Detrended->addCurve(Curve("Line", -20, 20, kRed, 0, 2, kRed, 1, 5, false));
  Detrended->setCurveData(QStringLiteral("Line"), n, a.ObservedPercentiles, zeros);

  Label3->setText(QStringLiteral("Observed percentiles (%)"));
  Label4->setText(QStringLiteral("Expected  percentiles (%)"));
}

void Visualize::PlotQQs() {
  beginPlot();
  const PlotArrays& a = m_run.arrays;
  const std::size_t n = a.ExpectedValues.size() == a.SortedValues.size() ? a.SortedValues.size() : 0;
  // The bounds follow the minimum and maximum as the main window shows them.
  const AxisBounds b = QQBounds(m_input.shownMinimum, m_input.shownMaximum);
  NormalDist->setXBounds(static_cast<float>(b.low), static_cast<float>(b.high));
  NormalDist->addCurve(Curve("Main", b.low, b.high, kBlue, 1, 1, 0, 2, 2, true));
  NormalDist->setCurveData(QStringLiteral("Main"), n, a.SortedValues, a.ExpectedValues);
  NormalDist->setXBounds(static_cast<float>(b.low), static_cast<float>(b.high));
  NormalDist->addCurve(Curve("Line", b.low, b.high, kBlue, 0, 2, kBlue, 2, 5, false));
  NormalDist->setCurveData(QStringLiteral("Line"), n, a.ExpectedValues, a.ExpectedValues);
  Label3->setText(QStringLiteral("Expected normal values"));
  Label4->setText(QStringLiteral("Observed values"));
}

void Visualize::PlotTheoreticalDis() {
  PlotterView->setDisplay(50);
  PlotterView->removeAllCurves();
  if (m_run.refused || m_run.arrays.SortedValues.empty()) {
    PlotterView->setDisplay(0);
    return;
  }
  const TheoreticalCurve t = TheoreticalDistribution(m_run);
  PlotterCurve c;
  c.Name = QStringLiteral("Curve 1");
  c.Key = QStringLiteral("Lie");
  c.Min = 0;
  c.Max = t.curveMax;
  c.AutoScaleTolerance = 2000;
  c.Unit = QStringLiteral("Average");
  c.Width = 3;
  c.LineStyle = 0;
  c.bShowScale = true;
  c.bAutoScale = true;
  PlotterView->setXBounds(t.axisLow, t.axisHigh);
  PlotterView->addCurve(c);
  PlotterView->setDisplay(0);
  PlotterView->setCurveData(c.Key, t.x.size(), t.x, t.y);
}

void Visualize::Excel_Click() {
  const PlotArrays& a = m_run.arrays;
  if (m_run.refused || a.SortedValues.empty()) {
    ShowNotice(QStringLiteral("There are no plot data to export for %1.")
                   .arg(QString::fromLatin1(DistributionCaption(m_run.distribution))));
    return;
  }
  if (!m_input.sheets.exists || !m_input.sheets.addLast || !m_input.sheets.write) {
    ShowNotice(QStringLiteral("The spreadsheet is not available: the plot data were not exported."));
    return;
  }
  if (a.SortedValues.size() + 1 > kSheetRows) {
    ShowNotice(QStringLiteral("The plot data need %1 rows; a sheet holds %2. Nothing was exported.")
                   .arg(a.SortedValues.size() + 1)
                   .arg(kSheetRows));
    return;
  }
  try {
    int k = 1;
    while (k <= kPlotDataSheets && m_input.sheets.exists(PlotDataSheetName(k))) ++k;
    if (k > kPlotDataSheets) {
      // Nothing of the user's is written over: no sheet is added and no cell changes.
      ShowNotice(QStringLiteral("The sheets PP-PlotData1 to PP-PlotData%1 all exist. Delete or rename one "
                                "of them to export the plot data.")
                     .arg(kPlotDataSheets));
      return;
    }
    const int sheet = m_input.sheets.addLast(PlotDataSheetName(k));
    m_input.sheets.write(sheet, PlotDataBlock(a));
  } catch (const std::exception&) {
    ShowNotice(QStringLiteral("The export of the plot data did not complete."));
  }
}

void Visualize::ShowNotice(const QString& text) {
  if (noticeSink) {
    noticeSink(text);
    return;
  }
  // The window stays on top of everything: it steps aside while the message is up.
  const bool stepAside = isVisible();
  const Qt::WindowStates before = windowState();
  if (stepAside) setWindowState(before | Qt::WindowMinimized);
  QMessageBox box(QMessageBox::NoIcon, QApplication::applicationName(), text, QMessageBox::Ok);
  box.exec();
  if (stepAside) setWindowState(before);
}

FitRun Visualize::fitWhilePainting(Distribution d) {
  auto fit = [this, d] {
    return GenerateArrays(d, m_input.sample, m_input.shownMean, m_input.shownStdev, m_input.decimalMark);
  };
  if (!isVisible()) return fit();
  // The fit runs beside the event loop so that the mark turns; the controls are
  // disabled and input waits, so nothing the fit reads can change meanwhile.
  std::future<FitRun> running = std::async(std::launch::async, [&fit] {
    FitRun run = fit();
    QMetaObject::invokeMethod(qApp, [] {}, Qt::QueuedConnection);  // wakes the loop below
    return run;
  });
  QTimer tick;  // wakes the loop now and then, whatever else is quiet
  tick.start(30);
  while (running.wait_for(std::chrono::milliseconds(0)) != std::future_status::ready)
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::ExcludeUserInputEvents);
  return running.get();
}

void Visualize::showBusy(bool on) {
  Gif89a1->setVisible(on);
  // No input while a fit runs; the mark is drawn before the work starts.
  Frame1->setEnabled(!on);
  Frame6->setEnabled(!on);
  if (on && isVisible()) Gif89a1->repaint();
}

void Visualize::boldOption(Distribution chosen) {
  for (int i = 0; i < kDistributionCount; ++i) SetBold(Option[static_cast<std::size_t>(i)], i == static_cast<int>(chosen));
  for (QRadioButton* o : Option) o->adjustSize();
}

void Visualize::boldBinning(int index) {
  for (int i = 0; i < 2; ++i) {
    SetBold(OptionBinning[i], i == index);
    OptionBinning[i]->adjustSize();
  }
}

}  // namespace qv
