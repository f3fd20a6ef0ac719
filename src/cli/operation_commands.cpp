// velk2d-cli phase, baseline, symmetrize, invert, exchange, reference: one operation of the
// spectrum tools on any 2D spectrum the program reads, saved as a Ver.4 file.
#include <cmath>
#include <functional>
#include <iostream>
#include <optional>
#include <sstream>

#include "cli/cli_io.h"
#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "core/folders.h"
#include "display/display_state.h"
#include "document/write_data_set.h"
#include "model/data_type.h"
#include "model/frequency_table.h"
#include "operations/auto_phase.h"
#include "operations/baseline.h"
#include "operations/phase.h"
#include "operations/rearrange.h"
#include "operations/reference.h"
#include "operations/symmetrize.h"

namespace velk::cli {
namespace {

using model::F1;
using model::F2;

// "a,b,c" into numbers; nothing when a part is not a number.
std::optional<std::vector<double>> ParseNumbers(const std::string& text) {
  std::vector<double> values;
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, ',');) {
    std::istringstream one(part);
    double v = 0;
    if (!(one >> v) || !(one >> std::ws).eof() || !std::isfinite(v)) return std::nullopt;
    values.push_back(v);
  }
  if (values.empty()) return std::nullopt;
  return values;
}

struct Files {
  std::string in, out;
};

// What an operation returns: a status, and a line for stdout.
struct Done {
  int status = kDone;
  std::string said;
};
using Operation = std::function<Done(document::Document&)>;

// Reads IN, refuses anything but a 2D spectrum, runs the operation, writes OUT as Ver.4.
int Run(const char* command, const Files& f, const Operation& operate) {
  const formats::FileFormat& ver4 = *formats::FindFormat("Ver.4");
  if (std::string why = document::RefuseExtension(f.out, ver4); !why.empty())
    return Complain(command, f.out, why, kFailed);
  CliPrompt prompt;
  int status = kDone;
  const auto d = ReadInput(command, f.in, prompt, status);
  if (!d) return status;
  if (document::DimensionOf(*d) != 2 || !model::IsProcessed(d->words.dataTypeCode))
    return Complain(command, f.in, "not a 2D spectrum (a raw FID is transformed by process first)", kRefused);
  if (int refused = CheckOutput(command, f.out, *d); refused != kDone) return refused;
  const Done done = operate(*d);
  if (done.status != kDone) return Complain(command, f.in, done.said, done.status);
  std::string written;
  const platform::Outcome saved = document::WriteDataSet(*d, f.out, ver4, {}, written);
  if (!saved.ok()) return Complain(command, f.out, TextOf(saved.message), StatusOf(saved));
  std::cout << "wrote " << f.out << (done.said.empty() ? "" : " (" + done.said + ")") << "\n";
  return kDone;
}

CLI::App* Add(CLI::App& app, const char* name, const char* what, Files& f) {
  auto* command = app.add_subcommand(name, what);
  command->footer(kStatusHelp);
  command->add_option("IN", f.in, "a 2D spectrum: a data file or a vendor's data folder")->required();
  command->add_option("-o,--output", f.out, "the Ver.4 file to write (.vlk2), never inside the input's data set")
      ->required();
  return command;
}

std::string PhaseText(const char* axis, const operations::PhaseValues& p) {
  std::ostringstream text;
  text << axis << " " << p.Phase0 << "," << p.Phase1 << " about point " << p.pivot;
  return text.str();
}

struct PhaseOptions {
  Files files;
  std::string f1, f2;
  bool automatic = false;
};

Done Phase(document::Document& d, const PhaseOptions& o) {
  model::Spectrum2D& s = d.spectrum;
  if (!model::IsPhaseSensitive(d.words.pulseModeClass) || s.RI.data.empty() || s.II.data.empty())
    return {kRefused, "not a phase-sensitive spectrum with four quadrants"};
  std::array<operations::PhaseValues, 2> p{};
  for (model::Axis a : {F1, F2}) p[a].pivot = operations::CentrePoint(s.axis[a].Point);
  for (auto [text, a] : {std::pair{&o.f1, F1}, std::pair{&o.f2, F2}}) {
    if (text->empty()) continue;
    const auto v = ParseNumbers(*text);
    if (!v || v->size() < 2 || v->size() > 3) return {kFailed, "phase values are P0,P1[,PIVOT]: " + *text};
    p[a] = {static_cast<float>((*v)[0]), static_cast<float>((*v)[1]),
            v->size() == 3 ? static_cast<std::int32_t>(std::lrint((*v)[2])) : p[a].pivot};
  }
  if (o.automatic) {
    const operations::AutoPhaseResult found = operations::FindAutoPhase(s, p[F1].pivot, p[F2].pivot);
    if (found.peaksUsed == 0) return {kRefused, "no peaks to phase on"};
    p = {found.f1, found.f2};
  }
  operations::RotatePhaseF2(operations::BackUpQuadrants(s), s, p[F2]);
  operations::RotatePhaseF1(operations::BackUpQuadrants(s), s, p[F1]);
  return {kDone, PhaseText("F2", p[F2]) + "; " + PhaseText("F1", p[F1])};
}

