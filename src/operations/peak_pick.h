#pragma once
// Picking peaks on RR: one click with its ring search, or every extremum of an area of points.
#include <cstdint>

#include "display/display_state.h"
#include "model/spectrum.h"
#include "operations/peak_top.h"

namespace velk::operations {

// An area of data points, both ends included.
struct PointArea {
  std::int32_t f2First = 0, f2Last = -1, f1First = 0, f1Last = -1;
};

// RR with its stored point counts and the frequency step of each axis.
PeakPlane PlaneOf(const model::Spectrum2D& s);

// The interior of the data: every point but the rim.
PointArea AllArea(const model::Spectrum2D& s);
// The points of the shown window, narrowed to the interior.
PointArea DisplayedArea(const model::Spectrum2D& s, const display::DisplayState& view);

// A click at a data point: rings of radius 0, 1, 2 around it are searched, each a full square,
// columns in the outer loop; the first extremum not yet in the list is taken, else the clicked
// point itself unless it lies on the rim. Returns true when a peak was added (a full list, a rim
// point or a duplicate top add nothing).
bool AddPeakNear(model::Spectrum2D& s, std::int32_t col, std::int32_t row, float threshold, PeakMode mode);

// Every extremum of the area in order, F2 in the outer loop, added until the list is full.
// Returns the number added.
int PickArea(model::Spectrum2D& s, const PointArea& area, float threshold, PeakMode mode);

}  // namespace velk::operations
