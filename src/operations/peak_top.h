#pragma once
// One peak of the RR plane: the extremum test at a data point and the two kinds of top, the data
// point itself or the top calculated on a lattice of 1/32 point.
#include <cstddef>
#include <cstdint>

#include "model/peak_table.h"
#include "model/plane.h"

namespace velk::operations {

// "PEAK PICK MODE": 1 the top is the data point, 0 it is calculated.
enum PeakMode : std::int16_t { kVirtualPeakTop = 0, kPeakOnDataPoint = 1 };

// The plane as the picking sees it: the stored points and the frequency step of each axis (Hz).
struct PeakPlane {
  const model::Plane& rr;
  std::int32_t columns = 0;  // F2 points
  std::int32_t rows = 0;     // F1 points
  double stepF2 = 1, stepF1 = 1;

  bool Interior(std::int32_t col, std::int32_t row) const {
    return col >= 1 && row >= 1 && col <= columns - 2 && row <= rows - 2;
  }
};

// +1 for a positive peak (above threshold and above its four edge neighbours), -1 for a negative
// one (below -threshold and below them), 0 otherwise. The first neighbour not exceeded ends it.
inline int ExtremumSign(const float* at, std::ptrdiff_t stride, float threshold) {
  const float v = *at;
  if (v > threshold) return v > at[-1] && v > at[1] && v > at[-stride] && v > at[stride] ? 1 : 0;
  if (v < -threshold) return v < at[-1] && v < at[1] && v < at[-stride] && v < at[stride] ? -1 : 0;
  return 0;
}

// The same test at one point of the plane; points on the rim are never peaks.
int PickPeakAt(const PeakPlane& plane, std::int32_t col, std::int32_t row, float threshold);

// The top at the data point: positions are the point numbers times the steps.
model::Peak2D DataPointTop(const PeakPlane& plane, std::int32_t col, std::int32_t row);

// The top interpolated within one point around (col, row), on a lattice of 1/32 point; the height
// stays the value at the data point.
model::Peak2D CalcPeakTop(const PeakPlane& plane, std::int32_t col, std::int32_t row, bool negative);

// The top of the kind the mode asks for; a calculated top looks for a minimum when the value at
// the point is negative.
model::Peak2D MakePeak(const PeakPlane& plane, std::int32_t col, std::int32_t row, PeakMode mode);

}  // namespace velk::operations
