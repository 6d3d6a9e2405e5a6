// ThemedButton: the looks the mouse and keys give it, which gestures are clicks, and where
// the picture and the caption go.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <functional>

#include "themed_button.h"

namespace qv {
namespace {

const QColor kBack(0x80, 0x80, 0x80);
const QColor kOver(0xE0, 0xE0, 0xE0);

// A "?"-style button in a window of its own, so that the mouse can leave it.
struct Host {
  Host() {
    window.resize(240, 120);
    auto* first = new QLineEdit(&window);  // the focus starts here, not on the button
    first->setGeometry(180, 90, 50, 22);
    button = new ThemedButton(QStringLiteral("&Calculate"), &window);
    button->setGeometry(40, 30, 120, 40);
    button->setButtonThemeType(1);
    button->setBackColor(kBack);
    button->setOverColor(kOver);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    // The pointer starts off the button. A window shown under the pointer believes the
    // button is under it until the pointer has come and gone once.
    QTest::mouseMove(&window, QPoint(5, 100));
    QTest::mouseMove(button, inside());
    QTest::mouseMove(&window, QPoint(5, 100));
  }
  QPoint inside() const { return button->rect().center(); }
  QPoint outside() const { return QPoint(-25, -20); }  // in the window, off the button
  QWidget window;
  ThemedButton* button;
};

TEST(ThemedButton, GesturesGiveTheirLookAndClicks) {
  using Step = std::function<void(Host&)>;
  const Step moveIn = [](Host& h) { QTest::mouseMove(h.button, h.inside()); };
  const Step moveOut = [](Host& h) { QTest::mouseMove(&h.window, QPoint(5, 5)); };
  const Step press = [](Host& h) { QTest::mousePress(h.button, Qt::LeftButton, {}, h.inside()); };
  const Step release = [](Host& h) { QTest::mouseRelease(h.button, Qt::LeftButton, {}, h.inside()); };
  const Step dragOut = [](Host& h) { QTest::mouseMove(h.button, h.outside()); };
  const Step releaseOut = [](Host& h) { QTest::mouseRelease(h.button, Qt::LeftButton, {}, h.outside()); };
  const Step disable = [](Host& h) { h.button->setEnabled(false); };
  const Step doubleClick = [](Host& h) {  // the second press arrives as a double click
    for (int i = 0; i < 2; ++i) QTest::mouseClick(h.button, Qt::LeftButton, {}, h.inside());
  };
  const auto key = [](Qt::Key k) -> Step {
    return [k](Host& h) { h.button->setFocus(); QTest::keyClick(h.button, k); };
  };
  const Step accessKey = [](Host& h) { QTest::keyClick(&h.window, Qt::Key_C, Qt::AltModifier); };
  struct Case {
    const char* what; std::vector<Step> steps; int clicks; ThemedButton::State state; QColor face;
  };
  const Case cases[] = {
      {"nothing", {}, 0, ThemedButton::Normal, kBack},
      {"mouse over", {moveIn}, 0, ThemedButton::Hot, kOver},
      {"mouse over and away", {moveIn, moveOut}, 0, ThemedButton::Normal, kBack},
      {"held down", {moveIn, press}, 0, ThemedButton::Pressed, kOver},
      {"press and release", {moveIn, press, release}, 1, ThemedButton::Hot, kOver},
      {"released off the button", {moveIn, press, dragOut, releaseOut}, 0, ThemedButton::Default, kBack},
      {"dragged off and back", {moveIn, press, dragOut, moveIn, release}, 1, ThemedButton::Hot, kOver},
      {"disabled", {disable, moveIn, press, release}, 0, ThemedButton::Disabled, kBack},
      {"double click", {moveIn, doubleClick}, 2, ThemedButton::Hot, kOver},
      {"space", {key(Qt::Key_Space)}, 1, ThemedButton::Default, kBack},
      {"enter", {key(Qt::Key_Return)}, 1, ThemedButton::Default, kBack},
      {"access key", {accessKey}, 1, ThemedButton::Default, kBack},
  };
  for (const Case& c : cases) {
    Host h;
    QSignalSpy clicks(h.button, &QAbstractButton::clicked);
    for (const Step& step : c.steps) step(h);
    EXPECT_EQ(clicks.count(), c.clicks) << c.what;
    EXPECT_EQ(h.button->buttonState(), c.state) << c.what;
    // The face on the screen has the colour of the state: a pixel off the text and the focus frame.
    EXPECT_EQ(QColor(h.button->grab().toImage().pixel(QPoint(1, 1) * h.button->devicePixelRatioF())), c.face)
        << c.what;
  }
}

// The instances' pictures: W x H, PictureSize, PictureAlign, caption; where the picture
// lands, worked out by hand from the placement rules.
TEST(ThemedButton, PictureAndCaptionPlacement) {
  struct Case {
    const char* what; QSize size; int pictureSize, pictureAlign; const char* caption; QRect picture;
  };
  const Case cases[] = {
      // Empty caption: above means 7 pixels from the top, centred across.
      {"CopyPaste", {32, 32}, 1, 0, "", {4, 7, 24, 24}},
      {"Resetme", {32, 32}, 1, 2, "", {4, 4, 24, 24}},
      {"InputButton1", {48, 40}, 2, 2, "", {8, 4, 32, 32}},
      {"Excel of MainForm", {60, 56}, 3, 2, "", {6, 4, 48, 48}},
      // Left of the caption: x = (6 + 29 - 24) / 2 + 2, centred in the height.
      {"Detrended plot", {120, 30}, 1, 1, "Detrended plot", {7, 3, 24, 24}},
      // Right of it, empty caption: W - w - 7.
      {"right, no caption", {80, 40}, 0, 3, "", {57, 12, 16, 16}},
      // Below, empty caption: H - h - 7.
      {"below, no caption", {40, 60}, 0, 4, "", {12, 37, 16, 16}},
  };
  QIcon icon;
  QPixmap pm(32, 32);
  pm.fill(Qt::darkGreen);
  icon.addPixmap(pm);
  for (const Case& c : cases) {
    ThemedButton b(QString::fromLatin1(c.caption));
    b.resize(c.size);
    b.setPicture(icon);
    b.setPictureSize(c.pictureSize);
    b.setPictureAlign(c.pictureAlign);
    EXPECT_EQ(b.pictureRect(), c.picture) << c.what;
    if (*c.caption) { EXPECT_GE(b.captionRect().left(), b.pictureRect().right()) << c.what << " overlaps"; }
  }
}

TEST(ThemedButton, PicturePropertiesAreHeldInRange) {
  ThemedButton b(QStringLiteral("Truncate range"));
  struct Case { int align, size; int alignAfter, sizeAfter; } cases[] = {
      {2, 2, 0, 2},    // centred needs an empty caption
      {9, 7, 4, 5},    // clamped at the top
      {-3, -1, 0, 0},  // and at the bottom
      {3, 4, 3, 4}};
  for (const Case& c : cases) {
    b.setPictureAlign(c.align);
    b.setPictureSize(c.size);
    EXPECT_EQ(b.pictureAlign(), c.alignAfter) << c.align;
    EXPECT_EQ(b.pictureSize(), c.sizeAfter) << c.size;
  }
  ThemedButton empty;
  empty.setPictureAlign(2);
  EXPECT_EQ(empty.pictureAlign(), 2);
  empty.setCaption(QStringLiteral("Now with text"));
  EXPECT_EQ(empty.pictureAlign(), 0) << "a caption moves a centred picture above it";
}

// The text lies where the layout says, at any pixel ratio: every pixel that is not the face
// colour lies in the caption's rectangle (plus a pixel of antialiasing).
TEST(ThemedButton, DrawnTextStaysInItsRectangle) {
  QWidget window;
  window.resize(200, 80);
  auto* b = new ThemedButton(QStringLiteral("Test normality"), &window);
  b->setGeometry(10, 10, 150, 30);
  b->setButtonThemeType(1);
  b->setBackColor(QColor(0xC0, 0xC0, 0xC0));
  b->setFocusPolicy(Qt::NoFocus);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  const qreal dpr = b->devicePixelRatioF();
  const QImage shot = b->grab().toImage();
  EXPECT_EQ(shot.size(), b->size() * dpr);
  const QRect allowed = b->captionRect().adjusted(-1, -1, 1, 1);
  int textPixels = 0, stray = 0;
  for (int y = 8 * dpr; y < shot.height() - 8 * dpr; ++y) {
    for (int x = 8 * dpr; x < shot.width() - 8 * dpr; ++x) {
      if (QColor(shot.pixel(x, y)) == QColor(0xC0, 0xC0, 0xC0)) continue;
      ++textPixels;
      if (!allowed.contains(QPoint(int(x / dpr), int(y / dpr)))) ++stray;
    }
  }
  EXPECT_GT(textPixels, 20);
  EXPECT_EQ(stray, 0);
  EXPECT_TRUE(b->rect().contains(b->captionRect()));
}

// ButtonCorner picks the corners that ButtonRounding rounds: a rounded corner leaves its
// corner pixel to the window behind, a square one is face.
TEST(ThemedButton, ButtonCornerChoosesTheRoundedCorners) {
  struct Case { int corner; const char* rounded; } cases[] = {  // top-left, top-right, bottom-right, bottom-left
      {0, "1111"}, {1, "1100"}, {2, "1000"}, {3, "0100"}, {4, "1001"},
      {5, "0110"}, {6, "0011"}, {7, "0001"}, {8, "0010"}};
  const QColor face(0x20, 0x60, 0xA0);
  for (const Case& c : cases) {
    ThemedButton b;
    b.resize(80, 40);
    b.setButtonThemeType(1);
    b.setBackColor(face);
    b.setButtonRounding(10);
    b.setButtonCorner(c.corner);
    const QImage shot = b.grab().toImage();
    const int w = shot.width() - 1, h = shot.height() - 1;
    std::string rounded;
    for (QPoint corner : {QPoint(0, 0), QPoint(w, 0), QPoint(w, h), QPoint(0, h)})
      rounded += QColor(shot.pixel(corner)) == face ? '0' : '1';
    EXPECT_EQ(rounded, c.rounded) << "ButtonCorner " << c.corner;
  }
}

}  // namespace
}  // namespace qv
