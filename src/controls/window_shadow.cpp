#include "window_shadow.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QWidget>
#include <algorithm>

#if QV_HAVE_XCB
#include <QtGui/qguiapplication_platform.h>
#include <xcb/xcb.h>

#include <cstdlib>
#endif

namespace qv {
namespace {

// A strip: a translucent window that shows its picture and lets the mouse through.
class ShadowStrip : public QWidget {
 public:
  explicit ShadowStrip(QWidget* owner)
      : QWidget(owner, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowTransparentForInput |
                           Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setObjectName(QStringLiteral("ShadowStrip"));
  }
  void setPicture(const QImage& picture, int opacity) {
    m_picture = picture;
    m_opacity = opacity;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    p.fillRect(rect(), Qt::transparent);
    p.setCompositionMode(QPainter::CompositionMode_SourceOver);
    p.setOpacity(m_opacity / 255.0);
    p.drawImage(rect(), m_picture);
  }

 private:
  QImage m_picture;
  int m_opacity = 255;
};

QRgb Premultiplied(const QColor& c, int alpha) {
  return qRgba(c.red() * alpha / 255, c.green() * alpha / 255, c.blue() * alpha / 255, alpha);
}

#if QV_HAVE_XCB
// An X display composites when some client owns the compositing manager's selection.
bool X11HasCompositor() {
  auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (!x11 || !x11->connection()) return false;
  xcb_connection_t* c = x11->connection();
  const char name[] = "_NET_WM_CM_S0";
  xcb_intern_atom_reply_t* atom = xcb_intern_atom_reply(c, xcb_intern_atom(c, 1, sizeof name - 1, name), nullptr);
  if (!atom) return false;
  bool owned = false;
  if (atom->atom != XCB_ATOM_NONE) {
    xcb_get_selection_owner_reply_t* owner =
        xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, atom->atom), nullptr);
    owned = owner && owner->owner != XCB_WINDOW_NONE;
    std::free(owner);
  }
  std::free(atom);
  return owned;
}
#endif

}  // namespace

std::function<bool()> WindowShadow::capability;

bool WindowShadow::DisplayCanShowShadows() {
  if (capability) return capability();
  QScreen* screen = QGuiApplication::primaryScreen();
  if (!screen || screen->depth() < 16) return false;
  const QString platform = QGuiApplication::platformName();
  if (platform == QLatin1String("windows") || platform == QLatin1String("cocoa")) return true;
#if QV_HAVE_XCB
  if (platform == QLatin1String("xcb")) return X11HasCompositor();
#endif
  // Offscreen, framebuffers, and Wayland, where a client cannot place its windows.
  return false;
}

WindowShadow::WindowShadow(QObject* parent) : QObject(parent) {}

WindowShadow::~WindowShadow() { destroyStrips(); }

bool WindowShadow::Shadow(QWidget* form) {
  if (m_owner || !form) return false;
  m_owner = form;
  m_supported = DisplayCanShowShadows();
  form->installEventFilter(this);
  if (m_supported) {
    createStrips();
    if (form->isVisible() && !form->isMinimized()) showStrips(true);
  }
  return true;
}

void WindowShadow::setColor(const QColor& c) {
  if (c == m_color) return;
  m_color = c;
  repaintRight();
  repaintBottom();
}

void WindowShadow::setDepth(int pixels) {
  pixels = std::max(0, pixels);
  if (pixels == m_depth) return;
  m_depth = pixels;
  place();
  repaintRight();
  repaintBottom();
}

void WindowShadow::setTransparency(int alpha) {
  alpha = std::clamp(alpha, 0, 255);
  if (alpha == m_transparency) return;
  m_transparency = alpha;
  repaintRight();
  repaintBottom();
}

bool WindowShadow::stripsShown() const { return m_shown && m_right && m_right->isVisible(); }
QWidget* WindowShadow::rightStrip() const { return m_right; }
QWidget* WindowShadow::bottomStrip() const { return m_bottom; }

