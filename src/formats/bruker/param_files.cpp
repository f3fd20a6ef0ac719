#include "formats/bruker/param_files.h"

#include <cmath>
#include <functional>
#include <limits>
#include <unordered_map>

#include "core/bytes.h"
#include "core/text.h"
#include "formats/text_lines.h"

namespace velk::formats::bruker {
namespace {

// Parameter files are small; a file beyond this is no parameter file.
constexpr std::uint64_t kParameterFileLimit = 16u << 20;

// A handler returns false when a value that must be a number is not one.
using Handler = std::function<bool(const ParameterValues&)>;
using HandlerTable = std::unordered_map<std::string, Handler>;

bool ToFloat(const std::string& text, float& out) {
  const auto value = ParseNumber(text);
  if (!value || !std::isfinite(*value)) return false;
  out = static_cast<float>(*value);
  return true;
}

bool ToDouble(const std::string& text, double& out) {
  const auto value = ParseNumber(text);
  if (!value || !std::isfinite(*value)) return false;
  out = *value;
  return true;
}

// Integers round half to even like every conversion of this program; a value beyond the type's
// range is no number of this key.
template <class Int>
bool ToInt(const std::string& text, Int& out) {
  const auto value = ParseNumber(text);
  if (!value) return false;
  const double rounded = std::nearbyint(*value);
  // The largest value plus one is a power of two, exact as a double: the upper bound is exclusive,
  // since the largest value itself rounds up to it (2^63 for a 64-bit integer) and would not fit.
  constexpr double kBeyond = static_cast<double>(std::numeric_limits<Int>::max() / 2 + 1) * 2.0;
  if (!(rounded >= static_cast<double>(std::numeric_limits<Int>::min()) && rounded < kBeyond)) return false;
  out = static_cast<Int>(rounded);
  return true;
}

template <class Int>
bool ToOptionalInt(const std::string& text, std::optional<Int>& out) {
  Int value{};
  if (!ToInt(text, value)) return false;
  out = value;
  return true;
}

std::int32_t DotPosition(const std::string& text) {
  const std::size_t at = text.find('.');
  return at == std::string::npos ? 0 : static_cast<std::int32_t>(at + 1);
}

void ToTable(const ParameterValues& values, Table31& table) {
  for (std::size_t i = 1; i < table.size(); ++i) {
    float v = 0;
    table[i] = ToFloat(values[i], v) ? v : 0.0f;
  }
}

Handler Text(std::string& field) {
  return [&field](const ParameterValues& v) { field = v[0]; return true; };
}
Handler UpperText(std::string& field) {
  return [&field](const ParameterValues& v) { field = core::ToUpper(v[0]); return true; };
}
Handler Float(float& field) {
  return [&field](const ParameterValues& v) { return ToFloat(v[0], field); };
}
Handler Double(double& field) {
  return [&field](const ParameterValues& v) { return ToDouble(v[0], field); };
}
template <class T>
Handler Integer(T& field) {
  return [&field](const ParameterValues& v) { return ToInt(v[0], field); };
}
template <class T>
Handler OptionalInt(std::optional<T>& field) {
  return [&field](const ParameterValues& v) { return ToOptionalInt(v[0], field); };
}
Handler Dot(std::int32_t& field) {
  return [&field](const ParameterValues& v) { field = DotPosition(v[0]); return true; };
}

// Runs every line of the file through the handlers (keys upper-cased); comment lines ("$$") go to
// onComment. Stops at the end of the file or at a key that begins with "ERROR".
int ForEachLine(const std::filesystem::path& file, const HandlerTable& handlers,
                const std::function<void(const std::string&)>& onComment = {}) {
  const auto bytes = core::ReadWholeFile(file.string(), kParameterFileLimit);
  if (!bytes) return -1;
  TextCursor cursor{*bytes};
  std::string key;
  ParameterValues values;
  while (true) {
    const std::string line = ReadTextLine(cursor);
    if (line.empty()) return 0;
    values.fill({});
    SplitParameterLine(line, cursor, key, values);
    const std::string upperKey = core::ToUpper(key);
    if (upperKey.starts_with("ERROR")) return 0;
    if (line.starts_with("$$")) {
      if (onComment) onComment(line);
      continue;
    }
    const auto handler = handlers.find(upperKey);
    if (handler != handlers.end() && !handler->second(values)) return -1;
  }
}

bool IsVendorOrigin(const std::string& upperOrigin) {
  for (const char* name : {"UXNMR", "BRUKER", "XWIN-NMR"})
    if (upperOrigin.find(name) != std::string::npos) return true;
  return false;
}

}  // namespace

int ParseAcquisitionFile(const std::filesystem::path& file, AcquisitionFile& a) {
  a = AcquisitionFile{};
  HandlerTable handlers{
      {"##ORIGIN", [&a](const ParameterValues& v) {
         a.origin = core::ToUpper(v[0]);
         a.originValid = IsVendorOrigin(a.origin);
         return true;
       }},
      {"##$PULPROG", Text(a.pulseProgram)},
      {"##$PROBHD", Text(a.probeHead)},
      {"##$GRDPROG", Text(a.gradientProgram)},
      {"##$INSTRUM", Text(a.instrument)},
      {"##$AQ_MOD", OptionalInt(a.aqMod)},
      {"##$BYTORDA", OptionalInt(a.byteOrder)},
      {"##$DTYPA", OptionalInt(a.dataType)},
      {"##$DE", Float(a.deadTime)},
      {"##$BF1", Double(a.bf1)},
      {"##$DS", Integer(a.dummyScans)},
      {"##$FW", Float(a.filterWidth)},
      {"##$RO", Float(a.spinRate)},
      {"##$SFO1", [&a](const ParameterValues& v) {
         if (!ToDouble(v[0], a.sfo1)) return false;
         a.offsetHz = static_cast<float>(a.sfo1 * 1e6 - a.bf1 * 1e6);
         return true;
       }},
      {"##$SW_H", Float(a.swHz)},
      {"##$SW", Double(a.swPpm)},
      {"##$TD", Integer(a.td)},
      {"##$NUC1", UpperText(a.nuc1)},
      {"##$NUCLEUS", UpperText(a.nucleus)},
      {"##$SOLVENT", Text(a.solvent)},
      {"##$DECNUC", Text(a.decoupledNucleus)},
      {"##$RG", Integer(a.receiverGain)},
      {"##$NS", Integer(a.scans)},
      {"##$TE", [&a](const ParameterValues& v) {
         float kelvin = 0;
         if (!ToFloat(v[0], kelvin)) return false;
         a.temperatureK = kelvin;
         return true;
       }},
      {"##$YMAX_A", Dot(a.ymaxDot)},
      {"##$YMIN_A", Dot(a.yminDot)},
      // A date beyond any clock is no date: the data file's time stands in for it.
      {"##$DATE", [&a](const ParameterValues& v) { if (!ToInt(v[0], a.date)) a.date = 0; return true; }},
      {"##$GRPDLY", Double(a.groupDelay)},
      {"##$DECIM", Integer(a.decimation)},
      {"##$DSPFVS", Integer(a.filterVersion)},
      {"##$FNMODE", Integer(a.fnMode)},
      {"##$FNTYPE", Integer(a.fnType)},
      {"##$P", [&a](const ParameterValues& v) { ToTable(v, a.pulses); a.hasPulses = true; return true; }},
      {"##$D", [&a](const ParameterValues& v) { ToTable(v, a.delays); a.hasDelays = true; return true; }},
      {"##$CNST", [&a](const ParameterValues& v) { ToTable(v, a.constants); return true; }},
      {"##$IN", [&a](const ParameterValues& v) { ToTable(v, a.increments); return true; }},
  };
  return ForEachLine(file, handlers);
}

int ParseProcessingFile(const std::filesystem::path& file, ProcessingFile& p) {
  p = ProcessingFile{};
  HandlerTable handlers{
      {"##ORIGIN", [&p](const ParameterValues& v) { p.originValid = IsVendorOrigin(core::ToUpper(v[0])); return true; }},
      {"##$SF", Double(p.sf)},
      {"##$BYTORDP", OptionalInt(p.byteOrder)},
      {"##$DTYPP", OptionalInt(p.dataType)},
      {"##$MAXI", Dot(p.maxiDot)},
      {"##$SW_P", Float(p.swHz)},
      {"##$SI", [&p](const ParameterValues& v) { return ToInt(v[0], p.si) && ToInt(v[0], p.recipe.si); }},
      {"##$OFFSET", Float(p.offsetPpm)},
      {"##$YMAX_P", Dot(p.ymaxDot)},
      {"##$YMIN_P", Dot(p.yminDot)},
      {"##$WDW", [&p](const ParameterValues& v) {
         int code = 0;
         if (!ToInt(v[0], code)) return false;
         p.recipe.window = code;
         static constexpr int kWindowOfCode[] = {-1, 0, 3, 1, 2};  // EM, GM, SINE, QSINE
         if (code >= 1 && code <= 4) p.window = kWindowOfCode[code];
         return true;
       }},
      {"##$XDIM", Integer(p.xdim)},
      {"##$PH_MOD", [&p](const ParameterValues& v) {
         if (!ToInt(v[0], p.phaseMode)) return false;
         p.recipe.phaseMode = p.phaseMode;
         return true;
       }},
      {"##$LB", Double(p.recipe.lb)},
      {"##$GB", Double(p.recipe.gb)},
      {"##$SSB", Double(p.recipe.ssb)},
      {"##$TM1", Double(p.recipe.tm1)},
      {"##$TM2", Double(p.recipe.tm2)},
      {"##$TDEFF", Integer(p.recipe.tdEff)},
      {"##$PHC0", Double(p.recipe.phc0)},
      {"##$PHC1", Double(p.recipe.phc1)},
      {"##$FCOR", Double(p.recipe.fcor)},
      {"##$ME_MOD", Integer(p.recipe.predictionMode)},
      {"##$NCOEF", Integer(p.recipe.ncoef)},
      {"##$LPBIN", Integer(p.recipe.lpbin)},
      {"##$MC2", Integer(p.mc2)},
      {"##$FT_MOD", Integer(p.recipe.ftMode)},
      {"##$NC_PROC", Integer(p.ncProc)},
  };
  return ForEachLine(file, handlers, [&p](const std::string& line) {
    if (p.dateComment.empty()) p.dateComment = core::Trim(line.substr(2));
  });
}

int ParseListing(const std::filesystem::path& file, std::vector<ListingValue>& out) {
  out.clear();
  const auto bytes = core::ReadWholeFile(file.string(), kParameterFileLimit);
  if (!bytes) return -1;
  TextCursor cursor{*bytes};
  int axis = 0;
  bool processing = false;
  while (true) {
    const std::string line = core::Trim(ReadTextLine(cursor));
    if (line.empty()) return 0;
    const std::string upper = core::ToUpper(line);
    if (upper.starts_with("PROCESSING PARAMETERS")) {
      processing = true;
      axis = 0;
      continue;
    }
    const std::size_t split = upper.find_first_of(" \t=");
    const std::string key = upper.substr(0, split);
    if (key == "F2" || key == "F1") {
      axis = key == "F2" ? 2 : 1;
      continue;
    }
    std::string rest = split == std::string::npos ? "" : core::Trim(line.substr(split + 1));
    if (!rest.empty() && rest.front() == '=') rest = core::Trim(rest.substr(1));
    out.push_back({key, rest.substr(0, rest.find_first_of(" \t")), axis, processing});
  }
}

}  // namespace velk::formats::bruker
