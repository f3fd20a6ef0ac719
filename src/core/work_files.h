#pragma once
// Work files keep two runs of the program from using the same data file: each run owns
// "Work_File_2D" + run number + ".wkf", whose first line names the file the run has open.
#include <filesystem>
#include <string>

namespace velk::core {

struct WorkFiles {
  std::filesystem::path folder;
  int runNumber = -1;

  std::filesystem::path OwnWorkFile() const;
  std::filesystem::path FidWorkFile() const;    // "FID_Work_File_2D" NNNN ".dat"
  std::filesystem::path FidWorkFile1D() const;  // "FID_Work_File_1Dx" NNNN ".dat"
  std::string RunExtension() const;             // the run's extension of the undo and temp files
};

// Takes the lowest free run number from 0 and creates the own work file.
WorkFiles StartRun(const std::filesystem::path& folder);
// 0 when no other run has the file open, -1 when one has (names compared with case folded).
int CheckFileInUse(const WorkFiles& run, const std::string& fileName);
// After every successful Open or Save: the own work file names the new file.
void UpdateWorkFile(const WorkFiles& run, const std::string& fileName);
// At the end: the own work file, or every work file when no other run is alive, so that the
// leftovers of a crashed run disappear with the last run.
void EndRun(const WorkFiles& run);
// True when another live run owns a work file in the folder.
bool OtherRunAlive(const WorkFiles& run);

}  // namespace velk::core