struct BaselineOptions {
  Files files;
  std::string axis, points;
  int ave = 5;
};

Done Baseline(document::Document& d, const BaselineOptions& o) {
  model::Spectrum2D& s = d.spectrum;
  const model::Axis axis = o.axis == "f1" ? F1 : F2;
  const auto ppm = ParseNumbers(o.points);
  if (!ppm) return {kFailed, "points are PPM,PPM,...: " + o.points};
  std::vector<operations::BasePoint> points;
  const std::vector<float>& positions = axis == F1 ? s.ppmF1 : s.ppmF2;
  for (double v : *ppm)
    if (!operations::InsertBasePoint(points, display::PpmToPoint(positions, s.axis[axis].Point, static_cast<float>(v))))
      return {kFailed, "at most 1000 points"};
  const model::Plane backup = s.RR;
  if (axis == F1) operations::ApplyBaseF1(backup, s, points, o.ave);
  else operations::ApplyBaseF2(backup, s, points, o.ave);
  s.Modified = 1;
  return {kDone, std::to_string(points.size()) + " points along " + (axis == F1 ? "F1" : "F2")};
}

struct ReferenceOptions {
  Files files;
  std::string f1, f2, center, instrument;
};

// "PPM@PPM": the point now at the second shift is to read the first.
bool ParseAt(const std::string& text, double& wanted, double& at) {
  const auto sign = text.find('@');
  if (sign == std::string::npos) return false;
  const auto a = ParseNumbers(text.substr(0, sign)), b = ParseNumbers(text.substr(sign + 1));
  if (!a || !b || a->size() != 1 || b->size() != 1) return false;
  wanted = a->front();
  at = b->front();
  return true;
}

// "OB_0ppm.frq" from the user's settings folder, else the installed copy.
model::InstrumentFrequencyTable Instruments() {
  std::error_code error;
  const core::Folders folders = core::DefaultFolders(std::filesystem::read_symlink("/proc/self/exe", error));
  model::InstrumentFrequencyTable table;
  for (const auto& folder : {folders.data, folders.config})
    if (std::filesystem::exists(folder / "OB_0ppm.frq", error))
      model::ReadInstrumentFrequencies(folder / "OB_0ppm.frq", table);
  return table;
}

Done Reference(document::Document& d, const ReferenceOptions& o) {
  model::Spectrum2D& s = d.spectrum;
  operations::ReferenceValues values = operations::CurrentReference(s);
  for (auto [text, a] : {std::pair{&o.f1, F1}, std::pair{&o.f2, F2}}) {
    if (text->empty()) continue;
    double wanted = 0, at = 0;
    if (!ParseAt(*text, wanted, at)) return {kFailed, "a reference is PPM@PPM: " + *text};
    const std::vector<float>& positions = a == F1 ? s.ppmF1 : s.ppmF2;
    values[a] = {static_cast<float>(wanted), display::PpmToPoint(positions, s.axis[a].Point, static_cast<float>(at))};
  }
  operations::ApplyReference(s, d.view, values);
  if (!o.center.empty()) {
    const model::Axis a = o.center == "f1" ? F1 : F2;
    const platform::Outcome centred =
        operations::SetReferenceByCenter(s, d.view, a, a == F1 ? d.companionF1 : d.companionF2);
    if (!centred.ok()) return {kRefused, "the data set holds no 1D spectrum of that axis with its frequencies"};
  }
  if (!o.instrument.empty()) {
    const auto zero = model::ZeroPpmFrequency(Instruments(), o.instrument);
    if (!zero) return {kRefused, "no instrument " + o.instrument + " in OB_0ppm.frq"};
    const platform::Outcome set = operations::SetReferenceByInstrument(s, d.view, d.words.pulseModeClass, zero, zero);
    if (!set.ok()) return {kRefused, TextOf(set.message)};
  }
  std::ostringstream text;
  text << "F2 " << s.axis[F2].Reference << " ppm at point " << s.axis[F2].RefPoint << "; F1 " << s.axis[F1].Reference
       << " ppm at point " << s.axis[F1].RefPoint;
  return {kDone, text.str()};
}

}  // namespace

