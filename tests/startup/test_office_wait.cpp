// The waiter between the windows and the office: long bulk calls show a panel counting
// their cells, which goes when the call is back; the cells come back the same.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QRegularExpression>
#include <QTimer>

#include <set>

#include "office_fixture.h"
#include "office_wait.h"

namespace qv::testing {
namespace {

// The progress panel while it is up, else null.
QWidget* Panel() {
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->objectName() == QLatin1String("OfficeProgress") && w->isVisible()) return w;
  return nullptr;
}

// What the panel said while it was up.
struct PanelWatch {
  std::set<QString> texts;
  QTimer timer;
  PanelWatch() {
    QObject::connect(&timer, &QTimer::timeout, [this] {
      if (QWidget* w = Panel()) texts.insert(w->findChild<QLabel*>("OfficeProgressText")->text());
    });
    timer.start(20);
  }
  // "Reading" / "Writing" with the cells in all, separators dropped.
  bool said(const QString& work, std::int64_t total) const {
    for (QString t : texts) {
      t.remove(QRegularExpression(QStringLiteral("[^A-Za-z0-9:]")));
      if (t.startsWith(work + QStringLiteral("cells:")) && t.endsWith(QStringLiteral("of%1").arg(total)))
        return true;
    }
    return false;
  }
};

TEST_F(OfficeTest, LongBulkCallsShowTheirProgressAndLeaveNoTrace) {
  InstallOfficeWaiter(std::chrono::seconds(60), std::chrono::milliseconds(0));
  const std::int32_t rows = 300000;
  CellBlock block;
  block.resize(rows, 1);
  for (std::int64_t k = 0; k < rows; ++k) block.setNumber(k, k * 0.25 - 1000);
  PanelWatch watch;
  book->write({0, 0, 0, 0, rows - 1}, block);
  EXPECT_EQ(Panel(), nullptr);
  EXPECT_EQ(book->read({0, 0, 0, 0, rows - 1}).numbers, block.numbers);
  EXPECT_EQ(Panel(), nullptr);
  // A short call is back before the panel's delay: nothing shows.
  InstallOfficeWaiter(std::chrono::seconds(60), std::chrono::milliseconds(400));
  std::size_t before = watch.texts.size();
  EXPECT_EQ(book->read({0, 0, 0, 0, 2}).numbers, (std::vector<double>{-1000, -999.75, -999.5}));
  RemoveOfficeWaiter();
  EXPECT_TRUE(watch.said(QStringLiteral("Writing"), rows)) << watch.texts.size();
  EXPECT_TRUE(watch.said(QStringLiteral("Reading"), rows)) << watch.texts.size();
  EXPECT_EQ(watch.texts.size(), before);
}

}  // namespace
}  // namespace qv::testing
