// A small spinning mark that says the program is at work.
#pragma once

#include <QColor>
#include <QWidget>

class QTimer;

namespace qv {

// Turns while it is shown and stands still while hidden: show() and hide() are all a
// window needs. Work done on the user-interface thread holds the animation until it
// returns to the event loop.
class BusyIndicator : public QWidget {
  Q_OBJECT

 public:
  explicit BusyIndicator(QWidget* parent = nullptr);

  bool isAnimating() const;
  // The spoke that is brightest now, 0 to spokeCount() - 1.
  int frame() const { return m_frame; }
  static constexpr int spokeCount() { return 12; }

  // The spokes' colour; by default the palette's text colour.
  void setColor(const QColor& color);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  QTimer* m_timer;
  QColor m_color;
  int m_frame = 0;
};

}  // namespace qv
