#include "titel_bar.h"

#include <QApplication>
#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWindow>
#include <algorithm>
#include <cmath>

namespace qv {

// One of the bar's three buttons. It acts on the press, not on the release, as a title
// bar's buttons do here; a disabled one shows its grey picture and does nothing.
class TitelBarButton : public QWidget {
 public:
  enum Kind { Close, Maximize, Minimize };
  static constexpr int kSide = 21;

  TitelBarButton(Kind kind, TitelBar* bar) : QWidget(bar), m_kind(kind), m_bar(bar) {
    resize(kSide, kSide);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
  }

  Kind kind() const { return m_kind; }
  bool hot() const { return m_hot; }
  std::function<void(TitelBarButton*)> onPress;

 protected:
  void paintEvent(QPaintEvent*) override;
  void enterEvent(QEnterEvent*) override {
    m_hot = true;
    update();
  }
  void leaveEvent(QEvent*) override {
    m_hot = false;
    update();
  }
  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton) return;
    if (onPress) onPress(this);
  }
  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::EnabledChange) update();
    QWidget::changeEvent(event);
  }

 private:
  Kind m_kind;
  TitelBar* m_bar;
  bool m_hot = false;
};

namespace {

// Row colours of one gradient, as the bar draws them: begin - i * (begin - end) / H,
// channel by channel, rounded.
QColor RowColour(const QColor& begin, const QColor& end, int i, int h) {
  auto channel = [&](int b, int e) {
    const double step = static_cast<double>(b - e) / h;
    return std::clamp(static_cast<int>(std::lround(b - i * step)), 0, 255);
  };
  return QColor(channel(begin.red(), end.red()), channel(begin.green(), end.green()),
                channel(begin.blue(), end.blue()));
}

QColor Mix(const QColor& a, const QColor& b, double t) {
  return QColor(static_cast<int>(std::lround(a.red() + (b.red() - a.red()) * t)),
                static_cast<int>(std::lround(a.green() + (b.green() - a.green()) * t)),
                static_cast<int>(std::lround(a.blue() + (b.blue() - a.blue()) * t)));
}

// The glyph of a button: a cross, a box, a bar.
void DrawGlyph(QPainter& p, TitelBarButton::Kind kind, const QRectF& r, const QColor& c, double width) {
  p.setPen(QPen(c, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  p.setBrush(Qt::NoBrush);
  const QRectF g = r.adjusted(r.width() * 0.3, r.height() * 0.3, -r.width() * 0.3, -r.height() * 0.3);
  switch (kind) {
    case TitelBarButton::Close:
      p.drawLine(g.topLeft(), g.bottomRight());
      p.drawLine(g.topRight(), g.bottomLeft());
      break;
    case TitelBarButton::Maximize:
      p.drawRect(g);
      p.drawLine(QPointF(g.left(), g.top() + width), QPointF(g.right(), g.top() + width));
      break;
    case TitelBarButton::Minimize:
      p.drawLine(QPointF(g.left(), g.bottom()), QPointF(g.right(), g.bottom()));
      break;
  }
}

}  // namespace

// Three picture sets: 0 raised rounded squares, red for close; 1 flat squares that light
// up under the mouse; 2 round buttons.
void TitelBarButton::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  const QRectF r = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
  const bool enabled = isEnabled();
  const int set = m_bar->iconStyle();
  QColor face = m_kind == Close ? QColor(196, 64, 52) : QColor(78, 98, 130);
  if (!enabled) face = QColor(160, 160, 160);
  else if (m_hot) face = face.lighter(125);
  const QColor glyph = enabled ? QColor(255, 255, 255) : QColor(215, 215, 215);
  switch (set) {
    case 0: {
      QLinearGradient g(r.topLeft(), r.bottomLeft());
      g.setColorAt(0, face.lighter(140));
      g.setColorAt(1, face.darker(115));
      p.setPen(QPen(face.darker(160), 1));
      p.setBrush(g);
      p.drawRoundedRect(r, 3, 3);
      DrawGlyph(p, m_kind, r, glyph, 2.0);
      break;
    }
    case 1: {
      if (m_hot && enabled) {
        p.setPen(Qt::NoPen);
        p.setBrush(face);
        p.drawRect(r);
      }
      DrawGlyph(p, m_kind, r, enabled ? QColor(250, 250, 250) : QColor(160, 160, 160), 1.6);
      break;
    }
    default: {
      QRadialGradient g(r.center() - QPointF(r.width() / 6, r.height() / 6), r.width() / 1.4);
      g.setColorAt(0, face.lighter(150));
      g.setColorAt(1, face);
      p.setPen(QPen(face.darker(150), 1));
      p.setBrush(g);
      p.drawEllipse(r);
      DrawGlyph(p, m_kind, r.adjusted(1, 1, -1, -1), glyph, 1.8);
      break;
    }
  }
}

TitelBar::TitelBar(QWidget* parent)
    : QWidget(parent),
      m_close(new TitelBarButton(TitelBarButton::Close, this)),
      m_max(new TitelBarButton(TitelBarButton::Maximize, this)),
      m_min(new TitelBarButton(TitelBarButton::Minimize, this)) {
  m_close->setObjectName(QStringLiteral("TBARX"));
  m_max->setObjectName(QStringLiteral("TBARMax"));
  m_min->setObjectName(QStringLiteral("TBAR_"));
  m_max->setVisible(false);
  m_max->setEnabled(false);
  for (TitelBarButton* b : {m_close, m_max, m_min}) b->onPress = [this](TitelBarButton* b) { buttonPressed(b); };
  m_font = QApplication::font();
  m_font.setPointSize(10);
  m_font.setBold(true);
  m_systemMove = [](QWindow* w) { return w && w->startSystemMove(); };
  setAttribute(Qt::WA_OpaquePaintEvent);
  resize(parent ? parent->width() : 200, kHeight);
  placeButtons();
}

TitelBar::~TitelBar() = default;

TitelBar* TitelBar::Install(QWidget* window, bool makeRoom) {
  window->setWindowFlag(Qt::FramelessWindowHint, true);
  if (makeRoom) {
    for (QObject* o : window->children()) {
      auto* child = qobject_cast<QWidget*>(o);
      if (child && !child->isWindow()) child->move(child->x(), child->y() + kHeight);
    }
    const QSize grown(window->width(), window->height() + kHeight);
    if (window->minimumSize() == window->maximumSize()) {
      window->setFixedSize(grown);
    } else {
      window->resize(grown);
    }
  }
  auto* bar = new TitelBar(window);
  bar->setObjectName(QStringLiteral("TitelBar1"));
  bar->setCaption(QStringLiteral("Quantavue"));
  bar->setBarStyle(8);
  bar->setBackColorCover(3);
  bar->setBackColorV1End(QColor(0xE0, 0xE0, 0xE0));
  bar->setBackColorV2End(QColor(0xE0, 0xE0, 0xE0));
  bar->setBorderNormal(2);
  bar->setShowMaximizedEnabled(true);
  bar->setGeometry(0, 0, window->width(), kHeight);
  bar->raise();
  // Docked to the top: the bar follows the window's width.
  window->installEventFilter(bar);
  return bar;
}

bool TitelBar::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize) resize(parentWidget()->width(), height());
  return QWidget::eventFilter(watched, event);
}

