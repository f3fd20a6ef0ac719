// velk2d-cli plot: the picture of a 2D spectrum as the main window shows it (contour, axes,
// traces, level bar), written as PNG, BMP, SVG or PDF.
#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>

#include "cli/cli_io.h"
#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "document/transform.h"
#include "display/display_grid.h"
#include "display/page_picture.h"
#include "model/data_type.h"
#include "model/spectrum.h"
#include "platform/qt/picture_file.h"

namespace velk::cli {
namespace {

struct PlotOptions {
  std::string input;
  std::string output;
  std::string size = "1024x1024";
  std::string mode = "lines";
  int steps = 16;
  int spacing = 0;
  double lower = 0.1;
  double upper = 1.0;
  std::vector<double> f2, f1;
  std::string traces = "projection";
};

bool ParseSize(const std::string& text, platform::Extent& size) {
  char x = 0;
  std::istringstream in(text);
  return (in >> size.width >> x >> size.height) && (x == 'x' || x == 'X') && in.peek() == EOF && size.width >= 64 &&
         size.height >= 64 && size.width <= 16384 && size.height <= 16384;
}

std::string AxisCaption(const char* axis, const std::string& nucleus) {
  return std::string(axis) + (nucleus.empty() ? "" : " " + nucleus) + " (ppm)";
}

// The window: the whole spectrum, high ppm at the left and at the bottom, unless given. A given
// window must overlap the data; the overlap is what is shown.
std::optional<display::DisplayState> MakeView(const model::Spectrum2D& s, const PlotOptions& o) {
  const auto range = [](const std::vector<float>& ppm, int points) {
    const auto [lo, hi] = std::minmax_element(ppm.begin(), ppm.begin() + points);
    return std::pair{*lo, *hi};
  };
  const auto [f2lo, f2hi] = range(s.ppmF2, s.axis[model::F2].Point);
  const auto [f1lo, f1hi] = range(s.ppmF1, s.axis[model::F1].Point);
  const auto overlaps = [](const std::vector<double>& window, float lo, float hi) {
    return window.size() != 2 || (std::max(window[0], window[1]) > lo && std::min(window[0], window[1]) < hi);
  };
  if (!overlaps(o.f2, f2lo, f2hi) || !overlaps(o.f1, f1lo, f1hi)) return std::nullopt;
  display::DisplayState v;
  v.ViewF2Start = o.f2.size() == 2 ? static_cast<float>(o.f2[0]) : f2hi;
  v.ViewF2End = o.f2.size() == 2 ? static_cast<float>(o.f2[1]) : f2lo;
  v.ViewF1Start = o.f1.size() == 2 ? static_cast<float>(o.f1[0]) : f1lo;
  v.ViewF1End = o.f1.size() == 2 ? static_cast<float>(o.f1[1]) : f1hi;
  display::Check_Start_End(v, s.ppmF2, s.ppmF1, s.axis[model::F2].Point, s.axis[model::F1].Point);
  return v;
}

int Fail(const std::string& path, const std::string& text, int status) { return Complain("plot", path, text, status); }

// Exit status: 0 written, 1 the data were refused, 2 unreadable input or unwritable output.
int RunPlot(const PlotOptions& o) {
  platform::Extent size;
  if (!ParseSize(o.size, size)) return Fail(o.size, "the size must be WIDTHxHEIGHT, 64 to 16384 each", 2);
  if (!platform::qt::IsPictureExtension(o.output))
    return Fail(o.output, "the picture must end in .png, .bmp, .svg or .pdf", 2);
  if (!(o.lower > 0 && o.lower < o.upper)) return Fail(o.input, "the lower limit must be above 0 and below the upper", 2);

  CliPrompt prompt;
  int status = kDone;
  const auto data = ReadInput("plot", o.input, prompt, status);
  if (!data) return status;
  if (document::DimensionOf(*data) != 2) return Fail(o.input, "not a 2D data set", kRefused);
  if (int refused = CheckOutput("plot", o.output, *data); refused != kDone) return refused;
  if (!model::IsProcessed(data->words.dataTypeCode)) {
    // A raw FID is drawn as the default recipe transforms it, the same as `process` would.
    processing::SequenceSettings settings = document::DefaultSettingsOf(*data);
    platform::NoProgress progress;
    const document::Transformed done = document::TransformDocument(*data, settings, false, progress);
    if (!done.outcome.ok()) return Fail(o.input, TextOf(done.outcome.message), kRefused);
  }
  model::Spectrum2D& s = data->spectrum;
  if (s.axis[model::F2].Point < 3 || s.axis[model::F1].Point < 3 ||
      static_cast<int>(s.ppmF2.size()) < s.axis[model::F2].Point ||
      static_cast<int>(s.ppmF1.size()) < s.axis[model::F1].Point)
    return Fail(o.input, "too few points to draw a contour", 1);

  display::ContourSetting setting;
  setting.Steps = o.steps;
  setting.Interval = o.spacing;
  setting.DisplayMode = o.mode == "filled" ? display::kFilled : display::kLines;
  const int pulseModeClass = data->words.pulseModeClass;
  // The limits are fractions of the largest value, so that spectra stored on any scale show the
  // same levels as one normalised to 1.0.
  const float largest = display::LargestShownMagnitude(s, pulseModeClass, setting);
  const float full = largest > 0 ? largest : 1.0f;
  s.UpperLimit = static_cast<float>(o.upper * full);
  s.LowerLimit = static_cast<float>(o.lower * full);

  const display::TraceKind traces = o.traces == "none"      ? display::TraceKind::None
                                    : o.traces == "pos-neg" ? display::TraceKind::ProjectionPosNeg
                                                            : display::TraceKind::Projection;
  const std::optional<display::DisplayState> view = MakeView(s, o);
  if (!view) return Fail(o.input, "the window given by --f2 or --f1 lies outside the spectrum", 2);
  const display::MainViewInput input{s,
                                     pulseModeClass,
                                     setting,
                                     *view,
                                     traces,
                                     AxisCaption("F2", s.extras[model::F2].nucleus),
                                     AxisCaption("F1", s.extras[model::F1].nucleus)};
  platform::NoProgress progress;
  const platform::Outcome written = platform::qt::WritePicture(
      o.output, size, [&](platform::Surface& surface) { return display::DrawMainView(surface, size, input, progress); });
  if (written.code == 1) return Fail(o.input, "the window holds less than one point on an axis", 1);
  if (!written.ok()) return Fail(o.output, written.message.text, 2);
  if (!written.message.text.empty()) Complain("plot", o.output, written.message.text, kDone);
  return 0;
}

}  // namespace

void AddPlotCommand(CLI::App& app, int& status) {
  auto* command = app.add_subcommand("plot", "Draw a 2D spectrum as a contour picture with axes, traces and level bar");
  auto o = std::make_shared<PlotOptions>();
  command->footer(kStatusHelp);
  command->add_option("IN", o->input, "a 2D spectrum in any format the program reads (a raw FID is transformed with the default recipe first)")->required();
  command->add_option("-o,--output", o->output, "the picture: .png, .bmp, .svg or .pdf")->required();
  command->add_option("--size", o->size, "picture size in pixels, WIDTHxHEIGHT")->capture_default_str();
  command->add_option("--mode", o->mode, "contour lines or colour-filled contours")
      ->check(CLI::IsMember({"lines", "filled"}))
      ->capture_default_str();
  command->add_option("--steps", o->steps, "contour stages, both signs together")
      ->check(CLI::IsMember({4, 8, 16, 32}))
      ->capture_default_str();
  command->add_option("--spacing", o->spacing, "0 linear; 1..6 exponential of base 2.0, 1.5, 1.2, 1.8, 2.5, 3.0")
      ->check(CLI::Range(0, 6))
      ->capture_default_str();
  command->add_option("--lower", o->lower, "lowest level, a fraction of the largest value")->capture_default_str();
  command->add_option("--upper", o->upper, "highest level, a fraction of the largest value")->capture_default_str();
  command->add_option("--f2", o->f2, "F2 window PPM1,PPM2 (left, right)")->delimiter(',')->expected(2);
  command->add_option("--f1", o->f1, "F1 window PPM1,PPM2 (top, bottom)")->delimiter(',')->expected(2);
  command->add_option("--traces", o->traces, "the side panels: projection, pos-neg (both signs) or none")
      ->check(CLI::IsMember({"projection", "pos-neg", "none"}))
      ->capture_default_str();
  command->callback([o, &status] { status = RunPlot(*o); });
}

}  // namespace velk::cli
