#pragma once
// The session: the document shown and everything the run keeps, owned by one struct that the
// program creates at start and passes by reference.
#include <array>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/data_log.h"
#include "core/folders.h"
#include "core/settings.h"
#include "core/work_files.h"
#include "document/document.h"
#include "layout/print_set.h"
#include "model/format_entry.h"
#include "model/frequency_table.h"
#include "model/pulse_mode.h"
#include "model/spectrum.h"
#include "platform/launcher.h"
#include "platform/prompt.h"

namespace velk::document {

enum class SessionState { Starting, Idle, FtWindow, Spectrum };

struct Session {
  core::Folders folders;
  core::WorkFiles run;
  core::DataLog log;
  core::Settings common = core::DefaultSettings(core::SchemaCommon());
  core::Settings settings2D = core::DefaultSettings(core::Schema2D());
  core::Settings settings1D = core::DefaultSettings(core::Schema1D());
  std::filesystem::path settings2DFile;
  core::Settings printSet = layout::DefaultPrintSet();  // the look of the printed page
  model::PulseModeTable pulseModes = model::DefaultPulseModeTable();
  model::InstrumentFrequencyTable instruments;

  Document document;         // the 2D data set shown, with its companion traces
  model::Spectrum1D editor1D;  // the set of the 1D editor

  SessionState state = SessionState::Starting;
  std::string commandLine;
  bool handedOver = false;
  int displayed = 0;  // 1 while the main window shows a 2D set
  std::string closeCommand;
  std::filesystem::path tempSnapshotName;
  std::string processingMethod;  // "PHA" or "ABS" in the FT window
  std::string windowTitle;
  std::map<int, std::filesystem::path> lastFolderOfFormat;
};

// What the session logic needs from the layers above it and from the person at the screen.
struct SessionServices {
  platform::Prompt& prompt;
  platform::Launcher& launcher;
  model::FormatTable formats;
  std::function<bool(Session&)> save;  // the Save command with its own name choice
  std::function<bool(const Session&, const std::filesystem::path&)> writeSnapshot;  // Ver.4, mode 0
  std::function<bool(Session&, const std::filesystem::path&)> readSnapshot;
  // The read under way reports here, and ends when it says quit; none: a read runs to its end.
  platform::Progress* progress = nullptr;
};

inline constexpr std::size_t kRecentFiles = 10;
inline constexpr const char* kOneDimensionalProgram = "velk1d4";

// The command line: trimmed; fewer than 3 characters is none; a quoted name keeps its blanks, an
// unquoted one ends at the first blank; a leading "$" marks a hand-over from the 1D program.
struct CommandLine {
  std::string name;
  bool handedOver = false;
};
CommandLine CleanCommandLine(std::string_view raw);

enum class StartResult { Run, End };
// Everything from the command line to the waiting main window, except the windows themselves.
StartResult StartUp(Session& session, std::string_view rawCommandLine, SessionServices& services);

enum class OpenResult { Cancelled, FidLoaded, SpectrumLoaded, Failed };
// "Read Data": with a name (command line, recent files) or through the file dialog.
OpenResult Open(Session& session, SessionServices& services, std::optional<std::string> name = std::nullopt);
// "Read 1D Spectrum": a 1D file (through the dialog unless named) as the F2 or F1 trace that
// goes with the 2D set. False when nothing was read; the trace kept is then the one before.
bool ReadTraceSpectrum(Session& session, SessionServices& services, model::Axis axis,
                       std::optional<std::string> name = std::nullopt);
// "Read 2D Spectrum": a 2D FID for the FT window, as on the FID path of Open; any other kind of
// file is refused with "Non 2D Data !".
OpenResult ReadFidSpectrum(Session& session, SessionServices& services, std::optional<std::string> name = std::nullopt);
// Leaving the FT window: after the transform the spectrum window takes over; otherwise the data
// shown before come back from the snapshot.
void LeaveFtWindow(Session& session, SessionServices& services, bool transformed);
// "Close (Discard Present Data)".
void DiscardData(Session& session);
// The close box and "Exit": returns "END" (the program may end) or "CANCEL".
std::string Close(Session& session, SessionServices& services);

// The log as the readers call it: WriteLog with the session's settings, its message shown.
std::function<void(std::string_view, const std::string&)> SessionLogger(Session& session, platform::Prompt& prompt);

}  // namespace velk::document