void TitelBar::setBarStyle(int style) {
  m_style = std::clamp(style, 0, 12);
  update();
}

void TitelBar::setBackColorV1Begin(const QColor& c) { m_v1Begin = c; update(); }
void TitelBar::setBackColorV1End(const QColor& c) { m_v1End = c; update(); }
void TitelBar::setBackColorV2Begin(const QColor& c) { m_v2Begin = c; update(); }
void TitelBar::setBackColorV2End(const QColor& c) { m_v2End = c; update(); }

void TitelBar::setBackColorCover(double tenths) {
  m_cover = std::clamp(tenths, 0.0, 10.0);
  update();
}

void TitelBar::setBorderNormal(int thickness) {
  m_border = std::clamp(thickness, 0, 255);
  update();
}

void TitelBar::setBorderColors(const QColor& highLight, const QColor& darkLight) {
  m_highLight = highLight;
  m_darkLight = darkLight;
  update();
}

void TitelBar::setCaption(const QString& caption) {
  m_caption = caption;
  update();
}

void TitelBar::setCaptionColors(const QColor& text, const QColor& rampBack, const QColor& rampShadow) {
  m_captionColor = text;
  m_rampBack = rampBack;
  m_rampShadow = rampShadow;
  update();
}

void TitelBar::setCaptionBorder(bool on, const QColor& color) {
  m_captionBorder = on;
  m_captionBorderColor = color;
  update();
}

