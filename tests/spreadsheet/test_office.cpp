// The spreadsheet layer against a real office: what a read gives for each kind of
// cell, names, addresses, selections, change tracking, and our worksheet functions
// compared with the office's own on the same data.
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <random>
#include <thread>

#include "office_fixture.h"
#include "worksheet_functions.h"

namespace qv::testing {
namespace {

using Kind = CellKind;

TEST_F(OfficeTest, ReadKeepsEveryCellsKind) {
  CellBlock col = Column({"h:Price", "n:12.5", "b", "t:abc", "d:45000", "l:1", "n:-3"});
  book->write({0, 0, 0, 0, 0}, col);
  book->setFormula(0, 0, 7, "=1/0");
  book->setFormula(0, 0, 8, "=\"12\"");   // numeric text
  book->setFormula(0, 0, 9, "=TRUE()");
  CellBlock b = book->read({0, 0, 0, 0, 9});
  ASSERT_EQ(b.size(), 10);
  Kind want[] = {Kind::Text, Kind::Number, Kind::Empty, Kind::Text, Kind::Date,
                 Kind::Logical, Kind::Number, Kind::Error, Kind::Text, Kind::Logical};
  for (int i = 0; i < 10; ++i) EXPECT_EQ(b.kinds[i], want[i]) << "row " << i + 1;
  EXPECT_TRUE(b.numbers[1] == 12.5 && b.numbers[5] == 1.0);
  EXPECT_EQ(b.text(0) + "|" + b.text(8), "Price|12");
  EXPECT_EQ(book->errorFormulaCells({0, 0, 0, 0, 9}).size(), 1u);
  EXPECT_TRUE(book->errorFormulaCells({0, 0, 0, 0, 6}).empty());
  // Two columns read row by row.
  CellBlock two;
  two.resize(2, 2);
  for (int i = 0; i < 4; ++i) two.setNumber(i, i + 1);
  book->write({0, 1, 1, 0, 0}, two);
  EXPECT_EQ(book->read({0, 1, 1, 2, 2}).numbers, (std::vector<double>{1, 2, 3, 4}));
}

TEST_F(OfficeTest, NamesAddressesAndUsedRange) {
  book->write({0, 0, 0, 0, 0}, Column({"h:x", "n:1", "n:2", "n:3"}));
  CellRangeRef r{0, 0, 1, 0, 3};
  book->defineName("data919234xxx", r);
  EXPECT_EQ(book->resolveName("data919234xxx"), r);
  book->defineName("data919234xxx", CellRangeRef{0, 0, 0, 0, 3});  // a second range replaces it
  EXPECT_EQ(book->resolveName("data919234xxx"), (CellRangeRef{0, 0, 0, 0, 3}));
  book->deleteName("data919234xxx");
  EXPECT_FALSE(book->resolveName("data919234xxx").has_value());
  book->deleteName("data919234xxx");  // deleting twice is harmless

  EXPECT_EQ(book->address(r, false), "$A$2:$A$4");
  EXPECT_EQ(book->address(r, true), "'[" + book->name() + "]Sheet1'!$A$2:$A$4");  // "Untitled 1" has a blank
  EXPECT_EQ(book->usedRange(0), (CellRangeRef{0, 0, 0, 0, 3}));
  auto whole = Intersect(CellRangeRef{0, 0, 0, 0, 1048575}, *book->usedRange(0));
  EXPECT_EQ(whole, (CellRangeRef{0, 0, 0, 0, 3}));
  // Reading a whole column stops at the used area.
  CellBlock used = book->readUsed({0, 0, 0, 0, 1048575});
  EXPECT_EQ(used.rows, 4);
  EXPECT_EQ(CountA(used), 4);
  EXPECT_EQ(book->readUsed({0, 5, 0, 5, 1048575}).size(), 0) << "column F holds nothing";
  // Selections of one area and of two.
  book->select({CellRangeRef{0, 0, 0, 0, 4}});
  EXPECT_EQ(book->selection().areas, (std::vector<CellRangeRef>{{0, 0, 0, 0, 4}}));
  book->select({CellRangeRef{0, 0, 0, 0, 2}, CellRangeRef{0, 2, 0, 2, 2}});
  EXPECT_EQ(book->selection().areas.size(), 2u);
}

TEST_F(OfficeTest, ModifyListenerSeesEditsInsideTheRangeOnly) {
  book->write({0, 0, 0, 0, 0}, Column({"n:1", "n:2", "n:3"}));
  book->watch({0, 0, 0, 0, 2});
  book->write({0, 1, 0, 0, 0}, Column({"n:9"}));  // outside
  EXPECT_FALSE(book->changed());
  book->write({0, 0, 1, 0, 0}, Column({"n:7"}));  // inside
  EXPECT_TRUE(book->changed());
  book->clearChanged();
  EXPECT_FALSE(book->changed());
}

// Our in-process worksheet functions must give what the office gives.
TEST_F(OfficeTest, WorksheetFunctionsMatchTheOffice) {
  const std::pair<double, double> rounds[] = {
      {2.675, 2},     {-2.5, 0},       {2.5, 0},   {1.005, 2},  {0.285, 2},  {-0.125, 2},   {1234.5, -1},
      {0.1 + 0.2, 1}, {1e15 + 0.5, 0}, {0.49999999999999994, 0},  {330.88535, 4}, {5.55, 1}, {-1.45, 1},
      {2.345e-7, 9}};
  for (auto [x, d] : rounds)
    EXPECT_EQ(Round(x, int(d)), office().callScalar("ROUND", {x, d})) << x << ", " << d;

  std::mt19937_64 gen(7);
  std::lognormal_distribution<double> dist(1.0, 0.8);
  std::vector<double> x(2000);
  for (double& v : x) v = std::round(dist(gen) * 1000) / 1000;
  struct Fn { const char* name; std::optional<double> (*ours)(std::span<const double>); double tol; };
  const Fn fns[] = {{"AVERAGE", Average, 0}, {"STDEV", Stdev, 1e-15}, {"MEDIAN", Median, 0}, {"MIN", Min, 0},
                    {"MAX", Max, 0},         {"KURT", Kurt, 1e-13},   {"SKEW", Skew, 1e-13}};
  for (const Fn& f : fns) {
    const double theirs = office().callFunction(f.name, x);
    EXPECT_NEAR(*f.ours(x), theirs, f.tol * std::fabs(theirs)) << f.name;
  }
  EXPECT_EQ(Sum(x), office().callFunction("SUM", x));
  std::vector<double> tenths(31, 0.1);
  EXPECT_EQ(*Stdev(tenths), office().callFunction("STDEV", tenths));
}

TEST_F(OfficeTest, RangeFunctionsMatchTheOffice) {
  CellBlock col = Column({"h:Head", "n:3", "b", "t:12", "d:45000", "l:1", "n:-2.5", "n:7", "n:7", "t:x"});
  book->write({0, 0, 0, 0, 0}, col);
  CellRangeRef r{0, 0, 0, 0, 9};
  CellBlock b = book->read(r);
  // Our range figures skip truth values, where Calc's count them: they match Calc's over
  // the same cells with the truth value left out (column B).
  book->write({0, 1, 0, 0, 0},
              Column({"h:Head", "n:3", "b", "t:12", "d:45000", "b", "n:-2.5", "n:7", "n:7", "t:x"}));
  CellRangeRef bare{0, 1, 0, 1, 9};
  EXPECT_EQ(double(Count(b)) + 1, office().callFunction("COUNT", *book, r));
  EXPECT_EQ(double(Count(b)), office().callFunction("COUNT", *book, bare));
  EXPECT_EQ(double(CountA(b)), office().callFunction("COUNTA", *book, r));
  EXPECT_EQ(*Min(b), office().callFunction("MIN", *book, bare));
  EXPECT_EQ(*Max(b), office().callFunction("MAX", *book, bare));
  EXPECT_NEAR(*Kurt(b), office().callFunction("KURT", *book, bare), 1e-13);
  for (const char* c : {"7", "3", "head", "12", "x", "-2.5", "8"})
    EXPECT_EQ(double(CountIf(b, c)), office().callFunction("COUNTIF", *book, r, c)) << c;
  for (double x : {0.5, 2.0, 1e-300, 12345.678}) EXPECT_EQ(*Ln(x), office().callScalar("LN", {x})) << x;
  for (double x : {2.1, 3.0, 1e-9, 3.3333333333333335}) EXPECT_EQ(CeilingOne(x), office().callScalar("CEILING", {x, 1})) << x;
  EXPECT_NEAR(*Skew(b), office().callFunction("SKEW", *book, bare), 1e-13);
  // KURT needs four numbers and a spread: the office refuses as we do.
  book->write({0, 3, 0, 0, 0}, Column({"n:1", "n:1", "n:1", "n:1"}));
  EXPECT_THROW(office().callFunction("KURT", *book, CellRangeRef{0, 3, 0, 3, 3}), OfficeError);
  EXPECT_FALSE(Kurt(book->read({0, 3, 0, 3, 3})).has_value());
}

class ShownBookTest : public OfficeTest {
 protected:
  bool hiddenBook() const override { return false; }
};

TEST_F(ShownBookTest, CancelledPickGivesNoRange) {
  int waits = 0;
  auto picked = book->pickRange("Select a range in one column, header is first cell", [&] {
    if (++waits == 1) book->abortPick();  // the user cancels
    ASSERT_LT(waits, 1000) << "the picker never returned";
  });
  EXPECT_FALSE(picked.has_value());
}

TEST_F(OfficeTest, OurNameLeavesTheModifiedFlagAsItWas) {
  book->write({0, 0, 0, 0, 0}, Column({"h:x", "n:1", "n:2", "n:3"}));
  for (bool before : {false, true}) {
    book->setModified(before);
    book->defineName("data919234xxx", CellRangeRef{0, 0, 1, 0, 3});
    EXPECT_EQ(book->modified(), before);
    book->deleteName("data919234xxx");
    EXPECT_EQ(book->modified(), before) << "a document the user changed stays changed";
  }
}

// The waiter may run each call on another thread: results and errors come back to the
// caller as if the call had run inline, and a call made inside a call is not handed over.
TEST_F(OfficeTest, AWaiterRunsEachCallAndHandsBackItsOutcome) {
  int handed = 0;
  std::thread::id caller = std::this_thread::get_id();
  bool ranElsewhere = true;
  SetOfficeCallWaiter([&](const std::function<void()>& call) {
    ++handed;
    std::thread t([&] {
      ranElsewhere = ranElsewhere && std::this_thread::get_id() != caller;
      call();
    });
    t.join();
  });
  book->write({0, 0, 0, 0, 0}, Column({"h:x", "n:1", "n:2", "n:3"}));
  EXPECT_EQ(book->read({0, 0, 1, 0, 3}).numbers, (std::vector<double>{1, 2, 3}));
  EXPECT_THROW(office().callFunction("KURT", *book, CellRangeRef{0, 0, 1, 0, 3}), OfficeError);
  int before = handed;
  book->defineName("data919234xxx", CellRangeRef{0, 0, 1, 0, 3});  // reads the sheet's name inside
  EXPECT_EQ(handed, before + 1);
  SetOfficeCallWaiter(nullptr);
  EXPECT_TRUE(ranElsewhere);
  EXPECT_EQ(book->resolveName("data919234xxx"), (CellRangeRef{0, 0, 1, 0, 3}));
}

// A waiter watching from the calling thread sees each bulk call count its cells up to
// the whole block, never past it, and nothing once the call is back.
TEST_F(OfficeTest, BulkCallsReportTheirProgress) {
  const std::int32_t rows = 300000;  // three chunks of rows
  CellBlock block;
  block.resize(rows, 1);
  for (std::int64_t k = 0; k < rows; ++k) block.setNumber(k, double(k % 1000));
  struct Seen {
    OfficeProgress::Work work = OfficeProgress::Work::None;
    std::int64_t total = 0, last = 0, steps = 0;
    bool backwards = false, beyond = false;
  } seen;
  SetOfficeCallWaiter([&](const std::function<void()>& call) {
    std::atomic<bool> done{false};
    std::thread t([&] {
      call();
      done = true;
    });
    while (!done) {
      OfficeProgress p = CurrentOfficeProgress();
      if (p.total == 0) continue;
      seen.work = p.work;
      seen.total = p.total;
      seen.backwards = seen.backwards || p.done < seen.last;
      seen.beyond = seen.beyond || p.done > p.total;
      if (p.done != seen.last) ++seen.steps;
      seen.last = p.done;
    }
    t.join();
  });
  struct Case { OfficeProgress::Work work; std::function<void()> run; } cases[] = {
      {OfficeProgress::Work::Writing, [&] { book->write({0, 0, 0, 0, rows - 1}, block); }},
      {OfficeProgress::Work::Reading, [&] { EXPECT_EQ(book->read({0, 0, 0, 0, rows - 1}).numbers, block.numbers); }},
  };
  for (const Case& c : cases) {
    seen = Seen{};
    c.run();
    EXPECT_TRUE(seen.work == c.work && seen.total == rows && seen.steps >= 1)
        << seen.total << " " << seen.steps;
    EXPECT_FALSE(seen.backwards || seen.beyond);
    EXPECT_EQ(CurrentOfficeProgress().total, 0);
  }
  SetOfficeCallWaiter(nullptr);
}

// The office dies while its range picker is up: the pick ends with an error instead of
// waiting for a listener that will never hear anything.
TEST(OfficeGone, PickEndsWhenTheOfficeGoes) {
  std::unique_ptr<HeadlessOffice> own = HeadlessOffice::StartAnother();
  auto book = own->office().createWorkbook(false);
  ASSERT_TRUE(book);
  int waits = 0;
  EXPECT_THROW(book->pickRange("Select a range in one column, header is first cell",
                               [&] {
                                 if (++waits == 1) own->Kill();
                                 if (waits > 3000) throw std::runtime_error("the picker never returned");
                               }),
               OfficeError);
  EXPECT_FALSE(book->picking());
}

}  // namespace
}  // namespace qv::testing
