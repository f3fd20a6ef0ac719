// The close box and "Exit": the question about changed data, settings written, files cleared.
#include <regex>

#include "core/atomic_write.h"
#include "document/session.h"
#include "document/session_messages.h"

namespace velk::document {

using namespace core;
namespace {

namespace fs = std::filesystem;

void WriteEverything(Session& session) {
  WriteSettings(session.settings2DFile, session.settings2D);
  WriteSettings(session.folders.config / "2DCommon.ini", session.common);
  WriteAtomically(session.folders.config / "PulseModeSet.csv",
                  [&](std::ostream& out) { return model::WritePulseModeTable(out, session.pulseModes); });
  WriteAtomically(session.folders.config / "OB_0ppm.frq",
                  [&](std::ostream& out) { return model::WriteInstrumentFrequencies(out, session.instruments); });
}

// The run's temporary files. Undo and temporary data carry the run's extension, so that a run
// never removes what another live run still needs; each removal goes on past a failure.
void DeleteTemporaryFiles(const Session& session) {
  const std::string ext = session.run.RunExtension();
  const std::regex temporary("^(temp.*\\.(temp|wmf|emf)|UnDo2Ddata\\." + ext + ".*|UnDo1Ddata\\." + ext +
                                 ".*|Temp2Ddata\\." + ext + ".*|Temp_3\\.dat)$",
                             std::regex::icase);
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(session.run.folder, ignored))
    if (std::regex_match(entry.path().filename().string(), temporary)) fs::remove(entry.path(), ignored);
  for (const fs::path& file : {session.tempSnapshotName, session.run.FidWorkFile(), session.run.FidWorkFile1D()})
    if (!file.empty()) fs::remove(file, ignored);
}

}  // namespace

std::string Close(Session& session, SessionServices& services) {
  session.closeCommand = "END";
  if (session.displayed == 1) {
    switch (services.prompt.Ask(messages::ExitChanged())) {
      case platform::Answer::DontSave: break;
      case platform::Answer::Save:
        if (!services.save || !services.save(session)) session.closeCommand = "CANCEL";
        break;
      default: session.closeCommand = "CANCEL";
    }
  }
  if (session.closeCommand != "END") return session.closeCommand;
  WriteEverything(session);
  DeleteTemporaryFiles(session);
  EndRun(session.run);
  return session.closeCommand;
}

}  // namespace velk::document
