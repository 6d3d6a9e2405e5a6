// HelpMsg and About: the topics of the "?" buttons, files that are missing or wrong, the
// window's modality and reloading; About's labels and its button.
#include <gtest/gtest.h>

#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>

#include "about_window.h"
#include "help_window.h"
#include "themed_button.h"
#include "titel_bar.h"
#include "window_shadow.h"

namespace qv {
namespace {

void Write(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.write(bytes);
}

struct FolderGuard {
  explicit FolderGuard(const QString& folder) { HelpMsg::setHelpFolder(folder); }
  ~FolderGuard() { HelpMsg::setHelpFolder(QString()); }
};

// The topics that ship: each number opens its file, with a heading and some paragraphs.
TEST(HelpMsg, EachTopicOpensItsFile) {
  FolderGuard folder(QStringLiteral(QV_HELP_DIR));
  struct Case { int topic; const char* file; const char* heading; } cases[] = {
      {1, "NumberOfBins.html", "Number of bins"},     {2, "ExplicitBinning.html", "Explicit binning"},
      {3, "IntervalBinning.html", "Interval length"}, {4, "Discrete.html", "Discrete mode"},
      {5, "Truncation.html", "Truncating the range"}, {6, "Cumulative.html", "Cumulative chart"},
      {8, "Formatting.html", "Highlighting in the range"}};
  HelpMsg help;
  for (const Case& c : cases) {
    EXPECT_EQ(HelpMsg::TopicFile(c.topic), c.file);
    help.LoadTopic(c.topic);
    EXPECT_EQ(help.notice(), "") << c.file;
    EXPECT_EQ(help.findChild<QLabel*>("TopicHeading")->text(), c.heading);
    const QString text = help.pane()->toPlainText();
    EXPECT_GT(text.size(), 600) << c.file;
    EXPECT_FALSE(text.contains('<')) << c.file << " is shown as HTML, not as its source";
  }
  EXPECT_EQ(HelpMsg::TopicFile(7), "");
}

// Files that are not what a topic should be show a line or their text, never more.
TEST(HelpMsg, BadTopicFilesShowANoticeOrText) {
  QTemporaryDir dir;
  FolderGuard folder(dir.path());
  QByteArray huge("<html><body>");
  const QByteArray paragraph("<p>Quantavue shows the shape of one variable.</p>\n");
  while (huge.size() < 10 * 1024 * 1024) huge += paragraph;
  huge += "<p>THE END</p></body></html>";
  QByteArray binary;
  for (int i = 0; i < 4000; ++i) binary += static_cast<char>((i * 37) % 256);
  // content null: no file; notice: part of it, "" for none; shown: part of the pane's text.
  struct Case { const char* what; int topic; const QByteArray* content; const char *notice, *shown; };
  const Case cases[] = {
      {"missing", 1, nullptr, "could not be found", "NumberOfBins.html"},
      {"empty", 2, new QByteArray(), "is empty", "is empty"},
      {"blank", 3, new QByteArray(" \n\t\n"), "is empty", "is empty"},
      {"plain text", 4, new QByteArray("Use the list.\nTick <what> you need."), "", "Tick <what> you need."},
      {"binary", 5, &binary, "", ""},
      {"10 MB", 6, &huge, "Only the first 1024 kB", "shape of one variable"},
      {"no such topic", 7, nullptr, "no help topic 7", "no help topic 7"},
  };
  HelpMsg help;
  for (const Case& c : cases) {
    if (c.content) Write(dir.filePath(HelpMsg::TopicFile(c.topic)), *c.content);
    help.LoadTopic(c.topic);
    EXPECT_TRUE(*c.notice ? help.notice().contains(QLatin1String(c.notice)) : help.notice().isEmpty())
        << c.what << ": " << help.notice().toStdString();
    const QString text = help.pane()->toPlainText();
    EXPECT_TRUE(text.contains(QLatin1String(c.shown))) << c.what;
    EXPECT_LT(text.size(), HelpMsg::kMaxTopicBytes + 1000) << c.what;
    EXPECT_FALSE(text.contains("THE END")) << c.what;
  }
}

// Shown modal and on top; the same window reads the file anew at every showing, and the
// title bar's close button and Escape close it.
TEST(HelpMsg, ShowsModalOnTopAndReloadsAtEveryShow) {
  QTemporaryDir dir;
  FolderGuard folder(dir.path());
  Write(dir.filePath("NumberOfBins.html"), "<html><body><p>first text</p></body></html>");
  Write(dir.filePath("Formatting.html"), "<html><body><p>highlight text</p></body></html>");
  QWidget owner;
  owner.show();
  HelpMsg* help = HelpMsg::ShowTopic(1, &owner);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(help));
  EXPECT_EQ(help->windowModality(), Qt::ApplicationModal);
  EXPECT_TRUE(help->windowFlags() & Qt::WindowStaysOnTopHint);
  EXPECT_TRUE(help->pane()->toPlainText().contains("first text"));
  EXPECT_EQ(HelpMsg::ShowTopic(8, &owner), help) << "made on first use only";
  EXPECT_TRUE(help->pane()->toPlainText().contains("highlight text"));
  Write(dir.filePath("NumberOfBins.html"), "<html><body><p>second text</p></body></html>");
  HelpMsg::ShowTopic(1, &owner);
  EXPECT_TRUE(help->pane()->toPlainText().contains("second text"));
  QTest::mousePress(help->titelBar()->closeButton(), Qt::LeftButton);
  EXPECT_FALSE(help->isVisible());
  HelpMsg::ShowTopic(8, &owner);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(help));
  QTest::keyClick(help, Qt::Key_Escape);
  EXPECT_FALSE(help->isVisible());
}

TEST(About, ItsButtonOpensThePageAndClosesTheWindow) {
  QUrl opened;
  About::openPage = [&](const QUrl& u) { opened = u; };
  const QUrl page(QStringLiteral("https://example.org/quantavue"));
  auto* about = new About(page);
  about->setAttribute(Qt::WA_DeleteOnClose);
  QPointer<About> alive(about);
  about->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(about));
  EXPECT_FALSE(about->Shadow->Shadow(about)) << "the shadow is attached already";
  auto* button = about->findChild<ThemedButton*>("About");
  ASSERT_NE(button, nullptr);
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_EQ(opened, page);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(alive.isNull()) << "the window closes";
  About::openPage = nullptr;
}

}  // namespace
}  // namespace qv
