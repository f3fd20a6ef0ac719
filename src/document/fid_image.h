#pragma once
// The picture of the raw FID matrix beside the FT window's traces: the modulus of (RR, IR) over
// the data rows and points, reduced to a grid of levels 0 .. 255 by the largest modulus of each
// cell, on a square-root scale so that the weak later points still show.
#include <cstdint>
#include <vector>

#include "model/spectrum.h"

namespace velk::document {

struct FidImage {
  std::int32_t width = 0, height = 0;  // cells across (F2 points) and down (F1 rows, row 0 on top)
  std::vector<std::uint8_t> level;     // width * height, row by row
};

// At most width x height cells; fewer when the data have fewer points or rows.
FidImage MakeFidImage(const model::Spectrum2D& s, std::int32_t columns, std::int32_t rows, std::int32_t width,
                      std::int32_t height);

}  // namespace velk::document
