#pragma once
// INADEQUATE spectra: the mode of a data set, whether its F1 span already covers the whole
// double-quantum range, the extension of folded data onto a doubled F1 span, and the slope 2 line
// on which every carbon pair is centred.
#include <cstdint>

#include "display/display_state.h"
#include "model/spectrum.h"
#include "platform/message.h"

namespace velk::operations {

// 1 when the F1 span s1 is twice the F2 span s2 or misses that by at most one per cent (or
// exceeds it), 0 while the data are still folded.
std::int16_t InadequateFullOf(double s1, double s2);

// Stores the mode (1 INADEQUATE, 0 normal) and works out InadequateFull: from the spans in the
// mode, 0 outside it. Returns false, changing nothing, when the mode is the present one.
bool ChangeInadequateMode(model::Spectrum2D& s, std::int16_t mode);

// Moves the folded data to their places on an F1 span of twice the F2 span, in all four planes:
// the old rows in the middle, the margins filled by the periodic repetition of folded data, and
// everything outside the band that can hold signal cleared. F1 gets reference 0 at its middle
// point, the view shows the whole new F1 axis, and the peaks move with their rows. Only for an
// INADEQUATE set that is still folded (code 1 otherwise); "Data Size is too large!" when the new
// planes do not fit, the set left as it was.
platform::Outcome ExtendFoldedData(model::Spectrum2D& s, display::DisplayState& view);

// The slope 2 line in data points: through the middle of both axes, two F1 Hz for every F2 Hz, in
// the direction in which the F1 ppm run against the F2 ppm, cut at the edges of the data.
struct Slope2Line {
  double col1 = 0, row1 = 0, col2 = 0, row2 = 0;
};
Slope2Line Slope2LineOf(const model::Spectrum2D& s);

}  // namespace velk::operations
