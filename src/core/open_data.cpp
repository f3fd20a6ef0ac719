// "Read Data": the FID path to the FT window and the spectrum path to the main window.
#include <algorithm>
#include <memory>

#include "core/session.h"
#include "core/session_messages.h"
#include "core/text.h"
#include "core/user_extensions.h"
#include "model/type_detector.h"

namespace velk::core {
namespace {

namespace fs = std::filesystem;
using platform::Answer;

std::vector<platform::FileFilter> ReadFilters(const std::vector<model::UserExtension>& userExtensions) {
  std::vector<platform::FileFilter> filters{{"Ver.3/4 Type(*.vl2;*.vlk)", "*.vl2;*.vlk*"},
          {"JEOL Delta(*.jdf)", "*.jdf"},
          {"Bruker(fid;ser;1r;2rr)", "fid;ser;1r;2rr;acqus"},
          {"Varian(fid;data;phasefile)", "fid;data;phasefile;procpar"},
          {"Alice(*.als)", "*.als"},
          {"JCAMP-DX(*.dx;*.jdx)", "*.dx;*.jdx"}};
  for (const platform::FileFilter& own : UserExtensionFilters(userExtensions)) filters.push_back(own);
  filters.push_back({"All Files(*.*)", "*.*"});
  return filters;
}

// Asks to save changed data first; false when the user cancelled.
bool SaveChangesFirst(Session& session, SessionServices& services) {
  if (session.displayed != 1 || session.saved == 1) return true;
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

const model::FormatEntry* EntryOf(const SessionServices& services, const model::Detection& d) {
  const auto it = std::find_if(services.formats.begin(), services.formats.end(),
                               [&](const model::FormatEntry& e) { return e.extensionWord == d.file.extensionWord; });
  return it == services.formats.end() || !it->read2D ? nullptr : &*it;
}

// Reads into a fresh record so that a file that fails leaves the session as it was.
bool ReadInto(Session& session, SessionServices& services, const model::Detection& d, const model::FormatEntry& entry) {
  auto incoming = std::make_unique<model::Spectrum2D>();
  model::DataWords words{d.code, d.pulseModeClass, 0};
  platform::NoProgress progress;
  model::Spectrum1D f2Set, f1Set;  // the companion traces, which native files carry
  model::ReadContext context{services.prompt, progress, words, SessionLogger(session, services.prompt), &f2Set, &f1Set};
  const platform::Outcome outcome = entry.read2D(d.file, *incoming, context);
  if (!outcome.ok()) {
    if (!outcome.message.empty()) services.prompt.Ask(outcome.message);
    return false;
  }
  session.spectrum2D = std::move(*incoming);
  session.spectra1D[kF2Companion] = std::move(f2Set);
  session.spectra1D[kF1Companion] = std::move(f1Set);
  session.words = words;
  return true;
}

void AfterReading(Session& session, const std::string& name) {
  session.windowTitle = name + " NMR 2D ";
  UpdateWorkFile(session.run, name);
  session.lastFolderOfFormat[model::FormatOf(session.words.dataTypeCode)] = fs::path(name).parent_path();
  std::vector<std::string>& recent = session.settings2D.lists["RECENT FILE"];
  std::erase(recent, name);
  recent.insert(recent.begin(), name);
  if (recent.size() > kRecentFiles) recent.resize(kRecentFiles);
}

OpenResult FidPath(Session& session, SessionServices& services, const model::Detection& d,
                   const model::FormatEntry& entry) {
  if (session.displayed == 1) {
    session.tempSnapshotName = session.run.folder / ("BackUp2_" + Trim(Text(session.common, "ACCESS COUNT")) + ".vlk2");
    if (!services.writeSnapshot || !services.writeSnapshot(session, session.tempSnapshotName))
      session.tempSnapshotName.clear();
  }
  session.processingMethod = ProcessingMethod(session, d, services.prompt);
  if (!ReadInto(session, services, d, entry)) {
    LeaveFtWindow(session, services, false);
    return OpenResult::Failed;
  }
  session.state = SessionState::FtWindow;
  AfterReading(session, d.file.path.string());
  return OpenResult::FidLoaded;
}

OpenResult SpectrumPath(Session& session, SessionServices& services, const model::Detection& d,
                        const model::FormatEntry& entry) {
  if (!ReadInto(session, services, d, entry)) return OpenResult::Failed;
  session.displayed = 1;
  session.saved = 1;
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
    const model::Detection d = model::TypeDetector(*name, services.formats, own);
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
    const model::FormatEntry* entry = EntryOf(services, d);
    if (!entry) {
      services.prompt.Ask(messages::NotSupported());
      return OpenResult::Failed;
    }
    return path == 0x2000 ? FidPath(session, services, d, *entry) : SpectrumPath(session, services, d, *entry);
  }
}

void LeaveFtWindow(Session& session, SessionServices& services, bool transformed) {
  if (transformed) {
    session.displayed = 1;
    session.saved = 0;
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
  session.saved = 0;
  session.state = SessionState::Idle;
  session.windowTitle.clear();
}

}  // namespace velk::core
