#pragma once
// The marks that the data carry over the contour, drawn by the main window, the plot and the page
// alike: a cross on each peak top of the list, and the slope 2 line of an INADEQUATE spectrum.
#include "display/display_state.h"
#include "model/spectrum.h"
#include "platform/surface.h"

namespace velk::operations {

struct MarkStyle {
  platform::Color peakColor = 0x000000;   // "PEAK LINE COL"
  int peakWidth = 1;                      // "DRAW WIDTH PEAK LINE"
  int peakHalfSize = 5;                   // half the arm of a cross, pixels
  platform::Color slopeColor = 0x008000;  // "INADEQUATE LINE COL"
  int slopeWidth = 1;                     // "INADEQUATE WIDTH"
};

// The pixel of a position given in data points (fractions allowed) on the contour rectangle.
struct MarkPixel {
  double x = 0, y = 0;
};
MarkPixel PixelOfPoint(const display::DisplayState& view, const model::Spectrum2D& s, const display::Rect& contour,
                       double col, double row);
// The data point (fractions kept) under a pixel of the contour rectangle.
MarkPixel PointOfPixel(const display::DisplayState& view, const model::Spectrum2D& s, const display::Rect& contour,
                       double x, double y);

// A cross on every top of the peak list that falls inside the shown window.
void DrawPeakMarks(platform::Surface& surface, const display::DisplayState& view, const model::Spectrum2D& s,
                   const display::Rect& contour, const MarkStyle& style);

// The slope 2 line, when the set is treated as INADEQUATE; nothing otherwise.
void DrawSlope2Line(platform::Surface& surface, const display::DisplayState& view, const model::Spectrum2D& s,
                    const display::Rect& contour, const MarkStyle& style);

}  // namespace velk::operations
