#include <gtest/gtest.h>

#include <fstream>

#include "core/data_log.h"
#include "support/temp_folder.h"

namespace velk::core {

TEST(DataLog, LinesGoToTheMonthOrDayFile) {
  test::TempFolder folder;
  std::tm t{};
  t.tm_year = 126; t.tm_mon = 10; t.tm_mday = 3; t.tm_hour = 9; t.tm_min = 5; t.tm_sec = 7;
  DataLog monthly{0, folder.path};
  EXPECT_TRUE(WriteLog(monthly, "Read", "/data/cosy.vlk2", t).empty());
  EXPECT_TRUE(WriteLog(monthly, "Write", "/data/b.vlk2", t).empty());
  std::ifstream in(folder / "2D2026_11.log");
  std::string line;
  std::getline(in, line);
  EXPECT_EQ(line, "03/Nov/2026, 09:05:07, Read, /data/cosy.vlk2\r");
  EXPECT_EQ(LogFileName(DataLog{1, folder.path}, t).filename(), "2D2026_11_03.log");
}

TEST(DataLog, NoLogModeTouchesNothingAndABadFolderSaysSo) {
  test::TempFolder folder;
  EXPECT_TRUE(WriteLog(DataLog{2, folder / "missing"}, "Read", "x").empty());
  const auto message = WriteLog(DataLog{0, folder / "missing"}, "Read", "x");
  EXPECT_EQ(message.text, "Invalid Folder Name(WL)");
  EXPECT_EQ(message.title, "Folder Error");
}

}  // namespace velk::core
