#include "reference_data.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

namespace qv::test {

std::vector<std::vector<std::string>> ReferenceData::of(const std::string& kind) const {
  std::vector<std::vector<std::string>> out;
  for (const auto& r : records)
    if (r[0] == kind) out.emplace_back(r.begin() + 1, r.end());
  EXPECT_FALSE(out.empty()) << "no " << kind << " records";
  return out;
}

const std::vector<double>& ReferenceData::sample(const std::string& name) const {
  static const std::vector<double> none;
  auto it = samples.find(name);
  EXPECT_NE(it, samples.end()) << "no sample " << name;
  return it == samples.end() ? none : it->second;
}

const ReferenceData& Reference() {
  static const ReferenceData data = [] {
    ReferenceData d;
    std::ifstream in(std::string(QV_NORMALITY_DATA_DIR) + "/reference.txt");
    EXPECT_TRUE(in.good()) << "cannot read reference.txt";
    for (std::string line; std::getline(in, line);) {
      if (line.empty() || line[0] == '#') continue;
      std::istringstream words(line);
      std::vector<std::string> fields;
      for (std::string w; words >> w;) fields.push_back(w);
      if (fields[0] != "sample") {
        d.records.push_back(std::move(fields));
        continue;
      }
      std::vector<double>& xs = d.samples[fields[1]];
      for (std::size_t i = 2; i < fields.size(); ++i) xs.push_back(std::stod(fields[i]));
    }
    return d;
  }();
  return data;
}

WorstError::~WorstError() {
  std::printf("[ worst    ] %-40s %.3g at %s\n", what_.c_str(), worst_, row_.c_str());
}

void WorstError::note(double error, const std::string& row) {
  if (!(error <= worst_)) {  // a NaN error is always the worst
    worst_ = error;
    row_ = row;
  }
}

}  // namespace qv::test
