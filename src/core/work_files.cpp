#include "core/work_files.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <regex>
#include <set>

#include "core/text.h"

namespace velk::core {
namespace {

namespace fs = std::filesystem;

std::string Numbered(const char* prefix, int number, const char* suffix) {
  char name[64];
  std::snprintf(name, sizeof name, "%s%04d%s", prefix, number, suffix);
  return name;
}

// The run number in a work file name ("...0003.wkf"), or -1 when it has none.
int RunNumberOf(const fs::path& file) {
  static const std::regex number("(\\d+)\\.wkf$", std::regex::icase);
  std::smatch match;
  const std::string name = file.filename().string();
  return std::regex_search(name, match, number) ? std::stoi(match[1].str()) : -1;
}

constexpr const char* kWorkFile2D = "^Work_File_2D\\d+\\.wkf$";
constexpr const char* kAnyWorkFile = "^.*\\.wkf$";

// The work file holds the open file's name on its first line and the run's process id on the
// second; the id tells a live run from the leftover of a crashed one.
struct WorkFileContent {
  std::string fileName;
  long processId = 0;
};

WorkFileContent ReadWorkFile(const fs::path& file) {
  WorkFileContent content;
  std::ifstream in(file);
  std::getline(in, content.fileName);
  std::string pid;
  if (std::getline(in, pid)) content.processId = std::strtol(pid.c_str(), nullptr, 10);
  return content;
}

void WriteWorkFile(const WorkFiles& run, const std::string& fileName) {
  std::ofstream out(run.OwnWorkFile(), std::ios::trunc);
  out << fileName << "\n" << static_cast<long>(getpid()) << "\n";
}

// kill with signal 0 only asks whether the process exists (POSIX).
bool IsAlive(long processId) {
  return processId > 0 && (kill(static_cast<pid_t>(processId), 0) == 0 || errno == EPERM);
}

template <class Visit>
void ForEachWorkFile(const fs::path& folder, const char* pattern, Visit visit) {
  const std::regex wanted(pattern, std::regex::icase);
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(folder, error))
    if (std::regex_match(entry.path().filename().string(), wanted)) visit(entry.path());
}

}  // namespace

fs::path WorkFiles::OwnWorkFile() const { return folder / Numbered("Work_File_2D", runNumber, ".wkf"); }
fs::path WorkFiles::FidWorkFile() const { return folder / Numbered("FID_Work_File_2D", runNumber, ".dat"); }
fs::path WorkFiles::FidWorkFile1D() const { return folder / Numbered("FID_Work_File_1Dx", runNumber, ".dat"); }
std::string WorkFiles::RunExtension() const { return Numbered("", runNumber, ""); }

WorkFiles StartRun(const fs::path& folder) {
  std::set<int> taken;
  ForEachWorkFile(folder, kAnyWorkFile, [&](const fs::path& file) { taken.insert(RunNumberOf(file)); });
  WorkFiles run{folder, 0};
  while (taken.count(run.runNumber)) ++run.runNumber;
  WriteWorkFile(run, "");
  return run;
}

int CheckFileInUse(const WorkFiles& run, const std::string& fileName) {
  const std::string wanted = ToUpper(Trim(fileName));
  int result = 0;
  ForEachWorkFile(run.folder, kWorkFile2D, [&](const fs::path& file) {
    if (EqualsNoCase(file.filename().string(), run.OwnWorkFile().filename().string())) return;
    if (ToUpper(Trim(ReadWorkFile(file).fileName)) == wanted) result = -1;
  });
  return result;
}

void UpdateWorkFile(const WorkFiles& run, const std::string& fileName) { WriteWorkFile(run, fileName); }

bool OtherRunAlive(const WorkFiles& run) {
  bool alive = false;
  ForEachWorkFile(run.folder, kWorkFile2D, [&](const fs::path& file) {
    if (file.filename() != run.OwnWorkFile().filename() && IsAlive(ReadWorkFile(file).processId)) alive = true;
  });
  return alive;
}

void EndRun(const WorkFiles& run) {
  std::error_code ignored;
  if (OtherRunAlive(run)) {
    fs::remove(run.OwnWorkFile(), ignored);
    return;
  }
  ForEachWorkFile(run.folder, kWorkFile2D, [&](const fs::path& file) { fs::remove(file, ignored); });
}

}  // namespace velk::core
