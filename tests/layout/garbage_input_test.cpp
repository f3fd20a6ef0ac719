// Damaged and random input: every reader of the layer stays inside its input and returns.
#include <gtest/gtest.h>

#include <random>

#include "layout/bracket_text.h"
#include "layout/coded_text.h"
#include "layout/draw_coded_text.h"
#include "layout/layout_sections.h"
#include "layout/parameter_file.h"
#include "layout/rtf_text.h"
#include "support/recording_surface.h"

namespace velk::layout {
namespace {

// Strings made mostly of the characters the languages give meaning to.
std::string RandomText(std::mt19937& random, std::size_t length) {
  static constexpr std::string_view kAlphabet = "\\\\\\<>{}()':;,0123456789abcdefgipsu+-=rtfcHx &\r\n\t\xE6\x97\xA5";
  std::uniform_int_distribution<std::size_t> pick(0, kAlphabet.size() - 1);
  std::string s;
  for (std::size_t k = 0; k < length; ++k) s += kAlphabet[pick(random)];
  return s;
}

TEST(GarbageInput, TextLanguagesAndSectionsNeverReadPastTheirInput) {
  std::mt19937 random(20261123);
  test::RecordingSurface surface;
  const BaseFont base;
  for (int round = 0; round < 3000; ++round) {
    std::string text = RandomText(random, round % 60);
    if (round % 2) text.insert(0, "\\<");
    if (round % 3 == 0) text.insert(0, "{\\rtf1");
    const std::string internal = InternalFromBracket(text);
    EXPECT_TRUE(IsCoded(internal));
    BracketFromInternal(text);
    InternalFromRtf(text, base);
    InternalFromRtf(RtfFromInternal(text, base), base);
    StripCodes(text);
    DrawCodedText(surface, {10, 10, 1, round % 5 ? kNoWidthLimit : 23.0, double(round)}, text, TextFont{}, 0);
    ParseParameterText(text);
    surface.calls.clear();

    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(round % 200));
    for (std::uint8_t& b : bytes) b = static_cast<std::uint8_t>(random() % 4 ? random() % 8 : random());
    std::vector<model::CarriedSection> sections;
    const LayoutTags tags = TagsOf(LayoutPage::Page2D);
    for (std::string_view tag : {tags.line, tags.text, tags.picture, tags.pictureEx, tags.circle, tags.rectangle,
                                 tags.drawOrder})
      sections.push_back({std::string(tag), bytes});
    // Once written, a document reads and writes back to the same bytes.
    WriteLayoutSections(ReadLayoutSections(sections, LayoutPage::Page2D), LayoutPage::Page2D, sections);
    const std::vector<model::CarriedSection> first = sections;
    WriteLayoutSections(ReadLayoutSections(sections, LayoutPage::Page2D), LayoutPage::Page2D, sections);
    for (std::size_t k = 0; k < sections.size(); ++k) EXPECT_EQ(sections[k].bytes, first[k].bytes) << sections[k].tag;
  }
}

}  // namespace
}  // namespace velk::layout
