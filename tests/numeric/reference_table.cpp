#include "reference_table.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace qv::test {

std::vector<ReferenceRow> ReadTable(const std::string& file) {
  std::vector<ReferenceRow> rows;
  std::ifstream in(std::string(QV_NUMERIC_DATA_DIR) + "/" + file);
  EXPECT_TRUE(in.good()) << "missing reference table " << file;
  std::string text;
  for (int line = 1; std::getline(in, text); ++line) {
    if (text.empty() || text[0] == '#') continue;
    ReferenceRow row{.name = {}, .args = {}, .expected = 0, .note = {}, .line = line};
    if (auto hash = text.find('#'); hash != std::string::npos) {
      row.note = text.substr(hash + 1);
      text.resize(hash);
    }
    std::istringstream fields(text);
    std::vector<std::string> tokens;
    for (std::string t; fields >> t;) tokens.push_back(t);
    if (tokens.size() < 2) continue;
    row.name = tokens.front();
    for (size_t k = 1; k + 1 < tokens.size(); ++k)
      row.args.push_back(std::strtod(tokens[k].c_str(), nullptr));
    row.expected = std::strtold(tokens.back().c_str(), nullptr);
    rows.push_back(std::move(row));
  }
  return rows;
}

long double RelativeError(double got, long double expected) {
  if (std::isnan(got)) return INFINITY;
  long double scale = std::max(std::fabs(expected), static_cast<long double>(DBL_MIN));
  return std::fabs(static_cast<long double>(got) - expected) / scale;
}

double ExponentSlack(double expected) {
  return expected > 0 ? 3 * std::fabs(std::log(expected)) * DBL_EPSILON : 0;
}

void ExpectTableAccuracy(const std::string& file, const std::vector<Checked>& checks) {
  std::vector<ReferenceRow> rows = ReadTable(file);
  for (const Checked& check : checks) {
    const std::string label = check.label.empty() ? check.name : check.label;
    long double worst = -1;
    const ReferenceRow* worst_row = nullptr;
    double worst_got = 0;
    int taken = 0;
    for (const ReferenceRow& row : rows) {
      if (row.name != check.name || (check.rows && !check.rows(row.args, static_cast<double>(row.expected)))) continue;
      ++taken;
      double got = check.fn(row.args);
      long double error = RelativeError(got, row.expected);
      if (error > worst) {
        worst = error;
        worst_row = &row;
        worst_got = got;
      }
      double allowed = check.bound + (check.slack ? check.slack(row.args, static_cast<double>(row.expected)) : 0.0);
      EXPECT_LE(error, allowed) << label << ", " << file << " line " << row.line << ": got "
                                << got << ", expected " << static_cast<double>(row.expected);
    }
    ASSERT_GT(taken, 0) << file << " has no rows for " << label;
    std::ostringstream args;
    args.precision(17);
    for (double a : worst_row->args) args << ' ' << a;
    std::printf("%-28s %5d rows  worst %8.2f eps (%.2Le)  line %d:%s -> %.17g%s\n",
                label.c_str(), taken, static_cast<double>(worst / DBL_EPSILON), worst,
                worst_row->line, args.str().c_str(), worst_got, worst_row->note.c_str());
  }
}

}  // namespace qv::test
