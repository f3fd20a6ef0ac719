#include "operations/peak_table_edit.h"

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace velk::operations {
namespace {

bool SameTop(const model::Peak2D& a, const model::Peak2D& b, double stepF2, double stepF1) {
  return std::fabs(a.PosF2 - b.PosF2) < stepF2 / 32 && std::fabs(a.PosF1 - b.PosF1) < stepF1 / 32;
}

bool DuplicatesAnother(const model::PeakTable2D& table, const model::Peak2D& peak, double stepF2, double stepF1,
                       int except) {
  for (int i = 0; i < static_cast<int>(table.peaks.size()); ++i)
    if (i != except && SameTop(table.peaks[i], peak, stepF2, stepF1)) return true;
  return false;
}

}  // namespace

bool AddPeak(model::PeakTable2D& table, const model::Peak2D& peak, double stepF2, double stepF1) {
  if (table.peaks.size() >= static_cast<std::size_t>(model::kMaxPeaks2D)) return false;
  if (DuplicatesAnother(table, peak, stepF2, stepF1, -1)) return false;
  table.peaks.push_back(peak);
  return true;
}

bool HasPeakAtPoint(const model::PeakTable2D& table, std::int32_t col, std::int32_t row) {
  for (const model::Peak2D& peak : table.peaks)
    if (peak.PointF2 == col && peak.PointF1 == row) return true;
  return false;
}

int NearestPeak(const model::PeakTable2D& table, double col, double row, double stepF2, double stepF1) {
  int nearest = -1;
  double best = std::numeric_limits<double>::infinity();
  for (int i = 0; i < static_cast<int>(table.peaks.size()); ++i) {
    const double dc = table.peaks[i].PosF2 / stepF2 - col, dr = table.peaks[i].PosF1 / stepF1 - row;
    const double distance = dc * dc + dr * dr;
    if (distance < best) {
      best = distance;
      nearest = i;
    }
  }
  return nearest;
}

bool DeleteNearestPeak(model::PeakTable2D& table, double col, double row, double stepF2, double stepF1) {
  const int i = NearestPeak(table, col, row, stepF2, stepF1);
  if (i < 0) return false;
  table.peaks.erase(table.peaks.begin() + i);
  return true;
}

void DeleteAllPeaks(model::PeakTable2D& table) { table.peaks.clear(); }

int DeletePeaksInArea(model::PeakTable2D& table, const PointArea& area) {
  return static_cast<int>(std::erase_if(table.peaks, [&](const model::Peak2D& p) {
    return p.PointF2 >= area.f2First && p.PointF2 <= area.f2Last && p.PointF1 >= area.f1First &&
           p.PointF1 <= area.f1Last;
  }));
}

bool MovePeakTop(model::PeakTable2D& table, int index, const PeakPlane& plane, std::int32_t col, std::int32_t row,
                 PeakMode mode) {
  if (index < 0 || index >= static_cast<int>(table.peaks.size()) || !plane.Interior(col, row)) return false;
  model::Peak2D moved = MakePeak(plane, col, row, mode);
  if (DuplicatesAnother(table, moved, plane.stepF2, plane.stepF1, index)) return false;
  moved.reserved1 = table.peaks[index].reserved1;
  moved.reserved2 = table.peaks[index].reserved2;
  table.peaks[index] = moved;
  return true;
}

void SortPeaks(model::PeakTable2D& table) {
  auto& p = table.peaks;
  for (std::size_t i = 0; i < p.size(); ++i)
    for (std::size_t j = i + 1; j < p.size(); ++j)
      if (p[j].PosF2 < p[i].PosF2) {
        std::swap(p[i].PointF2, p[j].PointF2);
        std::swap(p[i].PointF1, p[j].PointF1);
        std::swap(p[i].PosF2, p[j].PosF2);
        std::swap(p[i].PosF1, p[j].PosF1);
        std::swap(p[i].Height, p[j].Height);
      }
}

}  // namespace velk::operations
