// The office going away in the middle of a session: every later action gives a message
// or does nothing, and the program neither crashes nor hangs.
#include <gtest/gtest.h>

#include "main_window_fixture.h"

namespace qv::testing {
namespace {

TEST_F(MainWindowTest, OfficeClosedMidSession) {
  form->Form_Load();
  Take(HeaderTwentyThreeBlanks());
  ASSERT_EQ(form->TextBox1->text(), "20");
  HeadlessOffice::Get().Kill();
  book.reset();  // its window went with the office

  form->SSlider22->setPosition(15);
  form->SSlider22_MouseUp();
  EXPECT_TRUE(form->NumberOfValues->isVisibleTo(form));
  EXPECT_FALSE(form->NumberOfValues->text().isEmpty());
  EXPECT_EQ(form->TextBox1->text(), "20") << "the boxes keep what they showed";
  form->Resetme_Click();
  form->BinsBox->setText("7");  // works on the sample in hand
  EXPECT_EQ(form->DAS_BarChart1->barCount(), 7);
  picked = CellRangeRef{0, 0, 0, 0, 5};
  form->InputButton1_Click();
  form->close();  // deleting the name fails quietly
  EXPECT_TRUE(closed());
}

}  // namespace
}  // namespace qv::testing
