#include "bell_pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace qv {

namespace {

// A density curve over the picture's lower part, from f on [0, 1] (peak 1).
template <class Density>
QPainterPath CurvePath(const QRectF& area, Density f) {
  QPainterPath path(QPointF(area.left(), area.bottom()));
  constexpr int kSteps = 60;
  for (int i = 0; i <= kSteps; ++i) {
    const double u = static_cast<double>(i) / kSteps;
    path.lineTo(area.left() + u * area.width(), area.bottom() - f(u) * area.height());
  }
  path.lineTo(area.right(), area.bottom());
  path.closeSubpath();
  return path;
}

QPixmap Picture(QSize size, bool yes) {
  QPixmap pm(size);
  pm.fill(Qt::transparent);
  QPainter p(&pm);
  p.setRenderHint(QPainter::Antialiasing);
  const double w = size.width(), h = size.height();
  const QColor ink = yes ? QColor(30, 130, 60) : QColor(200, 35, 35);
  const QColor fill = yes ? QColor(170, 225, 180) : QColor(245, 180, 175);

  // Axis, then the curve: the normal density, or a skewed one that is not normal.
  const QRectF area(w * 0.06, h * 0.18, w * 0.88, h * 0.72);
  p.setPen(QPen(QColor(90, 90, 90), 1.2));
  p.drawLine(QPointF(area.left(), area.bottom() + 0.5), QPointF(area.right(), area.bottom() + 0.5));
  const QPainterPath curve =
      yes ? CurvePath(area, [](double u) { const double z = (u - 0.5) * 6.0; return std::exp(-z * z / 2.0); })
          : CurvePath(area, [](double u) { const double x = u * 7.0; return x * x * std::exp(-x) / (4.0 * std::exp(-2.0)); });
  p.setPen(QPen(ink, 2.0));
  p.setBrush(fill);
  p.drawPath(curve);

  // The mark in a disc at the upper right: a tick or a cross.
  const double r = std::min(w, h) * 0.2;
  const QPointF c(w - r - 2.0, r + 2.0);
  p.setPen(QPen(Qt::white, 1.5));
  p.setBrush(ink);
  p.drawEllipse(c, r, r);
  p.setPen(QPen(Qt::white, std::max(2.0, r * 0.28), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  if (yes) {
    QPainterPath tick(c + QPointF(-r * 0.5, 0.0));
    tick.lineTo(c + QPointF(-r * 0.12, r * 0.42));
    tick.lineTo(c + QPointF(r * 0.52, -r * 0.4));
    p.setBrush(Qt::NoBrush);
    p.drawPath(tick);
  } else {
    const double k = r * 0.42;
    p.drawLine(c + QPointF(-k, -k), c + QPointF(k, k));
    p.drawLine(c + QPointF(-k, k), c + QPointF(k, -k));
  }
  return pm;
}

}  // namespace

QPixmap YesBellPicture(QSize size) { return Picture(size, true); }

QPixmap NoBellPicture(QSize size) { return Picture(size, false); }

QIcon CopyPictureIcon() {
  // Two sheets, the front one holding a small picture: a copy of the window.
  QPixmap pm(20, 20);
  pm.fill(Qt::transparent);
  QPainter p(&pm);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(QPen(QColor(70, 70, 70), 1.2));
  p.setBrush(QColor(235, 235, 235));
  p.drawRoundedRect(QRectF(1.5, 1.5, 12, 12), 1.5, 1.5);
  p.setBrush(Qt::white);
  p.drawRoundedRect(QRectF(6.5, 6.5, 12, 12), 1.5, 1.5);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(80, 140, 210));
  QPainterPath hill(QPointF(8.5, 16.5));
  hill.lineTo(11.5, 12.0);
  hill.lineTo(13.5, 14.5);
  hill.lineTo(15.0, 13.0);
  hill.lineTo(16.5, 16.5);
  hill.closeSubpath();
  p.drawPath(hill);
  p.setBrush(QColor(235, 170, 40));
  p.drawEllipse(QPointF(15.0, 9.5), 1.4, 1.4);
  return QIcon(pm);
}

}  // namespace qv
