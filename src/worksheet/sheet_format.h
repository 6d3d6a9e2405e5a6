// How cells, borders, highlight rules and an embedded chart should look, in plain
// types: the report and the highlighting are described with these and the office
// applies them. Colours are 0xRRGGBB.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "address.h"

namespace qv {

using Rgb = std::uint32_t;

// The workbook colours the program's colour indexes name: the default palette of the
// original host, indexes 1 to 56.
inline constexpr std::array<Rgb, 56> kColorIndexPalette = {
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF,  // 1-8
    0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080,  // 9-16
    0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF, 0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF,  // 17-24
    0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000, 0x008080, 0x0000FF,  // 25-32
    0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,  // 33-40
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696,  // 41-48
    0x003366, 0x339966, 0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333,  // 49-56
};

inline constexpr int kAutomaticColorIndex = -4105;

// A colour index as RGB; the automatic colour (and any index outside the palette) is
// black, as a line or font in automatic colour shows.
constexpr Rgb ColorIndexRgb(int index) {
  return index >= 1 && index <= 56 ? kColorIndexPalette[static_cast<std::size_t>(index - 1)] : 0x000000;
}

// A COM colour value (0x00BBGGRR) as RGB; only the low three bytes count, so a
// negative value written for a font colour gives its colour too.
constexpr Rgb ComColorRgb(std::int64_t bbggrr) {
  auto v = static_cast<std::uint32_t>(bbggrr) & 0xFFFFFFu;
  return ((v & 0xFF) << 16) | (v & 0xFF00) | ((v >> 16) & 0xFF);
}

// What a format call sets; unset fields keep what the cells have.
struct CellFormat {
  std::optional<bool> bold;
  std::optional<Rgb> fontColor;
  std::optional<Rgb> background;
  std::optional<std::string> numberFormat;  // a format code such as "0.0%"
  std::optional<bool> centredHorizontally;
  std::optional<bool> centredVertically;
  std::optional<bool> wrap;
  std::optional<bool> underline;  // a single underline
};

// One line of a range's border: left as it is, taken off, or a thin solid black line.
enum class BorderLine : std::uint8_t { NotSet, None, Thin };

struct RangeBorders {
  BorderLine diagonalDown = BorderLine::NotSet;
  BorderLine diagonalUp = BorderLine::NotSet;
  BorderLine left = BorderLine::NotSet;
  BorderLine top = BorderLine::NotSet;
  BorderLine bottom = BorderLine::NotSet;
  BorderLine right = BorderLine::NotSet;
  BorderLine insideVertical = BorderLine::NotSet;
  BorderLine insideHorizontal = BorderLine::NotSet;
};

// A top/bottom rule of conditional formatting: the cells it marks take the colours.
struct HighlightRule {
  enum class Kind : std::uint8_t { TopN, BottomN, TopPercent, BottomPercent };
  Kind kind = Kind::TopN;
  int rank = 1;
  std::optional<Rgb> fontColor;
  Rgb background = 0xFFFFFF;
};

// A clustered column chart of one series taken from a row of cells.
struct ColumnChartSpec {
  std::string name;
  CellRangeRef area;        // the cells the chart lies over
  CellRangeRef categories;  // a row of labels
  CellRangeRef values;      // the row of numbers, the same width
  CellRangeRef seriesName;  // the one cell that names the series
  double valueMax = 1;      // value axis from 0 to this; the axis itself is hidden
  std::string tickFont;
  double tickSize = 9;
  Rgb tickColor = 0;
  Rgb axisLineColor = 0;
  Rgb wallColor = 0;
  Rgb pageColor = 0;
  std::int32_t gapWidth = 100;
  Rgb barColor = 0;          // one end of the bars' gradient; the other is a lighter tint
  Rgb barOutlineColor = 0;
  std::string labelFont;
  double labelSize = 12;
  bool labelBold = true;
  Rgb labelColor = 0;
};

}  // namespace qv
