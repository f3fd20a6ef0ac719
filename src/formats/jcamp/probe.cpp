// The header probe of the type detector and the entries of the format table.
#include "core/bytes.h"
#include "core/text.h"
#include "formats/jcamp/header.h"
#include "formats/jcamp/messages.h"
#include "formats/jcamp/reader.h"
#include "formats/read_result.h"
#include "formats/text_lines.h"

namespace velk::formats::jcamp {
namespace {

namespace msg = messages;

// The probe reads the header only: a parameter section of several thousand lines ends far
// before this.
constexpr std::uint64_t kProbeBytes = 4 * 1024 * 1024;

struct Probe {
  JcampHeader header;
  std::string pulseProgram;
  int numDim = 0;
  std::array<std::string, 2> nuclei;
};

void Scan(TextCursor& cursor, Probe& probe) {
  ForEachJcampLabel(cursor, [&](const std::string& key, const JcampLabel& label, const std::string& line) {
    if (key == "##DATATABLE" || key == "##XYDATA" || key == "##PAGE") return false;
    if (TakeHeaderLabel(key, label, line, probe.header)) return true;
    const std::string text = JcampLabelText(line);
    if (key == "##$PULPROG" || (key == "##$EXMOD" && probe.pulseProgram.empty()))
      probe.pulseProgram = text.size() >= 2 && text.front() == '<' ? text.substr(1, text.size() - 2) : text;
    else if (key == "##NUMDIM") probe.numDim = static_cast<int>(JcampNumber(label, 0));
    else if (key == "##.NUCLEUS")
      for (std::size_t a = 0; a < 2 && a < label.values.size(); ++a) probe.nuclei[a] = label.values[a];
    return true;
  });
}

// A 2D spectrum is named by its class: homonuclear or not by the nuclei of the two axes, phase
// sensitive unless the acquisition scheme says otherwise.
std::string ClassName2D(const Probe& probe) {
  const bool hetero = !probe.nuclei[0].empty() && !probe.nuclei[1].empty() &&
                      core::ToUpper(probe.nuclei[0]) != core::ToUpper(probe.nuclei[1]);
  const std::string& scheme = probe.header.acquisitionScheme;
  const bool phase = !scheme.empty() && !(scheme.find("NOT") != std::string::npos) && scheme != "UNDEFINED";
  return std::string(phase ? "VPH_" : "V_") + (hetero ? "HETERO" : "HOMO");
}

}  // namespace

model::ModeResult ReadModeJCAMP(const std::filesystem::path& file) {
  model::ModeResult result;
  result.modeText = "ERR";
  const auto bytes = core::ReadFilePrefix(file.string(), kProbeBytes);
  if (!bytes) {
    result.reason = msg::kCannotOpen;
    return result;
  }
  TextCursor cursor{*bytes, 0};
  Probe probe;
  Scan(cursor, probe);
  const std::string& type = probe.header.dataType;
  if (!probe.header.labelSeen) {
    result.code = 1;
    result.reason = msg::kNoLabel;
    return result;
  }
  const bool fid = type.find("NMRFID") != std::string::npos;
  if (!fid && type.find("NMRSPECTRUM") == std::string::npos) {
    result.code = 1;
    result.reason = msg::kNotNmr;
    return result;
  }
  result.code = 0;
  result.processed = !fid;
  const std::string sequence = probe.pulseProgram.empty() ? probe.header.pulseSequence : probe.pulseProgram;
  if (probe.numDim == 2 || type.starts_with("NDNMR")) {
    if (fid) {
      result.code = 1;
      result.modeText = "ERR";
      result.reason = msg::kNot2D;
      return result;
    }
    result.modeText = ClassName2D(probe) + ":" + sequence;
    result.kind = result.modeText.find("HETERO") != std::string::npos ? "HETERO" : "HOMO";
  } else {
    result.modeText = "1D:" + sequence;
  }
  return result;
}

model::ModeResult ReadModeJcampEntry(const model::DetectedFile& file) { return ReadModeJCAMP(file.path); }

platform::Outcome ReadJcamp1DEntry(const model::DetectedFile& file, model::Spectrum1D& s, model::ReadContext& context) {
  return FinishRead(ReadDataJCAMP(file.path, s), msg::kReadTag, file, context);
}

platform::Outcome ReadJcamp2DEntry(const model::DetectedFile& file, model::Spectrum2D& s, model::ReadContext& context) {
  const platform::Outcome outcome = ReadDataJCAMP2D(file.path, s);
  if (outcome.ok()) {
    context.words.realOnly = 1;
    const std::string mode = ReadModeJCAMP(file.path).modeText;
    context.words.pulseModeClass = mode.starts_with("VPH_HOMO")     ? model::VPH_HOMO
                                   : mode.starts_with("V_HOMO")     ? model::V_HOMO
                                   : mode.starts_with("VPH_HETERO") ? model::VPH_HETERO
                                                                    : model::V_HETERO;
    model::RepairAfterRead2D(s, context.words.pulseModeClass);
  }
  return FinishRead(outcome, msg::kRead2DTag, file, context);
}

}  // namespace velk::formats::jcamp
