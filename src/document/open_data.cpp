// "Read Data": the FID path to the FT window and the spectrum path to the main window.
#include <algorithm>
#include <memory>

#include "document/session.h"
#include "document/read_data_set.h"
#include "document/session_messages.h"
#include "core/text.h"
#include "core/user_extensions.h"
#include "model/type_detector.h"

namespace velk::document {

using namespace core;
namespace {

namespace fs = std::filesystem;
using platform::Answer;

std::vector<platform::FileFilter> ReadFilters(const std::vector<model::UserExtension>& userExtensions) {
  std::vector<platform::FileFilter> filters = formats::OpenFilters();
  for (const platform::FileFilter& own : UserExtensionFilters(userExtensions)) filters.push_back(own);
  filters.push_back({"All Files(*.*)", "*.*"});
  return filters;
}

// Asks to save changed data first; false when the user cancelled.
bool SaveChangesFirst(Session& session, SessionServices& services) {
  if (session.displayed != 1 || !Modified(session.document)) return true;
  switch (services.prompt.Ask(messages::DataChanged())) {
    case Answer::Save: return services.save && services.save(session);
    case Answer::DontSave: return true;
    default: return false;
  }
}

// PHA (phase sensitive) or ABS, preset from the class and the user's pulse mode table.
std::string ProcessingMethod(const Session& session, const model::Detection& d, platform::Prompt& prompt) {
  if (const auto* row = model::FindPulseMode(session.pulseModes, d.modeText)) {
    if (row->phaseMode == "1") return "PHA";
    if (row->phaseMode == "2") return "ABS";
  }
  if (d.code == 0x2001 && EndsWithNoCase(d.file.stem, "PH")) return "PHA";
  switch (d.pulseModeClass) {
    case model::VPH_HOMO: case model::VPH_HMBC: case model::VPH_HETERO: return "PHA";
    case model::V_HOMO: case model::V_HETERO: return "ABS";
    default: break;
  }
  prompt.Ask(messages::SelectProcessingMethod());
  const std::optional<int> choice = prompt.Choose("Select Processing Method", {"PHA", "ABS"});
  return choice && *choice == 1 ? "ABS" : "PHA";
}

// Reads into a fresh document so that a file that fails leaves the session as it was.
bool ReadInto(Session& session, SessionServices& services, const model::Detection& d) {
  ReadOptions options;
  options.formats = services.formats;
  options.log = SessionLogger(session, services.prompt);
  options.progress = services.progress;
  ReadResult read = ReadDetected(d.file.path, d, services.prompt, options);
  if (!read.outcome.ok()) {
    if (!read.outcome.message.empty()) services.prompt.Ask(read.outcome.message);
    return false;
  }
  Replace(session.document, std::move(*read.document));
  return true;
}

void AfterReading(Session& session, const std::string& name) {
  session.windowTitle = name + " NMR 2D ";
  UpdateWorkFile(session.run, name);
  session.lastFolderOfFormat[model::FormatOf(session.document.words.dataTypeCode)] = fs::path(name).parent_path();
  std::vector<std::string>& recent = session.settings2D.lists["RECENT FILE"];
  std::erase(recent, name);
  recent.insert(recent.begin(), name);
  if (recent.size() > kRecentFiles) recent.resize(kRecentFiles);
}

OpenResult FidPath(Session& session, SessionServices& services, const model::Detection& d) {
  if (session.displayed == 1) {
    session.tempSnapshotName = session.run.folder / ("BackUp2_" + Trim(Text(session.common, "ACCESS COUNT")) + ".vlk2");
    if (!services.writeSnapshot || !services.writeSnapshot(session, session.tempSnapshotName))
      session.tempSnapshotName.clear();
  }
  session.processingMethod = ProcessingMethod(session, d, services.prompt);
  if (!ReadInto(session, services, d)) {
    // The data shown were not touched: the snapshot is not needed.
    std::error_code ignored;
    if (!session.tempSnapshotName.empty()) fs::remove(session.tempSnapshotName, ignored);
    session.tempSnapshotName.clear();
    return OpenResult::Failed;
  }
  session.state = SessionState::FtWindow;
  AfterReading(session, d.file.path.string());
  return OpenResult::FidLoaded;
}

OpenResult SpectrumPath(Session& session, SessionServices& services, const model::Detection& d) {
  if (!ReadInto(session, services, d)) return OpenResult::Failed;
  session.displayed = 1;
  session.state = SessionState::Spectrum;
  AfterReading(session, d.file.path.string());
  return OpenResult::SpectrumLoaded;
}

}  // namespace

OpenResult Open(Session& session, SessionServices& services, std::optional<std::string> name) {
  if (!SaveChangesFirst(session, services)) return OpenResult::Cancelled;
  const std::vector<model::UserExtension> own = ParseUserExtensions(List(session.settings2D, "USER EXTENSION DEF"));
  for (;;) {
    if (!name) name = services.prompt.ChooseFile("Read Data", ReadFilters(own), false);
    if (!name) return OpenResult::Cancelled;
    const model::Detection d = model::TypeDetector(*name, services.formats, own, &services.prompt);
    const int path = d.code < 0 ? -1 : d.code & ~0xFF;
    if (path != 0x2000 && path != 0x2100) {
      if (services.prompt.Ask(messages::NotTwoDimensional()) != Answer::Retry) return OpenResult::Cancelled;
      name.reset();
      continue;
    }
    if (path == 0x2100 && CheckFileInUse(session.run, d.file.path.string()) != 0) {
      services.prompt.Ask(messages::FileInUse());
      name.reset();
      continue;
    }
    if (!ReaderFor(services.formats, d)) {
      services.prompt.Ask(messages::NotSupported());
      return OpenResult::Failed;
    }
    return path == 0x2000 ? FidPath(session, services, d) : SpectrumPath(session, services, d);
  }
}

bool ReadTraceSpectrum(Session& session, SessionServices& services, model::Axis axis, std::optional<std::string> name) {
  if (!name) name = services.prompt.ChooseFile("Read 1D Spectrum", {{"Ver.3/4 Type(*.vl1;*.vlk)", "*.vl1;*.vlk*"}}, false);
  if (!name) return false;
  const model::Detection d = model::TypeDetector(*name, services.formats, {}, &services.prompt);
  if (d.code >= 0 && CheckFileInUse(session.run, d.file.path.string()) != 0) {
    services.prompt.Ask(messages::FileInUse());
    return false;
  }
  ReadOptions options;
  options.formats = services.formats;
  options.log = SessionLogger(session, services.prompt);
  options.progress = services.progress;
  ReadResult read = model::Dimension(d.code) == 1 ? ReadDetected(d.file.path, d, services.prompt, options) : ReadResult{};
  if (!read.document) {
    if (!read.quit) services.prompt.Ask(messages::Bad1DFile());
    return false;
  }
  (axis == model::F2 ? session.document.companionF2 : session.document.companionF1) = std::move(read.document->oneD);
  LoseCleanMark(session.document.undo);  // the saved file holds the trace before
  return true;
}

OpenResult ReadFidSpectrum(Session& session, SessionServices& services, std::optional<std::string> name) {
  if (!SaveChangesFirst(session, services)) return OpenResult::Cancelled;
  const std::vector<model::UserExtension> own = ParseUserExtensions(List(session.settings2D, "USER EXTENSION DEF"));
  if (!name) name = services.prompt.ChooseFile("Read 2D Spectrum", ReadFilters(own), false);
  if (!name) return OpenResult::Cancelled;
  const model::Detection d = model::TypeDetector(*name, services.formats, own, &services.prompt);
  if (d.code < 0 || (d.code & ~0xFF) != 0x2000 || !ReaderFor(services.formats, d)) {
    services.prompt.Ask(messages::NonTwoDimensionalData());
    return OpenResult::Failed;
  }
  if (CheckFileInUse(session.run, d.file.path.string()) != 0) {
    services.prompt.Ask(messages::FileInUse());
    return OpenResult::Failed;
  }
  return FidPath(session, services, d);
}

void LeaveFtWindow(Session& session, SessionServices& services, bool transformed) {
  if (transformed) {
    session.displayed = 1;
    LoseCleanMark(session.document.undo);  // a new spectrum that no file holds yet
    session.state = SessionState::Spectrum;
    return;
  }
  if (!session.tempSnapshotName.empty() && services.readSnapshot && services.readSnapshot(session, session.tempSnapshotName)) {
    session.state = SessionState::Spectrum;
    return;
  }
  session.state = session.displayed == 1 ? SessionState::Spectrum : SessionState::Idle;
}

void DiscardData(Session& session) {
  session.displayed = 0;
  ClearUndo(session.document.undo);
  session.state = SessionState::Idle;
  session.windowTitle.clear();
}

}  // namespace velk::document
