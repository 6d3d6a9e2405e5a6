#include "themed_button.h"

#include <QEnterEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionButton>
#include <QStyleOptionFocusRect>
#include <algorithm>

namespace qv {
namespace {

constexpr int kSides[5] = {16, 24, 32, 48, 64};

// Which corners ButtonCorner rounds: all four, the top pair, one top corner, the left
// pair, the right pair, the bottom pair, one bottom corner.
struct Corners {
  bool topLeft, topRight, bottomRight, bottomLeft;
};

Corners RoundedCorners(int corner) {
  switch (corner) {
    case 1: return {true, true, false, false};
    case 2: return {true, false, false, false};
    case 3: return {false, true, false, false};
    case 4: return {true, false, false, true};
    case 5: return {false, true, true, false};
    case 6: return {false, false, true, true};
    case 7: return {false, false, false, true};
    case 8: return {false, false, true, false};
    default: return {true, true, true, true};
  }
}

QPainterPath FacePath(const QRectF& r, double radius, Corners c) {
  QPainterPath path;
  const double d = 2 * std::min(radius, std::min(r.width(), r.height()) / 2);
  if (d <= 0) {
    path.addRect(r);
    return path;
  }
  path.moveTo(r.left() + (c.topLeft ? d / 2 : 0), r.top());
  if (c.topRight) {
    path.arcTo(r.right() - d, r.top(), d, d, 90, -90);
  } else {
    path.lineTo(r.topRight());
  }
  if (c.bottomRight) {
    path.arcTo(r.right() - d, r.bottom() - d, d, d, 0, -90);
  } else {
    path.lineTo(r.bottomRight());
  }
  if (c.bottomLeft) {
    path.arcTo(r.left(), r.bottom() - d, d, d, 270, -90);
  } else {
    path.lineTo(r.bottomLeft());
  }
  if (c.topLeft) {
    path.arcTo(r.left(), r.top(), d, d, 180, -90);
  } else {
    path.lineTo(r.topLeft());
  }
  path.closeSubpath();
  return path;
}

}  // namespace

ThemedButton::ThemedButton(QWidget* parent) : QPushButton(parent) { init(); }

ThemedButton::ThemedButton(const QString& caption, QWidget* parent) : QPushButton(parent) {
  init();
  setCaption(caption);
}

void ThemedButton::init() {
  // A dialog must not make it its default button: Enter is handled by the button that
  // has the focus, as every button of the program does.
  setAutoDefault(false);
  setMouseTracking(true);
  setAttribute(Qt::WA_Hover);
  connect(this, &QAbstractButton::clicked, this, [this] {
    m_clickedSinceFocus = true;
    update();
  });
}

void ThemedButton::setButtonThemeType(int type) {
  m_themeType = type == 1 ? 1 : 0;
  update();
}

QColor ThemedButton::backColor() const {
  if (m_useParentBackColor && parentWidget()) return parentWidget()->palette().color(parentWidget()->backgroundRole());
  return m_backColor.isValid() ? m_backColor : palette().color(QPalette::Button);
}

void ThemedButton::setBackColor(const QColor& c) {
  m_backColor = c;
  update();
}

void ThemedButton::setOverColor(const QColor& c) {
  m_overColor = c;
  update();
}

QColor ThemedButton::foreColor() const {
  return m_foreColor.isValid() ? m_foreColor : palette().color(QPalette::Active, QPalette::ButtonText);
}

void ThemedButton::setForeColor(const QColor& c) {
  m_foreColor = c;
  update();
}

void ThemedButton::setUseParentBackColor(bool on) {
  m_useParentBackColor = on;
  update();
}

void ThemedButton::setButtonRounding(int radius) {
  m_rounding = std::max(0, radius);
  update();
}

void ThemedButton::setButtonCorner(int corner) {
  m_corner = std::clamp(corner, 0, 8);
  update();
}

void ThemedButton::setCaption(const QString& caption) {
  // A caption and a centred picture exclude each other: the picture moves above it.
  if (!caption.isEmpty() && m_pictureAlign == Centred) m_pictureAlign = Above;
  setText(caption);
  updateGeometry();
  update();
}

void ThemedButton::setCaptionAlign(int align) {
  m_captionAlign = std::clamp(align, 0, 2);
  update();
}

void ThemedButton::setCaptionShadow(bool on) {
  m_captionShadow = on;
  update();
}

void ThemedButton::setPicture(const QIcon& picture) {
  m_picture = picture;
  updateGeometry();
  update();
}

void ThemedButton::setPictureAlign(int align) {
  align = std::clamp(align, 0, 4);
  if (align == Centred && !text().isEmpty()) align = Above;
  m_pictureAlign = align;
  update();
}

void ThemedButton::setPictureSize(int size) {
  m_pictureSize = std::clamp(size, 0, 5);
  updateGeometry();
  update();
}

void ThemedButton::setShowFocusRect(bool on) {
  m_showFocusRect = on;
  update();
}

int ThemedButton::pictureSide() const { return kSides[std::min(m_pictureSize, 4)]; }

ThemedButton::State ThemedButton::buttonState() const {
  if (!isEnabled()) return Disabled;
  if (isDown()) return Pressed;
  if (m_mouseInside) return Hot;
  if (hasFocus() || m_clickedSinceFocus) return Default;
  return Normal;
}

QColor ThemedButton::faceColor() const {
  const State s = buttonState();
  return s == Hot || s == Pressed ? m_overColor : backColor();
}

int ThemedButton::textFlags() const {
  const int align = m_captionAlign == 0 ? Qt::AlignLeft : m_captionAlign == 1 ? Qt::AlignRight : Qt::AlignHCenter;
  return align | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic;
}

// The caption's block: centred in the height, lower by half the picture's room when the
// picture stands above it, and shifted by one pixel while pressed.
QRect ThemedButton::captionBox(int p) const {
  const int W = width(), H = height();
  int d = 0;
  if (!m_picture.isNull()) d = (m_pictureSize == 5 ? (m_pictureAlign == Above || m_pictureAlign == Below ? H : W)
                                                   : pictureSide()) + 5;
  const bool vertical = m_pictureAlign == Above || m_pictureAlign == Below;
  const int dy = vertical ? d : 0, dx = vertical ? 0 : d;
  const QRect room(0, 0, std::max(0, W - 12 - dx), std::max(0, H - 12 - dy));
  const int t = fontMetrics().boundingRect(room, textFlags(), text()).height();
  int top = 6 + (H - t - 12 + dy) / 2 + p;
  const int bottom = top + t;
  int left = 6 + p, right = W - 6 + p;
  if (m_pictureAlign == Below) top -= dy;
  if (m_pictureAlign == LeftOf) left += dx;
  if (m_pictureAlign == RightOf) right -= dx;
  return QRect(QPoint(left, top), QPoint(right - 1, bottom - 1));
}

QRect ThemedButton::pictureBox(const QRect& caption, int p) const {
  const int W = width(), H = height();
  const int w = m_pictureSize == 5 ? W : pictureSide();
  const int h = m_pictureSize == 5 ? H : pictureSide();
  int left = caption.left(), top = caption.top(), right = caption.right() + 1, bottom = caption.bottom() + 1;
  if (text().isEmpty()) {
    left = w + 10;
    top = h + 14;
    right = W - w - 9;
    bottom = h + 14 + h + 10;
  }
  int x = 0, y = 0;
  switch (m_pictureAlign) {
    case Above: x = (W - w) / 2 + p; y = (top - h) / 2; break;
    case Below: x = (W - w) / 2 + p; y = H - (bottom - top + h) / 2 - 2; break;
    case LeftOf: x = (left - w) / 2 + 2; y = (H - h) / 2; break;
    case Centred: x = (W - w) / 2; y = (H - h) / 2; break;
    case RightOf: x = right + (W - right - w) / 2 - 2; y = (H - h) / 2; break;
    default: break;
  }
  if (m_pictureSize == 5) x = y = 0;
  return QRect(x, y + p, w, h);
}

QRect ThemedButton::captionRect() const {
  if (text().isEmpty()) return {};
  return captionBox(buttonState() == Pressed ? 1 : 0);
}

QRect ThemedButton::pictureRect() const {
  if (m_picture.isNull()) return {};
  const int p = buttonState() == Pressed ? 1 : 0;
  return pictureBox(captionBox(p), p);
}

QSize ThemedButton::sizeHint() const {
  const QFontMetrics fm = fontMetrics();
  QSize text = fm.size(Qt::TextShowMnemonic, this->text());
  int w = text.width() + 16, h = text.height() + 12;
  if (!m_picture.isNull()) {
    const int s = pictureSide() + 5;
    if (m_pictureAlign == Above || m_pictureAlign == Below) {
      h += s;
      w = std::max(w, s + 12);
    } else {
      w += s;
      h = std::max(h, s + 12);
    }
  }
  return {w, h};
}

void ThemedButton::paintFlatFace(QPainter& p) const {
  p.setPen(Qt::NoPen);
  p.setBrush(faceColor());
  p.drawPath(FacePath(QRectF(rect()), m_rounding, RoundedCorners(m_corner)));
}

void ThemedButton::paintSystemFace(QPainter& p) {
  QStyleOptionButton opt;
  initStyleOption(&opt);
  opt.text.clear();
  opt.icon = QIcon();
  if (buttonState() == Default) opt.features |= QStyleOptionButton::DefaultButton;
  style()->drawControl(QStyle::CE_PushButtonBevel, &opt, &p, this);
}

void ThemedButton::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  p.setRenderHint(QPainter::TextAntialiasing);
  if (m_themeType == 1) {
    paintFlatFace(p);
  } else {
    paintSystemFace(p);
  }
  const State state = buttonState();
  const int shift = state == Pressed ? 1 : 0;
  const QRect caption = captionBox(shift);
  if (!text().isEmpty()) {
    p.setFont(font());
    if (m_captionShadow) {
      const QColor face = faceColor();
      p.setPen(QColor(face.red() & 0xDC, face.green() & 0xDC, face.blue() & 0xDC));
      p.drawText(caption.translated(1, 1), textFlags(), text());
    }
    // Greyed text: halfway between the text and the face, readable on any face colour.
    const QColor fore = foreColor(), face = faceColor();
    p.setPen(state == Disabled ? QColor((fore.red() + face.red()) / 2, (fore.green() + face.green()) / 2,
                                        (fore.blue() + face.blue()) / 2)
                               : fore);
    p.drawText(caption, textFlags(), text());
  }
  if (!m_picture.isNull()) {
    const QRect where = pictureBox(caption, shift);
    m_picture.paint(&p, where, Qt::AlignCenter, state == Disabled ? QIcon::Disabled : QIcon::Normal);
  }
  if (hasFocus() && m_showFocusRect) {
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    focus.rect = rect().adjusted(3, 3, -3, -3);
    focus.backgroundColor = faceColor();
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &p, this);
  }
}

