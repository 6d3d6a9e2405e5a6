// The check list and the busy mark.
#include <gtest/gtest.h>

#include <QHeaderView>
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
  EXPECT_EQ(list.view()->headerItem()->text(0), "Variable");
  fill(list, {"1", "2.5", "-3", "1E+20"});
  ASSERT_EQ(list.count(), 4);
  const char* texts[] = {"1", "2.5", "-3", "1E+20"};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(list.key(i), QString("K%1").arg(i + 1));
    EXPECT_EQ(list.text(i), texts[i]);
    EXPECT_FALSE(list.isChecked(i)) << "rows come unticked";
  }
  EXPECT_FALSE(list.addItem("K2", "7")) << "a key is unique";
  EXPECT_TRUE(list.addItem("", "8"));
  EXPECT_TRUE(list.addItem("", "9")) << "rows without a key are not compared";
  EXPECT_EQ(list.count(), 6);
  EXPECT_EQ(list.indexOfKey("K3"), 2);
  EXPECT_EQ(list.indexOfKey("K9"), -1);
  EXPECT_EQ(list.text(6), QString());
  list.clear();
  EXPECT_EQ(list.count(), 0);
  EXPECT_TRUE(list.addItem("K1", "1")) << "keys are free again after clear";
}

TEST(CheckList, TicksOneByOneAndAll) {
  CheckList list;
  fill(list, {"1", "2", "3", "4"});
  struct Step {
    int row;  // -1: all rows
    bool checked;
    QStringList ticked;
  } steps[] = {
      {-1, true, {"1", "2", "3", "4"}}, {1, false, {"1", "3", "4"}}, {3, false, {"1", "3"}},
      {1, true, {"1", "2", "3"}},       {9, true, {"1", "2", "3"}},   {-1, false, {}},
      {3, true, {"4"}},
  };
  for (const Step& s : steps) {
    if (s.row < 0)
      list.setAllChecked(s.checked);
    else
      list.setChecked(s.row, s.checked);
    EXPECT_EQ(list.checkedTexts(), s.ticked) << s.row << " " << s.checked;
    for (int i = 0; i < list.count(); ++i) EXPECT_EQ(list.isChecked(i), s.ticked.contains(list.text(i)));
  }
}

TEST(CheckList, UserTicksWithTheSpaceKey) {
  CheckList list;
  fill(list, {"1", "2"});
  list.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
  list.view()->setFocus();
  list.view()->setCurrentItem(list.view()->topLevelItem(1));
  QTest::keyClick(list.view()->viewport(), Qt::Key_Space);
  EXPECT_EQ(list.checkedTexts(), QStringList{"2"});
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
