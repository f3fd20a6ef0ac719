// velk2d-cli process: reads a raw 2D FID with whichever reader recognises it, runs the 2D sequence
// (windows, zero fill or prediction, FID shift, both transforms, phase, normalisation) and writes
// the spectrum as a Ver.4 file.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <tuple>
#include <cmath>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/cli_io.h"
#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "core/text.h"
#include "document/transform.h"
#include "document/write_data_set.h"
#include "model/data_type.h"
#include "processing/recipe.h"
#include "processing/vendor_sequence.h"

namespace velk::cli {
namespace {

using model::F1;
using model::F2;
namespace vp = processing;

struct ProcessOptions {
  std::string in, out, mode, zeroFill = "1,1", windowF2, windowF1, phaseF2, phaseF1, fidShift;
  std::string lpF1, lpF2, lpBackF1, lpBackF2;
  std::string params;  // vendor, program, or empty: the vendor's unless the recipe is tuned here
  int threads = 0;
  bool json = false, f1Inverse = false;
};

// "a,b" into two numbers.
bool ParsePair(const std::string& text, double& a, double& b) {
  std::istringstream in(text);
  char comma = 0;
  return static_cast<bool>(in >> a >> comma >> b) && comma == ',' && in.peek() == EOF;
}

// "k=v,k=v" into a map; false on a part without "=" or a value that is not a number.
bool ParseKeys(const std::string& text, std::map<std::string, double>& keys) {
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, ',');) {
    const auto eq = part.find('=');
    if (eq == std::string::npos) return false;
    try {
      std::size_t used = 0;
      const std::string value = part.substr(eq + 1);
      keys[core::ToUpper(core::Trim(part.substr(0, eq)))] = std::stod(value, &used);
      if (used != value.size()) return false;
    } catch (const std::exception&) {
      return false;
    }
  }
  return true;
}

// TYPE[:k=v,...]: exp, sine, hann, gauss, bh (or 0 .. 4); keys bf, gbf, gf, ws, we, t1 .. t4.
std::string ApplyWindow(const std::string& text, vp::WindowFunctionSetting& w) {
  if (text.empty()) return {};
  const auto colon = text.find(':');
  const std::string type = core::ToUpper(text.substr(0, colon));
  static const std::map<std::string, std::int16_t> kTypes{
      {"EXP", 0}, {"EXPONENTIAL", 0}, {"0", 0}, {"SINE", 1}, {"SINEBELL", 1}, {"1", 1}, {"HANN", 2}, {"2", 2},
      {"GAUSS", 3}, {"GAUSSIAN", 3}, {"3", 3}, {"BH", 4}, {"BLACKMAN-HARRIS", 4}, {"4", 4}};
  const auto found = kTypes.find(type);
  if (found == kTypes.end()) return "unknown window type " + text.substr(0, colon) + " (use exp, sine, hann, gauss, bh)";
  w.type = found->second;
  std::map<std::string, double> keys;
  if (colon != std::string::npos && !ParseKeys(text.substr(colon + 1), keys)) return "cannot read " + text;
  for (const auto& [key, value] : keys) {
    const auto v = static_cast<float>(value);
    if (key == "BF") w.BF = v;
    else if (key == "GBF") w.GBF = v;
    else if (key == "GF") w.GF = v;
    else if (key == "WS" && w.type >= 1) w.WS[w.type - 1] = v;
    else if (key == "WE" && (w.type == 1 || w.type == 2 || w.type == 4)) w.WE[w.type == 4 ? 2 : w.type - 1] = v;
    else if (key.size() == 2 && key[0] == 'T' && key[1] >= '1' && key[1] <= '4') {
      w.T[key[1] - '1'] = v;
      w.multiTrape[w.type] = 1;
    } else {
      return "window key " + key + " does not apply to " + text.substr(0, colon);
    }
  }
  return {};
}

