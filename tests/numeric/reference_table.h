// Reference tables of tests/numeric/data (made by make_tables.py with mpmath) and the
// worst-error bookkeeping the accuracy tests share.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace qv::test {

struct ReferenceRow {
  std::string name;          // function the row is meant for
  std::vector<double> args;  // exact doubles, in the function's own order
  long double expected;      // 32 significant digits, read to 64 bits
  std::string note;          // what the row exercises
  int line;                  // line of the table, for the report
};

// Rows of data/<file>; fails the test (and returns nothing) if the file is missing.
std::vector<ReferenceRow> ReadTable(const std::string& file);

// Relative error; below the smallest normal double, relative to DBL_MIN.
long double RelativeError(double got, long double expected);

using Args = std::span<const double>;

struct Checked {
  std::string name;                               // rows of the table taken
  std::function<double(Args)> fn;                 // the call under test
  double bound;                                   // worst relative error allowed
  std::function<bool(Args, double)> rows = {};    // narrows the rows (args, expected), if set
  std::function<double(Args, double)> slack = {};  // unavoidable error allowed beyond bound
  std::string label = {};                         // for the report; the name if empty
};

// e^-L formed in double carries the error of its exponent, a sum of terms of size up to
// L each good to a few ulp (1e-300 has L = 690): 3 L ulp are allowed for it.
double ExponentSlack(double expected);

// For each check runs its rows, prints the worst error (in eps) and its row, and fails
// on any row past its bound. Every check must find rows.
void ExpectTableAccuracy(const std::string& file, const std::vector<Checked>& checks);

}  // namespace qv::test