void TitelBar::setCaption3DWidth(int pixels) {
  m_depth = std::clamp(pixels, 0, 255);
  update();
}

void TitelBar::setCaption3DDirections(bool top, bool left, bool right, bool bottom) {
  m_3dTop = top;
  m_3dLeft = left;
  m_3dRight = right;
  m_3dBottom = bottom;
  update();
}

void TitelBar::setCaptionPosition(int x, int y) {
  m_captionPosX = std::clamp(x, 0, 3);
  m_captionPosY = std::clamp(y, 0, 3);
  update();
}

void TitelBar::setCaptionFont(const QFont& font) {
  m_font = font;
  update();
}

void TitelBar::setPicture(const QPixmap& picture, int posMode, QPoint pos) {
  m_picture = picture;
  m_picturePosMode = std::clamp(posMode, 0, 3);
  m_picturePos = pos;
  update();
}

void TitelBar::setShowClose(bool on) { m_showClose = on; placeButtons(); }
void TitelBar::setShowMinimized(bool on) { m_showMin = on; placeButtons(); }
void TitelBar::setShowMaximized(bool on) { m_showMax = on; placeButtons(); }
void TitelBar::setShowCloseEnabled(bool on) { m_close->setEnabled(on); }
void TitelBar::setShowMinimizedEnabled(bool on) { m_min->setEnabled(on); }
void TitelBar::setShowMaximizedEnabled(bool on) { m_max->setEnabled(on); }

void TitelBar::setIconStyle(int style) {
  m_iconStyle = std::clamp(style, 0, 2);
  for (TitelBarButton* b : {m_close, m_max, m_min}) b->update();
}

QWidget* TitelBar::closeButton() const { return m_close; }
QWidget* TitelBar::maximizeButton() const { return m_max; }
QWidget* TitelBar::minimizeButton() const { return m_min; }

QSize TitelBar::sizeHint() const { return {200, kHeight}; }

// From the right: close, then maximise, each 3 + 3 pixels left of what stands right of it;
// the minimise button 6 pixels left of the last one placed.
void TitelBar::placeButtons() {
  int x = width();
  const int margin = 3;
  m_close->setVisible(m_showClose);
  m_max->setVisible(m_showMax);
  m_min->setVisible(m_showMin);
  if (m_showClose) {
    m_close->move(x - m_close->width() - 3 - margin, (height() - m_close->height()) / 2);
    x = m_close->x();
  }
  if (m_showMax) {
    m_max->move(x - m_max->width() - 3 - margin, (height() - m_max->height()) / 2);
    x = m_max->x();
  }
  if (m_showMin) m_min->move(x - m_min->width() - 6, (height() - m_min->height()) / 2);
  update();
}

void TitelBar::buttonPressed(TitelBarButton* button) {
  m_pressed = false;
  m_movingByHand = false;
  QWidget* w = window();
  switch (button->kind()) {
    case TitelBarButton::Minimize: w->showMinimized(); break;
    case TitelBarButton::Maximize:
      if (w->windowState() & (Qt::WindowMaximized | Qt::WindowMinimized | Qt::WindowFullScreen)) {
        w->showNormal();
      } else {
        w->showMaximized();
      }
      break;
    case TitelBarButton::Close: w->close(); break;
  }
}

