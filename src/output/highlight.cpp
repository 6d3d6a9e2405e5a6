#include "highlight.h"

namespace qv {

namespace {

HighlightRule Percent(HighlightRule::Kind kind, int rank) {
  HighlightRule r;
  r.kind = kind;
  r.rank = rank;
  r.fontColor = ComColorRgb(-16383844);
  r.background = ComColorRgb(13551615);
  return r;
}

}  // namespace

std::vector<HighlightRule> HighlightRules(const std::string& choice) {
  using K = HighlightRule::Kind;
  if (choice == kHighlightChoices[1]) {
    HighlightRule minimum{K::BottomN, 1, std::nullopt, ComColorRgb(49407)};
    HighlightRule maximum{K::TopN, 1, std::nullopt, kMaximumFill};
    return {minimum, maximum};
  }
  if (choice == kHighlightChoices[2]) return {Percent(K::TopPercent, 10)};
  if (choice == kHighlightChoices[3]) return {Percent(K::BottomPercent, 10)};
  if (choice == kHighlightChoices[4]) return {Percent(K::TopPercent, 25)};
  if (choice == kHighlightChoices[5]) return {Percent(K::BottomPercent, 25)};
  return {};
}

}  // namespace qv
