#include "operations/peak_top.h"

#include <array>

namespace velk::operations {
namespace {

// A line of 7 values at every 32nd of 193 places, filled in by halving the spacing from 32 to 2;
// each new place takes the cubic mid-point of its four neighbours at the current spacing. The two
// places next to the ends are never reached at spacing 32 and stay 0: their influence dies out
// before the middle third, which is all that is used.
constexpr int kBlock = 7, kLast = 192, kLattice = 65, kFirstUsed = 64;
using Line = std::array<double, kLast + 1>;

void Refine(Line& line) {
  for (int d = 32; d >= 2; d /= 2)
    for (int x = 0; x <= kLast - 3 * d; x += d)
      line[x + 3 * d / 2] = 0.5625 * (line[x + d] + line[x + 2 * d]) - 0.0625 * (line[x] + line[x + 3 * d]);
}

template <class Value>
std::array<double, kLattice> Interpolate(Value value) {
  Line line{};
  for (int k = 0; k < kBlock; ++k) line[32 * k] = value(k);
  Refine(line);
  std::array<double, kLattice> middle;
  for (int i = 0; i < kLattice; ++i) middle[i] = line[kFirstUsed + i];
  return middle;
}

}  // namespace

int PickPeakAt(const PeakPlane& plane, std::int32_t col, std::int32_t row, float threshold) {
  if (!plane.Interior(col, row)) return 0;
  return ExtremumSign(plane.rr.row(row).data() + col, plane.rr.stride, threshold);
}

model::Peak2D DataPointTop(const PeakPlane& plane, std::int32_t col, std::int32_t row) {
  model::Peak2D peak;
  peak.PointF2 = col;
  peak.PointF1 = row;
  peak.PosF2 = static_cast<float>(col * plane.stepF2);
  peak.PosF1 = static_cast<float>(row * plane.stepF1);
  peak.Height = plane.rr.at(col, row);
  return peak;
}

model::Peak2D CalcPeakTop(const PeakPlane& plane, std::int32_t col, std::int32_t row, bool negative) {
  auto sample = [&](std::int32_t c, std::int32_t r) -> double {
    const bool inside = c >= 0 && r >= 0 && c < plane.columns && r < plane.rows;
    return inside ? plane.rr.at(c, r) : 0.0;
  };
  // Along F2 in each of the 7 rows, then along F1 in each of the 65 columns so found.
  std::array<std::array<double, kLattice>, kBlock> rowLines;
  for (int j = 0; j < kBlock; ++j) rowLines[j] = Interpolate([&](int k) { return sample(col - 3 + k, row - 3 + j); });
  std::array<std::array<double, kLattice>, kLattice> lattice;  // [F2 index][F1 index]
  for (int i = 0; i < kLattice; ++i) lattice[i] = Interpolate([&](int k) { return rowLines[k][i]; });

  model::Peak2D peak = DataPointTop(plane, col, row);
  double best = peak.Height;
  int bestI = 32, bestJ = 32;
  for (int i = 0; i < kLattice; ++i)
    for (int j = 0; j < kLattice; ++j) {
      const double h = lattice[i][j];
      if (negative ? h < best : h > best) {
        best = h;
        bestI = i;
        bestJ = j;
      }
    }
  peak.PosF2 = static_cast<float>((col + bestI / 32.0 - 1) * plane.stepF2);
  peak.PosF1 = static_cast<float>((row + bestJ / 32.0 - 1) * plane.stepF1);
  return peak;
}

model::Peak2D MakePeak(const PeakPlane& plane, std::int32_t col, std::int32_t row, PeakMode mode) {
  if (mode == kPeakOnDataPoint) return DataPointTop(plane, col, row);
  return CalcPeakTop(plane, col, row, plane.rr.at(col, row) < 0);
}

}  // namespace velk::operations
