#include "formats/registry.h"

#include <algorithm>
#include <cctype>

#include "formats/alice/alice.h"
#include "formats/bruker/bruker.h"
#include "formats/jcamp/reader.h"
#include "formats/jeol/delta.h"
#include "formats/varian/entry.h"
#include "formats/writers.h"
#include "native/ver4_file.h"

namespace velk::formats {
namespace {

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
  return text;
}

// Formats whose reader has not been written have no entry; the detector then answers "ERR".
std::vector<FileFormat> MakeFormats() {
  using model::FormatEntry;
  return {
      {"Ver.4",
       {{".VLK1", model::kVer4, native::ReadModeR4, native::Read2DEntryR4, native::Read1DEntryR4},
        {".VLK2", model::kVer4, native::ReadModeR4, native::Read2DEntryR4, native::Read1DEntryR4}},
       {".vlk2", ".vlk", ".vlk1", ".vl1", ".vl2"},
       {"Ver.3/4 Type(*.vl2;*.vlk)", "*.vl2;*.vlk*"},
       WriteVer4},
      {"JEOL Delta", {jeol::DeltaFormatEntry()}, {".jdf"}, {"JEOL Delta(*.jdf)", "*.jdf"}},
      {"Bruker",
       {{".BRUF", model::kBruker, bruker::ReadModeBruker, bruker::ReadBruker2D, bruker::ReadBruker1D},
        {".BRUD", model::kBruker, bruker::ReadModeBruker, bruker::ReadBruker2D, bruker::ReadBruker1D}},
       {},
       {"Bruker(fid;ser;1r;2rr)", "fid;ser;1r;2rr;acqus"}},
      {"Varian",
       {{".VARF", model::kVarian, varian::ReadModeVarianFid, varian::ReadVarian2DFid, varian::ReadVarian1DFid},
        {".VARD", model::kVarian, varian::ReadModeVarianData, varian::ReadVarian2DData, varian::ReadVarian1DData}},
       {},
       {"Varian(fid;data;phasefile)", "fid;data;phasefile;procpar"}},
      {"Alice", {alice::AliceFormatEntry()}, {".als"}, {"Alice(*.als)", "*.als"}, WriteAlice},
      {"JCAMP-DX",
       {{".DX", model::kJcamp, jcamp::ReadModeJcampEntry, jcamp::ReadJcamp2DEntry, jcamp::ReadJcamp1DEntry},
        {".JDX", model::kJcamp, jcamp::ReadModeJcampEntry, jcamp::ReadJcamp2DEntry, jcamp::ReadJcamp1DEntry},
        {".JCAMP", model::kJcamp, jcamp::ReadModeJcampEntry, jcamp::ReadJcamp2DEntry, jcamp::ReadJcamp1DEntry}},
       {".jdx", ".dx", ".jcamp"},
       {"JCAMP-DX(*.dx;*.jdx;*.jcamp)", "*.dx;*.jdx;*.jcamp"},
       WriteJcamp},
      {"NumPy", {}, {".npy"}, {}, WriteNumpy, {".json"}},
  };
}

std::string Patterns(const FileFormat& format) {
  std::string patterns;
  for (std::string_view extension : format.extensions)
    patterns += (patterns.empty() ? "*" : ";*") + std::string(extension);
  return patterns;
}

}  // namespace

const std::vector<FileFormat>& FileFormats() {
  static const std::vector<FileFormat> kFormats = MakeFormats();
  return kFormats;
}

model::FormatTable Formats() {
  static const std::vector<model::FormatEntry> kReaders = [] {
    std::vector<model::FormatEntry> readers;
    for (const FileFormat& format : FileFormats()) readers.insert(readers.end(), format.readers.begin(), format.readers.end());
    return readers;
  }();
  return kReaders;
}

const model::FormatEntry* ReaderOf(std::string_view extensionWord) {
  const model::FormatTable readers = Formats();
  const auto it = std::find_if(readers.begin(), readers.end(),
                               [&](const model::FormatEntry& e) { return e.extensionWord == extensionWord; });
  return it == readers.end() ? nullptr : &*it;
}

bool HasExtensionOf(const FileFormat& format, const std::filesystem::path& file) {
  const std::string extension = Lower(file.extension().string());
  return std::find(format.extensions.begin(), format.extensions.end(), extension) != format.extensions.end();
}

const FileFormat* WrittenFormatOf(const std::filesystem::path& file) {
  for (const FileFormat& format : FileFormats())
    if (format.write && HasExtensionOf(format, file)) return &format;
  return nullptr;
}

const FileFormat* FindFormat(std::string_view name) {
  for (const FileFormat& format : FileFormats())
    if (format.name == name) return &format;
  return nullptr;
}

std::vector<platform::FileFilter> OpenFilters() {
  std::vector<platform::FileFilter> filters;
  for (const FileFormat& format : FileFormats())
    if (!format.openFilter.label.empty()) filters.push_back(format.openFilter);
  return filters;
}

std::vector<platform::FileFilter> SaveFilters() {
  std::vector<platform::FileFilter> filters;
  for (const FileFormat& format : FileFormats())
    if (format.write) filters.push_back({std::string(format.name) + "(" + Patterns(format) + ")", Patterns(format)});
  return filters;
}

std::string WrittenExtensionsText() {
  std::string text;
  for (const FileFormat& format : FileFormats()) {
    if (!format.write) continue;
    std::string extensions;
    for (std::string_view extension : format.extensions) extensions += (extensions.empty() ? "" : ", ") + std::string(extension);
    text += (text.empty() ? "" : "; ") + std::string(format.name) + " " + extensions;
  }
  return text;
}

}  // namespace velk::formats
