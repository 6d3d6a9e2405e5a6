// The theoretical distribution view: the fitted curve as 101 points over the sample's
// own range, drawn in the lower panel of the distribution window, with the scale the
// window gives it.
#pragma once

#include <vector>

#include "plot_data.h"

namespace qv {

struct TheoreticalCurve {
  // Grid points Min + R * i / 100 and heights, i = 0..100. A point whose height has no
  // value (a density's pole at an end of the support) is left out.
  std::vector<double> x, y;
  double curveMax = 0;   // Val(Format(largest y, "0.00000")) * 1.05555
  float axisLow = 0;     // Average - 3 Stdev as "0.00", read back in single precision
  float axisHigh = 0;    // Average + 3 Stdev likewise
};

// The heights are the window's, kept as they were: Weibull shows its distribution
// function, Gama 100 times its density, LogNormal takes sqrt(6.28) for sqrt(2 pi).
// run must be a run that was not refused.
TheoreticalCurve TheoreticalDistribution(const FitRun& run);

}  // namespace qv
