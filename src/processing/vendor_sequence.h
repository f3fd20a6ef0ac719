#pragma once
// The 2D transform as the spectrometer's software did it, from the recipe stored beside the raw
// data: per axis the points used, the digital filter's whole points moved to the end of the
// zero-filled buffer and its fraction as a first-order phase, F1 forward prediction, the window,
// the first-point factor, zero fill to the stored size, the stored phases, and the magnitude where
// the recipe asks for it. The result keeps the program's storage (index 0 the low-frequency end)
// and the final stage of the other sequences.
#include <complex>
#include <string>
#include <vector>

#include "model/vendor_recipe.h"
#include "processing/sequence.h"

namespace velk::processing {

// Settings that carry the recipe: sizes from its SI (powers of two), everything else as
// MakeSequenceSettings gives it. A recipe whose sizes are not powers of two is not applied.
SequenceSettings VendorSequenceSettings(const model::Spectrum2D& s, const model::VendorRecipe& recipe,
                                        int pulseModeClass, int formatNumber);

// What one axis does to each of its traces.
struct VendorTracePlan {
  std::int32_t points = 0;     // complex points of data in the trace
  std::int32_t predictTo = 0;  // complex points after forward prediction (points when none)
  int order = 0;               // complex prediction order
  std::int32_t onset = 0;      // leading points moved to the end of the buffer
  std::int32_t leftShift = 0;  // leading points dropped (negative: zeros put in front)
  std::vector<float> window;   // over the points after the onset
  float firstPoint = 1;        // factor of the first point after the onset
  bool conjugate = false;      // imaginary part negated before anything else
  std::int32_t size = 0;       // complex points of the spectrum (a power of two)
  std::vector<double> cosine, sine;  // rotation of each output point (empty: none)
};

// The rotation of output point k (index 0 the low-frequency end, size/2 the carrier) for the
// stored phases, counted from the high-frequency end, plus a time shift of `delay` points.
void VendorRotation(VendorTracePlan& plan, double phc0, double phc1, double delay, double extra0);

// One trace in place, `step` floats between its points; scratch of at least size points.
void VendorTransformTrace(const VendorTracePlan& plan, float* re, float* im, std::ptrdiff_t step,
                          std::vector<std::complex<double>>& scratch);

// The run; settings.vendor must hold the recipe.
SequenceResult ExecuteVendorFft(model::Spectrum2D& s, SequenceSettings& settings, const SequenceRun& run);

// The recipe in a few lines, for the processing text and the command line.
std::vector<std::string> VendorRecipeLines(const model::VendorRecipe& recipe);

}  // namespace velk::processing
