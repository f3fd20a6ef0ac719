// From the command line to the waiting main window.
#include <ctime>
#include <fstream>

#include "document/session.h"
#include "document/session_messages.h"
#include "core/text.h"
#include "model/type_detector.h"

namespace velk::document {

using namespace core;
namespace {

namespace fs = std::filesystem;

std::string ShortDateTime() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char text[32];
  std::strftime(text, sizeof text, "%Y/%m/%d %H:%M:%S", &local);
  return text;
}

// An editable table is read from the user's folder, else the installed copy.
fs::path TableFile(const Folders& folders, const char* name) {
  const fs::path own = folders.config / name;
  return fs::exists(own) ? own : folders.data / name;
}

// "RequiredFile2D_E.txt": one file a line, its name and the text to show when it is missing.
void CheckRequiredFiles(const Folders& folders, platform::Prompt& prompt) {
  std::ifstream in(folders.data / "RequiredFile2D_E.txt");
  std::string line, missing;
  while (std::getline(in, line)) {
    const std::size_t comma = line.find(',');
    const std::string name = Trim(line.substr(0, comma));
    if (name.empty() || fs::exists(folders.data / name)) continue;
    missing += (comma == std::string::npos ? name : Trim(line.substr(comma + 1))) + "\n";
  }
  if (!missing.empty()) prompt.Ask(messages::RequiredFilesMissing(missing));
}

// "USER MODE" 0: the user picks one of the per-user settings files; closing the choice ends the run.
std::optional<fs::path> ChooseSettingsFile(Session& session, platform::Prompt& prompt) {
  if (Number(session.common, "USER MODE") != 0) return session.folders.config / "NMR_2DCOL.INI";
  std::vector<std::string> users;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(session.folders.config, error)) {
    const std::string name = entry.path().filename().string();
    if (StartsWithNoCase(name, "NMR_2DCOL_") && EqualsNoCase(entry.path().extension().string(), ".INI"))
      users.push_back(name.substr(10, name.size() - 14));
  }
  const std::optional<int> chosen = prompt.Choose("User Name", users);
  if (!chosen || *chosen < 0 || *chosen >= static_cast<int>(users.size())) return std::nullopt;
  Set(session.common, "LATEST USER", users[*chosen]);
  return session.folders.config / ("NMR_2DCOL_" + users[*chosen] + ".INI");
}

void ReadTablesAndSettings(Session& session) {
  ReadInstrumentFrequencies(TableFile(session.folders, "OB_0ppm.frq"), session.instruments);
  ReadSettings(session.folders.config / "2DCommon.ini", session.common);
  session.log.mode = static_cast<int>(Number(session.common, "LOG MODE"));
  const std::string logDir = Text(session.common, "LOG DIR");
  session.log.folder = logDir.empty() ? session.folders.log : fs::path(logDir);
}

// A 1D file goes to the sister program with "$", so that it does not send the file back.
bool HandOverToOneDimensional(const Session& session, const std::string& name, SessionServices& services) {
  const fs::path program = session.folders.program / kOneDimensionalProgram;
  if (fs::exists(program) && services.launcher.Start(program, {"$" + name})) return true;
  services.prompt.Ask(messages::NoOneDimensionalProgram(program.string()));
  return false;
}

}  // namespace

StartResult StartUp(Session& session, std::string_view rawCommandLine, SessionServices& services) {
  session.state = SessionState::Starting;
  session.log.folder = session.folders.log;
  const CommandLine line = CleanCommandLine(rawCommandLine);
  session.commandLine = line.name;
  session.handedOver = line.handedOver;
  CreateWritableFolders(session.folders);

  if (!line.name.empty()) {
    if (!line.handedOver && CheckFileInUse(WorkFiles{session.folders.work, -1}, line.name) != 0) {
      services.prompt.Ask(messages::FileInUse());
      return StartResult::End;
    }
    const model::Detection d = model::TypeDetector(line.name, services.formats);
    if (model::IsOneDimensional(d.code) && !line.handedOver) {
      if (HandOverToOneDimensional(session, line.name, services)) return StartResult::End;
      session.commandLine.clear();
    }
  }

  session.run = StartRun(session.folders.work);
  ReadTablesAndSettings(session);
  const std::optional<fs::path> settingsFile = ChooseSettingsFile(session, services.prompt);
  if (!settingsFile) {
    EndRun(session.run);
    return StartResult::End;
  }
  session.settings2DFile = *settingsFile;
  model::ReadPulseModeTable(TableFile(session.folders, "PulseModeSet.csv"), session.pulseModes);
  if (model::AllocateSpectrum2D(session.document.spectrum, 512, 512) != 0) services.prompt.Ask(messages::DataSizeTooLarge());
  ReadSettings2D(session.settings2DFile, session.settings2D, ShortDateTime());
  ReadSettings(session.folders.config / "NMRCOL.INI", session.settings1D);
  session.printSet = layout::StartingPrintSet(session.folders.config);
  CheckRequiredFiles(session.folders, services.prompt);
  session.state = SessionState::Idle;

  // A name left on the command line opens as "Read Data" would; a file that is no 2D set (a 1D
  // file handed over with "$") gets the Open command's own refusal.
  if (!session.commandLine.empty()) Open(session, services, session.commandLine);
  return StartResult::Run;
}

std::function<void(std::string_view, const std::string&)> SessionLogger(Session& session, platform::Prompt& prompt) {
  return [&session, &prompt](std::string_view action, const std::string& fileName) {
    const platform::Message message = WriteLog(session.log, action, fileName);
    if (!message.empty()) prompt.Ask(message);
  };
}

}  // namespace velk::document
