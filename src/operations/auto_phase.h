#pragma once
// "Auto" phase: the zero and first order of both axes found from the spectrum itself.
//
// At the top of a peak the dispersion part vanishes, so the four quadrants there hold the pure
// phase error of the peak: RR + i IR and RI + i II both point along the F2 error (scaled by the
// cosine and sine of the F1 error), and their squares add up to a^2 exp(2i phiF2) whatever the F1
// error is; likewise for F1 with RR + i RI and IR + i II. Doubling the angle removes the sign of
// the peak, so edited spectra with peaks of both signs phase as well as plain ones. The tops are
// the strongest local maxima of the hypercomplex modulus, each angle taken back from the top to
// the line's centre between two points (with the top's two neighbours only, so that crowded peaks
// on a coarse axis do not mix). For each axis the first order (within 180 degrees either way) is
// the one whose line through the tops' doubled angles agrees best (the length of the sum of unit
// phasors weighted by the peaks' heights, with a clear preference for small first orders: peaks
// crowded into part of an axis leave large first orders nearly as good),
// and the zero order follows from the angle of that sum. The one sign left open (a turn of 180
// degrees on one axis turns RR over) is chosen so that the peak tops add up positive in RR: the
// penalty on negative area.
#include <array>
#include <cstdint>

#include "model/spectrum.h"
#include "operations/phase.h"

namespace velk::operations {

struct AutoPhaseResult {
  PhaseValues f1, f2;  // the corrections to apply, about the given pivots
  int peaksUsed = 0;   // 0 when the spectrum has no imaginary quadrants or no peaks
};

// The four quadrants and the points of each axis (F1 first).
struct AutoPhaseData {
  const model::Plane& RR;
  const model::Plane& IR;
  const model::Plane& RI;
  const model::Plane& II;
  std::array<std::int32_t, 2> points;
};

AutoPhaseResult FindAutoPhase(const AutoPhaseData& data, std::int32_t pivotF1, std::int32_t pivotF2, int threads = 0);
AutoPhaseResult FindAutoPhase(const model::Spectrum2D& s, std::int32_t pivotF1, std::int32_t pivotF2, int threads = 0);

}  // namespace velk::operations
