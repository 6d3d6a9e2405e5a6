// Pictures of the chrome for a look by eye: run with QUANTAVUE_SHOTS=<folder>, once as it
// is and once with QT_SCALE_FACTOR=2; the files carry the pixel ratio in their names.
#include <gtest/gtest.h>

#include <QDir>
#include <QPainter>
#include <QTest>

#include "about_window.h"
#include "chrome_icons.h"
#include "help_window.h"
#include "logo.h"
#include "themed_button.h"
#include "titel_bar.h"
#include "window_shadow.h"

namespace qv {
namespace {

// A flat button; a picture when given, at `size` and `align` (-1: as it comes).
ThemedButton* Flat(QWidget* parent, const QString& caption, QColor back, QRect where,
                   const QIcon& picture = {}, int size = -1, int align = -1) {
  auto* b = new ThemedButton(caption, parent);
  b->setButtonThemeType(1);
  b->setBackColor(back);
  b->setGeometry(where);
  if (!picture.isNull()) b->setPicture(picture);
  if (size >= 0) b->setPictureSize(size);
  if (align >= 0) b->setPictureAlign(align);
  return b;
}

TEST(ChromeShots, Save) {
  const QString dir = qEnvironmentVariable("QUANTAVUE_SHOTS");
  if (dir.isEmpty()) GTEST_SKIP() << "set QUANTAVUE_SHOTS to a folder to take the pictures";
  QDir().mkpath(dir);
  HelpMsg::setHelpFolder(QStringLiteral(QV_HELP_DIR));
  auto save = [&](QWidget* w, const char* name) {
    QTest::qWait(20);
    const QPixmap shot = w->grab();
    ASSERT_TRUE(shot.save(dir + "/" + name + QStringLiteral("@%1x.png").arg(shot.devicePixelRatio())));
  };

  // The buttons of the windows, in their states: normal, under the mouse, held, disabled.
  QWidget panel;
  panel.setFixedSize(460, 200);
  const QIcon logo(QuantavueLogo(48, 2.0));
  const QColor grey(0xC0, 0xC0, 0xC0);
  for (int i = 0; i < 4; ++i) {
    auto* help = Flat(&panel, QStringLiteral("?"), QColor(0x80, 0x80, 0x80), QRect(10 + i * 30, 10, 20, 19));
    help->setForeColor(Qt::white);
    const std::initializer_list<ThemedButton*> row{
        help, Flat(&panel, QStringLiteral("Test &normality"), grey, QRect(140, 10 + i * 36, 140, 30)),
        Flat(&panel, QString(), Qt::white, QRect(300 + i * 38, 10, 32, 32), CopyWindowIcon(), 1),
        Flat(&panel, QStringLiteral("Detrended plot"), QColor(0xF0, 0xF0, 0xF0),
             QRect(300, 50 + i * 36, 150, 30), logo, 1, 1)};
    for (ThemedButton* b : row) {
      if (i == 1) QTest::mouseMove(b, b->rect().center());
      if (i == 2) b->setDown(true);
      if (i == 3) b->setEnabled(false);
    }
  }
  auto* system = new ThemedButton(QString(), &panel);  // InputButton1
  system->setPicture(RangePickIcon());
  system->setPictureAlign(2);
  system->setGeometry(10, 60, 48, 40);
  Flat(&panel, QString(), Qt::white, QRect(64, 50, 60, 56), SheetExportIcon(), 3, 2);  // Excel
  Flat(&panel, QString(), Qt::white, QRect(64, 110, 32, 32), ResetIcon(), 1, 2);       // Resetme
  auto* rounded = Flat(&panel, QStringLiteral("Clear highlight"), grey, QRect(10, 150, 120, 30));
  rounded->setButtonRounding(10);
  rounded->setCaptionShadow(true);
  panel.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
  save(&panel, "themed-buttons");

  QWidget framed;
  framed.setFixedSize(640, 120);
  TitelBar* bar = TitelBar::Install(&framed, false);
  auto addBar = [&](int y, int iconStyle) {
    auto* b = new TitelBar(&framed);
    b->setGeometry(0, y, 640, TitelBar::kHeight);
    b->setCaption(QStringLiteral("Quantavue"));
    b->setShowMaximized(true);
    b->setIconStyle(iconStyle);
    return b;
  };
  addBar(44, 1)->setShowMaximizedEnabled(true);
  addBar(84, 2)->setBarStyle(10);
  framed.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&framed));
  QTest::mouseMove(bar->closeButton(), QPoint(5, 5));
  save(&framed, "titel-bars");

  QWidget owner;
  owner.show();
  HelpMsg* help = HelpMsg::ShowTopic(1, &owner);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(help));
  save(help, "help-number-of-bins");
  HelpMsg::ShowTopic(8, &owner);
  save(help, "help-formatting");
  help->close();

  About about(QUrl(QStringLiteral("https://example.org")));
  about.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&about));
  save(&about, "about");

  // The shadow as it would lie beside a 300 x 200 window, on white.
  QImage shadow(320, 220, QImage::Format_ARGB32_Premultiplied);
  shadow.fill(Qt::white);
  {
    QPainter p(&shadow);
    p.fillRect(QRect(0, 0, 300, 200), QColor(0xD0, 0xD8, 0xE8));
    p.setOpacity(140 / 255.0);
    const QRect owner(0, 0, 300, 200);
    p.drawImage(WindowShadow::RightStripGeometry(owner, 7), WindowShadow::RightStripImage(7, 200, Qt::black));
    p.drawImage(WindowShadow::BottomStripGeometry(owner, 7), WindowShadow::BottomStripImage(293, 7, Qt::black));
  }
  ASSERT_TRUE(shadow.save(dir + "/shadow.png"));
  HelpMsg::setHelpFolder(QString());
}

}  // namespace
}  // namespace qv
