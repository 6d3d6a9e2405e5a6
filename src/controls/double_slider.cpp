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

double DoubleSlider::positionOfStep(int step) const {
  if (step <= 0) return m_lower;
  if (step >= kGridSteps) return m_upper;
  // Weighted this way the ends are exact and no difference of the bounds can overflow.
  const double f = static_cast<double>(step) / kGridSteps;
  return clamped((1.0 - f) * m_lower + f * m_upper);
}

int DoubleSlider::stepOfPosition(double position) const {
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
  syncFromCode();
}

void DoubleSlider::setUpperBound(double upper) {
  if (std::isnan(upper)) return;
  m_upper = upper;
  syncFromCode();
}

void DoubleSlider::setBounds(double lower, double upper) {
  if (std::isnan(lower) || std::isnan(upper)) return;
  m_lower = lower;
  m_upper = upper;
  syncFromCode();
}

void DoubleSlider::setPosition(double position) {
  if (std::isnan(position)) return;
  m_position = position;
  syncFromCode();
}

void DoubleSlider::setDecimals(int decimals) {
  m_decimals = std::clamp(decimals, 0, 15);
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
