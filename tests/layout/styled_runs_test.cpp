// Coded text as the rich text editor holds it, and back through the RTF reader.
#include <gtest/gtest.h>

#include "coded_samples.h"
#include "layout/bracket_text.h"
#include "layout/styled_runs.h"

namespace velk::layout {
namespace {

TEST(StyledRuns, EveryControlSurvivesTheRoadThroughRtf) {
  const BaseFont base{"Arial", 10, 0x123456};
  for (const std::string& sample : CodedSamples()) {
    const std::vector<StyledRun> runs = RunsFromInternal(sample);
    const std::string back = InternalFromRtf(RtfFromRuns(runs, base), base);
    EXPECT_EQ(RunsFromInternal(back), runs) << sample << "\n -> " << back;
  }
}

TEST(StyledRuns, TheNestedFormSurvivesTheBracketNotation) {
  for (const std::string& sample : CodedSamples()) {
    const std::vector<StyledRun> runs = RunsFromInternal(sample);
    const std::string bracket = BracketFromInternal(NestedInternalFromRuns(runs));
    EXPECT_EQ(RunsFromInternal(InternalFromBracket(bracket)), runs) << sample << "\n -> " << bracket;
  }
  // Looks that overlap without nesting are closed and opened again.
  const std::vector<StyledRun> overlap{{"a", {.bold = true}}, {"b", {.bold = true, .italic = true}}, {"c", {.italic = true}}};
  EXPECT_EQ(BracketFromInternal(NestedInternalFromRuns(overlap)), "\\b(a\\i(b))\\i(c)");
}

TEST(StyledRuns, GreekLettersAndCharacterCodesAreShownAsTheirCharacters) {
  const std::vector<StyledRun> runs = RunsFromInternal("\\< \\g1 a\\'b4\\g0 25\\'b0C\\cr x\\> gone");
  ASSERT_EQ(runs.size(), 2u);
  EXPECT_EQ(runs[0].text, "α×");
  EXPECT_TRUE(runs[0].style.greek);
  EXPECT_EQ(runs[1].text, "25°C\nx");
  // A Greek letter typed into a Greek run goes back as the Symbol font's letter.
  const StyledRun typed{"βx", {.greek = true}};
  EXPECT_EQ(InternalFromRtf(RtfFromRuns({typed}, {}), {}), "\\< \\g1 bx\\>");
  EXPECT_EQ(RunsFromInternal("plain \\ text").front().text, "plain \\ text");
}

}  // namespace
}  // namespace velk::layout
