// A bar chart of categories on QCustomPlot: one bar per category, vertical or horizontal.
#pragma once

#include <QColor>
#include <QMargins>
#include <QSharedPointer>
#include <QString>
#include <QStringList>
#include <QVector>
#include <QWidget>
#include <vector>

class QCustomPlot;
class QCPBars;
class QCPTextElement;

namespace qv {

class CategoryTicker;
class PercentTicker;
class BarValueLabels;

// Bars stand at the positions 1..n in the order they are given; their labels are the tick
// labels of the category axis, turned when they crowd and thinned out when there are too
// many to read. The whole set is handed over in one call, so thousands of bars redraw in a
// few tens of milliseconds (bars without outline or antialiasing once they are thin).
//
// Changes are drawn at the next pass of the event loop, so that a run of settings draws
// once; redraw() draws at once.
class BarChart : public QWidget {
  Q_OBJECT

 public:
  struct Bar {
    QString key;    // the bar's identity, e.g. "01"; it does not move the bar
    QString label;  // shown under the bar
    QColor color;   // an invalid colour means the palette's button colour
    double value = 0.0;
  };

  explicit BarChart(QWidget* parent = nullptr);
  ~BarChart() override;

  // Removes all bars. The scale and the other settings stay.
  void clear();
  // Replaces all bars.
  void setBars(const std::vector<Bar>& bars);

  // The value that the scale must reach; the scale runs from 0 (or the lowest negative
  // value) to a little above it. At 0 or below, the tallest bar sets the scale.
  void setScaleTop(double top);

  // The settings that go with a percentage display; the values themselves are never
  // converted.
  //  tickSuffix:   the value axis labels its ticks with a "%" sign ("25%").
  //  valueLabels:  each bar carries its value as a percentage ("33.3%"), as long as the
  //                bars are wide enough to hold the text.
  //  capAtHundred: the headroom above the scale top stops at 100, so a scale top of 100
  //                ends the scale exactly at 100%.
  void setPercentSettings(bool tickSuffix, bool valueLabels, bool capAtHundred);

  // Vertical bars stand on the horizontal axis; horizontal bars run from the left axis,
  // the first bar at the top.
  void setVertical(bool vertical);

  // Gap between neighbouring bars in percent of the room of one bar, 0 to 95 (20: bars
  // fill four fifths of their room; 75: a quarter). Bars whose gap would be thinner than
  // a pixel are drawn edge to edge.
  void setGap(int gap);

  // Empty border around the whole chart, in pixels.
  void setMargin(int margin);

  int barCount() const { return static_cast<int>(m_values.size()); }
  QString barKey(int i) const;
  QString barLabel(int i) const;
  QColor barColor(int i) const;
  double barValue(int i) const;

  double scaleTop() const { return m_scaleTop; }
  bool isVertical() const { return m_vertical; }
  int gap() const { return m_gap; }
  int margin() const { return m_margin; }
  bool percentTickSuffix() const { return m_percentTicks; }
  bool percentValueLabels() const { return m_percentValueLabels; }
  bool percentCapAtHundred() const { return m_percentCap; }

  QString title() const;
  QString note() const;

  // Every how many bars a label is shown, and the angle of the labels, after the last
  // drawing.
  int labelStride() const { return m_labelStride; }
  double labelRotation() const { return m_labelRotation; }

  // The plot inside, for tests and for the look of a window.
  QCustomPlot* plot() const { return m_plot; }
  // The file name the chart's Save menu offers first, without extension ("Chart").
  void setFileBaseName(const QString& name);

  // Draws now instead of at the next pass of the event loop.
  void redraw();
  // Draws now and saves the widget's picture as PNG.
  bool savePng(const QString& path);

  QSize sizeHint() const override;

 private:
  void rebuildPlottables();
  void applyDirection();
  void applyRanges();
  void layoutCategories();
  void scheduleReplot();
  QColor effectiveColor(const QColor& c) const;

  QCustomPlot* m_plot;
  QCPTextElement* m_title;
  QCPTextElement* m_note;
  std::vector<QCPBars*> m_groups;
  QSharedPointer<CategoryTicker> m_categoryTicker;
  QSharedPointer<PercentTicker> m_valueTicker;
  BarValueLabels* m_valueLabels;

  QStringList m_keys;
  QStringList m_labels;
  QVector<QColor> m_colors;
  QVector<double> m_values;
  double m_widestLabel = 0.0;
  QMargins m_baseMargins;

  double m_scaleTop = 0.0;
  bool m_vertical = true;
  int m_gap = 20;
  int m_margin = 0;
  bool m_percentTicks = false;
  bool m_percentValueLabels = false;
  bool m_percentCap = false;
  int m_labelStride = 1;
  double m_labelRotation = 0.0;

  friend class BarValueLabels;
};

}  // namespace qv
