#pragma once
// The one default transform recipe: what a freshly read raw 2D FID gets when nobody has chosen
// anything yet. The FT window opens with it, `process` starts from it and `plot` of a raw FID
// uses it unchanged, so all three give the same spectrum.
#include <string_view>

#include "model/data_type.h"
#include "model/spectrum.h"
#include "processing/sequence.h"

namespace velk::processing {

// The vendor families of the FID shift defaults, by format number.
int FidShiftFamily(int formatNumber);

// Where the default recipe comes from: the processing the spectrometer stored beside the data
// when there is such, or always the program's presets.
enum class RecipeSource { kVendorWhenPresent, kProgram };

// The spectrometer's stored recipe when asked for and present (see vendor_sequence.h); else
// windows preset by the class (sine bells over the whole FID for magnitude sets, exponential for
// phase-sensitive ones), the initial F1 phase of the class and no zero fill. Either way the FID
// shift is chosen (written into s.fidShift), and a pseudo-2D series is transformed along F2 only.
SequenceSettings DefaultFtSettings(model::Spectrum2D& s, int pulseModeClass, int formatNumber,
                                   std::string_view pulseName,
                                   RecipeSource source = RecipeSource::kVendorWhenPresent);

// The zero-fill factors a user may ask for, and the check of one.
inline constexpr std::int32_t kZeroFillFactors[] = {1, 2, 4, 8, 16};
bool IsZeroFillFactor(std::int32_t factor);
// Zero fill of an axis to the factor (one of kZeroFillFactors); refused past the size limits.
platform::Outcome SetZeroFill(model::Spectrum2D& s, SequenceSettings& settings, model::Axis axis, std::int32_t factor);
// Forward prediction takes the place of the zero fill on its axis, extending it by the factor
// (at least 2); lp holds order, points and start.
platform::Outcome SetForwardPrediction(model::Spectrum2D& s, SequenceSettings& settings, model::Axis axis,
                                       const LpSetting& lp, double factor);

}  // namespace velk::processing
