#pragma once
// The threshold of the peak search as the command line gives it: "auto" (from the noise of the
// spectrum) or a fraction of the largest value.
#include <optional>
#include <string>

#include "model/spectrum.h"

namespace velk::cli {

// True when the text is "auto" or a fraction above 0 and below 1.
bool IsPeakThreshold(const std::string& text);
// The threshold in the units of RR; the text must have passed IsPeakThreshold.
float PeakThreshold(const model::Spectrum2D& s, const std::string& text);
inline constexpr const char* kPeakThresholdRule = "the threshold is \"auto\" or a fraction above 0 and below 1";

}  // namespace velk::cli
