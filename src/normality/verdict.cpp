// The verdict shared by the tests with a p value: normality is rejected when p, as the
// run holds it, is at or below the significance level.
#include "normality_tests.h"

namespace qv {

Bell BellForP(double p, double level) { return p > level ? Bell::Yes : Bell::No; }

}  // namespace qv
