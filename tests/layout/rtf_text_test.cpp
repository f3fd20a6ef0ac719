// Coded text to rich text and back, and rich text written by a real word processor.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "layout/coded_text.h"
#include "layout/rtf_text.h"
#include "coded_samples.h"

namespace velk::layout {
namespace {

// What the text shows: each character with the look it is drawn in, and the tabs and line
// breaks, up to the end mark. Two strings that show the same are equal here even when their
// codes come in another order.
std::vector<std::string> Shown(std::string_view text) {
  bool italic = false, bold = false, under = false, strike = false, super = false, sub = false, greek = false;
  std::string font = "-", size = "-", color = "-";
  std::vector<std::string> out;
  auto put = [&](const std::string& c) {
    out.push_back(c + " " + std::to_string(italic) + std::to_string(bold) + std::to_string(under) +
                  std::to_string(strike) + std::to_string(super) + std::to_string(sub) + std::to_string(greek) +
                  " " + font + " " + size + " " + color);
  };
  for (const Code& code : ParseCodedText(text)) {
    switch (code.kind) {
      case CodeKind::End: return out;
      case CodeKind::Text:
        for (char c : code.text) put(std::string(1, c));
        break;
      case CodeKind::Hex: put("hex" + std::to_string(int(code.value))); break;
      case CodeKind::Tab: put("tab"); break;
      case CodeKind::LineBreak: put("cr"); break;
      case CodeKind::Italic: italic = code.on; break;
      case CodeKind::Bold: bold = code.on; break;
      case CodeKind::Underline: under = code.on; break;
      case CodeKind::Strike: strike = code.on; break;
      case CodeKind::Super: super = code.on; break;
      case CodeKind::Sub: sub = code.on; break;
      case CodeKind::Greek: greek = code.on; break;
      case CodeKind::Font: font = code.on ? code.text : "-"; break;
      case CodeKind::Size: size = code.on ? FormatPoints(code.value) : "-"; break;
      case CodeKind::Color: color = code.on ? FormatColorWord(std::uint32_t(code.value)) : "-"; break;
      default: break;
    }
  }
  return out;
}

TEST(RtfText, EveryControlSurvivesRichText) {
  const BaseFont base{"Arial", 10, 0};
  for (const std::string& text : CodedSamples()) {
    const std::string rtf = RtfFromInternal(text, base);
    const std::string back = InternalFromRtf(rtf, base);
    EXPECT_EQ(Shown(back), Shown(text)) << text << "\n" << rtf << "\n" << back;
    EXPECT_TRUE(back.starts_with("\\< ") && back.ends_with("\\>")) << back;
  }
}

TEST(RtfText, WriterHeadTablesAndEscapes) {
  const BaseFont base{"Arial", 10.5, 0x102030};
  const std::string rtf = RtfFromInternal("\\< {a}\\g1 b\\g0 \\f:Times: c\\c:&HFF: d\\cr e\xC2\xB0", base);
  EXPECT_TRUE(rtf.starts_with("{\\rtf1")) << rtf;
  EXPECT_NE(rtf.find("{\\f0\\fnil\\fcharset0 Arial;}{\\f1\\fnil\\fcharset2 Symbol;}{\\f2\\fnil\\fcharset0 Times;}"),
            std::string::npos) << rtf;
  EXPECT_NE(rtf.find("{\\colortbl ;\\red48\\green32\\blue16;\\red255\\green0\\blue0;}"), std::string::npos) << rtf;
  EXPECT_NE(rtf.find("\\fs21 \\{a\\}\\f1 b\\f0 \\f2 c\\cf2 d\\par e\\u176?\\par }"), std::string::npos) << rtf;
}

TEST(RtfText, ReaderSkipsWhatItDoesNotShowAndReadsUnknownGroups) {
  const BaseFont base;
  EXPECT_EQ(InternalFromRtf("not rich text", base), "not rich text");
  EXPECT_EQ(InternalFromRtf("{\\rtf1 a{\\foo b}c{\\*\\bar hidden}{\\info{\\title t}}d\\par }", base), "\\< abcd\\>");
  // Groups restore the look they started with; "\pard" resets it.
  EXPECT_EQ(InternalFromRtf("{\\rtf1 {\\b x}y\\i z\\pard w}", base), "\\< \\b1 x\\b0 y\\i1 z\\i0 w\\>");
  // Unicode characters skip their stand-ins; "\'" codes pass through.
  EXPECT_EQ(InternalFromRtf("{\\rtf1\\uc2 \\u945\\'3f\\'3fx\\'b0}", base), "\\< \xCE\xB1x\\'b0\\>");
  // A truncated document ends where it ends.
  EXPECT_EQ(InternalFromRtf("{\\rtf1 {\\b abc", base), "\\< \\b1 abc\\>");
  EXPECT_EQ(InternalFromRtf("{\\rtf1 x\\", base), "\\< x\\>");
}

TEST(RtfText, ReadsRichTextOfAWordProcessor) {
  std::ifstream file(std::string(VELK_LAYOUT_DATA) + "/word_processor_sample.rtf", std::ios::binary);
  ASSERT_TRUE(file) << "tests/data/layout/word_processor_sample.rtf";
  std::stringstream rtf;
  rtf << file.rdbuf();
  const std::string internal = InternalFromRtf(rtf.str(), BaseFont{"Arial", 10, 0});
  EXPECT_EQ(internal,
            "\\< Plain \\i1 italic\\i0  \\b1 bold\\b0  \\u1 under\\u0  \\s1 struck\\s0  H\\-1 2\\-0 O 10\\+1 3\\+0 "
            "\\cr \\g1 abg\\g0  \\f:Courier New: mono\\f0  \\p:14: big\\p0  \\c:&HFF: red\\c0  25\xC2\xB0"
            "C {x}\\>");
}

}  // namespace
}  // namespace velk::layout
