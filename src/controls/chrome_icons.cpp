#include "chrome_icons.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <functional>

namespace qv {
namespace {

using Drawing = std::function<void(QPainter&, double)>;

// Draws the picture afresh for each size and pixel ratio, so that it is never scaled.
class DrawnIcon : public QIconEngine {
 public:
  explicit DrawnIcon(Drawing draw) : m_draw(std::move(draw)) {}
  void paint(QPainter* p, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const double side = std::min(rect.width(), rect.height());
    p->save();
    p->setRenderHint(QPainter::Antialiasing);
    p->translate(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2);
    if (mode == QIcon::Disabled) p->setOpacity(0.4);
    m_draw(*p, side);
    p->restore();
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return scaledPixmap(size, mode, state, 1.0);
  }
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override {
    QPixmap pm(size * scale);
    pm.setDevicePixelRatio(scale);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    paint(&p, QRect(QPoint(0, 0), size), mode, state);
    return pm;
  }
  QIconEngine* clone() const override { return new DrawnIcon(m_draw); }

 private:
  Drawing m_draw;
};

QIcon Make(Drawing draw) { return QIcon(new DrawnIcon(std::move(draw))); }

}  // namespace

QIcon CopyWindowIcon() {
  return Make([](QPainter& p, double s) {
    const double u = s / 20.0;
    p.setPen(QPen(QColor(70, 70, 70), 1.2 * u));
    p.setBrush(QColor(235, 235, 235));
    p.drawRoundedRect(QRectF(1.5 * u, 1.5 * u, 12 * u, 12 * u), 1.5 * u, 1.5 * u);
    p.setBrush(Qt::white);
    p.drawRoundedRect(QRectF(6.5 * u, 6.5 * u, 12 * u, 12 * u), 1.5 * u, 1.5 * u);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(80, 140, 210));
    QPainterPath hill(QPointF(8.5 * u, 16.5 * u));
    hill.lineTo(11.5 * u, 12.0 * u);
    hill.lineTo(13.5 * u, 14.5 * u);
    hill.lineTo(15.0 * u, 13.0 * u);
    hill.lineTo(16.5 * u, 16.5 * u);
    hill.closeSubpath();
    p.drawPath(hill);
    p.setBrush(QColor(235, 170, 40));
    p.drawEllipse(QPointF(15.0 * u, 9.5 * u), 1.4 * u, 1.4 * u);
  });
}

QIcon SheetExportIcon() {
  return Make([](QPainter& p, double s) {
    const double u = s / 24.0;
    // The sheet: a green header row and a grid.
    const QRectF sheet(5 * u, 2 * u, 17 * u, 20 * u);
    p.setPen(QPen(QColor(30, 110, 60), 1.2 * u));
    p.setBrush(Qt::white);
    p.drawRoundedRect(sheet, 1.5 * u, 1.5 * u);
    p.fillRect(QRectF(sheet.left() + 0.6 * u, sheet.top() + 0.6 * u, sheet.width() - 1.2 * u, 4 * u), QColor(33, 140, 75));
    p.setPen(QPen(QColor(150, 190, 165), 0.8 * u));
    for (int i = 1; i < 4; ++i) p.drawLine(QPointF(sheet.left(), 2 * u + 4.6 * u + i * 3.8 * u), QPointF(sheet.right(), 2 * u + 4.6 * u + i * 3.8 * u));
    p.drawLine(QPointF(13.5 * u, 6.6 * u), QPointF(13.5 * u, sheet.bottom()));
    // The arrow into it.
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(33, 140, 75));
    QPainterPath arrow(QPointF(1 * u, 11 * u));
    arrow.lineTo(7 * u, 11 * u);
    arrow.lineTo(7 * u, 7.5 * u);
    arrow.lineTo(12.5 * u, 13 * u);
    arrow.lineTo(7 * u, 18.5 * u);
    arrow.lineTo(7 * u, 15 * u);
    arrow.lineTo(1 * u, 15 * u);
    arrow.closeSubpath();
    p.setPen(QPen(Qt::white, 0.8 * u));
    p.drawPath(arrow);
  });
}

QIcon ResetIcon() {
  return Make([](QPainter& p, double s) {
    const double u = s / 24.0;
    const QRectF ring(4 * u, 4 * u, 16 * u, 16 * u);
    p.setPen(QPen(QColor(40, 90, 160), 2.6 * u, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawArc(ring, 100 * 16, 290 * 16);
    // The head at the open end, pointing along the turn.
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(40, 90, 160));
    QPainterPath head(QPointF(7.5 * u, 1.0 * u));
    head.lineTo(14.5 * u, 4.2 * u);
    head.lineTo(8.5 * u, 8.8 * u);
    head.closeSubpath();
    p.drawPath(head);
  });
}

QIcon RangePickIcon() {
  return Make([](QPainter& p, double s) {
    const double u = s / 32.0;
    const QRectF grid(3 * u, 3 * u, 26 * u, 26 * u);
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    p.drawRect(grid);
    // The column that is picked.
    p.setBrush(QColor(200, 220, 245));
    p.drawRect(QRectF(11.7 * u, 9.5 * u, 8.6 * u, 19.5 * u));
    p.setPen(QPen(QColor(150, 150, 150), 0.8 * u));
    for (int i = 1; i < 4; ++i) p.drawLine(QPointF(grid.left() + i * grid.width() / 3, grid.top()), QPointF(grid.left() + i * grid.width() / 3, grid.bottom()));
    for (int i = 1; i < 4; ++i) p.drawLine(QPointF(grid.left(), grid.top() + i * 6.5 * u), QPointF(grid.right(), grid.top() + i * 6.5 * u));
    p.setPen(QPen(QColor(70, 70, 70), 1.2 * u));
    p.setBrush(Qt::NoBrush);
    p.drawRect(grid);
    p.setPen(QPen(QColor(30, 110, 200), 2.0 * u));
    p.drawRect(QRectF(11.7 * u, 9.5 * u, 8.6 * u, 19.5 * u));
  });
}

}  // namespace qv
