#include "logo.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace qv {

QPixmap QuantavueLogo(int side, qreal devicePixelRatio) {
  QPixmap pixmap(QSize(side, side) * devicePixelRatio);
  pixmap.setDevicePixelRatio(devicePixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter p(&pixmap);
  p.setRenderHint(QPainter::Antialiasing);
  const double s = side;
  // The tile, in the slate blue of the title bars.
  QLinearGradient tile(0, 0, 0, s);
  tile.setColorAt(0, QColor(110, 132, 166));
  tile.setColorAt(1, QColor(38, 48, 79));
  p.setPen(Qt::NoPen);
  p.setBrush(tile);
  p.drawRoundedRect(QRectF(0.5, 0.5, s - 1, s - 1), s * 0.18, s * 0.18);
  // Seven bars of a symmetric sample.
  const double base = s * 0.82, left = s * 0.16, width = s * 0.68;
  const double heights[7] = {0.10, 0.24, 0.44, 0.56, 0.42, 0.22, 0.09};
  const double bar = width / 7;
  p.setBrush(QColor(224, 224, 224));
  for (int i = 0; i < 7; ++i)
    p.drawRect(QRectF(left + i * bar + bar * 0.08, base - heights[i] * s, bar * 0.84, heights[i] * s));
  // The normal curve over them.
  QPainterPath curve;
  for (int i = 0; i <= 60; ++i) {
    const double x = -3.2 + 6.4 * i / 60;
    const QPointF at(left + width * i / 60, base - s * 0.60 * std::exp(-0.5 * x * x));
    if (i == 0) curve.moveTo(at); else curve.lineTo(at);
  }
  p.setBrush(Qt::NoBrush);
  p.setPen(QPen(QColor(240, 176, 64), std::max(1.5, s / 24), Qt::SolidLine, Qt::RoundCap));
  p.drawPath(curve);
  p.setPen(QPen(QColor(255, 255, 255), std::max(1.0, s / 40)));
  p.drawLine(QPointF(left - s * 0.03, base), QPointF(left + width + s * 0.03, base));
  return pixmap;
}

}  // namespace qv