// [forward:]order=..,points=..,start=..[,factor=..] or order=..,points=..,back=..[,check=1]
std::string ApplyLp(const std::string& text, bool backward, model::Spectrum2D& s, vp::SequenceSettings& settings,
                    model::Axis axis) {
  if (text.empty()) return {};
  std::string body = text;
  if (!backward && core::ToUpper(body.substr(0, 8)) == "FORWARD:") body = body.substr(8);
  std::map<std::string, double> keys;
  if (!ParseKeys(body, keys)) return "cannot read " + text;
  vp::LpSetting lp = settings.axis[axis].lp;
  for (const auto& [key, value] : keys) {
    const auto v = static_cast<std::int32_t>(std::lrint(value));
    if (key == "ORDER") lp.Order = v;
    else if (key == "POINTS") lp.Points = v;
    else if (key == "START" && !backward) lp.Start = v;
    else if (key == "BACK" && backward) lp.BackPoints = v;
    else if (key == "CHECK" && backward) lp.StabilityCheck = static_cast<std::int16_t>(v != 0);
    else if (key != "FACTOR" || backward) return "prediction key " + key + " does not apply to " + text;
  }
  if (backward) {
    const platform::Message problem = vp::CheckLpBack(lp, s.extras[axis].fidPoints);
    if (!problem.empty()) return problem.text;
    settings.axis[axis].lp = lp;
    settings.axis[axis].lp.BackwardOn = 1;
    return {};
  }
  // Prediction takes the place of the zero fill on its axis: --zf there gives the extension.
  const double factor = keys.count("FACTOR") ? keys["FACTOR"] : std::max(2, settings.axis[axis].zeroFill);
  if (!vp::SetForwardPrediction(s, settings, axis, lp, factor).ok()) return "the prediction factor makes the data too large";
  return {};
}

// A bar on stderr when it is a terminal.
class Bar final : public platform::Progress {
 public:
  explicit Bar(bool on) : on_(on) {}
  bool Step(std::int64_t done, std::int64_t total) override {
    if (!on_ || total <= 0) return true;
    const int width = 40, filled = static_cast<int>(width * done / total);
    if (filled != last_) {
      std::cerr << "\r[" << std::string(filled, '#') << std::string(width - filled, ' ') << "] " << caption_ << "   "
                << std::flush;
      last_ = filled;
    }
    return true;
  }
  void Caption(std::string_view text) {
    caption_ = std::string(text);
    last_ = -1;
  }
  void Done() {
    if (on_) std::cerr << "\r" << std::string(70, ' ') << "\r";
  }

 private:
  bool on_;
  int last_ = -1;
  std::string caption_;
};

int Fail(const std::string& what) { return Complain("process", "", what, kFailed); }

// The zero-fill factors F2,F1, each one of the allowed factors.
bool ParseZeroFill(const std::string& text, std::int32_t& f2, std::int32_t& f1) {
  double a = 0, b = 0;
  if (!ParsePair(text, a, b)) return false;
  f2 = static_cast<std::int32_t>(a);
  f1 = static_cast<std::int32_t>(b);
  return f2 == a && f1 == b && vp::IsZeroFillFactor(f2) && vp::IsZeroFillFactor(f1);
}

