// ThemedButton: the program's own push button. A face in the back colour that turns
// OverColor under the mouse (ButtonThemeType 1), or the system's button (0), with a
// picture and a caption placed on it by the rules below.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPushButton>
#include <QRect>

namespace qv {

// It is a QPushButton, so clicked(), click(), setEnabled() and the access key of an "&" in
// the caption behave as on any button: a press and a release on the button is one click, a
// release off it is none, a double click is two, and a disabled button takes no input.
// Only push buttons are offered: no window of the program uses the option and check types
// or skin pictures, and the face colour stands where a skin would be.
class ThemedButton : public QPushButton {
  Q_OBJECT
  Q_PROPERTY(int ButtonThemeType READ buttonThemeType WRITE setButtonThemeType)
  Q_PROPERTY(QColor BackColor READ backColor WRITE setBackColor)
  Q_PROPERTY(QColor OverColor READ overColor WRITE setOverColor)
  Q_PROPERTY(QColor ForeColor READ foreColor WRITE setForeColor)
  Q_PROPERTY(bool UseParentBackColor READ useParentBackColor WRITE setUseParentBackColor)
  Q_PROPERTY(int ButtonRounding READ buttonRounding WRITE setButtonRounding)
  Q_PROPERTY(int ButtonCorner READ buttonCorner WRITE setButtonCorner)
  Q_PROPERTY(QString Caption READ caption WRITE setCaption)
  Q_PROPERTY(int CaptionAlign READ captionAlign WRITE setCaptionAlign)
  Q_PROPERTY(bool CaptionShadow READ captionShadow WRITE setCaptionShadow)
  Q_PROPERTY(QIcon Picture READ picture WRITE setPicture)
  Q_PROPERTY(int PictureAlign READ pictureAlign WRITE setPictureAlign)
  Q_PROPERTY(int PictureSize READ pictureSize WRITE setPictureSize)
  Q_PROPERTY(bool ShowFocusRect READ showFocusRect WRITE setShowFocusRect)

 public:
  // The look of the moment; Default is the look of a button that has the focus or was just
  // clicked, with the mouse elsewhere.
  enum State { Normal = 1, Hot = 2, Pressed = 3, Disabled = 4, Default = 5 };
  enum PicturePlace { Above = 0, LeftOf = 1, Centred = 2, RightOf = 3, Below = 4 };

  explicit ThemedButton(QWidget* parent = nullptr);
  ThemedButton(const QString& caption, QWidget* parent = nullptr);

  int buttonThemeType() const { return m_themeType; }
  void setButtonThemeType(int type);
  // BackColor is the palette's button face until one is set.
  QColor backColor() const;
  void setBackColor(const QColor& c);
  QColor overColor() const { return m_overColor; }
  void setOverColor(const QColor& c);
  QColor foreColor() const;
  void setForeColor(const QColor& c);
  bool useParentBackColor() const { return m_useParentBackColor; }
  void setUseParentBackColor(bool on);
  int buttonRounding() const { return m_rounding; }
  void setButtonRounding(int radius);
  int buttonCorner() const { return m_corner; }
  void setButtonCorner(int corner);
  QString caption() const { return text(); }
  void setCaption(const QString& caption);
  int captionAlign() const { return m_captionAlign; }
  void setCaptionAlign(int align);
  bool captionShadow() const { return m_captionShadow; }
  void setCaptionShadow(bool on);
  QIcon picture() const { return m_picture; }
  void setPicture(const QIcon& picture);
  int pictureAlign() const { return m_pictureAlign; }
  void setPictureAlign(int align);
  int pictureSize() const { return m_pictureSize; }
  void setPictureSize(int size);
  bool showFocusRect() const { return m_showFocusRect; }
  void setShowFocusRect(bool on);

  State buttonState() const;
  // The face colour of the moment: OverColor under the mouse or pressed, else BackColor.
  QColor faceColor() const;
  // Where the caption's text block and the picture are drawn, in widget pixels (for the
  // pressed look one pixel lower and to the right). Empty when there is none.
  QRect captionRect() const;
  QRect pictureRect() const;
  // Side of the square picture: 16, 24, 32, 48 or 64 pixels (PictureSize 0 to 4).
  int pictureSide() const;

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool hitButton(const QPoint& pos) const override;

 private:
  void init();
  QRect captionBox(int pressShift) const;
  QRect pictureBox(const QRect& caption, int pressShift) const;
  void paintFlatFace(QPainter& p) const;
  void paintSystemFace(QPainter& p);
  int textFlags() const;
  void setInside(bool inside);

  int m_themeType = 0;
  QColor m_backColor;  // invalid: the palette's button face
  QColor m_overColor{0xE0, 0xE0, 0xE0};
  QColor m_foreColor;  // invalid: the palette's button text
  bool m_useParentBackColor = false;
  int m_rounding = 0;
  int m_corner = 0;
  int m_captionAlign = 2;
  bool m_captionShadow = false;
  QIcon m_picture;
  int m_pictureAlign = Above;
  int m_pictureSize = 2;
  bool m_showFocusRect = true;
  bool m_mouseInside = false;
  bool m_clickedSinceFocus = false;
};

}  // namespace qv
