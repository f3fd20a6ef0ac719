#include <gtest/gtest.h>

#include "formats/text_lines.h"

namespace velk::formats {
namespace {

TextCursor Cursor(const std::string& text) {
  return {core::Bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()), 0};
}

// "0 1 2 ..." over lines of eight values, as the instruments write arrays.
std::string Numbers(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += std::to_string(i) + (i % 8 == 7 ? "\n" : " ");
  return text;
}

}  // namespace

TEST(ReadTextLine, BlankLinesVanishAndShiftJisPairsStayWhole) {
  const std::string text = "\r\n\r\n##TITLE= a\r\n\t##$X= \x82\x0A" "b\n\xFF" "c\n";
  TextCursor cursor = Cursor(text);
  EXPECT_EQ(ReadTextLine(cursor), "##TITLE= a");
  // The byte after a lead byte belongs to the character even when it is a line feed.
  EXPECT_EQ(ReadTextLine(cursor), "##$X= \x82\x0A" "b");
  EXPECT_EQ(ReadTextLine(cursor), "c");  // 255 is dropped
  EXPECT_EQ(ReadTextLine(cursor), "");
  EXPECT_TRUE(cursor.AtEnd());
}

TEST(SplitParameterLine, ValuesBracketsAndArraysOverLines) {
  const std::string text =
      "##$PULPROG= <cosygpqf>\n##$SW_h= 5498.53 Hz\n##$P= (0..4)\n1 9.5 2\n3 4\n##$NS= 8\n"
      "##$D= (0..63)\n" + Numbers(64) + "##$OWNER= <>\n##$TITLE= <unclosed\n";
  TextCursor cursor = Cursor(text);
  std::string key;
  ParameterValues values;
  const auto next = [&] { SplitParameterLine(ReadTextLine(cursor), cursor, key, values); };
  next();
  EXPECT_EQ(key, "##$PULPROG");
  EXPECT_EQ(values[0], "cosygpqf");
  next();
  EXPECT_EQ(key, "##$SW_h");
  EXPECT_EQ(values[0], "5498.53");
  next();
  EXPECT_EQ(key, "##$P");
  EXPECT_EQ(values[1], "9.5");
  EXPECT_EQ(values[4], "4");
  next();  // the array consumed its lines but not the next key
  EXPECT_EQ(key, "##$NS");
  next();
  EXPECT_EQ(key, "##$D");
  EXPECT_EQ(values[31], "31");
  next();  // the values beyond index 31 come back as lines of no key
  EXPECT_EQ(key, "32");
  while (key != "##$OWNER") next();
  EXPECT_EQ(key, "##$OWNER");
  EXPECT_EQ(values[0], "");
  next();
  EXPECT_EQ(values[0], "unclosed");
  EXPECT_FALSE(ParseNumber("12x"));
  EXPECT_DOUBLE_EQ(*ParseNumber(" -1.5e3 "), -1500.0);
}

}  // namespace velk::formats
