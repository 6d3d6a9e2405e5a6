// WindowShadow: the strips' pictures and places, how they follow the window, and that a
// display without translucency gets no strips and nothing else.
#include <gtest/gtest.h>

#include <QTest>

#include "window_shadow.h"

namespace qv {
namespace {

// Coverage of single pixels, top row first, worked out from the fading rules with integer
// division: right strip 7 x 50, bottom strip 100 x 7, in red.
TEST(WindowShadow, StripPicturesFadeOutward) {
  const QImage right = WindowShadow::RightStripImage(7, 50, Qt::red);
  const QImage bottom = WindowShadow::BottomStripImage(100, 7, Qt::red);
  struct Case { const QImage* image; int x, y, alpha; const char* what; } cases[] = {
      {&right, 0, 25, 255, "right strip, middle, inner column"},
      {&right, 6, 25, 36, "right strip, outer column: 255 * 1 / 7"},
      {&right, 0, 0, 36, "right strip, top row: (50 - 49) * 255 / 7"},
      {&right, 0, 49, 0, "right strip, bottom row"},
      {&right, 0, 46, 109, "right strip near the bottom: 3 * 255 / 7"},
      {&bottom, 50, 0, 218, "bottom strip, top row: 255 * 6 / 7"},
      {&bottom, 50, 6, 0, "bottom strip, bottom row"},
      {&bottom, 3, 0, 93, "bottom strip, left end: (3 * 255 / 7) * 6 / 7"},
      {&bottom, 0, 0, 0, "bottom strip, first column"},
  };
  for (const Case& c : cases) {
    const QRgb px = c.image->pixel(c.x, c.y);
    EXPECT_EQ(qAlpha(px), c.alpha) << c.what;
    EXPECT_EQ(qRed(px), c.alpha) << c.what << ": red, premultiplied";
    EXPECT_EQ(qGreen(px), 0) << c.what;
  }
  EXPECT_EQ(WindowShadow::RightStripGeometry(QRect(100, 50, 300, 200), 7), QRect(400, 57, 7, 200));
  EXPECT_EQ(WindowShadow::BottomStripGeometry(QRect(100, 50, 300, 200), 7), QRect(107, 250, 293, 7));
}

struct Owner {
  Owner() {
    window.setWindowFlag(Qt::FramelessWindowHint);
    window.setGeometry(100, 50, 300, 200);
  }
  QWidget window;
};

TEST(WindowShadow, StripsFollowTheWindowWhereTheDisplayCanShowThem) {
  WindowShadow::capability = [] { return true; };
  Owner o;
  WindowShadow shadow;
  ASSERT_TRUE(shadow.Shadow(&o.window));
  Owner other;
  EXPECT_FALSE(shadow.Shadow(&other.window)) << "one window per shadow";
  ASSERT_TRUE(shadow.isSupported());
  EXPECT_FALSE(shadow.stripsShown());
  o.window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&o.window));
  EXPECT_TRUE(shadow.stripsShown());
  auto expectBeside = [&](const char* what) {
    const QRect g = o.window.frameGeometry();
    EXPECT_EQ(shadow.rightStrip()->geometry(), WindowShadow::RightStripGeometry(g, shadow.depth())) << what;
    EXPECT_EQ(shadow.bottomStrip()->geometry(), WindowShadow::BottomStripGeometry(g, shadow.depth())) << what;
  };
  expectBeside("shown");
  o.window.move(220, 140);
  QTest::qWait(10);
  expectBeside("moved");
  const int painted = shadow.paintCount();
  o.window.resize(340, 200);
  QTest::qWait(10);
  expectBeside("wider");
  EXPECT_EQ(shadow.paintCount(), painted + 1) << "only the bottom strip gets longer";
  shadow.setDepth(7);
  EXPECT_EQ(shadow.paintCount(), painted + 1) << "the same depth paints nothing";
  shadow.setDepth(10);
  EXPECT_EQ(shadow.paintCount(), painted + 3);
  expectBeside("deeper");
  o.window.hide();
  EXPECT_FALSE(shadow.stripsShown());
  WindowShadow::capability = nullptr;
}

TEST(WindowShadow, WithoutTranslucencyNothingChanges) {
  WindowShadow::capability = [] { return false; };
  Owner o;
  const Qt::WindowFlags flags = o.window.windowFlags();
  WindowShadow shadow;
  EXPECT_TRUE(shadow.Shadow(&o.window));
  o.window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&o.window));
  EXPECT_FALSE(shadow.isSupported());
  EXPECT_EQ(shadow.rightStrip(), nullptr);
  EXPECT_EQ(o.window.windowFlags(), flags);
  EXPECT_EQ(o.window.geometry(), QRect(100, 50, 300, 200));
  shadow.setDepth(12);
  EXPECT_EQ(shadow.paintCount(), 0);
  WindowShadow::capability = nullptr;
  // The offscreen platform itself has no translucent windows.
  EXPECT_FALSE(WindowShadow::DisplayCanShowShadows());
}

}  // namespace
}  // namespace qv
