#include <gtest/gtest.h>

#include "core/text.h"

namespace velk::core {

TEST(Text, ShiftJisRoundTripAndFieldCuts) {
  const std::string utf8 = "\xE6\xBA\xB6\xE5\xAA\x92 CDCl3";  // "solvent" in Japanese, then ASCII
  const std::string sjis = Utf8ToCp932(utf8);
  EXPECT_EQ(sjis.size(), 4u + 6u);
  EXPECT_EQ(Cp932ToUtf8(sjis), utf8);
  EXPECT_EQ(Utf8ToCp932("CDCl3"), "CDCl3");
  // A two-byte character that would cross the field's end stays out whole.
  EXPECT_EQ(CutShiftJis(sjis, 3), sjis.substr(0, 2));
  EXPECT_EQ(CutShiftJis(sjis, 4), sjis.substr(0, 4));
  EXPECT_EQ(CutShiftJis("abc", 8), "abc");
  // Bytes that are no Shift-JIS still come through.
  EXPECT_FALSE(Cp932ToUtf8(std::string("\x81", 1)).empty());
}

TEST(Text, TrimAndCase) {
  EXPECT_EQ(Trim("  a b \r\n"), "a b");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_TRUE(EqualsNoCase("Log Dir", "LOG DIR"));
  EXPECT_TRUE(StartsWithNoCase("##$SW_h= 5", "##$sw_H"));
}

}  // namespace velk::core
