// A headless office of the test program's own: started once, ended at exit, with a
// fresh workbook for every test.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "office.h"

namespace qv::testing {

class HeadlessOffice {
 public:
  // Starts the office (once per process) and attaches to it; fails the test when it
  // does not answer within 60 s.
  static HeadlessOffice& Get();
  // An office of the caller's own besides, for a test that ends it.
  static std::unique_ptr<HeadlessOffice> StartAnother();
  Office& office() { return *office_; }
  std::shared_ptr<Office> shared() { return office_; }
  const std::string& connection() const { return connection_; }
  // Ends the office, as a user closing it would.
  void Kill();
  // Stops or resumes the office (SIGSTOP, SIGCONT): a frozen office answers nothing.
  void Freeze(bool frozen);
  ~HeadlessOffice();

 private:
  explicit HeadlessOffice(int serial);
  std::shared_ptr<Office> office_;
  std::string connection_;
  std::string profile_;
  int pid_ = -1;
};

// Each test gets a fresh hidden workbook, closed afterwards.
class OfficeTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;
  Office& office() { return HeadlessOffice::Get().office(); }
  // Hidden workbooks never become the office's active document; a test of the windows
  // asks for a shown one.
  virtual bool hiddenBook() const { return true; }
  std::shared_ptr<Workbook> book;
};

// A column of cells from a compact description: "h:Header", "n:1.5", "b" (blank),
// "t:text", "d:45000" (date), "l:1" (truth value).
CellBlock Column(std::initializer_list<const char*> cells);

}  // namespace qv::testing
