// A curve plot on QCustomPlot with a vertical line that the user drags along the curve.
// While it moves the plot reports the curve's key, the line's x and the curve's height
// there. Only the line's own layer is drawn again at each step, so the line follows the
// mouse over a curve of a million points.
#pragma once

#include <QHash>
#include <QString>

#include <cstdint>
#include <optional>
#include <span>

#include "curve_chart.h"

class QCPGraph;
class QCPItemStraightLine;
class QCPItemTracer;
class QMouseEvent;

namespace qv {

// A curve's properties under the names the windows give them. Colours are COM colour
// values, 0x00BBGGRR.
struct PlotterCurve {
  QString Name;
  QString Key;
  double Min = 0;                        // vertical scale
  double Max = 100;
  int AutoScaleTolerance = 0;            // kept; the scale follows the curve with bAutoScale
  QString Unit;
  int Width = 1;
  std::optional<std::uint32_t> Color;    // the plot's own curve colour when not set
  int LineStyle = 0;                     // 0 solid, 1 dashed, 2 dotted
  bool bShowScale = true;
  bool bAutoScale = false;               // the vertical scale reaches the curve's extremes
};

class Plotter : public CurveChart {
  Q_OBJECT

 public:
  // The curve colour when a curve names none: a scope's green trace.
  static constexpr std::uint32_t kDefaultColor = 0x40FF40;

  explicit Plotter(QWidget* parent = nullptr);
  ~Plotter() override;

  // A display setting kept for the windows that set it; it changes nothing drawn.
  void setDisplay(int value) { m_display = value; }
  int display() const { return m_display; }

  void removeAllCurves();
  void setXBounds(float low, float high);
  // Adds a curve without data; a curve of the same key is replaced, so the user sees one.
  void addCurve(const PlotterCurve& curve);
  // Replaces a curve's data with the first n points in one call; points with a coordinate
  // that is not a finite number are left out. False for an unknown key.
  bool setCurveData(const QString& key, std::size_t n, std::span<const double> x,
                    std::span<const double> y);

  // Shows (true) or hides the vertical line. It stands at the middle of the curve until
  // it is moved and reports nothing until then.
  void enableCursor(bool on);
  bool cursorEnabled() const { return m_cursorOn; }
  // Moves the line to x as a drag does: x is kept within the curve's keys and the
  // horizontal scale, and cursorMoved reports where the line ends up.
  void moveCursor(double x);
  double cursorX() const { return m_cursorX; }

  // The height of the line's curve at x: between two points on the straight line that
  // joins them, on a point its value (the first of equal keys), beyond the ends the end
  // points'. Found by binary search. Nothing without a curve.
  std::optional<double> valueAt(double x) const;

  PlotterCurve curve(const QString& key) const { return m_looks.value(key); }
  // The pixel column of a horizontal position, for driving the line with the mouse.
  int pixelOf(double x) const;

 signals:
  // The line moved: key of its curve, its x, the curve's height at x.
  void cursorMoved(const QString& key, float x, float y);

 private:
  QCPGraph* cursorGraph() const;
  void placeCursor();
  void press(QMouseEvent* event);
  void drag(QMouseEvent* event);
  void release(QMouseEvent* event);

  QCPItemStraightLine* m_line;
  QCPItemTracer* m_marker;
  QHash<QString, PlotterCurve> m_looks;
  int m_display = 0;
  bool m_cursorOn = false;
  bool m_dragging = false;
  double m_cursorX = 0;
};

}  // namespace qv
