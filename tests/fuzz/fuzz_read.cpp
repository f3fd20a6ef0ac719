#include "fuzz/fuzz_read.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>

#include "formats/registry.h"
#include "model/spectrum.h"
#include "model/type_detector.h"
#include "native/ver4_file.h"
#include "platform/progress.h"
#include "platform/prompt.h"

namespace velk::fuzz {
namespace {

namespace fs = std::filesystem;

// Questions a reader asks get no answer, as on a command line without flags.
class NoAnswers final : public platform::Prompt {
 public:
  platform::Answer Ask(const platform::Message&) override { return platform::Answer::Cancel; }
  std::optional<int> Choose(const std::string&, const std::vector<std::string>&) override { return std::nullopt; }
  std::optional<std::string> ChooseFile(const std::string&, const std::vector<platform::FileFilter>&, bool) override {
    return std::nullopt;
  }
};

const fs::path& Folder() {
  static const fs::path folder = [] {
    fs::path f = fs::temp_directory_path() / ("velk-fuzz-" + std::to_string(getpid()));
    fs::create_directories(f);
    return f;
  }();
  return folder;
}

}  // namespace

void ReadBytesAs(const std::string& name, const std::uint8_t* data, std::size_t size,
                 std::initializer_list<const char*> companions, const std::string& companionFolder,
                 const std::string& opened) {
  static bool copied = false;
  if (!copied) {
    for (const char* companion : companions)
      fs::copy_file(fs::path(companionFolder) / companion, Folder() / companion, fs::copy_options::overwrite_existing);
    copied = true;
  }
  const fs::path path = Folder() / name;
  std::ofstream(path, std::ios::binary | std::ios::trunc).write(reinterpret_cast<const char*>(data),
                                                                 static_cast<std::streamsize>(size));
  const model::FormatTable formats = formats::Formats();
  NoAnswers prompt;
  const model::Detection d = model::TypeDetector(opened.empty() ? path : Folder() / opened, formats, {}, &prompt);
  if (d.code < 0) return;
  const auto entry = std::find_if(formats.begin(), formats.end(),
                                  [&](const model::FormatEntry& e) { return e.extensionWord == d.file.extensionWord; });
  if (entry == formats.end()) return;
  platform::NoProgress progress;
  model::DataWords words{d.code, d.pulseModeClass, 0};
  model::Spectrum1D f2, f1;
  model::ReadContext context{prompt, progress, words, nullptr, &f2, &f1};
  if (model::Dimension(d.code) == 2 && entry->read2D) {
    auto s = std::make_unique<model::Spectrum2D>();
    entry->read2D(d.file, *s, context);
  } else if (entry->read1D) {
    auto s = std::make_unique<model::Spectrum1D>();
    entry->read1D(d.file, *s, context);
  }
}

void ReadVer4Bytes(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::uint8_t> bytes(data, data + size);  // exactly the input: nothing beyond it is readable
  NoAnswers prompt;
  platform::NoProgress progress;
  model::DataWords words{0x210C, 0, 0};
  model::Spectrum1D f2, f1;
  model::ReadContext context{prompt, progress, words, nullptr, &f2, &f1};
  auto twoD = std::make_unique<model::Spectrum2D>();
  native::Read2DBytes(bytes, "fuzz.vlk2", *twoD, context);
  auto oneD = std::make_unique<model::Spectrum1D>();
  native::Read1DBytes(bytes, "fuzz.vlk1", *oneD, context);
}

}  // namespace velk::fuzz
