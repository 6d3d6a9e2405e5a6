// WindowShadow: a soft drop shadow on the right and bottom edges of a borderless window,
// drawn as two translucent strips that follow it. Purely cosmetic: where the window system
// cannot show translucent windows (no compositor, the offscreen platform, a screen of
// fewer than 16 bits) no strip is made and nothing else changes.
#pragma once

#include <QColor>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <functional>

class QWidget;

namespace qv {

class WindowShadow : public QObject {
  Q_OBJECT

 public:
  explicit WindowShadow(QObject* parent = nullptr);
  ~WindowShadow() override;

  // Attaches to `form` (one form per shadow); false, and nothing changes, on a second call.
  bool Shadow(QWidget* form);

  QColor color() const { return m_color; }
  void setColor(const QColor& c);
  // Width of each strip in pixels.
  int depth() const { return m_depth; }
  void setDepth(int pixels);
  // Overall opacity of the strips, 0 to 255.
  int transparency() const { return m_transparency; }
  void setTransparency(int alpha);

  bool isSupported() const { return m_supported; }
  bool stripsShown() const;
  QWidget* rightStrip() const;
  QWidget* bottomStrip() const;
  // How many times a strip's picture was made: a setter that changes nothing makes none.
  int paintCount() const { return m_paintCount; }

  // The strips beside an owner at `owner` (outer geometry): the right one from `depth`
  // below its top, the bottom one from `depth` right of its left edge.
  static QRect RightStripGeometry(const QRect& owner, int depth);
  static QRect BottomStripGeometry(const QRect& owner, int depth);
  // The strips' pictures, premultiplied, top row first: the right strip fades to the right
  // and towards both ends, the bottom strip downward and at its left end.
  static QImage RightStripImage(int w, int h, const QColor& color);
  static QImage BottomStripImage(int w, int h, const QColor& color);

  // Whether this display can show the strips. Tests replace it to see the strips on the
  // offscreen platform.
  static std::function<bool()> capability;
  static bool DisplayCanShowShadows();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void createStrips();
  void destroyStrips();
  void repaintRight();
  void repaintBottom();
  void place();
  void showStrips(bool on);

  QPointer<QWidget> m_owner;
  QPointer<QWidget> m_right;
  QPointer<QWidget> m_bottom;
  QColor m_color{0, 0, 0};
  int m_depth = 7;
  int m_transparency = 140;
  bool m_supported = false;
  bool m_shown = false;
  int m_paintCount = 0;
  QSize m_lastSize;
};

}  // namespace qv