// The recipe: the default one, then what the options change in it.
int MakeRecipe(const ProcessOptions& o, document::Document& d, vp::SequenceSettings& settings, bool& withLp) {
  if (!o.mode.empty())
    d.words.pulseModeClass = model::ClassForMethod(d.words.pulseModeClass, o.mode == "pha");
  if (d.words.pulseModeClass == model::kUnknownClass)
    return Complain("process", o.in, "Select Processing Method (give --mode pha or --mode abs)", kRefused);
  std::int32_t zf2 = 1, zf1 = 1;
  if (!ParseZeroFill(o.zeroFill, zf2, zf1)) return Fail("--zf takes F2,F1 factors, each 1, 2, 4, 8 or 16 (e.g. 2,2)");
  const bool tuned = !o.windowF2.empty() || !o.windowF1.empty() || !o.phaseF2.empty() || !o.phaseF1.empty() ||
                     zf2 != 1 || zf1 != 1 || !(o.fidShift.empty() || o.fidShift == "auto") || !o.lpF1.empty() ||
                     !o.lpF2.empty() || !o.lpBackF1.empty() || !o.lpBackF2.empty();
  if (o.params == "vendor" && tuned)
    return Fail("--params vendor takes the stored recipe as it is: leave out --zf, --window-*, --phase-*, "
                "--fid-shift and --lp-*");
  settings = document::DefaultSettingsOf(d, o.params == "program" || tuned ? vp::RecipeSource::kProgram
                                                                          : vp::RecipeSource::kVendorWhenPresent);
  model::Spectrum2D& s = d.spectrum;
  settings.threads = o.threads;
  settings.f1Inverse = o.f1Inverse;
  if (auto e = ApplyWindow(o.windowF2, settings.axis[F2].window); !e.empty()) return Fail(e);
  if (auto e = ApplyWindow(o.windowF1, settings.axis[F1].window); !e.empty()) return Fail(e);
  for (auto [axis, factor] : {std::pair{F2, zf2}, std::pair{F1, zf1}})
    if (!vp::SetZeroFill(s, settings, axis, factor).ok()) return Fail("the zero fill makes the data too large");
  for (auto [text, axis] : {std::pair{&o.phaseF2, F2}, std::pair{&o.phaseF1, F1}})
    if (!text->empty() && !ParsePair(*text, settings.axis[axis].phase0, settings.axis[axis].phase1))
      return Fail("--phase-f2 and --phase-f1 take P0,P1 in degrees");
  if (!o.fidShift.empty() && o.fidShift != "auto") {
    std::size_t used = 0;
    try {
      s.fidShift = std::stoi(o.fidShift, &used);
    } catch (const std::exception&) {
      used = 0;
    }
    if (used != o.fidShift.size() || s.fidShift < 0 || s.fidShift >= s.extras[F2].fidPoints)
      return Fail("--fid-shift takes auto or a number of points from 0 to " + std::to_string(s.extras[F2].fidPoints - 1));
  }
  for (const auto& [text, backward, axis] :
       {std::tuple{&o.lpF1, false, F1}, {&o.lpF2, false, F2}, {&o.lpBackF1, true, F1}, {&o.lpBackF2, true, F2}})
    if (auto e = ApplyLp(*text, backward, s, settings, axis); !e.empty()) return Fail(e);
  withLp = !(o.lpF1.empty() && o.lpF2.empty() && o.lpBackF1.empty() && o.lpBackF2.empty());
  return kDone;
}

void Print(const ProcessOptions& o, const document::Document& d, const vp::SequenceSettings& settings,
           const document::Transformed& done, double seconds) {
  const model::Spectrum2D& s = d.spectrum;
  if (!o.json) {
    std::cout << "wrote " << o.out << " (" << s.axis[F2].Point << " x " << s.axis[F1].Point << ", FID shift "
              << done.fidShift << ", " << seconds << " s)\n";
    return;
  }
  nlohmann::json j;
  j["input"] = o.in;
  j["output"] = o.out;
  j["fid_points"] = {{"f2", s.extras[F2].fidPoints}, {"f1", s.extras[F1].fidPoints}};
  j["size"] = {{"f2", s.axis[F2].Point}, {"f1", s.axis[F1].Point}};
  j["class"] = d.words.pulseModeClass;
  j["mode"] = model::IsPhaseSensitive(d.words.pulseModeClass) ? "pha" : "abs";
  j["fid_shift"] = done.fidShift;
  j["zero_fill"] = {{"f2", settings.axis[F2].zeroFill}, {"f1", settings.axis[F1].zeroFill}};
  j["params"] = settings.vendor ? "vendor" : "program";
  if (settings.vendor) j["recipe"] = vp::VendorRecipeLines(*settings.vendor);
  if (settings.f2Only) j["pseudo_2d"] = s.vendor.series.empty() ? "F1 not transformed" : s.vendor.series;
  j["prediction_failures"] = done.predictionFailures;
  j["seconds"] = seconds;
  std::cout << j.dump(2) << "\n";
}

