#include "cli/read_input.h"

#include <algorithm>
#include <filesystem>

#include "formats/registry.h"
#include "platform/progress.h"

namespace velk::cli {

LoadedData LoadAnyFile(const std::string& path, platform::Prompt& prompt) {
  LoadedData data;
  const model::FormatTable formats = formats::Formats();
  data.detection = model::TypeDetector(path, formats);
  const model::Detection& d = data.detection;
  if (d.code < 0) {
    data.status = std::filesystem::exists(path) ? 1 : 2;
    data.error = d.reason;
    return data;
  }
  const auto entry = std::find_if(formats.begin(), formats.end(),
                                  [&](const model::FormatEntry& e) { return e.extensionWord == d.file.extensionWord; });
  platform::NoProgress progress;
  data.words = {d.code, d.pulseModeClass, 0};
  model::ReadContext context{prompt, progress, data.words, nullptr, &data.f2, &data.f1};
  platform::Outcome outcome{-1, {}};
  if (model::Dimension(d.code) == 2 && entry->read2D) {
    data.twoD = std::make_unique<model::Spectrum2D>();
    outcome = entry->read2D(d.file, *data.twoD, context);
  } else if (model::Dimension(d.code) == 1 && entry->read1D) {
    data.oneD = std::make_unique<model::Spectrum1D>();
    outcome = entry->read1D(d.file, *data.oneD, context);
  } else {
    outcome.message.text = "no reader for this kind of data yet";
  }
  if (!outcome.ok()) {
    data.status = outcome.code == 1 ? 1 : 2;
    data.error = outcome.message.title + (outcome.message.title.empty() ? "" : ": ") + outcome.message.text;
    data.twoD.reset();
    data.oneD.reset();
  }
  return data;
}

}  // namespace velk::cli
