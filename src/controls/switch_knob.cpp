#include "switch_knob.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace qv {
namespace {

constexpr double kPi = 3.14159265358979323846;
// Widest spread of the arc and the widest step between two positions, in degrees: nine
// positions fill three quarters of a turn, a few positions stay close together at the top.
constexpr double kMaxSweep = 270.0;
constexpr double kMaxStep = 60.0;

QPointF onCircle(const QPointF& centre, double radius, double degrees) {
  const double a = degrees * kPi / 180.0;
  return {centre.x() + radius * std::sin(a), centre.y() - radius * std::cos(a)};
}

// Signed difference a - b folded into (-180, 180].
double angleDifference(double a, double b) {
  double d = std::fmod(a - b, 360.0);
  if (d > 180.0) d -= 360.0;
  if (d <= -180.0) d += 360.0;
  return d;
}

}  // namespace

SwitchKnob::SwitchKnob(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::WheelFocus);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void SwitchKnob::addPosition(const QString& text, int value) {
  m_positions.push_back({text, value});
  if (m_current < 0) m_current = 0;
  updateGeometry();
  update();
}

void SwitchKnob::clearPositions() {
  m_positions.clear();
  m_current = -1;
  update();
}

bool SwitchKnob::setSetting(const QString& text) {
  for (int i = 0; i < positionCount(); ++i) {
    if (m_positions[i].text == text) {
      if (m_current != i) {
        m_current = i;
        update();
      }
      return true;
    }
  }
  return false;
}

QString SwitchKnob::setting() const {
  return m_current < 0 ? QString() : m_positions[m_current].text;
}

int SwitchKnob::settingValue() const { return m_current < 0 ? 0 : m_positions[m_current].value; }

QString SwitchKnob::positionText(int i) const {
  return i >= 0 && i < positionCount() ? m_positions[i].text : QString();
}

int SwitchKnob::positionValue(int i) const {
  return i >= 0 && i < positionCount() ? m_positions[i].value : 0;
}

double SwitchKnob::angleOf(int i) const {
  const int n = positionCount();
  if (n < 2) return 0.0;
  const double step = std::min(kMaxSweep / (n - 1), kMaxStep);
  return -step * (n - 1) / 2.0 + step * i;
}

SwitchKnob::Geometry SwitchKnob::geometry() const {
  const QFontMetricsF fm(font());
  double label = fm.height();
  for (const Position& p : m_positions) label = std::max(label, fm.horizontalAdvance(p.text));
  const double side = std::min(width(), height());
  Geometry g;
  g.centre = QPointF(width() / 2.0, height() / 2.0);
  g.labelRadius = std::max(side / 2.0 - label / 2.0 - 2.0, 4.0);
  g.knobRadius = std::max(g.labelRadius - label / 2.0 - 9.0, 4.0);
  return g;
}

QRect SwitchKnob::labelRect(int i) const {
  if (i < 0 || i >= positionCount()) return {};
  const QFontMetricsF fm(font());
  const Geometry g = geometry();
  const QPointF c = onCircle(g.centre, g.labelRadius, angleOf(i));
  const double w = fm.horizontalAdvance(m_positions[i].text) + 4.0;
  const double h = fm.height();
  return QRectF(c.x() - w / 2.0, c.y() - h / 2.0, w, h).toAlignedRect();
}

QPoint SwitchKnob::knobPoint(int i) const {
  const Geometry g = geometry();
  return onCircle(g.centre, g.knobRadius * 0.7, angleOf(i)).toPoint();
}

int SwitchKnob::nearestPosition(const QPointF& point) const {
  const Geometry g = geometry();
  const QPointF d = point - g.centre;
  if (positionCount() == 0 || (d.x() == 0.0 && d.y() == 0.0)) return m_current;
  const double angle = std::atan2(d.x(), -d.y()) * 180.0 / kPi;
  int best = 0;
  double bestDistance = 360.0;
  for (int i = 0; i < positionCount(); ++i) {
    const double distance = std::abs(angleDifference(angle, angleOf(i)));
    if (distance < bestDistance) {
      bestDistance = distance;
      best = i;
    }
  }
  return best;
}

int SwitchKnob::labelAt(const QPoint& point) const {
  for (int i = 0; i < positionCount(); ++i)
    if (labelRect(i).adjusted(-3, -3, 3, 3).contains(point)) return i;
  return -1;
}

void SwitchKnob::chooseByUser(int index) {
  if (index < 0 || index >= positionCount() || index == m_current) return;
  m_current = index;
  update();
  emit userChangedSetting(m_positions[index].text);
}

QSize SwitchKnob::sizeHint() const { return {110, 110}; }

QSize SwitchKnob::minimumSizeHint() const { return {60, 60}; }

