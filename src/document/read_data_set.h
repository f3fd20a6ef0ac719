#pragma once
// The one way a data set comes in: the type detector names the format, the format's reader fills
// a fresh document, and the caller takes it only when everything went well.
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "document/document.h"
#include "platform/progress.h"
#include "platform/prompt.h"

namespace velk::document {

struct ReadOptions {
  model::FormatTable formats = formats::Formats();
  std::vector<model::UserExtension> userExtensions;
  platform::Progress* progress = nullptr;  // none: the read cannot be quit
  std::function<void(std::string_view action, const std::string& fileName)> log;  // the data log
  bool fidBaseline = false;                // "BaseLine Correction of FID" on reading
};

struct ReadResult {
  // 0 read; 1 the file was refused (not a data set we read, damaged data); -1 it cannot be read.
  platform::Outcome outcome;
  model::Detection detection;  // also when the read failed
  bool quit = false;           // the progress said quit: the outcome carries no message
  std::unique_ptr<Document> document;
};

ReadResult ReadDataSet(const std::filesystem::path& path, platform::Prompt& prompt, const ReadOptions& options = {});
// The same for a path the caller has already run the detector on (Open decides its path first).
ReadResult ReadDetected(const std::filesystem::path& path, const model::Detection& detection, platform::Prompt& prompt,
                        const ReadOptions& options = {});

// The reader entry of the detected extension word that reads the detected dimension; null when none.
const model::FormatEntry* ReaderFor(model::FormatTable formats, const model::Detection& detection);

// The folder or file that holds everything of the detected data set: the experiment folder of a
// Bruker set (also for a processed spectrum inside its pdata folder), the folder of a Varian set,
// or the file itself.
std::filesystem::path DataSetOf(const model::Detection& detection);

}  // namespace velk::document
