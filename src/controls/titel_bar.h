// TitelBar: the drawn title bar of the program's borderless windows. A gradient bar with
// a raised caption, close, maximise and minimise buttons, and the window moves when the
// bar is dragged.
#pragma once

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QString>
#include <QWidget>
#include <functional>

class QWindow;

namespace qv {

class TitelBarButton;

class TitelBar : public QWidget {
  Q_OBJECT
  Q_PROPERTY(int Style READ barStyle WRITE setBarStyle)
  Q_PROPERTY(QColor BackColorV1Begin READ backColorV1Begin WRITE setBackColorV1Begin)
  Q_PROPERTY(QColor BackColorV1End READ backColorV1End WRITE setBackColorV1End)
  Q_PROPERTY(QColor BackColorV2Begin READ backColorV2Begin WRITE setBackColorV2Begin)
  Q_PROPERTY(QColor BackColorV2End READ backColorV2End WRITE setBackColorV2End)
  Q_PROPERTY(double BackColorCover READ backColorCover WRITE setBackColorCover)
  Q_PROPERTY(int BorderNormal READ borderNormal WRITE setBorderNormal)
  Q_PROPERTY(QString Caption READ caption WRITE setCaption)
  Q_PROPERTY(int Caption3DWidth READ caption3DWidth WRITE setCaption3DWidth)
  Q_PROPERTY(bool ShowMaximized READ showMaximized WRITE setShowMaximized)
  Q_PROPERTY(int IconStyle READ iconStyle WRITE setIconStyle)

 public:
  // Height of the bar on the program's windows, 492 twips.
  static constexpr int kHeight = 32;

  explicit TitelBar(QWidget* parent = nullptr);
  ~TitelBar() override;

  // Makes `window` borderless and puts a bar with the program's settings (caption
  // "Quantavue", slanted light-grey gradient, close and minimise buttons) across its top.
  // With `makeRoom` the window grows by the bar's height and its other children move down
  // under the bar; without, the window's layout already leaves the room.
  static TitelBar* Install(QWidget* window, bool makeRoom);

  // Shape of the background, 0 to 12: 0 plain gradient; 1 to 8 two gradients split by an
  // edge sloping left (1 to 4) or right (5 to 8), the even ones with three stripes along
  // it, 3, 4, 7 and 8 with their last rows whole; 9 to 12 the same with an S-shaped edge.
  // (Named so as not to hide QWidget::style().)
  int barStyle() const { return m_style; }
  void setBarStyle(int style);
  QColor backColorV1Begin() const { return m_v1Begin; }
  void setBackColorV1Begin(const QColor& c);
  QColor backColorV1End() const { return m_v1End; }
  void setBackColorV1End(const QColor& c);
  QColor backColorV2Begin() const { return m_v2Begin; }
  void setBackColorV2Begin(const QColor& c);
  QColor backColorV2End() const { return m_v2End; }
  void setBackColorV2End(const QColor& c);
  // Width of the first gradient in tenths of the bar's width.
  double backColorCover() const { return m_cover; }
  void setBackColorCover(double tenths);
  // Border lines: 0 none; the value is also the inset of the caption and the rows.
  int borderNormal() const { return m_border; }
  void setBorderNormal(int thickness);
  void setBorderColors(const QColor& highLight, const QColor& darkLight);

  QString caption() const { return m_caption; }
  void setCaption(const QString& caption);
  void setCaptionColors(const QColor& text, const QColor& rampBack, const QColor& rampShadow);
  void setCaptionBorder(bool on, const QColor& color);
  int caption3DWidth() const { return m_depth; }
  void setCaption3DWidth(int pixels);
  void setCaption3DDirections(bool top, bool left, bool right, bool bottom);
  // Horizontal: 0 after the picture, 1 at the left edge, 2 centred, 3 right. Vertical:
  // 0 centred, 1 top, 2 centred less the border, 3 bottom.
  void setCaptionPosition(int x, int y);
  void setCaptionFont(const QFont& font);
  QFont captionFont() const { return m_font; }

  void setPicture(const QPixmap& picture, int posMode = 0, QPoint pos = {6, 4});

  bool showClose() const { return m_showClose; }
  void setShowClose(bool on);
  bool showMinimized() const { return m_showMin; }
  void setShowMinimized(bool on);
  bool showMaximized() const { return m_showMax; }
  void setShowMaximized(bool on);
  void setShowCloseEnabled(bool on);
  void setShowMinimizedEnabled(bool on);
  void setShowMaximizedEnabled(bool on);
  // Picture set of the buttons, 0 to 2; larger values are held at 2.
  int iconStyle() const { return m_iconStyle; }
  void setIconStyle(int style);

  QWidget* closeButton() const;     // TBARX
  QWidget* maximizeButton() const;  // TBARMax
  QWidget* minimizeButton() const;  // TBAR_

  // Where the caption's text is drawn (its block, before the raised edge).
  QRect captionRect() const;

  // Starts moving the window with the mouse. The default asks the window system
  // (QWindow::startSystemMove); where it refuses, the bar follows the mouse itself.
  void setSystemMove(std::function<bool(QWindow*)> move) { m_systemMove = std::move(move); }

  // Draws the whole bar into a painter of the given size: the widget's paint and the
  // benchmarks use it.
  void paintBar(QPainter& p, QSize size) const;

  QSize sizeHint() const override;

 signals:
  void DblClick();
  void MouseDown();
  void MouseUp();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void placeButtons();
  void buttonPressed(TitelBarButton* button);
  void paintGradient(QPainter& p, QSize size) const;
  void paintCaption(QPainter& p, QSize size) const;
  void paintBorder(QPainter& p, QSize size) const;
  QFont drawingFont() const;
  QPoint captionOrigin(QSize size) const;

  int m_style = 8;
  QColor m_v1Begin{230, 230, 230}, m_v1End{90, 110, 140};
  QColor m_v2Begin{90, 110, 140}, m_v2End{38, 48, 79};
  double m_cover = 3;
  int m_border = 2;
  QColor m_highLight{255, 255, 255}, m_darkLight{0, 0, 0};
  QString m_caption;
  QColor m_captionColor{255, 255, 255}, m_rampBack{60, 60, 60}, m_rampShadow{60, 60, 60};
  bool m_captionBorder = false;
  QColor m_captionBorderColor{0, 0, 0};
  int m_depth = 2;
  bool m_3dTop = false, m_3dLeft = false, m_3dRight = true, m_3dBottom = true;
  int m_captionPosX = 0, m_captionPosY = 2;
  QFont m_font;
  QPixmap m_picture;
  int m_picturePosMode = 0;
  QPoint m_picturePos{6, 4};
  bool m_showClose = true, m_showMin = true, m_showMax = false;
  int m_iconStyle = 0;

  TitelBarButton* m_close;
  TitelBarButton* m_max;
  TitelBarButton* m_min;

  std::function<bool(QWindow*)> m_systemMove;
  bool m_pressed = false;
  bool m_movingByHand = false;
  QPoint m_pressGlobal;
  QPoint m_windowAtPress;
};

}  // namespace qv
