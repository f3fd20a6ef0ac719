#include "operations/peak_pick.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "operations/peak_table_edit.h"

namespace velk::operations {
namespace {

using model::F1;
using model::F2;

PointArea Interior(const PeakPlane& plane, PointArea area) {
  area.f2First = std::max(area.f2First, 1);
  area.f1First = std::max(area.f1First, 1);
  area.f2Last = std::min(area.f2Last, plane.columns - 2);
  area.f1Last = std::min(area.f1Last, plane.rows - 2);
  return area;
}

}  // namespace

PeakPlane PlaneOf(const model::Spectrum2D& s) {
  // The counts never reach beyond the buffer, whatever a damaged record says.
  const std::int32_t columns = std::min(s.axis[F2].Point, s.RR.stride);
  const std::int32_t rows = std::min(s.axis[F1].Point, s.RR.rows);
  return {s.RR, std::max(columns, 0), std::max(rows, 0), s.axis[F2].Resolution, s.axis[F1].Resolution};
}

PointArea AllArea(const model::Spectrum2D& s) {
  return Interior(PlaneOf(s), {0, s.axis[F2].Point - 1, 0, s.axis[F1].Point - 1});
}

PointArea DisplayedArea(const model::Spectrum2D& s, const display::DisplayState& view) {
  const int points2 = s.axis[F2].Point, points1 = s.axis[F1].Point;
  const int f2a = display::PpmToPoint(s.ppmF2, points2, view.ViewF2Start);
  const int f2b = display::PpmToPoint(s.ppmF2, points2, view.ViewF2End);
  const int f1a = display::PpmToPoint(s.ppmF1, points1, view.ViewF1Start);
  const int f1b = display::PpmToPoint(s.ppmF1, points1, view.ViewF1End);
  return Interior(PlaneOf(s), {std::min(f2a, f2b), std::max(f2a, f2b), std::min(f1a, f1b), std::max(f1a, f1b)});
}

bool AddPeakNear(model::Spectrum2D& s, std::int32_t col, std::int32_t row, float threshold, PeakMode mode) {
  const PeakPlane plane = PlaneOf(s);
  if (s.peaks.peaks.size() >= static_cast<std::size_t>(model::kMaxPeaks2D)) return false;
  for (int r = 0; r <= 2; ++r)
    for (std::int32_t c = col - r; c <= col + r; ++c)
      for (std::int32_t w = row - r; w <= row + r; ++w)
        if (PickPeakAt(plane, c, w, threshold) != 0 && !HasPeakAtPoint(s.peaks, c, w))
          return AddPeak(s.peaks, MakePeak(plane, c, w, mode), plane.stepF2, plane.stepF1);
  if (!plane.Interior(col, row)) return false;
  return AddPeak(s.peaks, MakePeak(plane, col, row, mode), plane.stepF2, plane.stepF1);
}

int PickArea(model::Spectrum2D& s, const PointArea& area, float threshold, PeakMode mode) {
  const PeakPlane plane = PlaneOf(s);
  const PointArea a = Interior(plane, area);
  // The rows are scanned along the buffer, which is far faster than down the columns; the hits
  // are then taken in the order of F2 in the outer loop, as the list is filled column by column.
  std::vector<std::pair<std::int32_t, std::int32_t>> hits;
  const std::int32_t stride = s.RR.stride;
  for (std::int32_t row = a.f1First; row <= a.f1Last; ++row) {
    const float* line = s.RR.row(row).data();
    for (std::int32_t col = a.f2First; col <= a.f2Last; ++col)
      if (ExtremumSign(line + col, stride, threshold) != 0) hits.emplace_back(col, row);
  }
  std::sort(hits.begin(), hits.end());
  int added = 0;
  for (const auto& [col, row] : hits) {
    if (s.peaks.peaks.size() >= static_cast<std::size_t>(model::kMaxPeaks2D)) break;
    if (AddPeak(s.peaks, MakePeak(plane, col, row, mode), plane.stepF2, plane.stepF1)) ++added;
  }
  return added;
}

}  // namespace velk::operations