bool ThemedButton::event(QEvent* event) {
  // The access key is a click at once, with the focus taken first.
  if (event->type() == QEvent::Shortcut) {
    if (isEnabled()) {
      setFocus(Qt::ShortcutFocusReason);
      click();
    }
    return true;
  }
  return QPushButton::event(event);
}

void ThemedButton::keyPressEvent(QKeyEvent* event) {
  if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && event->modifiers() == Qt::NoModifier) {
    click();
    return;
  }
  QPushButton::keyPressEvent(event);
}

void ThemedButton::setInside(bool inside) {
  if (inside == m_mouseInside) return;
  m_mouseInside = inside;
  update();
}

void ThemedButton::mouseMoveEvent(QMouseEvent* event) {
  setInside(rect().contains(event->position().toPoint()));
  QPushButton::mouseMoveEvent(event);
}

void ThemedButton::enterEvent(QEnterEvent* event) {
  setInside(true);
  QPushButton::enterEvent(event);
}

void ThemedButton::leaveEvent(QEvent* event) {
  setInside(false);
  QPushButton::leaveEvent(event);
}

void ThemedButton::focusInEvent(QFocusEvent* event) {
  update();
  QPushButton::focusInEvent(event);
}

void ThemedButton::focusOutEvent(QFocusEvent* event) {
  m_clickedSinceFocus = false;
  update();
  QPushButton::focusOutEvent(event);
}

// The whole face is the button, whatever bevel the style draws.
bool ThemedButton::hitButton(const QPoint& pos) const { return rect().contains(pos); }

void ThemedButton::changeEvent(QEvent* event) {
  if (event->type() == QEvent::EnabledChange && !isEnabled()) m_mouseInside = false;
  QPushButton::changeEvent(event);
}

}  // namespace qv
