// velk2d-cli peaks: the peak list of a 2D spectrum, picked over the whole spectrum or an area,
// with a threshold given as a fraction of the largest value or estimated from the noise.
#include <cmath>
#include <cstdio>
#include <iostream>
#include <sstream>

#include "cli/cli_io.h"
#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "cli/peak_threshold.h"
#include "document/peak_commands.h"
#include "document/transform.h"
#include "operations/peak_list_file.h"
#include "operations/peak_noise.h"

namespace velk::cli {
namespace {

struct PeaksOptions {
  std::string in, out, area = "all", threshold = "auto", top = "virtual", format = "text";
};

// "F2A,F2B,F1A,F1B" in ppm into the view's window.
bool ParseArea(const std::string& text, display::DisplayState& view) {
  std::istringstream in(text);
  float v[4];
  char comma;
  for (int i = 0; i < 4; ++i)
    if (!(in >> v[i]) || (i < 3 && !(in >> comma && comma == ','))) return false;
  if (!(in >> std::ws).eof()) return false;
  view.ViewF2Start = v[0];
  view.ViewF2End = v[1];
  view.ViewF1Start = v[2];
  view.ViewF1End = v[3];
  return true;
}

int RunPeaks(const PeaksOptions& o) {
  if (!IsPeakThreshold(o.threshold)) return Complain("peaks", o.threshold, kPeakThresholdRule, kFailed);
  CliPrompt prompt;
  int status = kDone;
  const auto data = ReadInput("peaks", o.in, prompt, status);
  if (!data) return status;
  if (document::DimensionOf(*data) != 2) return Complain("peaks", o.in, "not a 2D data set", kRefused);
  if (!o.out.empty())
    if (int refused = CheckOutput("peaks", o.out, *data); refused != kDone) return refused;
  if (o.area != "all" && !ParseArea(o.area, data->view))
    return Complain("peaks", o.area, "the area is \"all\" or F2A,F2B,F1A,F1B in ppm", kFailed);
  if (!model::IsProcessed(data->words.dataTypeCode)) {
    // A raw FID is picked as the default recipe transforms it, the same as `process` would.
    processing::SequenceSettings settings = document::DefaultSettingsOf(*data);
    platform::NoProgress progress;
    const document::Transformed done = document::TransformDocument(*data, settings, false, progress);
    if (!done.outcome.ok()) return Complain("peaks", o.in, TextOf(done.outcome.message), kRefused);
  }
  model::Spectrum2D& s = data->spectrum;
  if (s.axis[model::F2].Point < 3 || s.axis[model::F1].Point < 3)
    return Complain("peaks", o.in, "too few points", kRefused);

  // The list of the file, if it has one, is not mixed with the new one.
  s.peaks.peaks.clear();
  const float threshold = PeakThreshold(s, o.threshold);
  const operations::PeakMode mode = o.top == "data" ? operations::kPeakOnDataPoint : operations::kVirtualPeakTop;
  if (o.area == "all")
    document::PickAllArea(*data, threshold, mode);
  else
    document::PickDisplayedArea(*data, threshold, mode);

  const operations::PeakListFormat format = o.format == "csv"    ? operations::PeakListFormat::Csv
                                            : o.format == "json" ? operations::PeakListFormat::Json
                                                                 : operations::PeakListFormat::Text;
  const std::string name = std::filesystem::path(o.in).filename().string();
  if (o.out.empty()) {
    std::cout << operations::FormatPeakList(s, name, format);
    return kDone;
  }
  const platform::Outcome written = operations::Save_Peak_List(o.out, s, name, format);
  if (!written.ok()) return Complain("peaks", o.out, TextOf(written.message), StatusOf(written));
  std::cout << "wrote " << s.peaks.peaks.size() << " peaks to " << o.out << "\n";
  return kDone;
}

}  // namespace

bool IsPeakThreshold(const std::string& text) {
  if (text == "auto") return true;
  char* end = nullptr;
  const double fraction = std::strtod(text.c_str(), &end);
  return !text.empty() && *end == '\0' && fraction > 0 && fraction < 1;
}

float PeakThreshold(const model::Spectrum2D& s, const std::string& text) {
  if (text == "auto") return operations::AutoThreshold(s);
  float largest = 0;
  for (std::int32_t r = 0; r < std::min(s.axis[model::F1].Point, s.RR.rows); ++r)
    for (std::int32_t c = 0; c < std::min(s.axis[model::F2].Point, s.RR.stride); ++c)
      largest = std::max(largest, std::fabs(s.RR.at(c, r)));
  return static_cast<float>(std::strtod(text.c_str(), nullptr) * largest);
}

void AddPeaksCommand(CLI::App& app, int& status) {
  auto* command = app.add_subcommand(
      "peaks",
      "Pick the peaks of a 2D spectrum (a raw FID is transformed with the default settings first) and list "
      "them in ppm, Hz and height");
  command->footer(kStatusHelp);
  auto options = std::make_shared<PeaksOptions>();
  command->add_option("IN", options->in, "a data file or a vendor's data folder")->required();
  command->add_option("--area", options->area, "\"all\" (the default), or F2A,F2B,F1A,F1B: the window in ppm");
  command->add_option("--threshold", options->threshold,
                      "\"auto\" (the default: 8 noise deviations, the noise estimated from the spectrum), or a "
                      "fraction of the largest value");
  command->add_option("--top", options->top, "virtual: tops calculated to 1/32 point (the default); data: data points")
      ->check(CLI::IsMember({"virtual", "data"}));
  command->add_option("--format", options->format, "text (reads back into the program), csv or json")
      ->check(CLI::IsMember({"text", "csv", "json"}));
  command->add_option("-o,--output", options->out, "the file to write; without it the list goes to standard output");
  command->callback([options, &status] { status = RunPeaks(*options); });
}

}  // namespace velk::cli
