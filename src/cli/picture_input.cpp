#include "cli/picture_input.h"

#include <algorithm>

#include "cli/cli_io.h"
#include "cli/cli_prompt.h"
#include "document/transform.h"
#include "display/display_grid.h"
#include "model/data_type.h"

namespace velk::cli {

std::unique_ptr<document::Document> ReadPictureInput(std::string_view command, const std::string& input,
                                                     const std::string& output, int& status) {
  CliPrompt prompt;
  status = kDone;
  auto data = ReadInput(command, input, prompt, status);
  if (!data) return nullptr;
  auto refuse = [&](const std::string& text, int code) {
    status = Complain(command, input, text, code);
    return nullptr;
  };
  if (document::DimensionOf(*data) != 2) return refuse("not a 2D data set", kRefused);
  if ((status = CheckOutput(command, output, *data)) != kDone) return nullptr;
  if (!model::IsProcessed(data->words.dataTypeCode)) {
    processing::SequenceSettings settings = document::DefaultSettingsOf(*data);
    platform::NoProgress progress;
    const document::Transformed done = document::TransformDocument(*data, settings, false, progress);
    if (!done.outcome.ok()) return refuse(TextOf(done.outcome.message), kRefused);
  }
  const model::Spectrum2D& s = data->spectrum;
  if (s.axis[model::F2].Point < 3 || s.axis[model::F1].Point < 3 ||
      static_cast<int>(s.ppmF2.size()) < s.axis[model::F2].Point ||
      static_cast<int>(s.ppmF1.size()) < s.axis[model::F1].Point)
    return refuse("too few points to draw a contour", kRefused);
  return data;
}

std::optional<display::DisplayState> PictureView(const model::Spectrum2D& s, const std::vector<double>& f2,
                                                 const std::vector<double>& f1) {
  const auto range = [](const std::vector<float>& ppm, int points) {
    const auto [lo, hi] = std::minmax_element(ppm.begin(), ppm.begin() + points);
    return std::pair{*lo, *hi};
  };
  const auto [f2lo, f2hi] = range(s.ppmF2, s.axis[model::F2].Point);
  const auto [f1lo, f1hi] = range(s.ppmF1, s.axis[model::F1].Point);
  const auto overlaps = [](const std::vector<double>& window, float lo, float hi) {
    return window.size() != 2 || (std::max(window[0], window[1]) > lo && std::min(window[0], window[1]) < hi);
  };
  if (!overlaps(f2, f2lo, f2hi) || !overlaps(f1, f1lo, f1hi)) return std::nullopt;
  display::DisplayState v;
  v.ViewF2Start = f2.size() == 2 ? static_cast<float>(f2[0]) : f2hi;
  v.ViewF2End = f2.size() == 2 ? static_cast<float>(f2[1]) : f2lo;
  v.ViewF1Start = f1.size() == 2 ? static_cast<float>(f1[0]) : f1lo;
  v.ViewF1End = f1.size() == 2 ? static_cast<float>(f1[1]) : f1hi;
  display::Check_Start_End(v, s.ppmF2, s.ppmF1, s.axis[model::F2].Point, s.axis[model::F1].Point);
  return v;
}

void SetLevelLimits(model::Spectrum2D& s, int pulseModeClass, const display::ContourSetting& setting, double lower,
                    double upper) {
  const float largest = display::LargestShownMagnitude(s, pulseModeClass, setting);
  const float full = largest > 0 ? largest : 1.0f;
  s.UpperLimit = static_cast<float>(upper * full);
  s.LowerLimit = static_cast<float>(lower * full);
}

std::string AxisCaption(const char* axis, const std::string& nucleus) {
  return std::string(axis) + (nucleus.empty() ? "" : " " + nucleus) + " (ppm)";
}

}  // namespace velk::cli
