#pragma once
// The printed peak list: the heading lines, the four column captions and one row of texts per
// peak, in the unit and with the decimals the user chose. The page lays them out.
#include <array>
#include <string>
#include <vector>

#include "model/spectrum.h"

namespace velk::operations {

// The unit of the axis columns, the other unit in brackets: ppm(Hz), Hz(ppm), kHz(ppm).
enum class PrintListUnit { PpmHz, HzPpm, KHzPpm };

struct PrintListFormat {
  PrintListUnit unit = PrintListUnit::PpmHz;
  int decimals = 3;  // 1 to 7 decimals of the first value; trailing zeros after the first go
};

struct PrintList {
  std::array<std::string, 3> heading;   // title, file, comment
  std::array<std::string, 4> captions;  // No., F2, F1, Height
  std::vector<std::array<std::string, 4>> rows;
  // The texts whose widths set the widths of the four columns.
  std::array<std::string, 4> widthSamples{"12345", "12345678901234567890", "123456789012345678", "12345678901"};
};

PrintList PrintListRows(const model::Spectrum2D& s, const std::string& fileName, const PrintListFormat& format);

}  // namespace velk::operations