void SwitchKnob::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  const Geometry g = geometry();
  const bool on = isEnabled();
  const QPalette::ColorGroup group = on ? QPalette::Active : QPalette::Disabled;
  const QPalette& pal = palette();

  // Tick marks between the knob and the labels.
  p.setPen(QPen(pal.color(group, QPalette::WindowText), 1.2, Qt::SolidLine, Qt::RoundCap));
  for (int i = 0; i < positionCount(); ++i) {
    const double a = angleOf(i);
    p.drawLine(onCircle(g.centre, g.knobRadius + 2.5, a), onCircle(g.centre, g.knobRadius + 6.5, a));
  }

  // Labels; the current one bold.
  for (int i = 0; i < positionCount(); ++i) {
    QFont f = font();
    f.setBold(i == m_current);
    p.setFont(f);
    p.setPen(i == m_current && on ? pal.color(QPalette::Active, QPalette::Highlight)
                                  : pal.color(group, QPalette::WindowText));
    p.drawText(labelRect(i), Qt::AlignCenter, m_positions[i].text);
  }

  // The body: a metal-like disc lit from the top left, with a raised cap.
  const double r = g.knobRadius;
  const QColor light = on ? QColor(246, 246, 246) : QColor(232, 232, 232);
  const QColor dark = on ? QColor(120, 124, 130) : QColor(185, 185, 185);
  QLinearGradient body(g.centre + QPointF(-r, -r), g.centre + QPointF(r, r));
  body.setColorAt(0.0, light);
  body.setColorAt(1.0, dark);
  p.setPen(QPen(on ? QColor(70, 72, 76) : QColor(160, 160, 160), 1.0));
  p.setBrush(body);
  p.drawEllipse(g.centre, r, r);

  const double cap = r * 0.78;
  QLinearGradient capFill(g.centre + QPointF(-cap, -cap), g.centre + QPointF(cap, cap));
  capFill.setColorAt(0.0, dark.lighter(115));
  capFill.setColorAt(1.0, light);
  p.setPen(Qt::NoPen);
  p.setBrush(capFill);
  p.drawEllipse(g.centre, cap, cap);

  if (hasFocus()) {
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(pal.color(QPalette::Active, QPalette::Highlight), 1.0, Qt::DotLine));
    p.drawEllipse(g.centre, r + 1.5, r + 1.5);
  }

  // The pointer: a groove from near the centre to the rim, ending in a dot.
  if (m_current >= 0) {
    const double a = angleOf(m_current);
    const QColor mark = on ? QColor(190, 30, 30) : QColor(150, 150, 150);
    p.setPen(QPen(mark, std::max(2.0, r / 10.0), Qt::SolidLine, Qt::RoundCap));
    p.drawLine(onCircle(g.centre, r * 0.25, a), onCircle(g.centre, r * 0.72, a));
    p.setPen(Qt::NoPen);
    p.setBrush(mark);
    const double dot = std::max(2.0, r / 8.0);
    p.drawEllipse(onCircle(g.centre, r * 0.72, a), dot, dot);
  }
}

void SwitchKnob::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) {
    QWidget::mousePressEvent(event);
    return;
  }
  const QPoint at = event->position().toPoint();
  const int label = labelAt(at);
  if (label >= 0) {
    chooseByUser(label);
    return;
  }
  const Geometry g = geometry();
  const QPointF d = event->position() - g.centre;
  if (std::hypot(d.x(), d.y()) <= g.knobRadius + 7.0) {
    m_dragging = true;
    chooseByUser(nearestPosition(event->position()));
  }
}

void SwitchKnob::mouseMoveEvent(QMouseEvent* event) {
  if (m_dragging) chooseByUser(nearestPosition(event->position()));
}

void SwitchKnob::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) m_dragging = false;
}

void SwitchKnob::wheelEvent(QWheelEvent* event) {
  const int delta = event->angleDelta().y();
  if (delta == 0 || m_current < 0) {
    event->ignore();
    return;
  }
  chooseByUser(std::clamp(m_current + (delta > 0 ? 1 : -1), 0, positionCount() - 1));
  event->accept();
}

void SwitchKnob::keyPressEvent(QKeyEvent* event) {
  if (m_current < 0) {
    QWidget::keyPressEvent(event);
    return;
  }
  switch (event->key()) {
    case Qt::Key_Right:
    case Qt::Key_Up:
      chooseByUser(std::min(m_current + 1, positionCount() - 1));
      break;
    case Qt::Key_Left:
    case Qt::Key_Down:
      chooseByUser(std::max(m_current - 1, 0));
      break;
    case Qt::Key_Home:
      chooseByUser(0);
      break;
    case Qt::Key_End:
      chooseByUser(positionCount() - 1);
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

void SwitchKnob::changeEvent(QEvent* event) {
  if (event->type() == QEvent::EnabledChange) m_dragging = false;
  if (event->type() == QEvent::FontChange) updateGeometry();
  QWidget::changeEvent(event);
}

}  // namespace qv
