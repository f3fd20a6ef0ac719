#pragma once
// The contour of a view as the main window and the print page draw it, and the level bar beside it.
#include "display/contour.h"
#include "display/display_grid.h"
#include "display/display_state.h"
#include "platform/progress.h"
#include "platform/surface.h"

namespace velk::display {

// Draws the window of the state on the rectangle: levels, grid (reused when `reuse` is raised and
// nothing that sizes the grid has changed; the flag is cleared), then the tracer, clipped to the
// rectangle. colCap and rowCap cap the pixels that size the grid (0: DisplayDimension); penWidth is
// that of a line contour.
// Returns false when the window spans less than one point or the user quit the drawing.
bool DrawContourView(platform::Surface& surface, ContourGrid& grid, LevelTable& levels, const GridSource& source,
                     const DisplayState& view, const Rect& rect, int colCap, int rowCap, bool& reuse,
                     platform::Progress& progress, int penWidth = 1);

// The strip of coloured bands beside the contour: the positive levels above the middle, the
// negative ones below it, from the lowest level at the middle outward; the bands' outlines have
// the pen width.
void DrawLevelBar(platform::Surface& surface, const Rect& rect, const LevelTable& levels, const ContourSetting& setting,
                  int pulseModeClass, const platform::Font& font, int penWidth = 1);

}  // namespace velk::display
