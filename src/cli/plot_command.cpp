// velk2d-cli plot: the picture of a 2D spectrum as the main window shows it (contour, axes,
// traces, level bar), written as PNG, BMP, SVG or PDF.
#include <algorithm>
#include <cmath>
#include <iostream>
#include <memory>
#include <sstream>

#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "display/display_grid.h"
#include "display/page_picture.h"
#include "formats/registry.h"
#include "model/data_type.h"
#include "model/spectrum.h"
#include "model/type_detector.h"
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

// The largest magnitude of the shown number: the limits are fractions of it, so that spectra
// stored on any scale show the same levels as one normalised to 1.0.
float FullScale(const model::Spectrum2D& s, int pulseModeClass, const display::ContourSetting& setting) {
  const display::ShownValue kind = display::ShownValueOf(pulseModeClass, setting);
  double largest = 0;
  for (int r = 0; r < s.axis[model::F1].Point; ++r)
    for (int c = 0; c < s.axis[model::F2].Point; ++c) {
      double v = s.RR.at(c, r);
      if (kind != display::ShownValue::Signed) {
        double sum = v * v + static_cast<double>(s.IR.at(c, r)) * s.IR.at(c, r);
        if (kind == display::ShownValue::FourQuadrant)
          sum += static_cast<double>(s.RI.at(c, r)) * s.RI.at(c, r) + static_cast<double>(s.II.at(c, r)) * s.II.at(c, r);
        v = std::sqrt(sum);
      }
      if (std::isfinite(v)) largest = std::max(largest, std::fabs(v));
    }
  return largest > 0 ? static_cast<float>(largest) : 1.0f;
}

std::string AxisCaption(const char* axis, const std::string& nucleus) {
  return std::string(axis) + (nucleus.empty() ? "" : " " + nucleus) + " (ppm)";
}

// The window: the whole spectrum, high ppm at the left and at the bottom, unless given.
display::DisplayState MakeView(const model::Spectrum2D& s, const PlotOptions& o) {
  const auto range = [](const std::vector<float>& ppm, int points) {
    const auto [lo, hi] = std::minmax_element(ppm.begin(), ppm.begin() + points);
    return std::pair{*lo, *hi};
  };
  const auto [f2lo, f2hi] = range(s.ppmF2, s.axis[model::F2].Point);
  const auto [f1lo, f1hi] = range(s.ppmF1, s.axis[model::F1].Point);
  display::DisplayState v;
  v.ViewF2Start = o.f2.size() == 2 ? static_cast<float>(o.f2[0]) : f2hi;
  v.ViewF2End = o.f2.size() == 2 ? static_cast<float>(o.f2[1]) : f2lo;
  v.ViewF1Start = o.f1.size() == 2 ? static_cast<float>(o.f1[0]) : f1lo;
  v.ViewF1End = o.f1.size() == 2 ? static_cast<float>(o.f1[1]) : f1hi;
  display::Check_Start_End(v, s.ppmF2, s.ppmF1, s.axis[model::F2].Point, s.axis[model::F1].Point);
  return v;
}

int Fail(const std::string& path, const std::string& text, int status) {
  std::cerr << "velk2d-cli plot: " << path << ": " << text << "\n";
  return status;
}

// Exit status: 0 written, 1 the data were refused, 2 unreadable input or unwritable output.
int RunPlot(const PlotOptions& o) {
  platform::Extent size;
  if (!ParseSize(o.size, size)) return Fail(o.size, "the size must be WIDTHxHEIGHT, 64 to 16384 each", 2);
  if (!platform::qt::IsPictureExtension(o.output))
    return Fail(o.output, "the picture must end in .png, .bmp, .svg or .pdf", 2);
  if (!(o.lower > 0 && o.lower < o.upper)) return Fail(o.input, "the lower limit must be above 0 and below the upper", 2);

  const model::FormatTable formats = formats::Formats();
  const model::Detection d = model::TypeDetector(o.input, formats);
  if (d.code < 0) return Fail(o.input, d.reason, std::filesystem::exists(o.input) ? 1 : 2);
  if (model::Dimension(d.code) != 2) return Fail(o.input, "not a 2D data set", 1);
  const auto entry = std::find_if(formats.begin(), formats.end(), [&](const model::FormatEntry& e) {
    return e.extensionWord == d.file.extensionWord;
  });
  if (entry == formats.end() || !entry->read2D) return Fail(o.input, "no reader for this kind of data yet", 1);

  CliPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words{d.code, d.pulseModeClass, 0};
  model::ReadContext context{prompt, progress, words, [](std::string_view, const std::string&) {}};
  auto spectrum = std::make_unique<model::Spectrum2D>();
  const platform::Outcome read = entry->read2D(d.file, *spectrum, context);
  if (!read.ok())
    return Fail(o.input, read.message.title + (read.message.title.empty() ? "" : ": ") + read.message.text,
                read.code == 1 ? 1 : 2);
  if (!model::IsProcessed(words.dataTypeCode))
    return Fail(o.input, "a raw FID: the 2D transform is not part of this build yet", 1);
  model::Spectrum2D& s = *spectrum;
  if (s.axis[model::F2].Point < 3 || s.axis[model::F1].Point < 3 ||
      static_cast<int>(s.ppmF2.size()) < s.axis[model::F2].Point ||
      static_cast<int>(s.ppmF1.size()) < s.axis[model::F1].Point)
    return Fail(o.input, "too few points to draw a contour", 1);

  display::ContourSetting setting;
  setting.Steps = o.steps;
  setting.Interval = o.spacing;
  setting.DisplayMode = o.mode == "filled" ? display::kFilled : display::kLines;
  const int pulseModeClass = words.pulseModeClass;
  const float full = FullScale(s, pulseModeClass, setting);
  s.UpperLimit = static_cast<float>(o.upper * full);
  s.LowerLimit = static_cast<float>(o.lower * full);

  const display::TraceKind traces = o.traces == "none"      ? display::TraceKind::None
                                    : o.traces == "pos-neg" ? display::TraceKind::ProjectionPosNeg
                                                            : display::TraceKind::Projection;
  const display::MainViewInput input{s,
                                     pulseModeClass,
                                     setting,
                                     MakeView(s, o),
                                     traces,
                                     AxisCaption("F2", s.extras[model::F2].nucleus),
                                     AxisCaption("F1", s.extras[model::F1].nucleus)};
  bool drawn = false;
  const platform::Outcome written = platform::qt::WritePicture(o.output, size, [&](platform::Surface& surface) {
    drawn = display::DrawMainView(surface, size, input, progress);
  });
  if (!written.ok()) return Fail(o.output, written.message.text, 2);
  if (!drawn) return Fail(o.input, "the window holds less than one point on an axis", 1);
  return 0;
}

}  // namespace

void AddPlotCommand(CLI::App& app, int& status) {
  auto* command = app.add_subcommand("plot", "Draw a 2D spectrum as a contour picture with axes, traces and level bar");
  auto o = std::make_shared<PlotOptions>();
  command->add_option("IN", o->input, "a 2D spectrum in any format the program reads")->required();
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
