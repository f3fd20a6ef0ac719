#pragma once
// The records of the contour display: the user's contour setting, the level table derived from it
// for each draw, and the display grid that the tracer walks.
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/surface.h"

namespace velk::display {

using platform::Color;

inline constexpr Color kRed = 0x0000FF;
inline constexpr Color kOrange = 0x0080FF;
inline constexpr Color kGreen = 0x00FF00;
inline constexpr Color kBlue = 0xFF0000;

inline constexpr std::array<Color, 16> kDefaultPalette{kRed,   kRed,   kRed,   kRed,   kOrange, kOrange,
                                                        kOrange, kOrange, kGreen, kGreen, kGreen,  kGreen,
                                                        kBlue,  kBlue,  kBlue,  kBlue};

enum DisplayModeValue : int { kFilled = 0, kLines = 1 };

struct ContourSetting {
  int Steps = 4;          // 4, 8, 16 or 32 stages, both signs together
  int Interval = 0;       // spacing code: 0 linear, 1..6 presets, 100..300 a free base times 100
  int DisplayMode = kFilled;
  int PowerSpectrum = 0;  // 1: magnitude of the four quadrants
  std::array<Color, 16> Palette = kDefaultPalette;
  int DisplayDimension = 256;  // pixel cap of the whole view for the grid size
  int Interpolation = 0;       // 0 cubic, otherwise fifth order
};

// Entries 0..15 hold the positive side, 16..31 its mirror: Level[31-k] = -Level[k].
struct LevelTable {
  std::array<float, 32> Level{};
  std::array<platform::Color, 32> Color{};
  std::array<int, 33> DrawIndex{};  // ends with -1
  std::array<int, 33> DrawSign{};
  int DrawCount = 0;
};

// The spectrum thinned or enlarged to the resolution of the surface.
struct ContourGrid {
  std::int32_t Cols = 0;  // highest column index
  std::int32_t Rows = 0;  // highest row index
  std::vector<float> Values;  // (Cols+1) x (Rows+1), row by row
  std::vector<float> ColPpm;
  std::vector<float> RowPpm;
  float ColFactor = 1.0f;  // power of two: above 1 enlarged, below 1 thinned
  float RowFactor = 1.0f;
  float ViewColStart = 0, ViewColEnd = 0, ViewRowStart = 0, ViewRowEnd = 0;
  std::int32_t DataColFirst = -1, DataColLast = -1, DataRowFirst = -1, DataRowLast = -1;
  Color BackgroundColor = platform::kWhite;
  int FillBackground = 0;

  float at(std::int32_t col, std::int32_t row) const {
    return Values[static_cast<std::size_t>(row) * (Cols + 1) + col];
  }
  const float* row(std::int32_t r) const { return Values.data() + static_cast<std::size_t>(r) * (Cols + 1); }
};

}  // namespace velk::display
