// A rotary switch: a painted knob with labelled positions around it.
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

namespace qv {

// Positions lie on an arc over the top of the knob, first at the left. The user picks one
// by clicking its label, by pressing or dragging on the knob (it turns to the nearest
// position), with the wheel, or with the arrow, Home and End keys.
//
// userChangedSetting() is emitted only for the user's own moves. Setting the knob from
// code (setSetting, addPosition) emits nothing: the windows set it while they rebuild and
// must not re-enter their own handlers.
class SwitchKnob : public QWidget {
  Q_OBJECT

 public:
  explicit SwitchKnob(QWidget* parent = nullptr);

  // Appends a position. The first position added becomes the setting.
  void addPosition(const QString& text, int value);
  void clearPositions();

  // Moves to the first position with this text. Returns false, and changes nothing, when
  // there is none.
  bool setSetting(const QString& text);
  // The text of the current position; empty while there are no positions.
  QString setting() const;
  // The value given with the current position; 0 while there are no positions.
  int settingValue() const;

  int positionCount() const { return static_cast<int>(m_positions.size()); }
  int currentIndex() const { return m_current; }
  QString positionText(int i) const;
  int positionValue(int i) const;

  // Where position i's label is drawn, in widget coordinates.
  QRect labelRect(int i) const;
  // The point on the knob's face that points at position i.
  QPoint knobPoint(int i) const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  void userChangedSetting(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  struct Position {
    QString text;
    int value;
  };
  struct Geometry {
    QPointF centre;
    double labelRadius;
    double knobRadius;
  };

  Geometry geometry() const;
  double angleOf(int i) const;  // degrees clockwise from twelve o'clock
  int nearestPosition(const QPointF& point) const;
  int labelAt(const QPoint& point) const;
  void chooseByUser(int index);

  std::vector<Position> m_positions;
  int m_current = -1;
  bool m_dragging = false;
};

}  // namespace qv
