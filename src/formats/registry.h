#pragma once
// Every file format the program knows, listed once: its readers (probe and readers per extension
// word, which the type detector uses), the file extensions it writes, the texts of the Open and
// Save dialogs, and its writer. The dialogs, `info`, `convert` and `export` take their lists here.
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/format_entry.h"
#include "model/spectrum.h"
#include "native/save_modes.h"
#include "platform/prompt.h"

namespace velk::formats {

// The records of one data set as a writer takes them.
struct DataSetRef {
  const model::Spectrum2D* twoD = nullptr;  // a 2D data set ...
  const model::Spectrum1D* companionF2 = nullptr;  // ... with its companion traces, when it has them
  const model::Spectrum1D* companionF1 = nullptr;
  const model::Spectrum1D* oneD = nullptr;  // or a 1D data set
  model::DataWords words;
};

// The choices a save can make; each writer reads those that concern it.
struct WriteChoices {
  native::SaveMode saveMode = native::SaveMode::AllPlanes;  // Ver.4: what a 2D set keeps
  bool keepBackup = false;                                   // Ver.4: keep the ".$" generation
  std::string trace;                         // JCAMP-DX of a 2D set: "f1" or "f2" ...
  std::optional<std::int32_t> traceIndex;    // ... and the column or row of that trace
  bool ntuples = false;                      // JCAMP-DX: NTUPLES with the imaginary part
  std::string plane = "RR";                  // NumPy: the plane written
  std::function<void(std::string_view action, const std::string& fileName)> log;
};

// Writes the data set and says what was written ("Ver.4, 2D"). Code 1 when the data or the
// choices do not fit the format (nothing is written), -1 when the file cannot be written (an
// earlier file stays as it was).
using WriteFn = platform::Outcome (*)(const std::filesystem::path& file, const DataSetRef& data,
                                      const WriteChoices& choices, std::string& written);

struct FileFormat {
  std::string_view name;                     // "Ver.4", "JCAMP-DX" ...
  std::vector<model::FormatEntry> readers = {};  // one per extension word of the detector
  std::vector<std::string_view> extensions = {};  // lower case; a written file takes the first
  platform::FileFilter openFilter = {};      // empty label: not offered when opening
  WriteFn write = nullptr;                   // null: the program does not write this format
  std::vector<std::string> companions = {};  // further files written beside the main one (".json")
};

const std::vector<FileFormat>& FileFormats();
// Every reader of every format, for the type detector.
model::FormatTable Formats();
// The reader entry of a detected extension word; null when no reader exists.
const model::FormatEntry* ReaderOf(std::string_view extensionWord);
// The written format a file name asks for by its extension; null for none.
const FileFormat* WrittenFormatOf(const std::filesystem::path& file);
const FileFormat* FindFormat(std::string_view name);
bool HasExtensionOf(const FileFormat& format, const std::filesystem::path& file);
// The Open dialog's filters, every readable format in order (the caller adds user and "All" entries).
std::vector<platform::FileFilter> OpenFilters();
// The Save dialog's filters: every format that writes, its extensions as patterns.
std::vector<platform::FileFilter> SaveFilters();
// "Ver.4 (.vlk2, .vlk, ...)", for messages and help texts.
std::string WrittenExtensionsText();

}  // namespace velk::formats