void AddOperationCommands(CLI::App& app, int& status) {
  auto phase = std::make_shared<PhaseOptions>();
  auto* c = Add(app, "phase", "Phase a phase-sensitive 2D spectrum on both axes, by values or found from the spectrum",
                phase->files);
  c->add_option("--f1", phase->f1, "F1 zero and first order in degrees, and the pivot point (default the middle): "
                                   "P0,P1[,PIVOT]");
  c->add_option("--f2", phase->f2, "F2 phase, as --f1");
  c->add_flag("--auto", phase->automatic,
              "find both axes' phases from the spectrum (about the pivots given with --f1/--f2, else the middle)");
  c->callback([phase, &status] {
    status = Run("phase", phase->files, [&](document::Document& d) { return Phase(d, *phase); });
  });

  auto base = std::make_shared<BaselineOptions>();
  c = Add(app, "baseline", "Correct the baseline of the real plane along one axis through signal-free points",
          base->files);
  c->add_option("--axis", base->axis, "the axis of the traces corrected")
      ->required()
      ->check(CLI::IsMember({"f1", "f2"}));
  c->add_option("--points", base->points, "signal-free places of that axis in ppm: PPM,PPM,...")->required();
  c->add_option("--ave", base->ave, "points averaged at each place (\"Ave.Point\", 1 to 20, default 5)")
      ->check(CLI::Range(1, 20));
  c->callback([base, &status] {
    status = Run("baseline", base->files, [&](document::Document& d) { return Baseline(d, *base); });
  });

  auto sym = std::make_shared<std::pair<Files, float>>();
  c = Add(app, "symmetrize", "Symmetrize a homonuclear 2D spectrum across its diagonal", sym->first);
  c->add_option("--shift", sym->second, "the diagonal moved by this many F2 points (-10 to 10, default 0)")
      ->check(CLI::Range(-10.0, 10.0));
  c->callback([sym, &status] {
    status = Run("symmetrize", sym->first, [&](document::Document& d) -> Done {
      const int cls = d.words.pulseModeClass;
      if (!model::IsHomonuclear(cls)) return {kRefused, "not a homonuclear spectrum"};
      operations::SymmetrizeData(model::Plane(d.spectrum.RR), d.spectrum, cls, sym->second);
      d.spectrum.Modified = 1;
      return {};
    });
  });

  auto inv = std::make_shared<std::tuple<Files, bool, bool>>();
  c = Add(app, "invert", "Mirror the chemical shift axes of a 2D spectrum (F1, F2 or both)", std::get<0>(*inv));
  c->add_flag("--f1", std::get<1>(*inv), "mirror the F1 axis");
  c->add_flag("--f2", std::get<2>(*inv), "mirror the F2 axis");
  c->callback([inv, &status] {
    status = Run("invert", std::get<0>(*inv), [&](document::Document& d) -> Done {
      if (!std::get<1>(*inv) && !std::get<2>(*inv)) return {kFailed, "say --f1, --f2 or both"};
      operations::InvertSpectrum(d.spectrum, std::get<1>(*inv), std::get<2>(*inv));
      return {};
    });
  });

  auto ex = std::make_shared<Files>();
  c = Add(app, "exchange", "Exchange the F1 and F2 axes of a heteronuclear 2D spectrum", *ex);
  c->callback([ex, &status] {
    status = Run("exchange", *ex, [&](document::Document& d) -> Done {
      if (!operations::CanExchange(d.words.pulseModeClass))
        return {kRefused, "a homonuclear spectrum is not exchanged"};
      const platform::Outcome done = operations::ExchangeF1F2(d.spectrum);
      if (!done.ok()) return {kFailed, TextOf(done.message)};
      std::swap(d.companionF1, d.companionF2);
      return {};
    });
  });

  auto ref = std::make_shared<ReferenceOptions>();
  c = Add(app, "reference", "Set the chemical shift reference of a 2D spectrum", ref->files);
  c->add_option("--f2", ref->f2, "the F2 point now at the second shift reads the first: PPM@PPM");
  c->add_option("--f1", ref->f1, "the same on F1");
  c->add_option("--center", ref->center, "the axis's centre takes the shift of its 1D spectrum's centre frequency")
      ->check(CLI::IsMember({"f1", "f2"}));
  c->add_option("--instrument", ref->instrument, "the 0 ppm frequency of this instrument of OB_0ppm.frq, both axes");
  c->callback([ref, &status] {
    status = Run("reference", ref->files, [&](document::Document& d) { return Reference(d, *ref); });
  });
}

}  // namespace velk::cli
