#include "operations/symmetrize.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "model/data_type.h"
#include "operations/quadrants.h"

namespace velk::operations {
namespace {

using model::F1;
using model::F2;

// The mirror of one value by the class's rule.
float Lower(float v, double mirror, int pulseModeClass) {
  const float m = static_cast<float>(mirror);
  if (pulseModeClass == model::V_HOMO) {
    if (v > m) v = m;
    return v < 0 ? 0.0f : v;
  }
  if (v * m <= 0) return 0.0f;
  return std::fabs(v) > std::fabs(m) ? m : v;
}

// The four-point interpolation with the spots of both axes; `at(column, row)` reads the data.
template <class At>
double Interpolate(const AxisSpot& f2, const AxisSpot& f1, At at) {
  if (!f2.inside || !f1.inside) return 0;
  const std::int32_t c = f2.index, r = f1.index;
  const double low = at(c, r) * (1 - f2.weight) + at(c + 1, r) * f2.weight;
  const double high = at(c, r + 1) * (1 - f2.weight) + at(c + 1, r + 1) * f2.weight;
  return low * (1 - f1.weight) + high * f1.weight;
}

}  // namespace

AxisSpot LocateOnAxis(const std::vector<float>& positions, std::int32_t points, double ppm) {
  points = std::min<std::int32_t>(points, static_cast<std::int32_t>(positions.size()));
  AxisSpot spot;
  if (points < 2 || !std::isfinite(ppm)) return spot;
  const bool ascending = positions[0] <= positions[points - 1];
  const double lo = ascending ? positions[0] : positions[points - 1];
  const double hi = ascending ? positions[points - 1] : positions[0];
  if (ppm < lo || ppm > hi) return spot;
  // The first point beyond the position, in the direction of the axis.
  const auto end = positions.begin() + points;
  const auto next = ascending ? std::upper_bound(positions.begin(), end, ppm,
                                                 [](double v, float p) { return v < p; })
                              : std::upper_bound(positions.begin(), end, ppm,
                                                 [](double v, float p) { return v > p; });
  spot.index = std::clamp(static_cast<std::int32_t>(next - positions.begin()) - 1, 0, points - 2);
  const double a = positions[spot.index], b = positions[spot.index + 1];
  spot.weight = b != a ? (ppm - a) / (b - a) : 0.0;
  spot.inside = true;
  return spot;
}

double ValueAtPpm(const model::Plane& plane, const model::Spectrum2D& s, double f2Ppm, double f1Ppm) {
  const AxisSpot f2 = LocateOnAxis(s.ppmF2, s.axis[F2].Point, f2Ppm);
  const AxisSpot f1 = LocateOnAxis(s.ppmF1, s.axis[F1].Point, f1Ppm);
  return Interpolate(f2, f1, [&](std::int32_t c, std::int32_t r) { return plane.at(c, r); });
}

double DiagonalOffset(const model::Spectrum2D& s, float symShift) {
  const double observe = s.extras[F2].absFreqCenter;
  const double shift = observe > 0 ? symShift * s.axis[F2].Resolution / observe : 0.0;
  return static_cast<double>(s.ppmF1[s.axis[F1].Point / 2]) - s.ppmF2[s.axis[F2].Point / 2] + shift;
}

void SymmetrizeData(const model::Plane& backup, model::Spectrum2D& s, int pulseModeClass, float symShift, int threads) {
  const std::int32_t n1 = s.axis[F1].Point, n2 = s.axis[F2].Point;
  s.RR.data = backup.data;
  if (pulseModeClass != model::V_HOMO && pulseModeClass != model::VPH_HOMO) return;
  if (n1 < 2 || n2 < 2) return;
  const double d = DiagonalOffset(s, symShift);
  // The mirror of (c, r) lies at F2 = position of r - d and F1 = d + position of c: its F2 spot
  // depends on the row only, its F1 spot on the column only.
  std::vector<AxisSpot> f1Spot(n2), f2Spot(n1);
  for (std::int32_t c = 0; c < n2; ++c) f1Spot[c] = LocateOnAxis(s.ppmF1, n1, d + s.ppmF2[c]);
  for (std::int32_t r = 0; r < n1; ++r) f2Spot[r] = LocateOnAxis(s.ppmF2, n2, s.ppmF1[r] - d);
  // The mirror values of one row come down one or two columns of the data: a transposed copy
  // turns those reads into runs along memory.
  std::vector<float> columns(static_cast<std::size_t>(n1) * n2);
  ForEachRowChunk(n2, threads, [&](std::int32_t first, std::int32_t count) {
    for (std::int32_t r = 0; r < n1; ++r) {
      const float* in = backup.row(r).data();
      for (std::int32_t c = first; c < first + count; ++c) columns[static_cast<std::size_t>(c) * n1 + r] = in[c];
    }
  });
  const auto at = [&](std::int32_t c, std::int32_t r) { return columns[static_cast<std::size_t>(c) * n1 + r]; };
  ForEachRowChunk(n1, threads, [&](std::int32_t first, std::int32_t count) {
    for (std::int32_t r = first; r < first + count; ++r) {
      float* out = s.RR.row(r).data();
      for (std::int32_t c = 0; c < n2; ++c) out[c] = Lower(out[c], Interpolate(f2Spot[r], f1Spot[c], at), pulseModeClass);
    }
  });
}

float StepSymShift(float symShift, int direction) {
  return std::clamp(symShift + (direction < 0 ? -kSymShiftStep : kSymShiftStep), -kSymShiftLimit, kSymShiftLimit);
}

}  // namespace velk::operations
