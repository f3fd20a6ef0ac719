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

// The rules of the two classes: the smaller of a value and its mirror, not below 0; or 0 where
// the signs disagree and otherwise the one of smaller magnitude. Written as selections, since the
// signs of noise are not predictable.
constexpr auto kLowerAbsolute = [](float v, float m) { return std::max(std::min(v, m), 0.0f); };
constexpr auto kLowerPhased = [](float v, float m) {
  const float kept = std::fabs(v) > std::fabs(m) ? m : v;
  return v * m <= 0 ? 0.0f : kept;
};

// The interpolation along F2 at one row, then between two such values along F1.
template <class At>
double AlongF2(const AxisSpot& f2, std::int32_t row, At at) {
  return at(f2.index, row) * (1 - f2.weight) + at(f2.index + 1, row) * f2.weight;
}
double AlongF1(double low, double high, double weight) { return low * (1 - weight) + high * weight; }

// The mirror values of one row: with its F2 spot fixed, the F2 interpolation of every row first,
// then the F1 interpolation of each column from two of those.
template <class Lower>
void SymmetrizeRow(const model::Plane& backup, std::int32_t row, float* out, const AxisSpot& f2,
                   const std::vector<AxisSpot>& f1Spots, std::int32_t n1, std::int32_t n2, std::vector<double>& along,
                   Lower lower) {
  const float* in = backup.row(row).data();
  if (f2.inside)
    for (std::int32_t i = 0; i < n1; ++i)
      along[i] = AlongF2(f2, i, [&](std::int32_t c, std::int32_t r) { return backup.at(c, r); });
  for (std::int32_t c = 0; c < n2; ++c) {
    const AxisSpot& f1 = f1Spots[c];
    const double m = f2.inside && f1.inside ? AlongF1(along[f1.index], along[f1.index + 1], f1.weight) : 0.0;
    out[c] = lower(in[c], static_cast<float>(m));
  }
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
  if (!f2.inside || !f1.inside) return 0;
  const auto at = [&](std::int32_t c, std::int32_t r) { return plane.at(c, r); };
  return AlongF1(AlongF2(f2, f1.index, at), AlongF2(f2, f1.index + 1, at), f1.weight);
}

double DiagonalOffset(const model::Spectrum2D& s, float symShift) {
  const double observe = s.extras[F2].absFreqCenter;
  const double shift = observe > 0 ? symShift * s.axis[F2].Resolution / observe : 0.0;
  return static_cast<double>(s.ppmF1[s.axis[F1].Point / 2]) - s.ppmF2[s.axis[F2].Point / 2] + shift;
}

void SymmetrizeData(const model::Plane& backup, model::Spectrum2D& s, int pulseModeClass, float symShift, int threads) {
  const std::int32_t n1 = s.axis[F1].Point, n2 = s.axis[F2].Point;
  if (!model::IsHomonuclear(pulseModeClass) || n1 < 2 || n2 < 2) {
    s.RR.data = backup.data;
    return;
  }
  const double d = DiagonalOffset(s, symShift);
  // The mirror of (c, r) lies at F2 = position of r - d and F1 = d + position of c: its F2 spot
  // depends on the row only, its F1 spot on the column only.
  std::vector<AxisSpot> f1Spot(n2), f2Spot(n1);
  for (std::int32_t c = 0; c < n2; ++c) f1Spot[c] = LocateOnAxis(s.ppmF1, n1, d + s.ppmF2[c]);
  for (std::int32_t r = 0; r < n1; ++r) f2Spot[r] = LocateOnAxis(s.ppmF2, n2, s.ppmF1[r] - d);
  // The rows of the data are read down one or two columns, a band that moves only a little from
  // one row to the next, so that neighbouring rows find it in the cache.
  ForEachRowChunk(n1, threads, [&](std::int32_t first, std::int32_t count) {
    std::vector<double> along(n1);
    for (std::int32_t r = first; r < first + count; ++r) {
      float* out = s.RR.row(r).data();
      if (pulseModeClass == model::V_HOMO)
        SymmetrizeRow(backup, r, out, f2Spot[r], f1Spot, n1, n2, along, kLowerAbsolute);
      else
        SymmetrizeRow(backup, r, out, f2Spot[r], f1Spot, n1, n2, along, kLowerPhased);
    }
  });
}

float StepSymShift(float symShift, int direction) {
  return std::clamp(symShift + (direction < 0 ? -kSymShiftStep : kSymShiftStep), -kSymShiftLimit, kSymShiftLimit);
}

}  // namespace velk::operations
