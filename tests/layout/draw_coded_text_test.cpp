// Drawing coded text: runs, their positions at an angle, scripts, tabs, lines and wrapping.
#include <gtest/gtest.h>

#include "layout/draw_coded_text.h"
#include "support/recording_surface.h"

namespace velk::layout {
namespace {

using test::Recorded;
using test::RecordingSurface;

// The recording surface makes every byte half the font height wide; at 10 points and scale 1 a
// character is 5 units wide and a line 11 high.
struct Drawn {
  std::string text;
  platform::Point at;
  int height;
  platform::Color color;
  double angle;
};

std::vector<Drawn> Draw(std::string_view text, TextPlacement where = {100, 100}, platform::Extent* extent = nullptr) {
  RecordingSurface surface;
  const platform::Extent e = DrawCodedText(surface, where, text, TextFont{}, 0x123456);
  if (extent) *extent = e;
  std::vector<Drawn> out;
  int height = 0;
  platform::Color color = 0;
  for (const Recorded& call : surface.calls) {
    if (call.kind == Recorded::Font) height = call.width;
    if (call.kind == Recorded::TextColor) color = call.color;
    if (call.kind == Recorded::Text) out.push_back({call.text, call.points[0], height, color, call.angle});
  }
  return out;
}

TEST(DrawCodedText, RunsFollowTheAngleAndStopAtTheEndMark) {
  auto runs = Draw("\\< ab\\b1 cd\\> ef");
  ASSERT_EQ(runs.size(), 2u);
  EXPECT_EQ(runs[0].at, (platform::Point{100, 100}));
  EXPECT_EQ(runs[1].at, (platform::Point{110, 100}));
  EXPECT_EQ(runs[1].color, 0x123456u);
  runs = Draw("\\< ab\\b1 cd\\cr e", {100, 100, 1, kNoWidthLimit, 450});  // 450 is 90
  ASSERT_EQ(runs.size(), 3u);
  EXPECT_EQ(runs[1].at, (platform::Point{100, 90}));
  EXPECT_EQ(runs[2].at, (platform::Point{111, 100})) << "the next line lies to the right of text that rises";
  EXPECT_EQ(runs[2].angle, 90);
  EXPECT_EQ(Draw("\\<").size(), 0u);
  EXPECT_EQ(Draw("\\< a\\\\b")[0].text, "a\\b");
  EXPECT_EQ(Draw("plain \\cr")[0].text, "plain \\cr");
}

TEST(DrawCodedText, ScriptsGreekColoursAndTabs) {
  const auto runs = Draw("\\< 10\\+1 3\\+0 x\\-1 2\\-0 \\g1 a\\'b4\\g0 \\'b0\\c:&HFF: r\\c0 \\tb t");
  ASSERT_EQ(runs.size(), 9u);
  const auto bottom = [](const Drawn& d) { return d.at.y + d.height * 1.1; };
  EXPECT_LT(runs[1].height, runs[0].height);
  EXPECT_LT(bottom(runs[1]), bottom(runs[0]));  // raised
  EXPECT_GT(bottom(runs[3]), bottom(runs[2]));  // lowered
  EXPECT_EQ(runs[2].at.x, runs[1].at.x + 3) << "the script run is measured at its own size";
  EXPECT_EQ(runs[4].text, "\xCE\xB1");  // alpha
  EXPECT_EQ(runs[5].text, "\xC3\x97");  // the times sign of the Symbol font
  EXPECT_EQ(runs[6].text, "\xC2\xB0");  // the degree sign outside it
  EXPECT_EQ(runs[7].color, 0xFFu);
  EXPECT_EQ(runs[8].color, 0x123456u);
  EXPECT_EQ(runs[8].at.x, 100 + 2 * 38) << "the tab goes to the next step of 3.8 sizes past 56";
}

TEST(DrawCodedText, MeasuresLinesAndWrapsAtBlanksAndBrackets) {
  platform::Extent extent;
  Draw("\\< ab\\cr abcd\\cr ", {100, 100}, &extent);
  EXPECT_EQ(extent.width, 20);
  EXPECT_EQ(extent.height, 33);
  const auto runs = Draw("\\< aaa bbb cccccccc", {0, 0, 1, 37}, &extent);
  ASSERT_EQ(runs.size(), 3u);
  EXPECT_EQ(runs[0].text, "aaa bbb");
  EXPECT_EQ(runs[1].text, "ccccccc") << "a word longer than the line is cut";
  EXPECT_EQ(runs[2].text, "c");
  EXPECT_EQ(runs[1].at.y, 11);
  const auto window = Draw("\\< ab(cd)(efgh)", {0, 0, 1, 37}, nullptr);
  ASSERT_EQ(window.size(), 2u);
  EXPECT_EQ(window[0].text, "ab(cd)") << "a line without blanks breaks before a bracket";
  EXPECT_EQ(window[1].text, "(efgh)");
  const auto path = Draw("\\< /ab/cdefgh", {0, 0, 1, 37}, nullptr);
  ASSERT_EQ(path.size(), 2u);
  EXPECT_EQ(path[0].text, "/ab/") << "a path breaks after a slash";
  RecordingSurface surface;
  const platform::Extent measured = MeasureCodedText(surface, "\\< aaa bbb cccccccc", TextFont{}, 1, 37);
  EXPECT_EQ(measured.width, extent.width);
  EXPECT_EQ(measured.height, extent.height);
  EXPECT_TRUE(surface.Of(Recorded::Text).empty());
}

}  // namespace
}  // namespace velk::layout
