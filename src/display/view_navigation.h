#pragma once
// Moving the shown window of the main view: the whole spectrum, a rubber band, zooming out,
// panning, and what the cursor points at. Positions on the contour are device pixels of the
// contour rectangle; the window's ends sit on its first and last pixel, as the tracer places them.
#include <string>

#include "display/display_state.h"
#include "model/spectrum.h"

namespace velk::display {

// The axis value at a pixel and the pixel of a value, for an axis shown from `start` at pixel
// `first` to `end` at pixel `first + extent - 1`.
double PixelToValue(double start, double end, int first, int extent, double pixel);
double ValueToPixel(double start, double end, int first, int extent, double value);

// The whole spectrum: F2 high ppm at the left, F1 high ppm at the bottom.
void ShowFullSpectrum(DisplayState& view, const model::Spectrum2D& s);

// The ppm of the data point nearest to a value on an axis.
float NearestPointPpm(const std::vector<float>& ppm, int points, float value);

// The window of a rubber band from pixel (x0, y0) to (x1, y1) of the contour rectangle: each end
// moves to its nearest data point, and the window keeps the direction in which the axes run.
// Returns false (the window unchanged) when the band spans less than one point on an axis.
bool ZoomToBand(DisplayState& view, const model::Spectrum2D& s, const Rect& contour, int x0, int y0, int x1, int y1);

// Twice the window about its middle, kept inside the data.
void ZoomOut(DisplayState& view, const model::Spectrum2D& s);

// Shifts the window by the given pixels of the contour rectangle (the picture follows the
// pointer), keeping its size and staying inside the data.
void Pan(DisplayState& view, const model::Spectrum2D& s, const Rect& contour, int dx, int dy);

// What lies under the cursor: the data point, its place in ppm and Hz, and the shown value.
struct CursorReading {
  int col = -1, row = -1;
  double ppmF2 = 0, ppmF1 = 0;
  double hzF2 = 0, hzF1 = 0;
  float value = 0;
};
CursorReading ReadCursor(const DisplayState& view, const model::Spectrum2D& s, const Rect& contour, int x, int y);
// "F2: 7.234 ppm (2893.6 Hz)  F1: 1.203 ppm (481.2 Hz)  Intensity: 0.0412".
std::string CursorText(const CursorReading& reading);

}  // namespace velk::display