int RunProcess(const ProcessOptions& o) {
  const auto started = std::chrono::steady_clock::now();
  const formats::FileFormat& ver4 = *formats::FindFormat("Ver.4");
  if (std::string why = document::RefuseExtension(o.out, ver4); !why.empty()) return Complain("process", o.out, why, kFailed);
  CliPrompt prompt;
  int status = kDone;
  const auto d = ReadInput("process", o.in, prompt, status);
  if (!d) return status;
  if (document::DimensionOf(*d) != 2 || model::IsProcessed(d->words.dataTypeCode))
    return Complain("process", o.in, "not a raw 2D FID", kRefused);
  if (int refused = CheckOutput("process", o.out, *d); refused != kDone) return refused;
  vp::SequenceSettings settings;
  bool withLp = false;
  if (int refused = MakeRecipe(o, *d, settings, withLp); refused != kDone) return refused;

  Bar bar(isatty(STDERR_FILENO) != 0 && !o.json);
  const document::Transformed done =
      document::TransformDocument(*d, settings, withLp, bar, [&](std::string_view c) { bar.Caption(c); });
  bar.Done();
  if (!done.outcome.ok()) return Complain("process", o.in, TextOf(done.outcome.message), kRefused);
  std::string written;
  const platform::Outcome saved = document::WriteDataSet(*d, o.out, ver4, {}, written);
  if (!saved.ok()) return Complain("process", o.out, TextOf(saved.message), StatusOf(saved));
  Print(o, *d, settings, done, std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
  return kDone;
}

}  // namespace

void AddProcessCommand(CLI::App& app, int& status) {
  auto* command = app.add_subcommand("process", "Transform a raw 2D FID into a spectrum and save it as a Ver.4 file");
  auto o = std::make_shared<ProcessOptions>();
  command->footer(kStatusHelp);
  command->add_option("IN", o->in, "a raw 2D FID: a data file or a vendor's data folder")->required();
  command->add_option("-o,--output", o->out, "the Ver.4 file to write (.vlk2), never inside the input's data set")->required();
  command->add_option("--mode", o->mode, "phase-sensitive or absolute-value processing (default: by the pulse sequence)")
      ->check(CLI::IsMember({"pha", "abs"}));
  command->add_option("--zf", o->zeroFill, "zero-fill factors F2,F1, each 1, 2, 4, 8 or 16 (default 1,1)");
  command->add_option("--window-f2", o->windowF2, "F2 window TYPE[:k=v,...]: exp|sine|hann|gauss|bh; keys bf, gbf, gf, ws, we, t1..t4");
  command->add_option("--window-f1", o->windowF1, "F1 window, as --window-f2");
  command->add_option("--phase-f2", o->phaseF2, "F2 phase P0,P1 in degrees");
  command->add_option("--phase-f1", o->phaseF1, "F1 phase P0,P1 in degrees");
  command->add_option("--fid-shift", o->fidShift, "points dropped from the F2 FID start, or auto (the default search)");
  command->add_option("--lp-f1", o->lpF1, "forward prediction along F1: forward:order=..,points=..,start=..[,factor=..] (factor: the --zf of F1, at least 2)");
  command->add_option("--lp-f2", o->lpF2, "forward prediction along F2, as --lp-f1");
  command->add_option("--lp-back-f1", o->lpBackF1, "backward prediction along F1: order=..,points=..,back=..[,check=1]");
  command->add_option("--lp-back-f2", o->lpBackF2, "backward prediction along F2, as --lp-back-f1");
  command->add_flag("--f1-inverse", o->f1Inverse, "turn the F1 frequency sense round (\"F1 inverse\" of the read dialog)");
  command->add_option("--threads", o->threads, "threads for the transforms (default: every core)");
  command->add_option("--params", o->params,
                      "the recipe: vendor (the processing stored beside the data, the default when there is one "
                      "and no option below tunes the recipe) or program (the presets)")
      ->check(CLI::IsMember({"vendor", "program"}));
  command->add_flag("--json", o->json, "print a summary as JSON: sizes, class, shift used, time");
  command->callback([o, &status] { status = RunProcess(*o); });
}

}  // namespace velk::cli
