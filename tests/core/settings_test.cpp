#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "core/settings.h"
#include "support/temp_folder.h"

namespace velk::core {
namespace {

std::string Slurp(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::stringstream content;
  content << in.rdbuf();
  return content.str();
}

}  // namespace

TEST(Settings, EveryKeyRoundTripsThroughTheFile) {
  test::TempFolder folder;
  Settings written = DefaultSettings(Schema2D());
  int n = 0;
  for (const SettingKey& key : Schema2D().keys) {
    ++n;
    if (key.kind == KeyKind::List) written.lists[std::string(key.key)] = {"a;" + std::to_string(n), "b"};
    else if (key.kind == KeyKind::Text) Set(written, key.key, "text " + std::to_string(n));
    else SetNumber(written, key.key, n + 0.25);
  }
  ASSERT_TRUE(WriteSettings(folder / "s.ini", written));
  Settings read = DefaultSettings(Schema2D());
  ASSERT_TRUE(ReadSettings(folder / "s.ini", read));
  EXPECT_EQ(read.version, 4);
  EXPECT_EQ(read.values, written.values);
  EXPECT_EQ(read.lists, written.lists);
  // Written again, the file is the same byte for byte.
  ASSERT_TRUE(WriteSettings(folder / "t.ini", read));
  EXPECT_EQ(Slurp(folder / "s.ini"), Slurp(folder / "t.ini"));
  EXPECT_EQ(Schema2D().keys.size(), 401u);
}

TEST(Settings, ReaderToleratesCaseBlanksOldSpellingsAndBadValues) {
  test::TempFolder folder;
  const auto file = folder.Write("s.ini",
                                 "2d initial setting ver.4\r\n"
                                 "  magnification   ;   1.5  \r\n"
                                 "USER NAME ; a;b;c\r\n"
                                 "CURSOL COLOR 3 ; 255\r\n"
                                 "LP ORDER 1 ; forty\r\n"
                                 "no separator here\r\n"
                                 "UNKNOWN KEY ; 7\r\n"
                                 "DATA TYPE ; &H2006\r\n"
                                 "RECENT FILE ; /a.vlk2\r\nRECENT FILE ; /b.vlk2\r\n");
  Settings s = DefaultSettings(Schema2D());
  ASSERT_TRUE(ReadSettings(file, s));
  EXPECT_DOUBLE_EQ(Number(s, "MAGNIFICATION"), 1.5);
  EXPECT_EQ(Text(s, "USER NAME"), "a;b;c");
  EXPECT_DOUBLE_EQ(Number(s, "CURSOR COLOR 3"), 255);
  EXPECT_DOUBLE_EQ(Number(s, "LP ORDER 1"), 40);  // the bad value keeps the default
  EXPECT_DOUBLE_EQ(Number(s, "DATA TYPE"), 0x2006);
  EXPECT_EQ(MakeRecentFileList(s), (std::vector<std::string>{"/a.vlk2", "/b.vlk2"}));
  EXPECT_EQ(s.values.count("UNKNOWN KEY"), 0u);

  WriteSettings(file, s);
  const std::string text = Slurp(file);
  EXPECT_NE(text.find("CURSOR COLOR 3        ; 255\r\n"), std::string::npos);
  EXPECT_EQ(text.find("CURSOL"), std::string::npos);
}

TEST(Settings, OtherHeadersAreIgnoredAndOldOnesRead) {
  test::TempFolder folder;
  Settings s = DefaultSettings(Schema2D());
  EXPECT_FALSE(ReadSettings(folder.Write("a.ini", "Something else\r\nMAGNIFICATION ; 3\r\n"), s));
  EXPECT_DOUBLE_EQ(Number(s, "MAGNIFICATION"), 0.8);
  EXPECT_TRUE(ReadSettings(folder.Write("b.ini", "2D INITIAL SETTING\r\nMAGNIFICATION ; 3\r\n"), s));
  EXPECT_EQ(s.version, 1);
  Settings common = DefaultSettings(SchemaCommon());
  EXPECT_TRUE(ReadSettings(folder.Write("c.ini", "2D Common Setting\r\nLOG MODE ; 1\r\n"), common));
  EXPECT_DOUBLE_EQ(Number(common, "LOG MODE"), 1);
  EXPECT_FALSE(ReadSettings(folder / "missing.ini", common));
}

TEST(Settings, StartUpCountsCorrectsAndWritesBack) {
  test::TempFolder folder;
  const auto file = folder.Write("s.ini", "2D Initial Setting Ver.4\r\nACCESS COUNT ; 41\r\n"
                                          "DRAW WIDTH AXIS ; -2\r\nDISP SPEC 2D WIDTH ; 0\r\nDISP DIMENSION_X ; 99999\r\n");
  Settings s = DefaultSettings(Schema2D());
  ASSERT_TRUE(ReadSettings2D(file, s, "2026/11/23 10:00"));
  EXPECT_DOUBLE_EQ(Number(s, "ACCESS COUNT"), 42);
  EXPECT_DOUBLE_EQ(Number(s, "DRAW WIDTH AXIS"), 1);
  EXPECT_DOUBLE_EQ(Number(s, "DISP SPEC 2D WIDTH"), 1);
  EXPECT_DOUBLE_EQ(Number(s, "DISP DIMENSION_X"), 8192);
  Settings again = DefaultSettings(Schema2D());
  ReadSettings(file, again);
  EXPECT_EQ(Text(again, "LATEST ACCESS"), "2026/11/23 10:00");
}

}  // namespace velk::core
