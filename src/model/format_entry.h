#pragma once
// What the type detector and the Open command need of a format: its header probe (ReadMode) and
// its readers. The table of all formats is assembled above this layer (formats/registry).
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "model/data_type.h"
#include "platform/message.h"
#include "platform/progress.h"
#include "platform/prompt.h"

namespace velk::model {

struct Spectrum1D;
struct Spectrum2D;

// A path as the detector sees it.
struct DetectedFile {
  std::filesystem::path path;  // the file to read (for folder formats: the data file inside)
  std::filesystem::path folder;
  std::string stem;
  std::string extension;        // upper case, with the dot
  std::string extensionWord;    // ".BRUF", ".ECP", ".VLK2" ...
  std::string contentText;      // what ReadDataMode found ("ECP", "VLMX_2" ...)
};

// The answer of a format's header probe. modeText starts with "V" for a 2D set, "1D" for a 1D set.
struct ModeResult {
  int code = -1;          // 0 success
  std::string modeText;   // the pulse sequence name
  bool processed = false; // spectrum rather than FID
  std::string kind;       // "HOMO", "HETERO" or empty: the fifth output
  std::string reason;     // why the probe failed, for the command line
};

// The words that type the current data and go with Spectrum2D.
struct DataWords {
  DataTypeCode dataTypeCode = kUnknownType;
  int pulseModeClass = kUnknownClass;
  int realOnly = 0;
};

// What a reader may use besides its target record.
struct ReadContext {
  platform::Prompt& prompt;
  platform::Progress& progress;
  DataWords& words;
  // Called after a successful read or write: WriteLog of the session.
  std::function<void(std::string_view action, const std::string& fileName)> log;
  // The F2 and F1 companion sets of a 2D read, when the caller keeps them (native files hold them).
  Spectrum1D* companionF2 = nullptr;
  Spectrum1D* companionF1 = nullptr;
  // "BaseLine Correction of FID": raw 2D readers subtract each row's tail mean as they read.
  bool fidBaseline = false;
};

using ReadModeFn = ModeResult (*)(const DetectedFile&);
using Read2DFn = platform::Outcome (*)(const DetectedFile&, Spectrum2D&, ReadContext&);
using Read1DFn = platform::Outcome (*)(const DetectedFile&, Spectrum1D&, ReadContext&);

struct FormatEntry {
  std::string_view extensionWord;
  int format;
  ReadModeFn readMode;
  Read2DFn read2D;  // null when the format holds no 2D data or its reader has not been written
  Read1DFn read1D;
};

using FormatTable = std::span<const FormatEntry>;

}  // namespace velk::model
