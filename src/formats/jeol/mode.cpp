// The header probe of the type detector and the table entry of the Delta format.
#include <cmath>

#include "core/bytes.h"
#include "core/text.h"
#include "formats/damage.h"
#include "formats/jeol/common.h"

namespace velk::formats::jeol {
namespace {

std::string Experiment(const std::vector<DeltaRecord>& records) {
  std::string name;
  for (const DeltaRecord& r : records)
    if (r.name == "EXPERIMENT") name = r.text;
  return name;
}

// The class of a 2D set from its own header: a complex F1 axis is phase sensitive, two different
// observe frequencies make it heteronuclear.
std::string ClassPrefix(const DeltaHeader& h, const std::string& experiment, bool& hetero) {
  const double fx = h.baseFrequency[kX], fy = h.baseFrequency[kY];
  hetero = fx != 0 && std::fabs(fx - fy) / fx >= 0.01;
  const bool phase = h.axisType[kY] == kAxisComplex;
  if (!phase) return hetero ? "V_HETERO" : "V_HOMO";
  if (!hetero) return "VPH_HOMO";
  return core::ToUpper(experiment).find("HMBC") != std::string::npos ? "VPH_HMBC" : "VPH_HETERO";
}

}  // namespace

model::ModeResult ReadModeDelta(const model::DetectedFile& file) {
  model::ModeResult result;
  const auto head = core::ReadFilePrefix(file.path.string(), kHeaderBytes);
  const auto header = head ? ReadDeltaHeader(*head) : std::nullopt;
  if (!header) {
    result.reason = !head ? "the file cannot be read"
                    : head->empty() ? kEmptyFile
                                    : "no JEOL Delta header (\"JEOL.NMR\"): the file " + core::FirstBytes(*head);
    return result;
  }
  std::error_code error;
  const std::uint64_t size = std::filesystem::file_size(file.path, error);
  if (error || !SectionsFit(*header, size)) {
    result.reason = "the file is no whole JEOL Delta file: " + SectionsFault(*header, error ? 0 : size);
    return result;
  }
  const auto bytes = core::ReadFilePrefix(file.path.string(), header->parameterStart + header->parameterLength);
  const auto records = bytes ? ReadDeltaRecords(*bytes, *header) : std::nullopt;
  if (!records) {
    result.reason = "the parameter section does not hold whole records";
    return result;
  }
  const std::string experiment = Experiment(*records);
  const std::uint8_t unit = header->unit[kX].type;
  result.processed = unit == kUnitHertz || unit == kUnitPpm;
  result.code = 0;
  if (header->dimensions != 2) {
    result.modeText = "1D " + experiment;
    return result;
  }
  bool hetero = false;
  result.modeText = ClassPrefix(*header, experiment, hetero) + ":" + experiment;
  result.kind = hetero ? "HETERO" : "HOMO";
  return result;
}

model::FormatEntry DeltaFormatEntry() {
  return {".ECP", model::kDelta, ReadModeDelta,
          [](const model::DetectedFile& f, model::Spectrum2D& s, model::ReadContext& c) {
            return ReadData2DDelta(f.path, s, c);
          },
          [](const model::DetectedFile& f, model::Spectrum1D& s, model::ReadContext& c) {
            return ReadDataDelta(f.path, s, c);
          }};
}

}  // namespace velk::formats::jeol
