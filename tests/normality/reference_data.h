// The records of data/reference.txt (made by data/make_reference.py with mpmath) and a
// small report of the worst error per check.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace qv::test {

struct ReferenceData {
  std::map<std::string, std::vector<double>> samples;        // ascending, by name
  std::vector<std::vector<std::string>> records;             // every other line, split
  // Records of one kind ("SW", "AD", ...), each without its kind.
  std::vector<std::vector<std::string>> of(const std::string& kind) const;
  const std::vector<double>& sample(const std::string& name) const;
};

// Read once; a missing file fails the calling test.
const ReferenceData& Reference();

// Keeps the largest error seen and the row it came from, and prints it at the end.
class WorstError {
 public:
  explicit WorstError(std::string what) : what_(std::move(what)) {}
  ~WorstError();
  void note(double error, const std::string& row);
  double worst() const { return worst_; }

 private:
  std::string what_;
  double worst_ = 0.0;
  std::string row_;
};

}  // namespace qv::test
