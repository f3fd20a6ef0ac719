#include "document/read_data_set.h"

#include <algorithm>

namespace velk::document {
namespace fs = std::filesystem;

const model::FormatEntry* ReaderFor(model::FormatTable formats, const model::Detection& d) {
  const auto it = std::find_if(formats.begin(), formats.end(),
                               [&](const model::FormatEntry& e) { return e.extensionWord == d.file.extensionWord; });
  if (it == formats.end()) return nullptr;
  const bool readable = model::Dimension(d.code) == 2 ? it->read2D != nullptr : it->read1D != nullptr;
  return readable ? &*it : nullptr;
}

fs::path DataSetOf(const model::Detection& d) {
  const int format = model::FormatOf(d.code);
  if (format == model::kBruker) {
    const fs::path folder = d.file.path.parent_path();
    // pdata/N/2rr belongs to the experiment two folders up.
    if (folder.parent_path().filename() == "pdata") return folder.parent_path().parent_path();
    return folder;
  }
  if (format == model::kVarian) return d.file.path.parent_path();
  return d.file.path;
}

ReadResult ReadDataSet(const fs::path& path, platform::Prompt& prompt, const ReadOptions& options) {
  return ReadDetected(path, model::TypeDetector(path, options.formats, options.userExtensions, &prompt), prompt, options);
}

namespace {

// The caller's progress, noting whether it said quit: a read that was quit needs no message.
struct Watched final : platform::Progress {
  platform::Progress& inner;
  bool quit = false;
  explicit Watched(platform::Progress& p) : inner(p) {}
  bool Step(std::int64_t done, std::int64_t total) override {
    quit = quit || !inner.Step(done, total);
    return !quit;
  }
};

}  // namespace

ReadResult ReadDetected(const fs::path& path, const model::Detection& detection, platform::Prompt& prompt,
                        const ReadOptions& options) {
  ReadResult result;
  result.detection = detection;
  const model::Detection& d = result.detection;
  std::error_code error;
  if (d.code < 0) {
    const bool exists = fs::exists(path, error);
    result.outcome = {exists ? 1 : -1, {"", exists ? d.reason : "no such file or folder"}};
    return result;
  }
  const model::FormatEntry* entry = ReaderFor(options.formats, d);
  const int dimension = model::Dimension(d.code);
  if (!entry) {
    result.outcome = {1, {"", "no reader for this kind of data yet"}};
    return result;
  }
  auto document = std::make_unique<Document>();
  document->words = {d.code, d.pulseModeClass, 0};
  platform::NoProgress noProgress;
  Watched progress(options.progress ? *options.progress : noProgress);
  model::ReadContext context{prompt,   progress, document->words, options.log, &document->companionF2,
                             &document->companionF1, options.fidBaseline};
  if (!context.log) context.log = [](std::string_view, const std::string&) {};
  result.outcome = dimension == 2 ? entry->read2D(d.file, document->spectrum, context)
                                  : entry->read1D(d.file, document->oneD, context);
  if (!result.outcome.ok()) {
    result.outcome.code = result.outcome.code == 1 ? 1 : -1;
    result.quit = progress.quit;
    if (result.outcome.message.text.empty() && result.outcome.message.title.empty() && !result.quit)
      result.outcome.message.text = "the file could not be read";
    return result;
  }
  document->source = {path, d, DataSetOf(d)};
  result.document = std::move(document);
  return result;
}

}  // namespace velk::document
