#include "busy_indicator.h"

#include <QPainter>
#include <QTimer>
#include <algorithm>

namespace qv {

BusyIndicator::BusyIndicator(QWidget* parent) : QWidget(parent), m_timer(new QTimer(this)) {
  m_timer->setInterval(80);
  connect(m_timer, &QTimer::timeout, this, [this] {
    m_frame = (m_frame + 1) % spokeCount();
    update();
  });
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

bool BusyIndicator::isAnimating() const { return m_timer->isActive(); }

void BusyIndicator::setColor(const QColor& color) {
  m_color = color;
  update();
}

QSize BusyIndicator::sizeHint() const { return {32, 32}; }

void BusyIndicator::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  const double side = std::min(width(), height());
  const double outer = side / 2.0 - 1.0;
  const double inner = outer * 0.45;
  const double thickness = std::max(1.5, side / 11.0);
  const QColor base = m_color.isValid() ? m_color : palette().color(QPalette::WindowText);
  p.translate(width() / 2.0, height() / 2.0);
  for (int i = 0; i < spokeCount(); ++i) {
    // The spoke of the current frame is solid; the ones behind it fade out.
    const int age = (m_frame - i + spokeCount()) % spokeCount();
    QColor c = base;
    c.setAlphaF(base.alphaF() * std::max(0.15, 1.0 - age / static_cast<double>(spokeCount())));
    p.save();
    p.rotate(360.0 * i / spokeCount());
    p.setPen(QPen(c, thickness, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(0.0, -inner), QPointF(0.0, -outer + thickness / 2.0));
    p.restore();
  }
}

void BusyIndicator::showEvent(QShowEvent* event) {
  m_timer->start();
  QWidget::showEvent(event);
}

void BusyIndicator::hideEvent(QHideEvent* event) {
  m_timer->stop();
  QWidget::hideEvent(event);
}

}  // namespace qv
