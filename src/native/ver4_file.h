#pragma once
// The program's own file, Ver.4: a table of absolute addresses at the front, then tagged
// sections. ReadDataR4 ("RDR V4") and WriteDataR4 ("WDR V4") for 2D and 1D data sets.
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "model/format_entry.h"
#include "model/spectrum.h"
#include "native/fields.h"
#include "native/save_modes.h"
#include "platform/message.h"

namespace velk::native {

struct WriteOptions {
  bool makeFileBackup = true;  // the setting "MAKE FILE BACKUP" is 1
  // WriteLog of the session, called after a successful write (and with the routine tag after a
  // failed 1D write).
  std::function<void(std::string_view action, const std::string& fileName)> log;
};

// The F2 and F1 companion sets go into "## 1D Data 00" and "01" (either may be missing).
platform::Outcome WriteDataR4(const std::filesystem::path& file, const model::Spectrum2D& s,
                              const model::Spectrum1D* f2Set, const model::Spectrum1D* f1Set,
                              const model::DataWords& words, SaveMode mode, const WriteOptions& options);
platform::Outcome WriteDataR4(const std::filesystem::path& file, const model::Spectrum1D& s,
                              const WriteOptions& options);

// The companion sets are read into context.companionF2 and companionF1 when they are given.
// A bad companion set is reported through the prompt; the 2D data stay usable.
platform::Outcome ReadDataR4(const std::filesystem::path& file, model::Spectrum2D& s, model::ReadContext& context);
platform::Outcome ReadDataR4(const std::filesystem::path& file, model::Spectrum1D& s, model::ReadContext& context);
// The same on the bytes of a whole file; name is what the record and the log receive.
platform::Outcome Read2DBytes(Bytes file, const std::string& name, model::Spectrum2D& s, model::ReadContext& context);
platform::Outcome Read1DBytes(Bytes file, const std::string& name, model::Spectrum1D& s, model::ReadContext& context);

// The header probe of the type detector: the 2D block's mode as a class name ("VPH_HOMO" ...),
// or "1D NORM NORM" for a 1D file; always a spectrum.
model::ModeResult ReadModeR4(const model::DetectedFile& file);
// The readers as the table of formats calls them.
platform::Outcome Read2DEntryR4(const model::DetectedFile& file, model::Spectrum2D& s, model::ReadContext& context);
platform::Outcome Read1DEntryR4(const model::DetectedFile& file, model::Spectrum1D& s, model::ReadContext& context);

}  // namespace velk::native
