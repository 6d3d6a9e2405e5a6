// qv-office: small chores on a running office for the demo and for making sample
// workbooks. `qv-office make-sample FILE` writes the sample workbook;
// `qv-office select FIRST LAST` selects a block (zero-based column,row pairs as
// "col,row") in the active workbook; `qv-office wait` waits until the office listens.
#include <chrono>
#include <cstdio>
#include <cmath>
#include <random>
#include <string>
#include <thread>

#include "office.h"

using namespace qv;

static int MakeSample(Office& office, const std::string& path) {
  auto book = office.createWorkbook(true);
  // A header, 200 numbers with a few blanks and a text cell among them.
  CellBlock col;
  col.resize(206, 1);
  col.setText(0, "Delivery time (h)");
  std::mt19937_64 gen(20261123);
  std::gamma_distribution<double> dist(4.0, 6.0);
  std::int64_t row = 1;
  for (int i = 0; i < 200; ++i, ++row) {
    if (row == 17 || row == 58 || row == 121 || row == 160) ++row;  // blanks
    if (row == 90) col.setText(row++, "n/a");
    if (row >= 206) break;
    col.setNumber(row, std::round(dist(gen) * 10) / 10);
  }
  book->write({0, 0, 0, 0, 0}, col);
  book->save(path);
  book->close();
  return 0;
}

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: qv-office wait | make-sample FILE | select COL,ROW COL,ROW\n");
    return 2;
  }
  std::string cmd = argv[1];
  std::unique_ptr<Office> office;
  for (int i = 0; i < 1200 && !office; ++i) {
    try {
      office = Office::Attach(Office::DefaultConnection());
    } catch (const NoOfficeError&) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    } catch (const OfficeError& e) {
      std::fprintf(stderr, "%s\n", e.what());
      return 1;
    }
  }
  if (!office) {
    std::fprintf(stderr, "No office answers on %s\n", Office::DefaultConnection().c_str());
    return 1;
  }
  try {
    if (cmd == "wait") {
      // The document may still be loading after the office answers.
      for (int i = 0; i < 600 && !office->activeWorkbook(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
      return office->activeWorkbook() ? 0 : 1;
    }
    if (cmd == "make-sample" && argc == 3) return MakeSample(*office, argv[2]);
    if (cmd == "select" && argc == 4) {
      auto book = office->activeWorkbook();
      if (!book) return 1;
      int c1, r1, c2, r2;
      std::sscanf(argv[2], "%d,%d", &c1, &r1);
      std::sscanf(argv[3], "%d,%d", &c2, &r2);
      book->select({CellRangeRef{book->activeSheet(), c1, r1, c2, r2}});
      return 0;
    }
  } catch (const OfficeError& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 1;
  }
  std::fprintf(stderr, "unknown command\n");
  return 2;
}
