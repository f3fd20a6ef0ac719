#include "operations/inadequate.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "operations/inadequate_messages.h"

namespace velk::operations {
namespace {

using model::F1;
using model::F2;
namespace words = inadequate_messages;

std::int32_t Rnd(double v) { return static_cast<std::int32_t>(std::lrint(v)); }

using Planes = std::array<model::Plane*, 4>;

Planes PlanesOf(model::Spectrum2D& s) { return {&s.RR, &s.IR, &s.RI, &s.II}; }

void CopyRow(const model::Plane& from, std::int32_t fromRow, model::Plane& to, std::int32_t toRow) {
  if (from.data.empty() || to.data.empty()) return;
  const std::int32_t width = std::min(from.stride, to.stride);
  std::copy_n(from.row(fromRow).begin(), width, to.row(toRow).begin());
}

// The rows of the new plane: the old ones in the middle from P on, below them the last old rows
// again and above them the first ones, as a folded spectrum repeats in F1.
void FillRows(const model::Plane& old, model::Plane& plane, std::int32_t R, std::int32_t R2, std::int32_t P) {
  for (std::int32_t r = 0; r < R; ++r) CopyRow(old, r, plane, r + P);
  std::int32_t T = P;
  for (int pass = 0; pass < 3; ++pass) {
    std::int32_t done = 0;
    for (std::int32_t r = 0; r <= R - 1 && T - r - 1 >= 0; ++r, ++done) CopyRow(old, R - r - 1, plane, T - r - 1);
    if (T - done < 1) break;
    T -= done;
  }
  T = P;
  for (int pass = 0; pass < 3 && T + R < R2; ++pass) {
    std::int32_t done = 0;
    for (std::int32_t r = 0; r <= R - 1 && T + R + r <= R2 - 1; ++r, ++done) CopyRow(old, r, plane, T + R + r);
    T += done;
  }
}

// Only a band of N columns around the slope 2 line can hold signal; the rest is cleared.
void ClearOutsideBand(model::Plane& plane, std::int32_t N, std::int32_t R2) {
  if (plane.data.empty()) return;
  auto clear = [&](std::int32_t row, std::int32_t from, std::int32_t to) {
    from = std::max(from, 0);
    to = std::min(to, N - 1);
    if (from <= to) std::fill(plane.row(row).begin() + from, plane.row(row).begin() + to + 1, 0.0f);
  };
  for (std::int32_t r = 0; r <= Rnd(R2 * 0.5 - 1); ++r) clear(r, Rnd(r * (2.0 * N - 2) / (R2 - 2)), N - 1);
  for (std::int32_t r = Rnd(R2 * 0.5); r <= R2 - 1; ++r) clear(r, 0, Rnd((2.0 * (r - 1) / (R2 - 2) - 1) * (N - 1)));
}

}  // namespace

std::int16_t InadequateFullOf(double s1, double s2) {
  if (s1 == 0) return 1;
  return 2 * s2 > s1 && std::fabs(s1 - 2 * s2) / s1 > 0.01 ? 0 : 1;
}

bool ChangeInadequateMode(model::Spectrum2D& s, std::int16_t mode) {
  if (mode == s.InadequateMode) return false;
  s.InadequateMode = mode;
  s.InadequateFull = mode == 1 ? InadequateFullOf(s.axis[F1].Frequency, s.axis[F2].Frequency) : 0;
  return true;
}

platform::Outcome ExtendFoldedData(model::Spectrum2D& s, display::DisplayState& view) {
  if (s.InadequateMode != 1 || s.InadequateFull != 0) return {1, {}};
  const std::int32_t R = std::min(s.axis[F1].Point, s.RR.rows);
  const std::int32_t N = std::min(s.axis[F2].Point, s.RR.stride);
  const double S1 = s.axis[F1].Frequency, S2 = s.axis[F2].Frequency;
  const double q = 2 * S2 / S1;
  const double rows = std::nearbyint(R * q);
  const platform::Message tooLarge{std::string(words::kDataSizeError), std::string(words::kDataSizeTooLarge),
                                   platform::Buttons::Ok, platform::Icon::Warning, true};
  if (R < 2 || N < 2 || !(q > 1)) return {1, {}};
  if (!(rows <= model::kMaxAxisPoints)) return {1, tooLarge};
  const std::int32_t R2 = static_cast<std::int32_t>(rows);

  std::array<model::Plane, 4> old;
  const Planes planes = PlanesOf(s);
  for (int i = 0; i < 4; ++i) old[i] = std::move(*planes[i]);
  std::vector<float> oldPpmF2 = s.ppmF2, oldPpmF1 = s.ppmF1;
  if (model::AllocateSpectrum2D(s, N, R2) != 0) {
    for (int i = 0; i < 4; ++i) *planes[i] = std::move(old[i]);
    s.ppmF2 = std::move(oldPpmF2);
    s.ppmF1 = std::move(oldPpmF1);
    return {1, tooLarge};
  }

  const std::int32_t P = Rnd((R2 - R) * 0.5);
  for (int i = 0; i < 4; ++i) {
    FillRows(old[i], *planes[i], R, R2, P);
    ClearOutsideBand(*planes[i], N, R2);
  }

  model::AxisInfo& f1 = s.axis[F1];
  f1.Point = R2;
  f1.Frequency = static_cast<float>(2 * S2);
  f1.Reference = 0;
  f1.RefPoint = Rnd(R2 / 2.0);
  model::AxisExtras& e = s.extras[F1];
  if (e.absFreq0ppm != 0) e.ppmStep = f1.Resolution / e.absFreq0ppm;
  e.ppmFirst = -f1.RefPoint * e.ppmStep;
  model::RebuildPpmTables(s);

  view.ViewF1Start = view.ViewF1End;  // equal ends: the whole axis
  display::Check_Start_End(view, s.ppmF2, s.ppmF1, N, R2);
  const float shift = static_cast<float>((2 * S2 - S1) * 0.5);
  for (model::Peak2D& peak : s.peaks.peaks) peak.PosF1 += shift;
  s.InadequateFull = 1;
  return {};
}

Slope2Line Slope2LineOf(const model::Spectrum2D& s) {
  const double N = s.axis[F2].Point, R = s.axis[F1].Point;
  const double stepF2 = s.axis[F2].Resolution, stepF1 = s.axis[F1].Resolution;
  if (N < 2 || R < 2 || stepF1 == 0) return {};
  const bool sameDirection = (s.extras[F1].ppmStep >= 0) == (s.extras[F2].ppmStep >= 0);
  const double slope = (sameDirection ? 2 : -2) * stepF2 / stepF1;  // rows per column
  const double cc = N / 2, rc = R / 2;
  auto rowAt = [&](double col) { return rc + slope * (col - cc); };
  auto colAt = [&](double row) { return cc + (row - rc) / slope; };
  Slope2Line line{0, rowAt(0), N - 1, rowAt(N - 1)};
  // Cut the ends that leave the data at the bottom or the top.
  for (auto [col, row] : {std::pair<double*, double*>{&line.col1, &line.row1}, {&line.col2, &line.row2}}) {
    const double edge = std::clamp(*row, 0.0, R - 1);
    if (edge != *row) {
      *col = colAt(edge);
      *row = edge;
    }
  }
  return line;
}

}  // namespace velk::operations