void TitelBar::resizeEvent(QResizeEvent* event) {
  placeButtons();
  QWidget::resizeEvent(event);
}

void TitelBar::paintEvent(QPaintEvent*) {
  QPainter p(this);
  paintBar(p, size());
}

void TitelBar::paintBar(QPainter& p, QSize size) const {
  paintGradient(p, size);
  if (!m_picture.isNull()) {
    QPoint at = m_picturePos;
    if (m_picturePosMode & 1) at.setX((size.width() - m_picture.width()) / 2);
    if (m_picturePosMode & 2) at.setY((size.height() - m_picture.height()) / 2);
    p.drawPixmap(at, m_picture);
  }
  paintCaption(p, size);
  paintBorder(p, size);
}

// Rows of one pixel: left of the edge the first gradient, right of it the second. The
// rows the border takes at the bottom are drawn whole in the first.
void TitelBar::paintGradient(QPainter& p, QSize size) const {
  const int W = size.width();
  int H = size.height();
  if (H <= 0) H = 25;
  const int split = static_cast<int>(std::trunc(W * m_cover / 10.0));
  int rows = H;
  switch (m_style) {
    case 3: case 4: case 7: case 8: rows -= m_border + 1; break;
    case 10: rows -= m_border + 2; break;
    case 11: rows -= m_border + 5; break;
    case 12: rows -= m_border + 7; break;
    default: break;
  }
  rows = std::max(0, rows);
  const bool stripes = m_style == 2 || m_style == 4 || m_style == 6 || m_style == 8 || m_style == 10 || m_style == 12;
  for (int i = 0; i < H; ++i) {
    const QColor first = RowColour(m_v1Begin, m_v1End, i, H);
    if (m_style == 0 || i >= rows) {
      p.fillRect(0, i, W, 1, first);
      continue;
    }
    int x;
    if (m_style <= 4) {
      x = split - i;
    } else if (m_style <= 8) {
      x = split + i;
    } else {
      const double t = -1.0 + i * 2.0 / H;
      x = split + static_cast<int>(std::trunc(std::tan(t) * H / 1.3));
    }
    x = std::clamp(x, 0, W);
    p.fillRect(0, i, x, 1, first);
    p.fillRect(x, i, W - x, 1, RowColour(m_v2Begin, m_v2End, i, H));
    if (stripes) {
      for (int s : {1, 5, 10}) p.fillRect(x + s, i, 2, 1, first);
    }
  }
}

QFont TitelBar::drawingFont() const {
  // The caption is drawn one and a half times the point size high, in pixels.
  QFont f = m_font;
  const double points = m_font.pointSizeF() > 0 ? m_font.pointSizeF() : m_font.pixelSize() * 0.75;
  f.setPixelSize(std::max(1, static_cast<int>(std::lround(points * 1.5))));
  f.setWeight(m_font.bold() ? QFont::ExtraBold : QFont::Normal);
  return f;
}

QPoint TitelBar::captionOrigin(QSize size) const {
  const QFontMetrics fm(drawingFont());
  const int textWidth = fm.horizontalAdvance(m_caption);
  const int textHeight = fm.height();
  const int d = m_depth > 0 ? m_depth + 1 : 0;
  int x = 6;
  if (!m_picture.isNull()) x = 6 + m_picturePos.x() + m_picture.width();
  if (m_captionPosX == 1) x = m_border + 1;
  if (m_captionPosX == 2) x = (size.width() - textWidth) / 2;
  if (m_captionPosX == 3) x = size.width() - textWidth - m_border - d - 1;
  int y = 0;
  const int H = size.height() > 0 ? size.height() : 25;
  switch (m_captionPosY) {
    case 0: y = (H - textHeight) / 2; break;
    case 1: y = 0; break;
    case 2: y = (H - textHeight - m_border) / 2; break;
    default: y = H - textHeight - m_border; break;
  }
  return {x, y};
}

