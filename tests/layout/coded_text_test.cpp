// Coded text: the parser, the bracket notation both ways, StripCodes and the number formats.
#include <gtest/gtest.h>

#include "layout/bracket_text.h"
#include "layout/coded_text.h"
#include "layout/number_format.h"
#include "coded_samples.h"

namespace velk::layout {
namespace {

// The codes with the start mark's optional blank made irrelevant.
std::vector<Code> CodesOf(std::string_view text) { return ParseCodedText(text); }

TEST(CodedText, ParserReadsEveryControlAndSkipsUnknownOnes) {
  EXPECT_TRUE(CodesOf("\\<").size() == 1 && CodesOf("\\<")[0].kind == CodeKind::Start);
  // A plain string keeps its backslashes; a coded one halves them.
  EXPECT_EQ(CodesOf("C:\\data\\x")[0].text, "C:\\data\\x");
  EXPECT_EQ(CodesOf("\\< C:\\\\data")[1].text, "C:\\data");
  // Unknown controls go with their two characters; "\cr" needs no blank.
  const auto codes = CodesOf("\\< a\\zzb\\crc\\'b0:d");
  ASSERT_EQ(codes.size(), 6u);
  EXPECT_EQ(codes[1].text, "ab");
  EXPECT_EQ(codes[2].kind, CodeKind::LineBreak);
  EXPECT_EQ(codes[3].text, "c");
  EXPECT_EQ(codes[4].kind, CodeKind::Hex);
  EXPECT_EQ(codes[4].value, 0xb0);
  EXPECT_EQ(codes[5].text, "d");
  const auto args = CodesOf("\\< \\f:Courier New: \\p:10.5: \\c:&HFF00: x\\c0 \\p0 \\f0 ");
  EXPECT_EQ(args[1].text, "Courier New");
  EXPECT_EQ(args[2].value, 10.5);
  EXPECT_EQ(args[3].value, 0xFF00);
  EXPECT_EQ(args[4].text, "x");
  EXPECT_FALSE(args[5].on);
  // A control cut off by the end of the string is dropped, never read past.
  EXPECT_EQ(CodesOf("\\< a\\f:Arial").back().text, "Arial");
  EXPECT_EQ(CodesOf("\\< a\\").size(), 2u);
  EXPECT_EQ(CodesOf("\\< a\\'4").size(), 2u);
}

TEST(CodedText, EveryControlSurvivesTheBracketNotation) {
  for (const std::string& text : CodedSamples()) {
    const std::string bracket = BracketFromInternal(text);
    EXPECT_EQ(bracket.find("\\<"), std::string::npos) << bracket;
    EXPECT_EQ(CodesOf(InternalFromBracket(bracket)), CodesOf(text)) << text << "  ->  " << bracket;
  }
}

TEST(CodedText, BracketNotationCountsBracketsAndKeepsStrays) {
  EXPECT_EQ(InternalFromBracket("a)b"), "\\< a)b");
  EXPECT_EQ(InternalFromBracket("\\i(x(y)z)w"), "\\< \\i1 x(y)z\\i0 w");
  EXPECT_EQ(InternalFromBracket("\\r(x)\\f:(y)"), "\\< xy");
  EXPECT_EQ(InternalFromBracket("\\f: Courier New (x)"), "\\< \\f:Courier New: x\\f0 ");
  EXPECT_EQ(InternalFromBracket("\\p10.5(x)\\hff(y)\\c0F(z)"),
            "\\< \\p:10.5: x\\p0 \\c:&Hff: y\\c0 \\c:&H0F: z\\c0 ");
  EXPECT_EQ(InternalFromBracket("\\=(13,6)C"), "\\< \\d1 13,6\\d0 C");
  EXPECT_EQ(BracketFromInternal("\\< \\d1 13,6\\d0 C"), "\\=(13,6)C");
  EXPECT_EQ(InternalFromBracket("one\r\ntwo\nthree"), "\\< one\\cr two\\cr three");
  EXPECT_EQ(InternalFromBracket("\\b(open"), "\\< \\b1 open");  // stays on to the end
  EXPECT_EQ(InternalFromBracket("a\\\\b \\x"), "\\< a\\\\b \\\\x");
  EXPECT_EQ(InternalFromBracket("\\< \\i1 kept"), "\\< \\i1 kept");
  // Past 100 open brackets the levels are not remembered, and their ")" change nothing.
  std::string deep;
  for (int k = 0; k < 101; ++k) deep += "\\b(";
  deep += "x";
  for (int k = 0; k < 102; ++k) deep += ")";
  const std::string internal = InternalFromBracket(deep);
  std::size_t offs = 0;
  for (std::size_t at = internal.find("\\b0 "); at != std::string::npos; at = internal.find("\\b0 ", at + 1)) ++offs;
  EXPECT_EQ(offs, 100u);
  EXPECT_TRUE(internal.ends_with("\\b0 )")) << "the stray last bracket is kept";
}

TEST(CodedText, StripCodesSplitsTitleFromRest) {
  const StrippedText s = StripCodes("\\< Title \\b1 bold\\b0 \\cr rest \\g1 a\\g0 \\'b0:\\cr more\\> hidden");
  EXPECT_EQ(s.first, "Title bold");
  EXPECT_EQ(s.rest, "rest a\xC2\xB0\r\nmore");
  EXPECT_EQ(StripCodes("plain \\cr").first, "plain \\cr");
}

TEST(NumberFormat, PatternsAndExponentForm) {
  EXPECT_EQ(FormatNumber(1.5, "####0.0##"), "1.5");
  EXPECT_EQ(FormatNumber(2, "####0.0##"), "2.0");
  EXPECT_EQ(FormatNumber(1234.56789, "####0.0##"), "1234.568");
  EXPECT_EQ(FormatNumber(0.12345, "###0.0#"), "0.12");
  EXPECT_EQ(FormatNumber(-0.001, "#0.0"), "0.0");
  EXPECT_EQ(FormatNumber(-12.5, "######0"), "-12");
  EXPECT_EQ(FormatNumber(0.5, "#.##"), ".5");
  EXPECT_EQ(FormatPlainOrExp(2, 3, ExponentSigns::Plain), "2.0");
  EXPECT_EQ(FormatPlainOrExp(0.001234, 3, ExponentSigns::Plain), "0.001234");
  EXPECT_EQ(FormatPlainOrExp(1234.4, 0, ExponentSigns::Plain), "1234");
  EXPECT_EQ(FormatPlainOrExp(0.0005, 2, ExponentSigns::Plain), "5.00x10\\+1 -4\\+0 ");
  EXPECT_EQ(FormatPlainOrExp(-123456, 1, ExponentSigns::Symbol), "\u22121.2\u00D710\\+1 +5\\+0 ");
  EXPECT_EQ(FormatPlainOrExp(9.9999e5, 2, ExponentSigns::Plain), "1.00x10\\+1 +6\\+0 ");
  EXPECT_EQ(FormatPlainOrExp(3e-7, 9, ExponentSigns::Plain), "3.00000x10\\+1 -7\\+0 ");
}

}  // namespace
}  // namespace velk::layout
