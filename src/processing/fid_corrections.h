#pragma once
// Corrections of the time-domain data: the FID shift and its defaults, the baseline of the FID,
// the T1 noise (first row) factor, and the correction of Bruker data taken with one converter.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/plane.h"
#include "model/spectrum.h"

namespace velk::processing {

// Vendor families of the default shifts; any other value uses the plain keys.
enum ShiftFamily : int { kPlainFamily = 0, kBrukerFamily = 1, kVarianFamily = 2, kJeolFamily = 3 };
enum NucleusGroup : int { kC13 = 0, kH1 = 1, kOtherNucleus = 2 };

NucleusGroup NucleusGroupOf(std::string_view nucleus);
// The settings key of a default shift, e.g. "FID SHFT H1 BRU".
std::string_view FidShiftKey(int family, NucleusGroup group);

struct InstrumentShift {
  std::string instrumentId;
  std::int32_t shift = 0;
};

struct FidShiftDefaults {
  bool autoShift = true;                      // "AUTO FID SHIFT", 1 unless the settings say 0
  std::vector<InstrumentShift> instruments;   // "FID SHIFT VAL", up to 101 rows
  std::array<std::array<std::int32_t, 3>, 4> byFamily{};  // [family][nucleus group]
};

// The first index whose modulus reaches 0.2 of the largest one; 0 when none does.
std::int32_t AutoFidShift(const float* re, const float* im, std::int32_t n);
// The shift of a newly read set: the instrument's row, else the search, else the vendor default.
std::int32_t ChooseFidShift(const FidShiftDefaults& d, std::string_view instrumentId, int family,
                            std::string_view nucleus, const float* re, const float* im, std::int32_t n);
// A set whose file names the digital filter's delay takes its nearest whole number of points.
void ChooseFidShift2D(model::Spectrum2D& s, const FidShiftDefaults& d, int family);
void ChooseFidShift1D(model::Spectrum1D& s, std::int32_t& fidShift, const FidShiftDefaults& d, int family);
// At the end of an FFT the shift used becomes the default of its vendor and nucleus.
void SaveFidShiftDefault(FidShiftDefaults& d, int family, std::string_view nucleus, std::int32_t shift);

// Rows 0 .. rows-1: the mean of points rnd(0.8 n) .. n-1 is subtracted from points 0 .. n-1.
void FidBaseline(model::Plane& plane, std::int32_t rows, std::int32_t n);
// Row 0 of each given plane, points 0 .. n-1, times the factor ("Multiple for First Row").
void T1NoiseCorrection(std::initializer_list<model::Plane*> planes, std::int32_t n, float factor);
float ClampT1NoiseFactor(float factor);

// Points taken one after the other by one converter: the imaginary channel is moved by the half
// dwell between the channels; the result is in frequency order without half swap, and an inverse
// transform with the conjugate flag set follows.
void BrukerCorrection1D(float* re, float* im, std::int32_t n, bool reverse);
void BrukerCorrectionF1(model::Plane& X, model::Plane& Y, std::int32_t n, std::int32_t columns);
void BrukerCorrectionF2(model::Plane& X, model::Plane& Y, std::int32_t rows, std::int32_t n);

}  // namespace velk::processing
