// Cumulat: controls, loading, the curve and the read-out of the dragged line.
#include "cumulative_window.h"

#include <QFont>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>

#include "chrome_icons.h"
#include "copy_action.h"
#include "cumulative.h"
#include "help_window.h"
#include "plotter.h"
#include "themed_button.h"
#include "titel_bar.h"

namespace qv {

namespace {

constexpr double kWindowOpacity = 0.92;
constexpr int kHelpTopic = 6;

QRect Twips(int left, int top, int width, int height) {
  return QRect(left / 15, top / 15, width / 15, height / 15);
}

QLineEdit* Box(QWidget* parent, const char* name, const QRect& where) {
  auto* box = new QLineEdit(parent);
  box->setObjectName(QString::fromLatin1(name));
  box->setReadOnly(true);
  box->setAlignment(Qt::AlignCenter);
  box->setGeometry(where);
  box->setFocusPolicy(Qt::NoFocus);
  return box;
}

}  // namespace

Cumulat::Cumulat(CumulatInput input, QWidget* owner) : QDialog(owner), m_input(std::move(input)) {
  setObjectName(QStringLiteral("Cumulat"));
  setWindowTitle(QStringLiteral("Quantavue-Interactive"));
  setModal(true);
  buildControls();
  Form_Load();
}

Cumulat::~Cumulat() = default;

void Cumulat::buildControls() {
  setFixedSize(9684 / 15, 6072 / 15);
  QPalette pal = palette();
  pal.setColor(QPalette::Window, QColor(236, 239, 244));
  setPalette(pal);
  setAutoFillBackground(true);

  Label7 = new QLabel(QStringLiteral("Cumulative distribution"), this);
  Label7->setObjectName(QStringLiteral("Label7"));
  Label7->setGeometry(Twips(2880, 600, 4932, 492));
  Label7->setAlignment(Qt::AlignCenter);
  QFont heading = Label7->font();
  heading.setBold(true);
  heading.setPointSizeF(heading.pointSizeF() * 1.6);
  Label7->setFont(heading);
  Label7->setStyleSheet(QStringLiteral("color: rgb(0, 0, 128);"));

  Label8 = new QLabel(QStringLiteral("* Drag the white vertical line to display XY values "), this);
  Label8->setObjectName(QStringLiteral("Label8"));
  Label8->setGeometry(Twips(1920, 1560, 6732, 252));
  Label8->setAlignment(Qt::AlignCenter);

  Transform = new QLabel(QStringLiteral("For y="), this);
  Transform->setObjectName(QStringLiteral("Transform"));
  Transform->setGeometry(Twips(3120, 1200, 4212, 252));
  Transform->setAlignment(Qt::AlignCenter);
  QFont note = Transform->font();
  note.setItalic(true);
  note.setBold(true);
  Transform->setFont(note);
  Transform->setStyleSheet(QStringLiteral("color: rgb(128, 0, 0);"));

  PlotterView = new Plotter(this);
  PlotterView->setFileBaseName(QStringLiteral("Cumulative"));
  PlotterView->setObjectName(QStringLiteral("Plotter"));
  PlotterView->setGeometry(Twips(1800, 1800, 7572, 3732));
  ValueY = Box(this, "ValueY", Twips(120, 3000, 1572, 408));
  ValueX = Box(this, "ValueX", Twips(4920, 5640, 1932, 285).adjusted(0, 0, 0, 4));
  QFont figure = ValueY->font();
  figure.setBold(true);
  ValueY->setFont(figure);
  ValueX->setFont(figure);

  Command1 = new ThemedButton(this);
  Command1->setObjectName(QStringLiteral("Command1"));
  Command1->setGeometry(Twips(9120, 600, 492, 492));
  Command1->setPicture(CopyWindowIcon());
  Command1->setPictureAlign(ThemedButton::Centred);
  Command1->setPictureSize(1);
  Command1->setToolTip(QStringLiteral("Copy this form to the clipboard as an image"));
  Command1->setAutoDefault(false);
  ThemedButton6 = new ThemedButton(QStringLiteral("?"), this);
  ThemedButton6->setObjectName(QStringLiteral("ThemedButton6"));
  ThemedButton6->setButtonThemeType(1);
  ThemedButton6->setBackColor(QColor(212, 220, 234));
  ThemedButton6->setOverColor(QColor(232, 238, 248));
  ThemedButton6->setButtonRounding(8);
  ThemedButton6->setGeometry(Twips(2640, 720, 204, 204).adjusted(-2, -2, 2, 2));
  ThemedButton6->setAutoDefault(false);

  connect(PlotterView, &Plotter::cursorMoved, this,
          [this](const QString&, float x, float y) { Plotter_CursorMoved(x, y); });
  connect(Command1, &QPushButton::clicked, this, &Cumulat::Command1_Click);
  connect(ThemedButton6, &QPushButton::clicked, this, &Cumulat::ThemedButton6_Click);

  TitelBar1 = TitelBar::Install(this, false);
}

void Cumulat::Form_Load() {
  setWindowFlag(Qt::WindowStaysOnTopHint, true);
  setWindowOpacity(kWindowOpacity);
  // The sample cannot change while the window is open: the note is decided here only.
  Transform->setText(QStringLiteral("Truncated Range"));
  Transform->setVisible(m_input.truncated);
  PlotCumul();
  PlotterView->enableCursor(true);
}

void Cumulat::PlotCumul() {
  // The record's sample is ascending already; a copy is sorted only when it is not.
  m_sorted = std::move(m_input.sample);
  if (!std::is_sorted(m_sorted.begin(), m_sorted.end())) std::sort(m_sorted.begin(), m_sorted.end());
  const CumulativeCurve curve = CumulativePoints(m_sorted, m_sorted.size() > kCumulativeAllPoints);

  PlotterCurve c;
  c.Name = QStringLiteral("Curve 1");
  c.Key = QStringLiteral("Lie");
  c.Min = 0;
  c.Max = 100;
  c.AutoScaleTolerance = 2000;
  c.Unit = QStringLiteral("Average");
  c.Width = 3;
  c.Color = 255;
  c.LineStyle = 0;
  c.bShowScale = true;
  PlotterView->removeAllCurves();
  const CumulativeBounds b = CumulativeScale(m_sorted);
  PlotterView->setXBounds(b.low, b.high);
  PlotterView->addCurve(c);
  PlotterView->setCurveData(c.Key, curve.CumulativeValues.size(), curve.CumulativeValues, curve.CumulativePercents);
}

void Cumulat::Plotter_CursorMoved(float x, float y) {
  ValueY->setText(QString::fromStdString(CumulativeYText(y, m_input.decimalMark)));
  ValueX->setText(QString::fromStdString(CumulativeXText(x, m_input.decimalMark)));
}

void Cumulat::Command1_Click() {
  SendPrintScreen(this);
  PlayCopySound();
}

void Cumulat::ThemedButton6_Click() {
  if (m_input.helpTopic) *m_input.helpTopic = kHelpTopic;
  HelpMsg::ShowTopic(kHelpTopic, this);
}

}  // namespace qv
