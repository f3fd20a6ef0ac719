#include "layout/print_set.h"

#include <fstream>
#include <string>
#include <vector>

#include "core/atomic_write.h"
#include "core/text.h"

namespace velk::layout {
namespace {

using core::KeyKind;
using core::SettingKey;

constexpr std::string_view kHeader = "COLOR SET OF PRINT 2D VER.4";
constexpr std::string_view kHeaderVersion1 = "COLOR SET OF PRINT 2D VER.1";
constexpr std::string_view kHeaderOldest = "2D PRINT SET DATA";
constexpr std::string_view kWhite = "16777215";

std::vector<SettingKey> MakeKeys() {
  std::vector<SettingKey> keys;
  const auto number = [&](std::string_view key, std::string_view value) { keys.push_back({key, KeyKind::Number, value}); };
  for (std::string_view k : {"CONTOUR DISPALY MODE", "DIRECTION OF 2D", "INITIAL DISP MODE", "DISP DIM_X"}) number(k, "0");
  for (std::string_view k : {"AXIS COL", "WAKU CO", "PARAMETER COL", "1D SPEC COL", "IMAGE DATA COL"}) number(k, "0");
  number("GRID COL", "65535");  // the yellow of the window's grid: a light lattice behind the contour
  for (std::string_view k : {"PAPER COLOR", "2D BG COLOR", "LEVEL BG COLOR", "F1 1D BG COLOR", "F2 1D BG COLOR",
                             "PARAMETER BG COL"})
    number(k, kWhite);
  for (std::string_view k : {"F1 1D WAKU COL", "F2 1D WAKU COL", "LEVEL WAKU COL", "PARA WAKU COL"}) number(k, "0");
  number("BUNKATSU GAP COL", kWhite);
  for (std::string_view k : {"BUNKATSU COL", "PEAK LINE COL", "SLICE LINE COL", "INADEQUATE COL"}) number(k, "0");
  for (std::string_view k : {"PAR BG COL TRANS", "BUNKATSU COL TRANS", "2D BG COL TRANS", "F1 BG COL TRANS",
                             "F2 BG COL TRANS", "PAPERR COL TRANS", "LEVEL BG COL TRANS"})
    number(k, "0");
  for (std::string_view k : {"XLABEL F1 PPM", "XLABEL F1 HZ", "XLABEL F1 KHZ", "XLABEL F1 NUC", "XLABEL F2 PPM",
                             "XLABEL F2 HZ", "XLABEL F2 KHZ", "XLABEL F2 NUC"})
    number(k, "1");
  for (std::string_view k : {"WIDTH AXIS", "WIDTH WAKU", "WIDTH BUNKATSU", "WIDTH 1D SPEC", "WIDTH GRID",
                             "WIDTH PEAK LINE", "WIDTH 2D SPEC", "WIDTH SLICE LINE", "WIDTH INADEQUATE",
                             "WIDTH COLOR BAR", "PARA WAKU WIDTH"})
    number(k, "1");
  static const std::vector<std::string> fontKeys = [] {
    std::vector<std::string> v;
    for (const char* group : {"AXIS", "PEAK", "PARA", "PRNT LIST"})
      for (const char* field : {" FONT NAME", " FONT SIZE", " FONT BOLD", " FONT ITALIC"}) v.push_back(std::string(group) + field);
    return v;
  }();
  for (std::size_t i = 0; i < fontKeys.size(); ++i) {
    const std::size_t field = i % 4;
    keys.push_back({fontKeys[i], field == 0 ? KeyKind::Text : KeyKind::Number,
                    field == 0   ? "Arial"
                    : field == 1 ? "10"
                                 : "0"});
  }
  static const std::vector<std::string> ticKeys = [] {
    std::vector<std::string> v;
    for (const char* axis : {"F2", "F1"})
      for (const char* group : {"1H", "13C", "OTHER"})
        for (const char* set : {" ", " 2 "})
          for (const char* word : {" TIC STEP", " TIC INC", " TIC DIV"}) v.push_back(std::string(axis) + word + set + group);
    return v;
  }();
  // Steps and increments 0 let the axis choose; 10 divisions between labels.
  for (const std::string& k : ticKeys) number(k, k.find("DIV") != std::string::npos ? "10" : "0");
  return keys;
}

// The version a first line names, or 0 for a file that is not a print set.
int VersionOf(const std::string& firstLine) {
  const std::string line = core::ToUpper(core::Trim(firstLine));
  if (line == kHeader) return 4;
  if (line == kHeaderVersion1 || line == kHeaderOldest) return 1;
  return 0;
}

}  // namespace

const core::SettingsSchema& PrintSetSchema() {
  static const std::vector<SettingKey> keys = MakeKeys();
  static const core::SettingsSchema schema{kHeader, kHeaderVersion1, keys};
  return schema;
}

core::Settings DefaultPrintSet() { return core::DefaultSettings(PrintSetSchema()); }

platform::Outcome ReadPrintSet(std::istream& in, core::Settings& set) {
  std::string line;
  if (!std::getline(in, line)) return {1, {"Print Set", "Invalid File"}};
  const int version = VersionOf(line);
  if (version == 0) return {1, {"Print Set", "Invalid File"}};
  core::Settings read = set;
  read.schema = &PrintSetSchema();
  read.version = version;
  while (std::getline(in, line)) {
    const std::size_t split = line.find(';');
    if (split == std::string::npos) continue;
    std::string key = core::ToUpper(core::Trim(line.substr(0, split)));
    if (version > 1 && key.starts_with("2-")) key.erase(0, 2);
    const std::string value = core::Cp932ToUtf8(core::Trim(line.substr(split + 1)));
    for (const SettingKey& k : PrintSetSchema().keys) {
      if (k.key != key) continue;
      if (k.kind == KeyKind::Text || core::ParseSettingNumber(value)) core::Set(read, key, value);
      break;
    }
  }
  set = std::move(read);
  return {};
}

platform::Outcome ReadPrintSet(const std::filesystem::path& file, core::Settings& set) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return {-1, {"Print Set", "Cannot open " + file.string()}};
  return ReadPrintSet(in, set);
}

platform::Outcome WritePrintSet(const std::filesystem::path& file, const core::Settings& set) {
  core::Settings out = set;
  out.schema = &PrintSetSchema();
  return core::WriteAtomically(file, [&](std::ostream& stream) { return core::WriteSettings(stream, out); });
}

core::Settings StartingPrintSet(const std::filesystem::path& settingsFolder) {
  core::Settings set = DefaultPrintSet();
  ReadPrintSet(settingsFolder / kDefaultPrintSetName, set);
  return set;
}

}  // namespace velk::layout
