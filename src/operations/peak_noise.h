#pragma once
// The "Auto" threshold of the peak tool: a multiple of the noise level, estimated from the
// spectrum itself.
#include "model/spectrum.h"

namespace velk::operations {

// Peaks must stand this many noise deviations above zero (or below it) to be picked by "Auto".
// Plain noise would need 6; processed spectra also carry truncation wiggles and F1 noise ridges
// whose maxima stand 5 to 8 deviations above the quiet noise, and a person does not call them
// peaks.
inline constexpr double kAutoThresholdDeviations = 8.0;

// The standard deviation of the noise of RR. The plane is cut into tiles of 32 x 32 points; in
// each the deviation is estimated robustly, as 1.4826 times the median absolute deviation from
// the tile's median, so that a few peak points do not count; the median over the tiles then
// stands for the signal-free part, which is most of a 2D spectrum. 0 for an empty plane.
double EstimateNoise(const model::Spectrum2D& s);

// kAutoThresholdDeviations times the noise; the LowerLimit when the plane holds no noise at all.
float AutoThreshold(const model::Spectrum2D& s);

}  // namespace velk::operations
