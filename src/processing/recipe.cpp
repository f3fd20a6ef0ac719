#include "processing/recipe.h"

#include "processing/fid_corrections.h"
#include "processing/vendor_sequence.h"

namespace velk::processing {
namespace {

using model::F1;
using model::F2;

// The window numbers ClassifyPulseMode presets for the class, over the whole FID.
void PresetWindows(SequenceSettings& settings, int pulseModeClass) {
  const bool phaseF2 = pulseModeClass == model::VPH_HOMO || pulseModeClass == model::VPH_HETERO;
  const bool sineF1 = !model::IsPhaseSensitive(pulseModeClass) && pulseModeClass != model::kUnknownClass;
  for (auto [axis, type] : {std::pair{F1, sineF1 ? 1 : 0}, std::pair{F2, phaseF2 ? 0 : 1}}) {
    WindowFunctionSetting& w = settings.axis[axis].window;
    w.type = static_cast<std::int16_t>(type);
    for (float& end : w.WE)
      if (end == 0) end = 100;
  }
}

}  // namespace

int FidShiftFamily(int formatNumber) {
  switch (formatNumber) {
    case model::kBruker: case model::kBrukerAspect: return kBrukerFamily;
    case model::kVarian: return kVarianFamily;
    case model::kAlice: case model::kJeolGx: case model::kLambda: case model::kDelta: case model::kAlpha:
      return kJeolFamily;
    default: return kPlainFamily;
  }
}

SequenceSettings DefaultFtSettings(model::Spectrum2D& s, int pulseModeClass, int formatNumber,
                                   std::string_view pulseName, RecipeSource source) {
  SequenceSettings settings;
  if (source == RecipeSource::kVendorWhenPresent && s.vendor.recipe)
    settings = VendorSequenceSettings(s, *s.vendor.recipe, pulseModeClass, formatNumber);
  if (!settings.vendor) {
    settings = MakeSequenceSettings(s, pulseModeClass, formatNumber);
    PresetWindows(settings, pulseModeClass);
    InitialF1Phase(s, settings, pulseName);
  }
  settings.f2Only = settings.f2Only || !s.vendor.series.empty();
  FidShiftDefaults shift;
  shift.autoShift = true;
  ChooseFidShift2D(s, shift, FidShiftFamily(formatNumber));
  return settings;
}

bool IsZeroFillFactor(std::int32_t factor) {
  for (std::int32_t allowed : kZeroFillFactors)
    if (factor == allowed) return true;
  return false;
}

platform::Outcome SetZeroFill(model::Spectrum2D& s, SequenceSettings& settings, model::Axis axis, std::int32_t factor) {
  while (settings.axis[axis].zeroFill < factor)
    if (platform::Outcome grown = ZeroFill(s, settings, axis); !grown.ok()) return grown;
  return {};
}

platform::Outcome SetForwardPrediction(model::Spectrum2D& s, SequenceSettings& settings, model::Axis axis,
                                       const LpSetting& lp, double factor) {
  AxisProcessing& a = settings.axis[axis];
  a.lp.Order = lp.Order;
  a.lp.Points = lp.Points;
  a.lp.Start = lp.Start;
  CancelZeroFill(s, settings, axis);
  while (a.lpFactor < factor)
    if (platform::Outcome grown = LpFill(s, settings, axis); !grown.ok()) return grown;
  return {};
}

}  // namespace velk::processing