QRect TitelBar::captionRect() const {
  const QFontMetrics fm(drawingFont());
  return QRect(captionOrigin(size()), QSize(fm.horizontalAdvance(m_caption), fm.height()));
}

// The raised caption: copies from the deepest to the nearest, in a ramp between the two
// extrusion colours, then the outline, then the text itself.
void TitelBar::paintCaption(QPainter& p, QSize size) const {
  if (m_caption.isEmpty()) return;
  const QFont f = drawingFont();
  p.setFont(f);
  p.setRenderHint(QPainter::TextAntialiasing);
  const QPoint at = captionOrigin(size) + QPoint(0, QFontMetrics(f).ascent());
  const int d = m_depth > 0 ? m_depth + 1 : 0;
  for (int k = d; k >= 1; --k) {
    p.setPen(Mix(m_rampShadow, m_rampBack, static_cast<double>(k) / d));
    for (int dy = -k; dy <= k; ++dy) {
      for (int dx = -k; dx <= k; ++dx) {
        if (std::max(std::abs(dx), std::abs(dy)) != k) continue;
        // On the ring at distance k: a point counts when each of its non-zero components
        // points in a direction that is on, and the straight ones need no partner.
        const bool xOk = dx == 0 || (dx > 0 ? m_3dRight : m_3dLeft);
        const bool yOk = dy == 0 || (dy > 0 ? m_3dBottom : m_3dTop);
        const bool straight = (std::abs(dx) == k && dy == 0) || (std::abs(dy) == k && dx == 0);
        const bool corner = std::abs(dx) == k && std::abs(dy) == k;
        const bool allFour = m_3dTop && m_3dLeft && m_3dRight && m_3dBottom;
        if (!(xOk && yOk)) continue;
        if (!allFour && !straight && !corner) continue;
        p.drawText(at + QPoint(dx, dy), m_caption);
      }
    }
  }
  if (m_captionBorder) {
    p.setPen(m_captionBorderColor);
    for (int dy = -1; dy <= 1; ++dy)
      for (int dx = -1; dx <= 1; ++dx)
        if (dx || dy) p.drawText(at + QPoint(dx, dy), m_caption);
  }
  p.setPen(m_captionColor);
  p.drawText(at, m_caption);
}

void TitelBar::paintBorder(QPainter& p, QSize size) const {
  if (m_border == 0) return;
  const int W = size.width(), H = size.height(), b = m_border;
  p.fillRect(0, H - b, W, b, m_darkLight);
  p.fillRect(W - b, 0, b, H, m_darkLight);
  p.fillRect(0, 0, W - b, b, m_highLight);
  p.fillRect(0, 0, b, H - b, m_highLight);
}

void TitelBar::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    m_pressed = true;
    m_movingByHand = false;
    m_pressGlobal = event->globalPosition().toPoint();
    m_windowAtPress = window()->pos();
  }
  emit MouseDown();
}

void TitelBar::mouseMoveEvent(QMouseEvent* event) {
  if (!m_pressed || !(event->buttons() & Qt::LeftButton)) return;
  const QPoint global = event->globalPosition().toPoint();
  if (m_movingByHand) {
    window()->move(m_windowAtPress + (global - m_pressGlobal));
    return;
  }
  if (global == m_pressGlobal) return;
  // The window system moves the window from here on; the press is over for the bar.
  if (m_systemMove && m_systemMove(window()->windowHandle())) {
    m_pressed = false;
    return;
  }
  m_movingByHand = true;
  window()->move(m_windowAtPress + (global - m_pressGlobal));
}

void TitelBar::mouseReleaseEvent(QMouseEvent*) {
  m_pressed = false;
  m_movingByHand = false;
  emit MouseUp();
}

void TitelBar::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
  emit DblClick();
}

}  // namespace qv
