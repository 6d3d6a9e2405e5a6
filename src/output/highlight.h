// The highlight choices of the main window as top/bottom rules of conditional
// formatting on the input range.
#pragma once

#include <string>
#include <vector>

#include "sheet_format.h"

namespace qv {

inline constexpr const char* kHighlightChoices[] = {"Highlight in range:", "Minimum/Maximum", "10% highest values",
                                                    "10% lowest values",   "25% highest values", "25% lowest values"};

// The maximum's fill: the spreadsheet has no theme colours, so the fifth accent at 60%
// tint is fixed.
inline constexpr Rgb kMaximumFill = 0xB4C6E7;

// The rules of a choice, first rule first; none for the neutral entry or an unknown text.
// "Minimum/Maximum" gives the minimum first, then the maximum.
std::vector<HighlightRule> HighlightRules(const std::string& choice);

}  // namespace qv
