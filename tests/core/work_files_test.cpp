#include <gtest/gtest.h>

#include <fstream>

#include "core/work_files.h"
#include "support/temp_folder.h"

namespace velk::core {

TEST(WorkFiles, TwoRunsRefuseEachOthersFile) {
  test::TempFolder folder;
  const WorkFiles first = StartRun(folder.path);
  const WorkFiles second = StartRun(folder.path);
  EXPECT_EQ(first.runNumber, 0);
  EXPECT_EQ(second.runNumber, 1);
  EXPECT_EQ(first.OwnWorkFile().filename(), "Work_File_2D0000.wkf");

  UpdateWorkFile(first, "/Data/Cosy.vlk2");
  EXPECT_EQ(CheckFileInUse(second, "/data/COSY.VLK2"), -1);  // another case is the same file
  EXPECT_EQ(CheckFileInUse(first, "/data/cosy.vlk2"), 0);    // its own file is never in use
  EXPECT_EQ(CheckFileInUse(second, "/data/other.vlk2"), 0);

  // Both runs are this process, so each sees the other alive and removes only its own file.
  EXPECT_TRUE(OtherRunAlive(second));
  EndRun(second);
  EXPECT_FALSE(std::filesystem::exists(second.OwnWorkFile()));
  EXPECT_TRUE(std::filesystem::exists(first.OwnWorkFile()));
  EXPECT_EQ(StartRun(folder.path).runNumber, 1);  // the lowest free number again
}

TEST(WorkFiles, TheLastRunClearsLeftoversOfCrashedRuns) {
  test::TempFolder folder;
  std::ofstream(folder / "Work_File_2D0000.wkf") << "/data/a.vlk2\n999999999\n";  // no such process
  const WorkFiles run = StartRun(folder.path);
  EXPECT_EQ(run.runNumber, 1);
  EXPECT_EQ(CheckFileInUse(run, "/data/a.vlk2"), -1);  // a crashed run's file stays in use until then
  EndRun(run);
  EXPECT_FALSE(std::filesystem::exists(folder / "Work_File_2D0000.wkf"));
  EXPECT_FALSE(std::filesystem::exists(run.OwnWorkFile()));
}

}  // namespace velk::core
