#pragma once
// Baseline correction of RR along one axis: the user sets points on signal-free places of the
// axis; for every trace the mean of the data around each point is taken, and the straight lines
// between those means are subtracted (flat before the first and after the last point). The other
// quadrants stay as they are.
#include <cstdint>
#include <vector>

#include "model/spectrum.h"

namespace velk::operations {

inline constexpr int kMaxBasePoints = 1000;
inline constexpr int kMinAvePoint = 1;
inline constexpr int kMaxAvePoint = 20;

struct BasePoint {
  std::int32_t position = 0;  // data point of the axis
  float value = 0;            // the mean of the trace at the point (left from the last trace)
};

// The points must be in ascending order of position, within 0 .. N-1 of the axis. With no point
// RR is simply taken back from the backup. F1 takes every column as a trace along F1, F2 every row
// as a trace along F2. The means span round(P - avePoint / 2) .. that + avePoint, cut at the ends.
void ApplyBaseF1(const model::Plane& backup, model::Spectrum2D& s, std::vector<BasePoint>& points, int avePoint,
                 int threads = 0);
void ApplyBaseF2(const model::Plane& backup, model::Spectrum2D& s, std::vector<BasePoint>& points, int avePoint,
                 int threads = 0);

// Where a point is placed in the sorted list (after any point of the same position); false when
// the list is full.
bool InsertBasePoint(std::vector<BasePoint>& points, std::int32_t position);
// The index of the point nearest to a position, or -1 for an empty list.
int NearestBasePoint(const std::vector<BasePoint>& points, std::int32_t position);

}  // namespace velk::operations
