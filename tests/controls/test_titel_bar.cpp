// TitelBar: its buttons and what they do to the window, dragging the window by the bar,
// and what is painted where.
#include <gtest/gtest.h>

#include <QLabel>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <cmath>

#include "titel_bar.h"

namespace qv {
namespace {

struct Framed {
  Framed() {
    window.setFixedSize(400, 150);
    content = new QLabel(QStringLiteral("content"), &window);
    content->setGeometry(10, 10, 100, 20);
    bar = TitelBar::Install(&window, true);
    window.move(100, 100);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
  QWidget window;
  QLabel* content;
  TitelBar* bar;
};

// Install makes the window borderless and makes room above its content. From the right: close
// 6 pixels in, maximise (when shown) and minimise each 6 further.
TEST(TitelBar, InstallMakesRoomAndTheButtonsStandAtTheRightSixApart) {
  for (bool showMax : {false, true}) {
    Framed f;
    EXPECT_TRUE(f.window.windowFlags() & Qt::FramelessWindowHint);
    EXPECT_EQ(f.window.size(), QSize(400, 150 + TitelBar::kHeight));
    EXPECT_EQ(f.content->pos(), QPoint(10, 10 + TitelBar::kHeight));
    EXPECT_EQ(f.bar->geometry(), QRect(0, 0, 400, TitelBar::kHeight));
    f.bar->setShowMaximized(showMax);
    QWidget *close = f.bar->closeButton(), *max = f.bar->maximizeButton(), *min = f.bar->minimizeButton();
    EXPECT_EQ(close->geometry().right() + 1, 400 - 6);
    EXPECT_EQ(max->isVisible(), showMax);
    if (showMax) { EXPECT_EQ(max->geometry().right() + 1 + 6, close->x()); }
    EXPECT_EQ(min->geometry().right() + 1 + 6, (showMax ? max : close)->x()) << showMax;
    for (QWidget* b : {close, max, min})
      if (b->isVisible()) { EXPECT_EQ(b->y(), (TitelBar::kHeight - b->height()) / 2); }
    // The caption ends before the first button.
    EXPECT_LT(f.bar->captionRect().right() + f.bar->caption3DWidth() + 1, min->x());
    EXPECT_TRUE(QRect(0, 0, 400, TitelBar::kHeight).contains(f.bar->captionRect()));
  }
  TitelBar bar;
  bar.setIconStyle(5);
  EXPECT_EQ(bar.iconStyle(), 2);
}

// A press acts at once, without a release; a disabled button does nothing.
TEST(TitelBar, ButtonsActOnTheWindowOnPress) {
  enum Button { Close, Max, Min };
  struct Case {
    const char* what; Button button; int presses; bool maxEnabled, visible; Qt::WindowStates state;
  };
  const Case cases[] = {
      {"close", Close, 1, true, false, Qt::WindowNoState},
      {"minimise", Min, 1, true, true, Qt::WindowMinimized},
      {"maximise", Max, 1, true, true, Qt::WindowMaximized},
      {"maximise twice", Max, 2, true, true, Qt::WindowNoState},
      {"maximise disabled", Max, 1, false, true, Qt::WindowNoState},
  };
  for (const Case& c : cases) {
    Framed f;
    f.bar->setShowMaximized(true);
    f.bar->setShowMaximizedEnabled(c.maxEnabled);
    QWidget* b = c.button == Close ? f.bar->closeButton() : c.button == Max ? f.bar->maximizeButton()
                                                                           : f.bar->minimizeButton();
    for (int i = 0; i < c.presses; ++i) QTest::mousePress(b, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(f.window.isVisible(), c.visible) << c.what;
    EXPECT_EQ(f.window.windowState(), c.state) << c.what;
  }
}

// A press and a move on the bar ask the window system to move the window; where it
// refuses, the bar moves the window by the mouse's way itself. A click alone moves nothing.
TEST(TitelBar, DraggingTheBarMovesTheWindow) {
  struct Case { const char* what; bool moved, systemAgrees; int calls; QPoint shift; } cases[] = {
      {"click only", false, true, 0, {0, 0}},
      {"drag, system moves", true, true, 1, {0, 0}},
      {"drag, system refuses", true, false, 1, {30, 12}},
  };
  for (const Case& c : cases) {
    Framed f;
    int calls = 0;
    QWindow* asked = nullptr;
    f.bar->setSystemMove([&](QWindow* w) {
      ++calls;
      asked = w;
      return c.systemAgrees;
    });
    QSignalSpy dbl(f.bar, &TitelBar::DblClick);
    const QPoint start = f.window.pos();
    QTest::mousePress(f.bar, Qt::LeftButton, {}, QPoint(60, 10));
    if (c.moved) QTest::mouseMove(f.bar, QPoint(90, 22));
    QTest::mouseRelease(f.bar, Qt::LeftButton, {}, c.moved ? QPoint(90, 22) : QPoint(60, 10));
    EXPECT_EQ(calls, c.calls) << c.what;
    if (calls) { EXPECT_EQ(asked, f.window.windowHandle()) << c.what; }
    EXPECT_EQ(f.window.pos() - start, c.shift) << c.what;
    EXPECT_EQ(dbl.count(), 0);
  }
  Framed f;
  QSignalSpy dbl(f.bar, &TitelBar::DblClick);
  QTest::mouseDClick(f.bar, Qt::LeftButton, {}, QPoint(60, 10));
  EXPECT_EQ(dbl.count(), 1);
  EXPECT_EQ(f.window.windowState(), Qt::WindowNoState) << "a double click is passed on, nothing more";
}

// The painted bar, row by row: border lines, the two gradients and the sloping edge with
// its stripes; a bar of height 0 draws 25 rows.
TEST(TitelBar, GradientRowsAndBorder) {
  TitelBar bar;
  bar.setCaption(QString());
  bar.setBackColorV1Begin(QColor(200, 0, 0));
  bar.setBackColorV1End(QColor(100, 0, 0));
  bar.setBackColorV2Begin(QColor(0, 0, 200));
  bar.setBackColorV2End(QColor(0, 0, 100));
  const auto render = [&](QSize size, int imageHeight) {
    QImage image(size.width(), imageHeight, QImage::Format_RGB32);
    image.fill(QColor(255, 0, 255));
    QPainter p(&image);
    bar.paintBar(p, size);
    return image;
  };
  // Row i of a gradient from b to e over 50 rows: b - i * (b - e) / 50.
  const auto first = [](int i) { return QColor(int(std::lround(200 - i * 2.0)), 0, 0); };
  const auto second = [](int i) { return QColor(0, 0, int(std::lround(200 - i * 2.0))); };
  bar.setBarStyle(8);
  bar.setBorderNormal(2);
  const QImage styled = render({200, 50}, 50);
  // The edge of style 8 at row i is 200 * 0.3 + i.
  struct Pixel { int x, y; QColor colour; const char* what; } pixels[] = {
      {100, 0, Qt::white, "top border"},        {0, 20, Qt::white, "left border"},
      {100, 49, Qt::black, "bottom border"},    {199, 20, Qt::black, "right border"},
      {69, 10, first(10), "left of the edge"},  {70, 10, second(10), "at the edge"},
      {71, 10, first(10), "first stripe"},      {73, 10, second(10), "between stripes"},
      {75, 10, first(10), "second stripe"},     {80, 10, first(10), "third stripe"},
      {150, 47, first(47), "rows the border shortens are whole"},
  };
  for (const Pixel& px : pixels) EXPECT_EQ(QColor(styled.pixel(px.x, px.y)), px.colour) << px.what;

  bar.setBorderNormal(0);
  bar.setBarStyle(0);
  const QImage plain = render({200, 50}, 50);
  EXPECT_EQ(QColor(plain.pixel(100, 0)), first(0)) << "no border line";
  EXPECT_EQ(QColor(plain.pixel(100, 49)), first(49)) << "no border line";
  const QImage flat = render({200, 0}, 30);
  EXPECT_EQ(QColor(flat.pixel(10, 24)).red(), static_cast<int>(std::lround(200 - 24 * 100.0 / 25)));
  EXPECT_EQ(QColor(flat.pixel(10, 25)), QColor(255, 0, 255)) << "25 rows for a bar of height 0";
}

// The raised caption is painted only around its rectangle, at any pixel ratio.
TEST(TitelBar, CaptionIsPaintedWhereItIsPlaced) {
  Framed f;
  const qreal dpr = f.bar->devicePixelRatioF();
  const QImage with = f.bar->grab().toImage();
  EXPECT_EQ(with.size(), f.bar->size() * dpr);
  const int depth = f.bar->caption3DWidth() + 1;
  const QRect allowed = f.bar->captionRect().adjusted(-1, -1, depth + 1, depth + 1);
  f.bar->setCaption(QString());
  const QImage without = f.bar->grab().toImage();
  int changed = 0, stray = 0;
  for (int y = 0; y < with.height(); ++y)
    for (int x = 0; x < with.width(); ++x)
      if (with.pixel(x, y) != without.pixel(x, y)) {
        ++changed;
        if (!allowed.contains(QPoint(int(x / dpr), int(y / dpr)))) ++stray;
      }
  EXPECT_GT(changed, 50);
  EXPECT_EQ(stray, 0);
}

}  // namespace
}  // namespace qv
