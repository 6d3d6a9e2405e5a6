// Pictures of the chrome for a look by eye: run with QUANTAVUE_SHOTS=<folder>, once as it
// is and once with QT_SCALE_FACTOR=2; the files carry the pixel ratio in their names.
#include <gtest/gtest.h>

#include <QDir>
#include <QPainter>
#include <QStyle>
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

ThemedButton* Flat(QWidget* parent, const QString& caption, QColor back, QRect where) {
  auto* b = new ThemedButton(caption, parent);
  b->setButtonThemeType(1);
  b->setBackColor(back);
  b->setGeometry(where);
  return b;
}

TEST(ChromeShots, Save) {
  const QString dir = qEnvironmentVariable("QUANTAVUE_SHOTS");
  if (dir.isEmpty()) GTEST_SKIP() << "set QUANTAVUE_SHOTS to a folder to take the pictures";
  QDir().mkpath(dir);
  HelpMsg::setHelpFolder(QStringLiteral(QV_HELP_DIR));
  const QString suffix = QStringLiteral("@%1x.png");
  auto save = [&](QWidget* w, const char* name) {
    QTest::qWait(20);
    const QPixmap shot = w->grab();
    ASSERT_TRUE(shot.save(dir + "/" + name + suffix.arg(shot.devicePixelRatio())));
  };

  // The buttons of the windows, in their states: normal, under the mouse, held, disabled.
  QWidget panel;
  panel.setFixedSize(460, 200);
  const QIcon logo(QuantavueLogo(48, 2.0));
  for (int i = 0; i < 4; ++i) {
    auto* help = Flat(&panel, QStringLiteral("?"), QColor(0x80, 0x80, 0x80), QRect(10 + i * 30, 10, 20, 19));
    help->setForeColor(Qt::white);
    auto* test = Flat(&panel, QStringLiteral("Test &normality"), QColor(0xC0, 0xC0, 0xC0), QRect(140, 10 + i * 36, 140, 30));
    auto* copy = Flat(&panel, QString(), Qt::white, QRect(300 + i * 38, 10, 32, 32));
    copy->setPicture(CopyWindowIcon());
    copy->setPictureSize(1);
    auto* detrended = Flat(&panel, QStringLiteral("Detrended plot"), QColor(0xF0, 0xF0, 0xF0), QRect(300, 50 + i * 36, 150, 30));
    detrended->setPicture(logo);
    detrended->setPictureSize(1);
    detrended->setPictureAlign(1);
    if (i == 1) {
      for (ThemedButton* b : {help, test, copy, detrended}) QTest::mouseMove(b, b->rect().center());
    }
    if (i == 2) {
      for (ThemedButton* b : {help, test, copy, detrended}) b->setDown(true);
    }
    if (i == 3) {
      for (ThemedButton* b : {help, test, copy, detrended}) b->setEnabled(false);
    }
  }
  auto* system = new ThemedButton(QString(), &panel);  // InputButton1
  system->setPicture(RangePickIcon());
  system->setPictureAlign(2);
  system->setGeometry(10, 60, 48, 40);
  auto* excel = Flat(&panel, QString(), Qt::white, QRect(64, 50, 60, 56));
  excel->setPicture(SheetExportIcon());
  excel->setPictureSize(3);
  excel->setPictureAlign(2);
  auto* reset = Flat(&panel, QString(), Qt::white, QRect(64, 110, 32, 32));
  reset->setPicture(ResetIcon());
  reset->setPictureSize(1);
  reset->setPictureAlign(2);
  auto* rounded = Flat(&panel, QStringLiteral("Clear highlight"), QColor(0xC0, 0xC0, 0xC0), QRect(10, 150, 120, 30));
  rounded->setButtonRounding(10);
  rounded->setCaptionShadow(true);
  panel.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
  save(&panel, "themed-buttons");

  QWidget framed;
  framed.setFixedSize(640, 120);
  TitelBar* bar = TitelBar::Install(&framed, false);
  auto* bar2 = new TitelBar(&framed);
  bar2->setGeometry(0, 44, 640, TitelBar::kHeight);
  bar2->setCaption(QStringLiteral("Quantavue"));
  bar2->setShowMaximized(true);
  bar2->setShowMaximizedEnabled(true);
  bar2->setIconStyle(1);
  auto* bar3 = new TitelBar(&framed);
  bar3->setGeometry(0, 84, 640, TitelBar::kHeight);
  bar3->setCaption(QStringLiteral("Quantavue"));
  bar3->setShowMaximized(true);
  bar3->setIconStyle(2);
  bar3->setBarStyle(10);
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
