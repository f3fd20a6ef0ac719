// velk2d-cli plot: the picture of a 2D spectrum as the main window shows it (contour, axes,
// traces, level bar), written as PNG, BMP, SVG or PDF.
#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>

#include "cli/cli_io.h"
#include "cli/picture_input.h"
#include "cli/commands.h"
#include "cli/peak_threshold.h"
#include "document/peak_commands.h"
#include "operations/contour_marks.h"
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
  std::string peaks;  // empty: no marks
};

bool ParseSize(const std::string& text, platform::Extent& size) {
  char x = 0;
  std::istringstream in(text);
  return (in >> size.width >> x >> size.height) && (x == 'x' || x == 'X') && in.peek() == EOF && size.width >= 64 &&
         size.height >= 64 && size.width <= 16384 && size.height <= 16384;
}

int Fail(const std::string& path, const std::string& text, int status) { return Complain("plot", path, text, status); }

// Exit status: 0 written, 1 the data were refused, 2 unreadable input or unwritable output.
int RunPlot(const PlotOptions& o) {
  platform::Extent size;
  if (!ParseSize(o.size, size)) return Fail(o.size, "the size must be WIDTHxHEIGHT, 64 to 16384 each", 2);
  if (!platform::qt::IsPictureExtension(o.output))
    return Fail(o.output, "the picture must end in .png, .bmp, .svg or .pdf", 2);
  if (!(o.lower > 0 && o.lower < o.upper)) return Fail(o.input, "the lower limit must be above 0 and below the upper", 2);
  for (const auto& [name, window] : {std::pair{"--f2", &o.f2}, std::pair{"--f1", &o.f1}})
    if (window->size() == 2 && (*window)[0] == (*window)[1])
      return Fail(name, "the two ends of the window must differ", kFailed);

  if (!o.peaks.empty() && o.peaks != "stored" && !IsPeakThreshold(o.peaks))
    return Fail(o.peaks, std::string("--peaks is \"stored\", or ") + kPeakThresholdRule, kFailed);

  int status = kDone;
  const auto data = ReadPictureInput("plot", o.input, o.output, status);
  if (!data) return status;
  model::Spectrum2D& s = data->spectrum;
  // The marks of the file's own list, or of a list picked anew over the whole spectrum.
  if (!o.peaks.empty() && o.peaks != "stored") {
    s.peaks.peaks.clear();
    document::PickAllArea(*data, PeakThreshold(s, o.peaks), operations::kVirtualPeakTop);
  }

  display::ContourSetting setting;
  setting.Steps = o.steps;
  setting.Interval = o.spacing;
  setting.DisplayMode = o.mode == "filled" ? display::kFilled : display::kLines;
  const int pulseModeClass = data->words.pulseModeClass;
  SetLevelLimits(s, pulseModeClass, setting, o.lower, o.upper);

  const display::TraceKind traces = o.traces == "none"      ? display::TraceKind::None
                                    : o.traces == "pos-neg" ? display::TraceKind::ProjectionPosNeg
                                                            : display::TraceKind::Projection;
  const std::optional<display::DisplayState> view = PictureView(s, o.f2, o.f1);
  if (!view) return Fail(o.input, "the window given by --f2 or --f1 lies outside the spectrum", 2);
  const display::MainViewInput input{s,
                                     pulseModeClass,
                                     setting,
                                     *view,
                                     traces,
                                     AxisCaption("F2", s.extras[model::F2].nucleus),
                                     AxisCaption("F1", s.extras[model::F1].nucleus)};
  platform::NoProgress progress;
  const platform::Outcome written = platform::qt::WritePicture(o.output, size, [&](platform::Surface& surface) {
    if (!display::DrawMainView(surface, size, input, progress)) return false;
    const display::Rect contour = display::LayOutMainView(size, traces != display::TraceKind::None).contour;
    const operations::MarkStyle marks;
    operations::DrawSlope2Line(surface, *view, s, contour, marks);
    if (!o.peaks.empty()) operations::DrawPeakMarks(surface, *view, s, contour, marks);
    return true;
  });
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
  command->add_option("--peaks", o->peaks,
                      "mark peak tops: \"stored\" (the file's list), \"auto\" or a fraction of the largest value "
                      "(picked anew over the whole spectrum, as `peaks` does)");
  command->callback([o, &status] { status = RunPlot(*o); });
}

}  // namespace velk::cli
