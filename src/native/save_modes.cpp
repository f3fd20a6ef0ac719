#include "native/save_modes.h"

#include <cmath>
#include <cstdio>

#include "model/data_type.h"
#include "model/mode_string.h"
#include "native/messages.h"

namespace velk::native {
namespace {

using model::F1;
using model::F2;

// The first F1 rows of a plane as one contiguous run: the plane itself when its stride is the
// F2 size, else a copy.
std::span<const float> Contiguous(const model::Plane& plane, std::int32_t columns, std::int32_t rows,
                                  std::vector<std::vector<float>>& owned) {
  const std::size_t count = static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
  if (plane.stride == columns && plane.data.size() >= count) return {plane.data.data(), count};
  std::vector<float>& copy = owned.emplace_back(count, 0.0f);
  for (std::int32_t r = 0; r < std::min(rows, plane.rows); ++r) {
    const auto row = plane.row(r);
    std::copy_n(row.begin(), std::min<std::size_t>(columns, row.size()), copy.begin() + static_cast<std::ptrdiff_t>(r) * columns);
  }
  return copy;
}

// sqrt of the sum of squares of the given planes, point by point.
std::span<const float> Magnitude(std::initializer_list<const model::Plane*> planes, std::int32_t columns,
                                 std::int32_t rows, std::vector<std::vector<float>>& owned) {
  std::vector<float>& out = owned.emplace_back(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), 0.0f);
  for (std::int32_t r = 0; r < rows; ++r) {
    for (std::int32_t c = 0; c < columns; ++c) {
      double sum = 0;
      for (const model::Plane* plane : planes) {
        const double value = plane->at(c, r);
        sum += value * value;
      }
      out[static_cast<std::size_t>(r) * columns + c] = static_cast<float>(std::sqrt(sum));
    }
  }
  return out;
}

}  // namespace

PlaneSet MakePlaneSet(const model::Spectrum2D& s, int pulseModeClass, bool realOnly, SaveMode mode) {
  PlaneSet set;
  const std::int32_t columns = s.axis[F2].Point, rows = s.axis[F1].Point;
  const bool phaseClass = pulseModeClass == model::VPH_HOMO || pulseModeClass == model::VPH_HETERO;
  if (mode == SaveMode::AllPlanes && phaseClass && !realOnly) {
    set.modeString = model::MakeModeString2D(pulseModeClass, false);
    for (const model::Plane* plane : {&s.RR, &s.RI, &s.IR, &s.II})
      set.planes.push_back(Contiguous(*plane, columns, rows, set.owned));
    return set;
  }
  if (pulseModeClass == model::VPH_HMBC) {
    set.modeString = model::MakeModeString2D(pulseModeClass, true);
    set.planes.push_back(Magnitude({&s.RR, &s.IR}, columns, rows, set.owned));
  } else if (phaseClass && mode == SaveMode::PowerSpectrum) {
    set.modeString = model::MakeModeString2D(pulseModeClass, true, true);
    set.planes.push_back(Magnitude({&s.RR, &s.IR, &s.RI, &s.II}, columns, rows, set.owned));
  } else {
    set.modeString = model::MakeModeString2D(pulseModeClass, true);
    set.planes.push_back(Contiguous(s.RR, columns, rows, set.owned));
  }
  return set;
}

std::string MegabyteText(double megabytes) {
  char text[64];
  std::snprintf(text, sizeof text, "%.2f", megabytes);
  std::string result = text;
  if (result.back() == '0') result.pop_back();  // "###0.0#": one decimal at least, two at most
  return result;
}

SaveSizeDialog MakeSaveSizeDialog(std::int32_t f2Points, std::int32_t f1Points, std::int16_t modified) {
  const double points = static_cast<double>(f2Points) * static_cast<double>(f1Points);
  SaveSizeDialog dialog;
  dialog.title = messages::kCutDownTitle;
  dialog.options = {std::string(messages::kSaveAllBefore) + MegabyteText(points * 16 / 1e6) + std::string(messages::kSaveAllAfter),
                    std::string(messages::kSaveRealBefore) + MegabyteText(points * 4 / 1e6) + std::string(messages::kSaveRealAfter)};
  if (modified == 1) {
    dialog.preset = 1;
    dialog.recommendation = messages::kRecommendRealOnly;
  }
  return dialog;
}

namespace {

std::optional<SaveMode> ConfirmRealOnly(platform::Prompt& prompt) {
  const platform::Answer answer = prompt.Ask({std::string(messages::kConfirmingTitle), std::string(messages::kConfirmRealOnly),
                                              platform::Buttons::OkCancel, platform::Icon::Question});
  if (answer == platform::Answer::Ok) return SaveMode::RealOnly;
  return std::nullopt;
}

}  // namespace

std::optional<SaveMode> ChooseSaveMode(platform::Prompt& prompt, const SaveSituation& situation) {
  const bool phaseClass = situation.pulseModeClass == model::VPH_HOMO || situation.pulseModeClass == model::VPH_HETERO;
  if (!phaseClass || situation.realOnly) return SaveMode::AllPlanes;  // the class decides what goes out
  if (situation.magnitudeDisplay) {
    const platform::Answer answer =
        prompt.Ask({std::string(messages::kConfirmingPowerTitle), std::string(messages::kAskPowerSpectrum),
                    platform::Buttons::YesNo, platform::Icon::Question});
    if (answer == platform::Answer::Yes) return SaveMode::PowerSpectrum;
    if (answer == platform::Answer::No) return ConfirmRealOnly(prompt);
    return std::nullopt;
  }
  const SaveSizeDialog dialog = MakeSaveSizeDialog(situation.f2Points, situation.f1Points, situation.modified);
  // The choice has no preset of its own in the prompt: the recommendation goes first.
  if (!dialog.recommendation.empty())
    prompt.Ask({dialog.title, dialog.recommendation, platform::Buttons::Ok, platform::Icon::Information});
  const std::optional<int> choice = prompt.Choose(dialog.title, dialog.options);
  if (!choice) return std::nullopt;
  if (*choice == 0) return SaveMode::AllPlanes;
  return ConfirmRealOnly(prompt);
}

}  // namespace velk::native
