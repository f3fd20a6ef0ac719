// The entries of the format table for Varian folders: ".VARF" (fid) and ".VARD" (data, phasefile).
#include "formats/varian/entry.h"

#include "formats/read_result.h"
#include "formats/varian/data.h"
#include "formats/varian/messages.h"
#include "core/text.h"
#include "formats/varian/procpar.h"

namespace velk::formats::varian {
namespace {

namespace msg = messages;

// When the detector has no one to ask, an array that may be 2D is taken as 2D, the answer "Yes"
// that the command line also gives.
class TwoDimensionalAnswer final : public platform::Prompt {
 public:
  platform::Answer Ask(const platform::Message&) override { return platform::Answer::Yes; }
  std::optional<int> Choose(const std::string&, const std::vector<std::string>&) override { return std::nullopt; }
  std::optional<std::string> ChooseFile(const std::string&, const std::vector<platform::FileFilter>&, bool) override {
    return std::nullopt;
  }
};

model::ModeResult Probe(const model::DetectedFile& file, bool processed) {
  const auto parameters = FindVarianParameterFile(file.path);
  if (!parameters) return {-1, "ERR", false, "", msg::kNoParameters};
  TwoDimensionalAnswer answer;
  model::ModeResult result = RMV(*parameters, file.prompt ? *file.prompt : answer);
  result.processed = processed;
  return result;
}

// Reads the set's parameter file, then the data file with them.
template <class Record, class Reader>
platform::Outcome Read(const model::DetectedFile& file, Record& s, model::ReadContext& context, const char* tag,
                       Reader reader) {
  const auto path = FindVarianParameterFile(file.path);
  const auto parameters = path ? ReadVarianParameters(*path) : std::nullopt;
  if (!parameters) return FinishRead(Refused(msg::kTitle, path ? msg::kCannotRead : msg::kNoParameters), tag, file, context);
  return FinishRead(reader(*parameters, s), tag, file, context);
}

}  // namespace

model::ModeResult ReadModeVarianFid(const model::DetectedFile& file) { return Probe(file, false); }
model::ModeResult ReadModeVarianData(const model::DetectedFile& file) { return Probe(file, true); }

platform::Outcome ReadVarian1DFid(const model::DetectedFile& file, model::Spectrum1D& s, model::ReadContext& context) {
  return Read(file, s, context, msg::kFid1DTag, [&](const VarianParameters& p, model::Spectrum1D& r) {
    return ReadDataVarian(file.path, p, r);
  });
}

platform::Outcome ReadVarian1DData(const model::DetectedFile& file, model::Spectrum1D& s, model::ReadContext& context) {
  return Read(file, s, context, msg::kProc1DTag, [&](const VarianParameters& p, model::Spectrum1D& r) {
    return ReadDataVarianProc(file.path, p, r);
  });
}

platform::Outcome ReadVarian2DFid(const model::DetectedFile& file, model::Spectrum2D& s, model::ReadContext& context) {
  const int pulseModeClass = VarianClassOf(Probe(file, false).modeText);
  const platform::Outcome outcome =
      Read(file, s, context, msg::kData2DTag, [&](const VarianParameters& p, model::Spectrum2D& r) {
        return ReadDataVarian2D(file.path, p, pulseModeClass, r);
      });
  if (outcome.ok()) context.words = {context.words.dataTypeCode, pulseModeClass, 0};
  return outcome;
}

platform::Outcome ReadVarian2DData(const model::DetectedFile& file, model::Spectrum2D& s, model::ReadContext& context) {
  const platform::Outcome outcome =
      Read(file, s, context, msg::kData2DTag, [&](const VarianParameters& p, model::Spectrum2D& r) {
        return ReadDataVarianProc2D(file.path, p, r);
      });
  if (outcome.ok()) context.words.realOnly = core::ToUpper(file.path.filename().string()).ends_with("DATA") ? 0 : 1;
  return outcome;
}

}  // namespace velk::formats::varian
