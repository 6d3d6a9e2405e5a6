#include "analysis_state.h"

namespace qv {

AnalysisState& State() {
  static AnalysisState state;
  return state;
}

}  // namespace qv
