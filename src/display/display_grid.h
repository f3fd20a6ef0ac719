#pragma once
// The display grid: the stored spectrum thinned or enlarged by powers of two to the resolution of
// the surface, with the number that the contour shows at every point.
#include "display/contour.h"
#include "model/spectrum.h"

namespace velk::display {

// Which number a grid point shows.
enum class ShownValue {
  Signed,        // RR with its sign
  TwoQuadrant,   // sqrt(RR^2 + IR^2), the VPH_HMBC class
  FourQuadrant,  // sqrt of the four quadrants' squares, the power display
};
ShownValue ShownValueOf(int pulseModeClass, const ContourSetting& setting);

// What the grid is made from.
struct GridSource {
  const model::Spectrum2D& spectrum;
  int pulseModeClass;
  const ContourSetting& setting;
};

// The power-of-two factor for n data intervals shown on p pixels.
double GridFactor(int intervals, int pixels);
// The pixels that size the grid: the extent, capped by cap (or by DisplayDimension when cap is 0).
int CappedPixels(int extent, int cap, int displayDimension);

// Fills the grid from data points colFirst..colLast, rowFirst..rowLast. With reuse, unchanged
// factors and ranges leave the grid as it stands. Returns true when the values were rebuilt.
// No data, a target under 3 pixels or fewer than 2 data intervals store only ranges and factors.
bool MakeDisplayGrid(ContourGrid& grid, const GridSource& source, int colFirst, int colLast, int rowFirst,
                     int rowLast, int colPixels, int rowPixels, bool reuse);

}  // namespace velk::display
