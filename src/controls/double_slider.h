// A horizontal slider over doubles, with a label that shows the position.
#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QSlider;

namespace qv {

// The handle runs over a fine integer grid between the two bounds, but the position is
// kept as a double: a position set from code reads back exactly, and the two ends of the
// groove are exactly the bounds. The position always lies between the bounds; moving a
// bound pulls the position along.
//
// Signals come only from the user. valueChanged() follows the handle while it moves;
// mouseReleased() comes when the mouse button is let go over the slider, and also when a
// key or a wheel turn has moved it, so that keyboard users can apply a move too. Setting
// bounds, position or decimals from code emits nothing.
class DoubleSlider : public QWidget {
  Q_OBJECT

 public:
  explicit DoubleSlider(QWidget* parent = nullptr);

  double lowerBound() const { return m_lower; }
  double upperBound() const { return m_upper; }
  // A bound that is not a number is ignored. A lower bound above the upper one is kept as
  // given (callers set one bound after the other); positions then lie between the two.
  void setLowerBound(double lower);
  void setUpperBound(double upper);
  void setBounds(double lower, double upper);

  double position() const { return m_position; }
  void setPosition(double position);

  // Decimals of the label, 0 to 15. The position itself is never rounded.
  int decimals() const { return m_decimals; }
  void setDecimals(int decimals);

  // With decimal steps on, the handle stops at the two bounds and at every multiple of
  // 10^-decimals() between them (coarser powers of ten where there would be more than
  // kMaxDecimalSteps stops, or more digits than a double holds), so a user lands exactly
  // on the value the label shows. Off: kGridSteps even steps.
  void setDecimalSteps(bool on);
  bool decimalSteps() const { return m_decimalSteps; }
  // Stops of the handle, both bounds included, less one.
  int gridSteps() const;

  // The label's text: the position with decimals() places.
  QString valueText() const;

  // The slider inside, for the styling of a window and for tests.
  QSlider* slider() const { return m_slider; }

  // Steps of the integer grid from one bound to the other.
  static constexpr int kGridSteps = 100000;
  static constexpr int kMaxDecimalSteps = 100000000;

 signals:
  void valueChanged(double position);
  void mouseReleased(double position);

 private:
  friend class DoubleSliderGrid;

  double positionOfStep(int step) const;
  int stepOfPosition(double position) const;
  double clamped(double position) const;
  void syncFromCode();
  void onGridMoved(int step);
  void onUserReleased(bool always);
  void updateLabel();
  void updateGrid();
  double multipleValue(double m) const;

  QSlider* m_slider;
  QLabel* m_label;
  double m_lower = 0.0;
  double m_upper = 100.0;
  double m_position = 0.0;
  double m_lastReleased = 0.0;
  int m_decimals = 2;
  bool m_syncing = false;
  bool m_decimalSteps = false;
  bool m_decimalGrid = false;  // decimal steps on, and a grid found for the bounds
  // The decimal grid: stop k (0 < k < m_stops) is the multiple m_first + k - 1 of
  // 10^m_exponent; stop 0 is the lower end and stop m_stops the upper one.
  int m_exponent = 0;
  double m_first = 0.0;
  int m_stops = kGridSteps;
};

}  // namespace qv
