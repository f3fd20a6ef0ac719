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

#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "cli/read_input.h"
#include "core/text.h"
#include "model/data_type.h"
#include "native/ver4_file.h"
#include "processing/fid_corrections.h"
#include "processing/sequence.h"

namespace velk::cli {
namespace {

using model::F1;
using model::F2;
namespace vp = processing;

struct ProcessOptions {
  std::string in, out, mode, zeroFill = "1,1", windowF2, windowF1, phaseF2, phaseF1, fidShift;
  std::string lpF1, lpF2, lpBackF1, lpBackF2;
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

// The windows a user gets for the class: sine bells over the whole FID, or a plain exponential.
void PresetWindows(vp::SequenceSettings& settings, int pulseModeClass) {
  const std::int16_t f2 = pulseModeClass == 0 || pulseModeClass == 3 ? 0 : 1;
  const std::int16_t f1 = pulseModeClass == 1 || pulseModeClass == 4 ? 1 : 0;
  for (auto [axis, type] : {std::pair{F1, f1}, std::pair{F2, f2}}) {
    vp::WindowFunctionSetting& w = settings.axis[axis].window;
    w.type = type;
    for (float& end : w.WE)
      if (end == 0) end = 100;
  }
}

// [forward:]order=..,points=..,start=..[,factor=..] or order=..,points=..,back=..[,check=1]
std::string ApplyLp(const std::string& text, bool backward, vp::AxisProcessing& a, model::Spectrum2D& s,
                    vp::SequenceSettings& settings, model::Axis axis) {
  if (text.empty()) return {};
  std::string body = text;
  if (!backward && core::ToUpper(body.substr(0, 8)) == "FORWARD:") body = body.substr(8);
  std::map<std::string, double> keys;
  if (!ParseKeys(body, keys)) return "cannot read " + text;
  vp::LpSetting& lp = a.lp;
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
    lp.BackwardOn = 1;
    return {};
  }
  // Prediction takes the place of the zero fill on its axis: --zf there gives the extension.
  const double factor = keys.count("FACTOR") ? keys["FACTOR"] : std::max(2, a.zeroFill);
  vp::CancelZeroFill(s, settings, axis);
  while (a.lpFactor < factor)
    if (!vp::LpFill(s, settings, axis).ok()) return "the prediction factor makes the data too large";
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

int Fail(const std::string& what) {
  std::cerr << "velk2d-cli process: " << what << "\n";
  return 1;
}

int RunProcess(const ProcessOptions& o) {
  const auto started = std::chrono::steady_clock::now();
  CliPrompt prompt;
  LoadedData data = LoadAnyFile(o.in, prompt);
  if (data.status != 0) {
    std::cerr << "velk2d-cli process: " << o.in << ": " << data.error << "\n";
    return data.status;
  }
  const model::DataTypeCode code = data.words.dataTypeCode;
  if (!data.twoD || model::IsProcessed(code)) return Fail(o.in + ": not a raw 2D FID");
  model::Spectrum2D& s = *data.twoD;
  int pulseModeClass = data.words.pulseModeClass;
  const bool hetero = pulseModeClass >= 2;
  if (o.mode == "pha" && !vp::IsPhaseSensitive(pulseModeClass)) pulseModeClass = hetero ? 3 : 0;
  if (o.mode == "abs" && vp::IsPhaseSensitive(pulseModeClass)) pulseModeClass = hetero ? 4 : 1;
  if (pulseModeClass < 0) return Fail(o.in + ": Select Processing Method (give --mode pha or --mode abs)");
  const int format = model::FormatOf(code);
  vp::SequenceSettings settings = vp::MakeSequenceSettings(s, pulseModeClass, format);
  settings.threads = o.threads;
  settings.f1Inverse = o.f1Inverse;
  settings.f2Only = !s.vendor.series.empty();
  PresetWindows(settings, pulseModeClass);
  if (auto e = ApplyWindow(o.windowF2, settings.axis[F2].window); !e.empty()) return Fail(e);
  if (auto e = ApplyWindow(o.windowF1, settings.axis[F1].window); !e.empty()) return Fail(e);
  double zf2 = 1, zf1 = 1;
  if (!ParsePair(o.zeroFill, zf2, zf1)) return Fail("--zf takes F2,F1, e.g. 2,2");
  for (auto [axis, factor] : {std::pair{F2, zf2}, std::pair{F1, zf1}})
    while (settings.axis[axis].zeroFill < factor)
      if (!vp::ZeroFill(s, settings, axis).ok()) return Fail("the zero fill makes the data too large");
  for (auto [text, axis] : {std::pair{&o.phaseF2, F2}, std::pair{&o.phaseF1, F1}})
    if (!text->empty() && !ParsePair(*text, settings.axis[axis].phase0, settings.axis[axis].phase1))
      return Fail("--phase-f2 and --phase-f1 take P0,P1 in degrees");
  if (o.fidShift.empty() || o.fidShift == "auto") {
    const int family = format == 4 || format == 8 ? vp::kBrukerFamily : format == 6 ? vp::kVarianFamily
                       : format <= 3 || format == 5 ? vp::kJeolFamily : vp::kPlainFamily;
    vp::FidShiftDefaults defaults;
    defaults.autoShift = true;
    vp::ChooseFidShift2D(s, defaults, family);
  } else {
    try {
      s.fidShift = std::stoi(o.fidShift);
    } catch (const std::exception&) {
      return Fail("--fid-shift takes a number of points or auto");
    }
  }
  for (const auto& [text, backward, axis] :
       {std::tuple{&o.lpF1, false, F1}, {&o.lpF2, false, F2}, {&o.lpBackF1, true, F1}, {&o.lpBackF2, true, F2}})
    if (auto e = ApplyLp(*text, backward, settings.axis[axis], s, settings, axis); !e.empty()) return Fail(e);
  const bool withLp = !(o.lpF1.empty() && o.lpF2.empty() && o.lpBackF1.empty() && o.lpBackF2.empty());

  Bar bar(isatty(STDERR_FILENO) != 0 && !o.json);
  std::vector<std::string> list;
  const vp::SequenceRun run{bar, list, [&](std::string_view c) { bar.Caption(c); }};
  const std::int32_t shift = s.fidShift;
  const vp::SequenceResult result = withLp ? vp::Execute2DFftWithLp(s, settings, run) : vp::Execute2DFft(s, settings, run);
  bar.Done();
  if (result.code != 0) return Fail(result.message.title + ": " + result.message.text);
  model::DataWords words = data.words;
  words.pulseModeClass = pulseModeClass;
  words.dataTypeCode = model::MakeTypeCode(2, true, format);
  const platform::Outcome written = native::WriteDataR4(o.out, s, nullptr, nullptr, words, native::SaveMode::AllPlanes, {false, nullptr});
  if (!written.ok()) return Fail(o.out + ": " + written.message.text);
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
  const int failures = static_cast<int>(std::count_if(list.begin(), list.end(), [](const std::string& l) {
    return l.find("(InvGJ)") != std::string::npos || l.find("(Root)") != std::string::npos;
  }));
  if (o.json) {
    nlohmann::json j;
    j["input"] = o.in;
    j["output"] = o.out;
    j["fid_points"] = {{"f2", s.extras[F2].fidPoints}, {"f1", s.extras[F1].fidPoints}};
    j["size"] = {{"f2", s.axis[F2].Point}, {"f1", s.axis[F1].Point}};
    j["class"] = pulseModeClass;
    j["mode"] = vp::IsPhaseSensitive(pulseModeClass) ? "pha" : "abs";
    j["fid_shift"] = shift;
    if (settings.f2Only) j["pseudo_2d"] = s.vendor.series;
    j["zero_fill"] = {{"f2", settings.axis[F2].zeroFill}, {"f1", settings.axis[F1].zeroFill}};
    j["prediction_failures"] = failures;
    j["seconds"] = seconds;
    std::cout << j.dump(2) << "\n";
  } else {
    std::cout << "wrote " << o.out << " (" << s.axis[F2].Point << " x " << s.axis[F1].Point << ", FID shift " << shift
              << ", " << seconds << " s)\n";
  }
  return 0;
}

}  // namespace

void AddProcessCommand(CLI::App& app, int& status) {
  auto* command = app.add_subcommand("process", "Transform a raw 2D FID into a spectrum and save it as a Ver.4 file");
  auto o = std::make_shared<ProcessOptions>();
  command->add_option("IN", o->in, "a raw 2D FID: a data file or a vendor's data folder")->required();
  command->add_option("-o,--output", o->out, "the Ver.4 file to write (.vlk2)")->required();
  command->add_option("--mode", o->mode, "phase-sensitive or absolute-value processing (default: by the pulse sequence)")
      ->check(CLI::IsMember({"pha", "abs"}));
  command->add_option("--zf", o->zeroFill, "zero-fill factors F2,F1 (powers of two; default 1,1)");
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
  command->add_flag("--json", o->json, "print a summary as JSON: sizes, class, shift used, time");
  command->callback([o, &status] { status = RunProcess(*o); });
}

}  // namespace velk::cli
