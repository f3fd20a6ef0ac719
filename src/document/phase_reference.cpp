#include "document/phase_reference.h"

#include <algorithm>

#include "document/read_data_set.h"
#include "model/data_type.h"

namespace velk::document {

std::vector<platform::FileFilter> PhaseReferenceFilters(int formatNumber) {
  std::vector<platform::FileFilter> filters{{"Alice Type(*.als)", "*.als"},
                                            {"GX/GSX/EX Type(*.gxd)", "*.gxd*"},
                                            {"JEOL Alpha(*.nmf)", "*.nmf*"},
                                            {"All File", "*.*"}};
  const std::size_t first = formatNumber == model::kAlice ? 0 : formatNumber == model::kJeolGx ? 1
                            : formatNumber == model::kAlpha ? 2 : 3;
  std::rotate(filters.begin(), filters.begin() + static_cast<std::ptrdiff_t>(first), filters.begin() + first + 1);
  return filters;
}

platform::Message NotPhaseData() {
  return {"File Error", "Invalid File, or\nnot Phase Data", platform::Buttons::RetryCancel, platform::Icon::Warning, true};
}

std::optional<PhaseReference> ReadPhaseReference(const std::filesystem::path& path, platform::Prompt& prompt,
                                                 std::int32_t maxPoints) {
  ReadResult read = ReadDataSet(path, prompt);
  if (!read.outcome.ok() || !read.document) return std::nullopt;
  const model::DataTypeCode code = read.document->words.dataTypeCode;
  if (!model::IsOneDimensional(code) || model::IsProcessed(code)) return std::nullopt;
  const model::Spectrum1D& fid = read.document->oneD;
  const auto points = static_cast<std::int32_t>(std::min({fid.re.size(), fid.im.size(),
                                                          static_cast<std::size_t>(std::max(fid.params.POINT, 0))}));
  if (points < 1 || points > maxPoints) return std::nullopt;
  return PhaseReference{{fid.re.begin(), fid.re.begin() + points}, {fid.im.begin(), fid.im.begin() + points}};
}

std::optional<PhaseReference> AskPhaseReference(platform::Prompt& prompt, int formatNumber, std::int32_t maxPoints) {
  for (;;) {
    const std::optional<std::string> file =
        prompt.ChooseFile("Read Data for Phase Correction", PhaseReferenceFilters(formatNumber), false);
    if (!file) return std::nullopt;
    if (auto reference = ReadPhaseReference(*file, prompt, maxPoints)) return reference;
    if (prompt.Ask(NotPhaseData()) != platform::Answer::Retry) return std::nullopt;
  }
}

}  // namespace velk::document
