#include "double_slider.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMouseEvent>
#include <QSlider>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "number_text.h"

namespace qv {

// The QSlider inside: it reports the moments at which a move is finished.
class DoubleSliderGrid : public QSlider {
 public:
  explicit DoubleSliderGrid(DoubleSlider* owner) : QSlider(Qt::Horizontal, owner), m_owner(owner) {}

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override {
    QSlider::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) m_owner->onUserReleased(true);
  }
  void keyReleaseEvent(QKeyEvent* event) override {
    QSlider::keyReleaseEvent(event);
    if (!event->isAutoRepeat()) m_owner->onUserReleased(false);
  }
  void wheelEvent(QWheelEvent* event) override {
    QSlider::wheelEvent(event);
    m_owner->onUserReleased(false);
  }

 private:
  DoubleSlider* m_owner;
};

namespace {

QString fixedText(double x, int decimals) {
  QLocale locale;
  locale.setNumberOptions(QLocale::OmitGroupSeparator);
  // Beyond 15 digits the spreadsheet shows the exponent form ("1E+308"), not 309 digits.
  if (std::isfinite(x) && std::fabs(x) >= 1e15) {
    QString text = QString::fromStdString(NumberText(x));
    return text.replace(QLatin1Char('.'), locale.decimalPoint());
  }
  QString text = locale.toString(x, 'f', decimals);
  // A small negative number rounds to zero: show "0.00", not "-0.00".
  if (text.startsWith(locale.negativeSign()) && locale.toDouble(text) == 0.0)
    text.remove(0, locale.negativeSign().size());
  return text;
}

}  // namespace

DoubleSlider::DoubleSlider(QWidget* parent)
    : QWidget(parent), m_slider(new DoubleSliderGrid(this)), m_label(new QLabel(this)) {
  m_slider->setRange(0, kGridSteps);
  m_slider->setSingleStep(kGridSteps / 100);
  m_slider->setPageStep(kGridSteps / 10);
  m_label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(4);
  layout->addWidget(m_slider, 1);
  layout->addWidget(m_label);
  setFocusProxy(m_slider);
  connect(m_slider, &QSlider::valueChanged, this, &DoubleSlider::onGridMoved);
  syncFromCode();
}

namespace {

double PowerOfTen(int e) { return std::pow(10.0, e); }

// x in units of 10^e.
double InUnits(double x, int e) { return e < 0 ? x * PowerOfTen(-e) : x / PowerOfTen(e); }

// The multiple m of 10^e, as the decimal text of it reads: m / 10^d rounds once.
double OfUnits(double m, int e) { return e < 0 ? m / PowerOfTen(-e) : m * PowerOfTen(e); }

constexpr double kExactWhole = 9007199254740992.0;  // 2^53

}  // namespace

double DoubleSlider::multipleValue(double m) const { return OfUnits(m, m_exponent); }

int DoubleSlider::gridSteps() const { return m_stops; }

void DoubleSlider::updateGrid() {
  m_stops = kGridSteps;
  m_decimalGrid = false;
  if (m_decimalSteps && m_lower < m_upper && std::isfinite(m_lower) && std::isfinite(m_upper)) {
    for (int e = -m_decimals; e <= 308; ++e) {
      double first = std::floor(InUnits(m_lower, e)) + 1;
      double last = std::ceil(InUnits(m_upper, e)) - 1;
      if (!(std::fabs(first) < kExactWhole && std::fabs(last) < kExactWhole)) continue;
      // A multiple that reads as an end is that end.
      if (first <= last && OfUnits(first, e) <= m_lower) ++first;
      if (first <= last && OfUnits(last, e) >= m_upper) --last;
      const double inner = last >= first ? last - first + 1 : 0;
      if (inner > kMaxDecimalSteps) continue;
      m_exponent = e;
      m_first = first;
      m_stops = static_cast<int>(inner) + 1;
      m_decimalGrid = true;
      break;
    }
  }
  const bool decimal = m_decimalGrid;
  m_syncing = true;
  m_slider->setRange(0, m_stops);
  m_slider->setSingleStep(decimal ? 1 : kGridSteps / 100);
  m_slider->setPageStep(decimal ? std::max(1, m_stops / 10) : kGridSteps / 10);
  m_syncing = false;
}

double DoubleSlider::positionOfStep(int step) const {
  if (step <= 0) return m_lower;
  if (step >= m_stops) return m_upper;
  if (m_decimalGrid) return clamped(multipleValue(m_first + step - 1));
  // Weighted this way the ends are exact and no difference of the bounds can overflow.
  const double f = static_cast<double>(step) / kGridSteps;
  return clamped((1.0 - f) * m_lower + f * m_upper);
}

int DoubleSlider::stepOfPosition(double position) const {
  if (m_decimalGrid) {
    if (position <= m_lower) return 0;
    if (position >= m_upper) return m_stops;
    const double k = std::round(InUnits(position, m_exponent)) - m_first + 1;
    return static_cast<int>(std::clamp(k, 0.0, static_cast<double>(m_stops)));
  }
  const double span = m_upper / 2.0 - m_lower / 2.0;
  if (span == 0.0 || !std::isfinite(span)) return 0;
  const double f = (position / 2.0 - m_lower / 2.0) / span;
  return static_cast<int>(std::lround(std::clamp(f, 0.0, 1.0) * kGridSteps));
}

double DoubleSlider::clamped(double position) const {
  return std::clamp(position, std::min(m_lower, m_upper), std::max(m_lower, m_upper));
}

void DoubleSlider::setLowerBound(double lower) {
  if (std::isnan(lower)) return;
  m_lower = lower;
  updateGrid();
  syncFromCode();
}

void DoubleSlider::setUpperBound(double upper) {
  if (std::isnan(upper)) return;
  m_upper = upper;
  updateGrid();
  syncFromCode();
}

void DoubleSlider::setBounds(double lower, double upper) {
  if (std::isnan(lower) || std::isnan(upper)) return;
  m_lower = lower;
  m_upper = upper;
  updateGrid();
  syncFromCode();
}

void DoubleSlider::setPosition(double position) {
  if (std::isnan(position)) return;
  m_position = position;
  syncFromCode();
}

void DoubleSlider::setDecimals(int decimals) {
  m_decimals = std::clamp(decimals, 0, 15);
  if (m_decimalSteps) updateGrid();
  syncFromCode();
}

void DoubleSlider::setDecimalSteps(bool on) {
  m_decimalSteps = on;
  updateGrid();
  syncFromCode();
}

QString DoubleSlider::valueText() const { return fixedText(m_position, m_decimals); }

void DoubleSlider::syncFromCode() {
  m_position = clamped(m_position);
  m_lastReleased = m_position;
  m_syncing = true;
  m_slider->setValue(stepOfPosition(m_position));
  m_syncing = false;
  updateLabel();
}

void DoubleSlider::onGridMoved(int step) {
  if (m_syncing) return;
  m_position = positionOfStep(step);
  updateLabel();
  emit valueChanged(m_position);
}

void DoubleSlider::onUserReleased(bool always) {
  if (!always && m_position == m_lastReleased) return;
  m_lastReleased = m_position;
  emit mouseReleased(m_position);
}

void DoubleSlider::updateLabel() {
  // Wide enough for either end, so the slider does not jump as the text changes.
  const QFontMetrics fm(m_label->font());
  const int wide = std::max(fm.horizontalAdvance(fixedText(m_lower, m_decimals)),
                            fm.horizontalAdvance(fixedText(m_upper, m_decimals)));
  m_label->setMinimumWidth(std::min(wide, 160) + 4);
  m_label->setText(valueText());
}

}  // namespace qv
