#pragma once
// The contour tracer: walks the display grid strip by strip and cell by cell for every level of
// the level table and draws straight pieces (line mode) or one polygon per run of inside cells in
// a strip (fill mode), in whole device units.
#include "display/contour.h"
#include "platform/progress.h"
#include "platform/surface.h"

namespace velk::display {

// Where the view window lies on the surface: per axis a start pixel and a signed extent.
struct Placement {
  int colStart = 0;
  int colExtent = 0;
  int rowStart = 0;
  int rowExtent = 0;
};

// The device rectangle outside which no grid row or column is visited (one beyond each edge is
// kept so that lines run on to the edge). Edges may be given in either order.
struct ClipRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

// Draws the levels of the table on the surface. Progress is told before each level; when it asks
// to quit, the tracing stops there and false is returned.
bool TraceContour(platform::Surface& surface, const ContourGrid& grid, const LevelTable& levels,
                  const Placement& placement, const ClipRect& clip, int penWidth, platform::Progress& progress,
                  int displayMode);

}  // namespace velk::display
