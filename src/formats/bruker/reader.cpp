// The call orders of the Bruker reader: which routine runs on which file for raw and processed,
// 1D and 2D data. A load fills a fresh record, which replaces the session's only on success.
#include <chrono>
#include <memory>

#include "core/text.h"
#include "formats/bruker/bruker.h"
#include "formats/bruker/messages.h"
#include "formats/bruker/routines.h"

namespace velk::formats::bruker {
namespace {

using model::DetectedFile;
using platform::Outcome;

bool IsClass(int c) { return c >= model::VPH_HOMO && c <= model::V_HETERO; }

std::string ClassWord(int c) {
  static constexpr const char* kWords[] = {"VPH_HOMO:", "V_HOMO:", "VPH_HMBC:", "VPH_HETERO:", "V_HETERO:"};
  return IsClass(c) ? kWords[c] : "V";
}

// A raw 2D set is read as phase-sensitive unless F1 was acquired as QF (absolute value).
int PreselectedClass(const std::string& kind, int fnMode) {
  const bool absolute = fnMode == model::kQuadQF;
  if (kind == "HETERO") return absolute ? model::V_HETERO : model::VPH_HETERO;
  return absolute ? model::V_HOMO : model::VPH_HOMO;
}

int FnModeOf(const fs::path& acqu2s) {
  AcquisitionFile a;
  return ParseAcquisitionFile(acqu2s, a) == 0 ? a.fnMode : model::kQuadUndefined;
}

// Why the raw set was sampled non-uniformly (the schedule beside it, or FnTYPE 2), or nothing.
std::string NonUniformSampling(const fs::path& experiment) {
  if (HasLength(Sibling(experiment, "nuslist"))) return "a nuslist beside the ser file";
  for (const char* name : {"acqus", "acqu2s"}) {
    AcquisitionFile a;
    if (ParseAcquisitionFile(Sibling(experiment, name), a) == 0 && a.fnType == 2)
      return std::string("FnTYPE 2 in ") + name;
  }
  return {};
}

// Processed data keep their acquisition files one or two folders up (exp/pdata/1).
std::vector<fs::path> AcquisitionFolders(const fs::path& folder) {
  return {folder, folder.parent_path(), folder.parent_path().parent_path()};
}

std::string Name(const fs::path& file) { return core::ToUpper(file.filename().string()); }

Outcome ParameterFailure(int code, const LoadState& state, bool twoD) {
  if (code < 0) return {-1, messages::NotVendorFile(state.logTag.empty() ? "##ORIGIN" : state.logTag)};
  return {1, twoD ? messages::Invalid2DData() : messages::InvalidData()};
}

// The title file: its first line is the title, and its text, without the blank lines the
// spectrometer's software pads it with, the comment.
void SetTitle(const fs::path& folder, std::string& comment, std::string& title) {
  std::string text = ReadTitleFile(Sibling(folder, "title"));
  title = text.substr(0, text.find("\r\n"));
  while (!text.empty() && std::string_view("\r\n \t").find(text.back()) != std::string_view::npos) text.pop_back();
  comment = text;
}

// A set without a date of its own takes the data file's time.
void DateFallback(const fs::path& file, std::string& date) {
  std::error_code error;
  const auto written = fs::last_write_time(file, error);
  if (!date.empty() || error) return;
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(
      std::chrono::file_clock::to_sys(written).time_since_epoch());
  date = DateFromSeconds(seconds.count());
}

Outcome ReadRaw2D(const DetectedFile& file, model::Spectrum2D& s, LoadState& state, int presetClass) {
  const fs::path acqus = Sibling(file.folder, "acqus"), acqu2s = Sibling(file.folder, "acqu2s");
  if (const std::string why = NonUniformSampling(file.folder); !why.empty())
    return {1, messages::NonUniformSampling(why)};
  state.pulseModeClass = presetClass;
  if (!IsClass(presetClass)) {
    const model::ModeResult probe = RMBru(acqus, acqu2s);
    if (probe.code != 0) return {probe.code, messages::NotVendorFile("RMBru")};
    state.pulseModeClass = PreselectedClass(probe.kind, FnModeOf(acqu2s));
  }
  if (const int code = RPBru(acqus, acqu2s, s, state); code != 0) return ParameterFailure(code, state, true);
  s.vendor.recipe = ReadVendorRecipe(file.folder);
  s.vendor.series = SeriesOf(file.folder, s.params.EXMOD);
  if (s.vendor.recipe) SetTitle(s.vendor.recipe->source, s.comment, s.params.COMNT);
  return {};
}

Outcome ReadProcessed2D(const DetectedFile& file, model::Spectrum2D& s, LoadState& state, int presetClass,
                        model::ReadContext& context, bool& realOnly) {
  const fs::path& folder = file.folder;
  state.pulseModeClass = presetClass;
  if (!IsClass(presetClass)) {
    const model::ModeResult probe = RMBruP(Sibling(folder, "procs"), Sibling(folder, "proc2s"));
    if (probe.code != 0) return {probe.code, messages::NotVendorFile("RMBruP")};
    for (int c = 0; c <= model::V_HETERO; ++c)
      if (probe.modeText == ClassWord(c)) state.pulseModeClass = c;
  }
  if (const int code = RPBruP(Sibling(folder, "procs"), Sibling(folder, "proc2s"), s, state); code != 0)
    return ParameterFailure(code, state, true);
  for (const fs::path& up : AcquisitionFolders(folder))
    if (HasLength(Sibling(up, "acqus")) && RPBruAc(Sibling(up, "acqus"), Sibling(up, "acqu2s"), s, state) == 0) break;
  if (HasLength(Sibling(folder, "parm.txt"))) RPBruTxt(Sibling(folder, "parm.txt"), s, state);
  SetTitle(folder, s.comment, s.params.COMNT);
  std::vector<fs::path> quadrants;
  if (state.pulseModeClass == model::VPH_HOMO || state.pulseModeClass == model::VPH_HETERO)
    for (const char* name : {"2ri", "2ir", "2ii"})
      if (HasLength(Sibling(folder, name))) quadrants.push_back(Sibling(folder, name));
  // A quadrant shorter than 2rr is refused before any plane is written.
  std::error_code error;
  for (const fs::path& q : quadrants)
    if (fs::file_size(q, error) < fs::file_size(file.path, error)) return {1, messages::ShortFile(q.filename().string())};
  if (Outcome o = RDBruP(file.path, s, state, context); !o.ok()) return o;
  for (const fs::path& q : quadrants)
    if (Outcome o = RDBruP(q, s, state, context); !o.ok()) return o;
  realOnly = quadrants.size() < 3;
  return {};
}

Outcome ReadRaw1D(const DetectedFile& file, model::Spectrum1D& s, LoadState& state, model::ReadContext& context) {
  if (const int code = ReadParaBru(Sibling(file.folder, "acqus"), s, state); code != 0)
    return ParameterFailure(code, state, false);
  if (s.texts.instrument.empty()) s.texts.instrument = "Bruker";
  return ReadDataBru(file.path, s, state, context);
}

Outcome ReadProcessed1D(const DetectedFile& file, model::Spectrum1D& s, LoadState& state,
                        model::ReadContext& context) {
  const fs::path& folder = file.folder;
  const fs::path procs = Sibling(folder, "procs");
  if (HasLength(procs)) {
    if (RMBP(procs, state).code != 0) return {-1, messages::NotVendorFile("RMBP")};
    if (const int code = ReadParaBruProc(procs, s, state); code != 0) return ParameterFailure(code, state, false);
    for (const fs::path& up : AcquisitionFolders(folder))
      if (HasLength(Sibling(up, "acqus")) && ReadParaBruAQ(Sibling(up, "acqus"), s, state) == 0) break;
  } else {
    // Without procs: the acquisition file, then the printed listing for what it lacks.
    for (const char* name : {"acqu", "acqus"})
      if (HasLength(Sibling(folder, name))) ReadParaBru(Sibling(folder, name), s, state);
    if (ReadParaBruTxt(Sibling(folder, "parm.txt"), s, state, 1) != 0) return {1, messages::InvalidData()};
    state.ByteOrderCode = 1;
    state.PointsInFile1D = s.params.POINT;
    if (AllocateSpectrum1D(s, s.params.POINT) != 0) return {1, messages::DataSizeTooLarge()};
  }
  SetTitle(folder, s.comment, s.params.COMNT);
  if (Outcome o = ReadDataBruProc(file.path, "1R", s, state, context); !o.ok()) return o;
  if (const fs::path imaginary = Sibling(folder, "1i"); HasLength(imaginary))
    return ReadDataBruProc(imaginary, "1I", s, state, context);
  return {};
}

}  // namespace

model::ModeResult ReadModeBruker(const DetectedFile& file) {
  const std::string name = Name(file.path);
  const fs::path& folder = file.folder;
  if (name == "SER") {
    model::ModeResult r = RMBru(Sibling(folder, "acqus"), Sibling(folder, "acqu2s"));
    if (r.code == 0) r.modeText = ClassWord(PreselectedClass(r.kind, FnModeOf(Sibling(folder, "acqu2s")))) + r.modeText;
    return r;
  }
  AcquisitionFile a;
  if (name.starts_with("2")) {
    model::ModeResult r = RMBruP(Sibling(folder, "procs"), Sibling(folder, "proc2s"));
    for (const fs::path& up : AcquisitionFolders(folder))
      if (ParseAcquisitionFile(Sibling(up, "acqus"), a) == 0) break;
    r.modeText += a.pulseProgram;
    return r;
  }
  model::ModeResult r;
  if (name == "FID") {
    if (ParseAcquisitionFile(Sibling(folder, "acqus"), a) != 0 || !a.originValid) {
      r.reason = "acqus is missing or has no Bruker ##ORIGIN";
      return r;
    }
  } else {
    LoadState state;
    if (HasLength(Sibling(folder, "procs")) && RMBP(Sibling(folder, "procs"), state).code != 0) {
      r.reason = "procs has no Bruker ##ORIGIN";
      return r;
    }
    for (const fs::path& up : AcquisitionFolders(folder))
      if (ParseAcquisitionFile(Sibling(up, "acqus"), a) == 0) break;
    r.processed = true;
  }
  r.code = 0;
  r.modeText = "1D:" + a.pulseProgram;
  return r;
}

Outcome ReadBruker2D(const DetectedFile& file, model::Spectrum2D& s, model::ReadContext& context) {
  auto fresh = std::make_unique<model::Spectrum2D>();
  LendPlanes(s, *fresh);
  LoadState state;
  bool realOnly = false;
  const int preset = context.words.pulseModeClass;
  Outcome outcome;
  if (Name(file.path) == "SER") {
    outcome = ReadRaw2D(file, *fresh, state, preset);
    if (outcome.ok()) outcome = RDBru(file.path, *fresh, state, context);
  } else {
    outcome = ReadProcessed2D(file, *fresh, state, preset, context, realOnly);
  }
  if (!outcome.ok()) {
    LendPlanes(*fresh, s);
    return outcome;
  }
  fresh->texts.fileName = file.path.string();
  fresh->texts.originalFileName = file.path.string();
  fresh->texts.dataTypeText = "Bruker";
  DateFallback(file.path, fresh->params.DATIM);
  model::RebuildPpmTables(*fresh);
  model::RepairAfterRead2D(*fresh, state.pulseModeClass);
  context.words.pulseModeClass = state.pulseModeClass;
  context.words.realOnly = realOnly ? 1 : 0;
  s = std::move(*fresh);
  if (context.log) context.log("Read", file.path.string());
  return {};
}

Outcome ReadBruker1D(const DetectedFile& file, model::Spectrum1D& s, model::ReadContext& context) {
  auto fresh = std::make_unique<model::Spectrum1D>();
  LoadState state;
  const Outcome outcome = Name(file.path) == "FID" ? ReadRaw1D(file, *fresh, state, context)
                                                   : ReadProcessed1D(file, *fresh, state, context);
  if (!outcome.ok()) return outcome;
  fresh->texts.fileName = file.path.string();
  fresh->texts.originalFileName = file.path.string();
  fresh->texts.dataTypeText = "Bruker";
  DateFallback(file.path, fresh->params.DATIM);
  s = std::move(*fresh);
  if (context.log) context.log("Read", file.path.string());
  return {};
}

}  // namespace velk::formats::bruker
