// Reading a Ver.4 file: the header's address table, the 2D block, the companion sets, and the
// file-level sections, which are carried as they are.
#include <array>
#include <cstdio>
#include <fstream>

#include "core/bytes.h"
#include "model/mode_string.h"
#include "native/block_1d.h"
#include "native/block_2d.h"
#include "native/file_layout.h"
#include "native/file_view.h"
#include "native/messages.h"
#include "native/ver4_file.h"

namespace velk::native {
namespace {

using platform::Outcome;
enum class Version { None, V400, V401 };

Version VersionOf(Bytes file) {
  const std::string magic = ReadText(file, 0, kTagWidth);
  if (magic == kMagic401) return Version::V401;
  if (magic == kMagic400) return Version::V400;
  return Version::None;
}

struct FileTable {
  Entry twoD;
  std::array<Entry, kOneDSets> oneD;
  std::array<Entry, kFileSections.size()> sections;
};

// Lengths of the sets 00 to 18 are taken from the next set's address when that says more: old
// writers and damaged files leave wrong lengths there.
void RepairSetLengths(std::array<Entry, kOneDSets>& sets) {
  for (int i = 0; i < kRepairedSets; ++i) {
    const std::int64_t distance = static_cast<std::int64_t>(sets[i + 1].address) - sets[i].address - 16;
    if (sets[i].address > 0 && distance > kMinSetLength) sets[i].length = static_cast<std::int32_t>(distance);
  }
}

FileTable ReadFileTable(Bytes file, Version version) {
  FileTable table;
  const Entry twoD = ReadEntry(file, k2DEntryAt);
  table.twoD = Inside(twoD, file.size());
  for (int i = 0; i < kOneDSets; ++i) table.oneD[i] = ReadEntry(file, OneDEntryAt(i));
  RepairSetLengths(table.oneD);
  for (Entry& set : table.oneD) set = Inside(set, file.size());
  const bool lateEntries = twoD.address >= static_cast<std::int32_t>(kHeaderSize);
  for (std::size_t k = 0; k < kFileSections.size(); ++k) {
    const FileSection& section = kFileSections[k];
    const std::int64_t at = version == Version::V400 ? section.entryAt400 : static_cast<std::int64_t>(section.entryAt);
    if (at < 0 || (static_cast<std::uint64_t>(at) >= kLateEntriesFrom && !lateEntries)) continue;
    Entry entry = ReadEntry(file, static_cast<std::uint64_t>(at));
    if (version == Version::V400 && section.tag == "## TEXT DATA 2D") entry.length = ReadLong(file, kTextData2DLength400);
    table.sections[k] = Inside(entry, file.size());
  }
  return table;
}

// The sections this program does not interpret, whole, for the next save.
std::vector<model::CarriedSection> CarriedSections(Bytes file, const FileTable& table, int firstSet) {
  std::vector<model::CarriedSection> carried;
  for (int set = firstSet; set < kOneDSets; ++set) {
    const Bytes bytes = SectionOf(file, table.oneD[set]);
    if (!bytes.empty()) carried.push_back({SetTag(set), {bytes.begin(), bytes.end()}});
  }
  for (std::size_t k = 0; k < kFileSections.size(); ++k) {
    if (kFileSections[k].tag == kFileHistoryTag) continue;  // written afresh from the record's history
    const Bytes bytes = SectionOf(file, table.sections[k]);
    if (!bytes.empty()) carried.push_back({std::string(kFileSections[k].tag), {bytes.begin(), bytes.end()}});
  }
  return carried;
}

Outcome InvalidData() { return {-1, messages::Error(messages::kDataError, messages::kInvalidData)}; }

Outcome Refuse2D(model::Spectrum2D& s, std::string_view title, std::string_view text) {
  s.axis[model::F1].Point = 0;
  s.axis[model::F2].Point = 0;
  return {1, messages::Error(title, text)};
}

void ReadCompanion(Bytes file, Entry entry, model::Spectrum1D* set, std::int16_t mode, std::string_view invalid,
                   platform::Prompt& prompt) {
  if (!set) return;
  if (entry.length <= kMinSetLength) {
    *set = model::Spectrum1D{};
    set->mode = mode;
    return;
  }
  set->mode = mode;
  if (!Read1DSection(file, entry, *set)) {
    set->params.POINT = 0;
    prompt.Ask(messages::Error(messages::kDataError2D, invalid));
  }
}

void Log(const model::ReadContext& context, const std::string& name) {
  if (context.log) context.log("Read", name);
}


}  // namespace

Outcome Read2DBytes(Bytes file, const std::string& name, model::Spectrum2D& s, model::ReadContext& context) {
  const Version version = VersionOf(file);
  if (version == Version::None) return InvalidData();
  const FileTable table = ReadFileTable(file, version);
  if (table.twoD.length <= 0) return Refuse2D(s, messages::kDataError2D, messages::kInvalid2DData);
  switch (Read2DSection(file, table.twoD, s, context.words, context.progress)) {
    case Read2DResult::Ok: break;
    case Read2DResult::Quit: return {1, {}};  // the person ended the read: nothing to say
    case Read2DResult::Invalid: return Refuse2D(s, messages::kDataError2D, messages::kInvalid2DData);
    case Read2DResult::TooLarge: return Refuse2D(s, messages::kDataError, messages::kTooLargeData);
    case Read2DResult::NoMemory: return Refuse2D(s, messages::kDataSizeError, messages::kDataSizeTooLarge);
  }
  ReadCompanion(file, table.oneD[0], context.companionF2, 1, messages::kInvalidF2Data, context.prompt);
  ReadCompanion(file, table.oneD[1], context.companionF1, 2, messages::kInvalidF1Data, context.prompt);
  s.carried.fileSections = CarriedSections(file, table, 2);
  s.texts.dataTypeText = model::TagsOf(model::kVer4).name;
  s.texts.fileName = name;
  model::RepairAfterRead2D(s, context.words.pulseModeClass);
  model::RebuildPpmTables(s);
  Log(context, name);
  return {};
}

Outcome Read1DBytes(Bytes file, const std::string& name, model::Spectrum1D& s, model::ReadContext& context) {
  const Version version = VersionOf(file);
  if (version == Version::None) return InvalidData();
  const FileTable table = ReadFileTable(file, version);
  if (!Read1DSection(file, table.oneD[0], s)) return {1, messages::Error(messages::kDataError, messages::kBad1DFile)};
  std::vector<model::CarriedSection> carried = CarriedSections(file, table, 1);
  s.carried.sections.insert(s.carried.sections.end(), carried.begin(), carried.end());
  s.texts.dataTypeText = model::TagsOf(model::kVer4).name;
  s.texts.fileName = name;
  Log(context, name);
  return {};
}

Outcome ReadDataR4(const std::filesystem::path& file, model::Spectrum2D& s, model::ReadContext& context) {
  const FileView view = FileView::Open(file);
  if (!view.valid()) return InvalidData();
  return Read2DBytes(view.bytes(), file.string(), s, context);
}

Outcome ReadDataR4(const std::filesystem::path& file, model::Spectrum1D& s, model::ReadContext& context) {
  const FileView view = FileView::Open(file);
  if (!view.valid()) return InvalidData();
  return Read1DBytes(view.bytes(), file.string(), s, context);
}

Outcome Read2DEntryR4(const model::DetectedFile& file, model::Spectrum2D& s, model::ReadContext& context) {
  return ReadDataR4(file.path, s, context);
}

Outcome Read1DEntryR4(const model::DetectedFile& file, model::Spectrum1D& s, model::ReadContext& context) {
  return ReadDataR4(file.path, s, context);
}

model::ModeResult ReadModeR4(const model::DetectedFile& file) {
  model::ModeResult result;
  result.processed = true;  // the native files always count as spectra
  std::ifstream in(file.path, std::ios::binary);
  std::vector<std::uint8_t> header(kHeaderSize, 0);
  in.read(reinterpret_cast<char*>(header.data()), static_cast<std::streamsize>(header.size()));
  header.resize(static_cast<std::size_t>(in.gcount()));
  if (VersionOf(header) == Version::None) {
    result.reason = header.empty() ? "the file is empty" : "not a Ver.4 file: the file " + core::FirstBytes(header);
    return result;
  }
  const Entry twoD = ReadEntry(header, k2DEntryAt);
  if (twoD.length < kMin2DLength) {
    result.code = 0;
    result.modeText = model::kModeString1D;
    return result;
  }
  std::vector<std::uint8_t> mode(kTagWidth, 0);
  in.clear();
  in.seekg(static_cast<std::streamoff>(twoD.address) + static_cast<std::streamoff>(kTagWidth));
  in.read(reinterpret_cast<char*>(mode.data()), static_cast<std::streamsize>(mode.size()));
  if (twoD.address < 0 || in.gcount() != static_cast<std::streamsize>(mode.size())) {
    result.reason = "the 2D section lies outside the file";
    return result;
  }
  // The class of the stored set, named as the pulse-mode classes are, so that the detector
  // files it as 2D and presets the class.
  static constexpr std::array<std::string_view, 5> kClassNames{"VPH_HOMO", "V_HOMO", "VPH_HMBC", "VPH_HETERO",
                                                               "V_HETERO"};
  const model::ModeStringMeaning meaning = model::ReadModeString(ReadText(mode, 0, kTagWidth));
  const int c = meaning.pulseModeClass;
  result.modeText = c >= 0 && c < 5 ? std::string(kClassNames[c]) : std::string("V");
  result.code = 0;
  return result;
}

}  // namespace velk::native