QRect WindowShadow::RightStripGeometry(const QRect& owner, int d) {
  return QRect(owner.x() + owner.width(), owner.y() + d, d, owner.height());
}

QRect WindowShadow::BottomStripGeometry(const QRect& owner, int d) {
  return QRect(owner.x() + d, owner.y() + owner.height(), std::max(0, owner.width() - d), d);
}

// Coverage of a pixel, with rows counted from the bottom as the strips were first drawn.
QImage WindowShadow::RightStripImage(int w, int h, const QColor& color) {
  QImage image(std::max(1, w), std::max(1, h), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  if (w <= 0 || h <= 0) return image;
  for (int y = 0; y < h; ++y) {
    int a = 255;
    if (y < w) a = y * 255 / w;
    else if (y >= h - w) a = (h - y) * 255 / w;
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(h - 1 - y));
    for (int x = 0; x < w; ++x) line[x] = Premultiplied(color, a * (w - x) / w);
  }
  return image;
}

QImage WindowShadow::BottomStripImage(int w, int h, const QColor& color) {
  QImage image(std::max(1, w), std::max(1, h), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  if (w <= 0 || h <= 0) return image;
  for (int y = 0; y < h; ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(h - 1 - y));
    for (int x = 0; x < w; ++x) {
      const int a = x < h ? x * 255 / h : 255;
      line[x] = Premultiplied(color, a * y / h);
    }
  }
  return image;
}

void WindowShadow::createStrips() {
  if (!m_owner || m_right) return;
  m_right = new ShadowStrip(m_owner);
  m_bottom = new ShadowStrip(m_owner);
  m_lastSize = m_owner->frameGeometry().size();
  place();
  repaintRight();
  repaintBottom();
}

void WindowShadow::destroyStrips() {
  delete m_right.data();
  delete m_bottom.data();
  m_shown = false;
}

void WindowShadow::repaintRight() {
  if (!m_right || !m_owner) return;
  const QRect g = RightStripGeometry(m_owner->frameGeometry(), m_depth);
  static_cast<ShadowStrip*>(m_right.data())->setPicture(RightStripImage(g.width(), g.height(), m_color), m_transparency);
  ++m_paintCount;
}

void WindowShadow::repaintBottom() {
  if (!m_bottom || !m_owner) return;
  const QRect g = BottomStripGeometry(m_owner->frameGeometry(), m_depth);
  static_cast<ShadowStrip*>(m_bottom.data())->setPicture(BottomStripImage(g.width(), g.height(), m_color),
                                                         m_transparency);
  ++m_paintCount;
}

void WindowShadow::place() {
  if (!m_right || !m_owner) return;
  const QRect owner = m_owner->frameGeometry();
  m_right->setGeometry(RightStripGeometry(owner, m_depth));
  m_bottom->setGeometry(BottomStripGeometry(owner, m_depth));
}

void WindowShadow::showStrips(bool on) {
  if (!m_right || on == m_shown) return;
  m_shown = on;
  m_right->setVisible(on);
  m_bottom->setVisible(on);
}

bool WindowShadow::eventFilter(QObject* watched, QEvent* event) {
  if (watched != m_owner || !m_supported) return QObject::eventFilter(watched, event);
  switch (event->type()) {
    case QEvent::Move:
      place();
      break;
    case QEvent::Resize: {
      // Only the strip along the side that changed needs a new picture.
      const QSize now = m_owner->frameGeometry().size();
      place();
      if (now.width() != m_lastSize.width()) repaintBottom();
      if (now.height() != m_lastSize.height()) repaintRight();
      m_lastSize = now;
      break;
    }
    case QEvent::Show:
      place();
      showStrips(!m_owner->isMinimized());
      break;
    case QEvent::Hide:
      showStrips(false);
      break;
    case QEvent::WindowStateChange:
      showStrips(m_owner->isVisible() && !(m_owner->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized)));
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace qv
