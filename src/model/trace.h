#pragma once
// One trace of a 2D data set as a 1D data set: the F2 trace of a row or the F1 trace of a column,
// with its axis, frequency and nucleus, ready for the 1D writers.
#include "model/spectrum.h"

namespace velk::model {

// axis F2 takes row `index` (real part RR, imaginary IR); axis F1 takes column `index` (RR, RI).
// Returns 0, or 1 when the index lies outside the data or memory runs out.
int TraceAsSpectrum1D(const Spectrum2D& s, int axis, std::int32_t index, Spectrum1D& out);

}  // namespace velk::model
