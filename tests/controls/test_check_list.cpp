// The check list and the busy mark.
#include <gtest/gtest.h>

#include <QTest>
#include <QTreeWidget>

#include "busy_indicator.h"
#include "check_list.h"

namespace qv {
namespace {

// The discrete view lists values under keys "K1", "K2", ...
void fill(CheckList& list, const QStringList& texts) {
  for (int i = 0; i < texts.size(); ++i) list.addItem(QString("K%1").arg(i + 1), texts[i]);
}

TEST(CheckList, RowsKeepKeysAndTextsInOrder) {
  CheckList list;
  const QStringList texts{"1", "2.5", "-3", "1E+20"};
  fill(list, texts);
  ASSERT_EQ(list.count(), 4);
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(list.key(i) == QString("K%1").arg(i + 1) && list.text(i) == texts[i]) << i;
  EXPECT_TRUE(list.checkedTexts().isEmpty()) << "rows come unticked";
  EXPECT_FALSE(list.addItem("K2", "7")) << "a key is unique";
  EXPECT_TRUE(list.addItem("", "8") && list.addItem("", "9")) << "rows without a key are not compared";
  EXPECT_EQ(list.count(), 6);
  EXPECT_EQ(list.indexOfKey("K3"), 2);
  EXPECT_EQ(list.indexOfKey("K9"), -1);
  EXPECT_EQ(list.text(6), QString());
  list.clear();
  EXPECT_EQ(list.count(), 0);
  EXPECT_TRUE(list.addItem("K1", "1")) << "keys are free again after clear";
}

// Rows are ticked from code one by one (row 9 does not exist) or all at once, and by the
// user with the space key.
TEST(CheckList, TicksOneByOneAllAndByTheUser) {
  CheckList list;
  fill(list, {"1", "2", "3", "4"});
  struct Step { int row; bool checked; QStringList ticked; } steps[] = {  // row -1: all rows
      {-1, true, {"1", "2", "3", "4"}}, {1, false, {"1", "3", "4"}}, {3, false, {"1", "3"}}, {1, true, {"1", "2", "3"}},
      {9, true, {"1", "2", "3"}},       {-1, false, {}},             {3, true, {"4"}}};
  for (const Step& s : steps) {
    s.row < 0 ? list.setAllChecked(s.checked) : list.setChecked(s.row, s.checked);
    EXPECT_EQ(list.checkedTexts(), s.ticked) << s.row << " " << s.checked;
    for (int i = 0; i < list.count(); ++i) EXPECT_EQ(list.isChecked(i), s.ticked.contains(list.text(i)));
  }
  list.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
  list.view()->setFocus();
  list.view()->setCurrentItem(list.view()->topLevelItem(1));
  QTest::keyClick(list.view()->viewport(), Qt::Key_Space);
  EXPECT_EQ(list.checkedTexts(), (QStringList{"2", "4"}));
}

TEST(BusyIndicator, TurnsOnlyWhileShown) {
  BusyIndicator busy;
  EXPECT_FALSE(busy.isAnimating());
  busy.show();
  EXPECT_TRUE(busy.isAnimating());
  const int first = busy.frame();
  QTRY_VERIFY(busy.frame() != first);
  busy.hide();
  EXPECT_FALSE(busy.isAnimating());
}

}  // namespace
}  // namespace qv
