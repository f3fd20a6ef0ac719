#pragma once
// "Change Display Area": the four ends of the shown window in ppm or kHz, as the dialog edits them.
#include "display/display_state.h"
#include "model/spectrum.h"

namespace velk::display {

enum class AreaUnit { Ppm, KHz };

// Left and right of F2, top and bottom of F1, in the unit.
struct DisplayArea {
  AreaUnit unit = AreaUnit::Ppm;
  double f2Start = 0, f2End = 0, f1Start = 0, f1End = 0;
};

DisplayArea AreaOfView(const DisplayState& view, const model::Spectrum2D& s, AreaUnit unit);
// "Set Default": the whole spectrum, high ppm at the left and at the bottom.
DisplayArea DefaultArea(const model::Spectrum2D& s, AreaUnit unit);
// The same ends in the other unit.
DisplayArea InUnit(const DisplayArea& area, const model::Spectrum2D& s, AreaUnit unit);
// "Exchange": the two ends of an axis swap, which turns only the picture of that axis round.
void ExchangeEnds(DisplayArea& area, bool f1);
// "OK": the four ends become the window, kept inside the data.
void ApplyArea(DisplayState& view, const DisplayArea& area, const model::Spectrum2D& s);

}  // namespace velk::display
