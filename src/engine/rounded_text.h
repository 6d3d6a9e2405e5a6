// A number as the boxes and bin labels show it: Round(x, d), then its shortest text.
//
// What: RoundedText(x, d, mark) == NumberText(Round(x, d), mark).
// Algorithm: a table of 32,767 bins needs 32,768 such texts, and the two-step form
// costs about 270 ns each. Where x * 10^d lies clearly away from a half (more than
// 1e-5, far beyond the error of the product and of any decimal reading of x) and below
// 1e9, every reading of ROUND gives the nearest whole number m, and the text is m with
// d decimals, trailing zeros dropped, as NumberText writes a number of at most 15
// digits. Halves, near-halves and large values go through Round and NumberText.
// Accuracy: identical texts to the two-step form (tested on random values and ties).
#pragma once

#include <string>

namespace qv {

std::string RoundedText(double x, int decimals, char decimalMark = '.');

}  // namespace qv
