// NormalityTests: controls, loading, the knob, the slider and the copy button. The runs
// of the four tests are in normality_runs.cpp.
#include "normality_window.h"

#include <QApplication>
#include <QFont>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPalette>
#include <QPushButton>

#include "bell_pictures.h"
#include "busy_indicator.h"
#include "copy_action.h"
#include "double_slider.h"
#include "normality_tests.h"
#include "number_text.h"
#include "switch_knob.h"
#include "themed_button.h"
#include "titel_bar.h"
#include "worksheet_functions.h"

namespace qv {

std::function<void(const QString&)> NormalityTests::noticeSink;

namespace {

constexpr double kStartLevel = 0.05;
constexpr double kWindowOpacity = 0.92;
const QSize kBellSize(84, 64);

QLabel* Caption(QWidget* parent, const QString& text, const QRect& where) {
  auto* label = new QLabel(text, parent);
  label->setGeometry(where);
  return label;
}

QLineEdit* Box(QWidget* parent, const QRect& where) {
  auto* box = new QLineEdit(parent);
  box->setReadOnly(true);
  box->setAlignment(Qt::AlignCenter);
  box->setGeometry(where);
  // A text wider than the box shows its beginning, as a text box written from code does.
  QObject::connect(box, &QLineEdit::textChanged, box, [box] { box->setCursorPosition(0); });
  return box;
}

}  // namespace

NormalityTests::NormalityTests(NormalityInput input, QWidget* owner)
    : QDialog(owner), m_input(std::move(input)) {
  m_level = m_input.significanceLevel ? m_input.significanceLevel : &m_ownLevel;
  setWindowTitle(QStringLiteral("Quantavue"));
  setModal(true);
  buildControls();
  Form_Load();
}

NormalityTests::~NormalityTests() = default;

void NormalityTests::buildControls() {
  setFixedSize(620, 330);

  // The knob with its four legends around it.
  SwitchKnob4 = new SwitchKnob(this);
  SwitchKnob4->setGeometry(112, 44, 124, 124);
  Label9 = new QLabel(QStringLiteral("Shapiro-Wilk"), this);
  Label8 = new QLabel(QStringLiteral("Anderson Darling"), this);
  Label7 = new QLabel(QStringLiteral("Jacques Bera"), this);
  Label10 = new QLabel(QStringLiteral("Lillefors"), this);

  Label12 = Caption(this, QStringLiteral("alpha"), QRect(20, 182, 40, 24));
  AlphaSlider = new DoubleSlider(this);
  AlphaSlider->setGeometry(62, 182, 230, 24);
  AlphaSlider->setBounds(0.0, 0.15);
  AlphaSlider->setDecimals(3);
  AlphaSlider->setPosition(kStartLevel);
  showSlider(false);  // shown by loading only when there is a sample to test

  Transform = Caption(this, QStringLiteral("Truncated Range"), QRect(20, 214, 250, 22));
  QFont italic = Transform->font();
  italic.setItalic(true);
  italic.setBold(true);
  Transform->setFont(italic);
  Transform->setStyleSheet(QStringLiteral("color: rgb(128, 0, 0);"));

  // Results at the right.
  Label11 = Caption(this, QStringLiteral("Test type"), QRect(320, 22, 100, 24));
  TestUsed = Caption(this, QStringLiteral("Shapiro-Wilk test"), QRect(420, 22, 190, 24));
  QFont bold = TestUsed->font();
  bold.setBold(true);
  TestUsed->setFont(bold);
  Label1 = Caption(this, QStringLiteral("Test statistic"), QRect(320, 60, 100, 24));
  TestStat = Box(this, QRect(420, 60, 96, 24));
  Label2 = Caption(this, QStringLiteral("Critical value"), QRect(320, 92, 100, 24));
  CriticalBox = Box(this, QRect(420, 92, 96, 24));
  Label3 = Caption(this, QStringLiteral("p value"), QRect(320, 124, 100, 24));
  Pval = Box(this, QRect(420, 124, 96, 24));

  YesBell = new QLabel(this);
  YesBell->setPixmap(YesBellPicture(kBellSize));
  YesBell->setGeometry(QRect(QPoint(526, 72), kBellSize));
  NoBell = new QLabel(this);
  NoBell->setPixmap(NoBellPicture(kBellSize));
  NoBell->setGeometry(YesBell->geometry());
  YesBell->hide();
  NoBell->hide();

  Label5 = Caption(this, QString(), QRect(320, 166, 290, 30));
  QFont verdict = Label5->font();
  verdict.setBold(true);
  verdict.setPointSizeF(verdict.pointSizeF() * 1.3);
  Label5->setFont(verdict);

  JBFew = Box(this, QRect(20, 248, 580, 26));
  JBFew->setStyleSheet(QStringLiteral("color: rgb(192, 0, 0);"));

  Label4 = Caption(this, QStringLiteral("Processing..."), QRect(52, 292, 110, 24));
  Gif89a1 = new BusyIndicator(this);
  Gif89a1->setGeometry(20, 290, 26, 26);
  showBusy(false);

  auto* copy = new ThemedButton(this);
  copy->setButtonThemeType(1);
  copy->setPicture(CopyPictureIcon());
  copy->setPictureSize(1);
  CommandButton333 = copy;
  CommandButton333->setToolTip(QStringLiteral("Copy this form to the clipboard as an image"));
  CommandButton333->setGeometry(572, 288, 32, 30);
  CommandButton333->setAutoDefault(false);

  // The drawn title bar goes above everything; the controls move down under it.
  TitelBar::Install(this, true);

  connect(SwitchKnob4, &SwitchKnob::userChangedSetting, this, &NormalityTests::SwitchKnob4_Change);
  connect(AlphaSlider, &DoubleSlider::valueChanged, this, [this](double) { AlphaSlider_Change(); });
  connect(CommandButton333, &QPushButton::clicked, this, &NormalityTests::CommandButton333_Click);
}

void NormalityTests::placeLegends() {
  // Each legend sits outside its number on the knob's arc: beside the outer two, above
  // the inner two, towards its own side.
  QLabel* legends[] = {Label9, Label8, Label7, Label10};
  for (int i = 0; i < 4 && i < SwitchKnob4->positionCount(); ++i) {
    QLabel* legend = legends[i];
    QFont f = legend->font();
    f.setBold(true);  // room for the bold face
    const int width = QFontMetrics(f).horizontalAdvance(legend->text()) + 4;
    const int height = QFontMetrics(f).height() + 2;
    const QRect number = SwitchKnob4->labelRect(i).translated(SwitchKnob4->pos());
    const bool outer = i == 0 || i == 3;
    const int y = outer ? number.center().y() - height / 2 : number.top() - height;
    if (i < 2) {
      const int right = outer ? number.left() - 4 : number.right() + 2;
      legend->setGeometry(right - width, y, width, height);
      legend->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    } else {
      const int left = outer ? number.right() + 4 : number.left() - 2;
      legend->setGeometry(left, y, width, height);
      legend->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
  }
}

void NormalityTests::Form_Load() {
  // Top-most over its owner and the rest, as long as it is open.
  setWindowFlag(Qt::WindowStaysOnTopHint, true);
  JBFew->hide();
  setWindowOpacity(kWindowOpacity);
  SwitchKnob4->clearPositions();
  for (int i = 1; i <= 4; ++i) SwitchKnob4->addPosition(QString::number(i), i);
  SwitchKnob4->setSetting(QStringLiteral("2"));
  TestChoice = 2;
  placeLegends();
  if (m_input.rangeTaken) {
    AlphaSlider->setPosition(kStartLevel);
    setLevel(Round(AlphaSlider->position(), 3));
    showSlider(true);
    RunAndersonDarling();
  }
  // The mark is decided here only: the sample cannot change while the window is open.
  Transform->setText(QStringLiteral("Truncated Range"));
  Transform->setVisible(m_input.truncated);
}

void NormalityTests::SwitchKnob4_Change(const QString&) {
  TestChoice = SwitchKnob4->setting().toInt();
  JBFew->hide();
  switch (TestChoice) {
    case 1: RunShapiroWilk(); break;
    case 2: RunAndersonDarling(); break;
    case 3: RunJarqueBera(); break;
    case 4: RunLilliefors(); break;
    default: break;
  }
}

void NormalityTests::AlphaSlider_Change() {
  if (knobOn("4") || !m_input.rangeTaken) return;
  // The slider moves in steps of 0.001, the digits its label shows.
  setLevel(Round(AlphaSlider->position(), 3));
  if (Pval->text() == QStringLiteral("NA")) return;
  // The p value the run judged, not the digits on display: Jarque-Bera holds four
  // decimals and shows three, and one p value gets one verdict. No p value reads as 0.
  const double v = m_heldP.value_or(0.0);
  if (v > level()) showBell(true);
  if (v <= level()) showBell(false);
  if (knobOn("3")) CriticalBox->setText(QString::fromStdString(FormatFixed(JBCriticalValue(level()), 4, decimalMark())));
  if (v <= 0.001) showBell(false);
  // The verdict caption stays that of the last run while the pictures follow the slider.
}

void NormalityTests::CommandButton333_Click() {
  SendPrintScreen(this);
  PlayCopySound();
}

void NormalityTests::ShowNotice(const QString& text, QWidget* aside) {
  // The window stays on top of everything: a window steps aside while the message is up.
  const bool stepAside = aside && aside->isVisible();
  const Qt::WindowStates before = stepAside ? aside->windowState() : Qt::WindowStates();
  if (stepAside) aside->setWindowState(before | Qt::WindowMinimized);
  if (noticeSink) {
    noticeSink(text);
  } else {
    QMessageBox box(QMessageBox::NoIcon, QApplication::applicationName(), text, QMessageBox::Ok);
    box.exec();
  }
  if (stepAside) aside->setWindowState(before);
}

void NormalityTests::boldLegend(QLabel* selected) {
  for (QLabel* legend : {Label9, Label8, Label7, Label10}) {
    QFont f = legend->font();
    f.setBold(legend == selected);
    legend->setFont(f);
  }
}

void NormalityTests::showBusy(bool on) {
  Label4->setVisible(on);
  Gif89a1->setVisible(on);
  // A test runs to its end inside the event: draw the mark before the work starts.
  if (on && isVisible()) {
    Label4->repaint();
    Gif89a1->repaint();
  }
}

void NormalityTests::showBell(bool yes) {
  YesBell->setVisible(yes);
  NoBell->setVisible(!yes);
}

void NormalityTests::writeVerdict() {
  const bool rejected = !NoBell->isHidden();
  Label5->setText(rejected ? QStringLiteral("Reject normality!") : QStringLiteral("Accept normality!"));
  QPalette pal = Label5->palette();
  pal.setColor(QPalette::WindowText, rejected ? QColor(255, 0, 0) : QColor(0, 0, 255));
  Label5->setPalette(pal);
}

void NormalityTests::refuse(const QString& notice, bool hideSlider) {
  ShowNotice(notice, this);
  YesBell->hide();
  NoBell->show();
  showBusy(false);
  if (hideSlider) showSlider(false);
}

void NormalityTests::showSlider(bool on) {
  AlphaSlider->setVisible(on);
  Label12->setVisible(on);
}

double NormalityTests::level() const { return m_level->value_or(0.0); }

void NormalityTests::setLevel(double value) { *m_level = value; }

char NormalityTests::decimalMark() const {
  const QChar c = locale().decimalPoint().at(0);
  return c.unicode() < 128 ? static_cast<char>(c.unicode()) : '.';
}

bool NormalityTests::knobOn(const char* position) const {
  return SwitchKnob4->setting() == QLatin1String(position);
}

}  // namespace qv
