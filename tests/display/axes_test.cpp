#include <gtest/gtest.h>

#include "display/axes.h"
#include "display/display_state.h"
#include "display/tics.h"
#include "support/recording_surface.h"

namespace velk::display {
namespace {

TEST(Tics, NiceStepsFixedStepsAndLabels) {
  double first = 0, span = 0, step = 0;
  EXPECT_EQ(NiceTicStep(10, 0, first, span, step), 1);
  EXPECT_EQ(step, -1.0);
  EXPECT_EQ(first, 9.0);
  EXPECT_EQ(NiceTicStep(0, 3, first, span, step), 5);
  EXPECT_DOUBLE_EQ(step, 0.5);
  EXPECT_DOUBLE_EQ(first, 0.5);  // a range starting on a multiple puts the first tic inside
  NiceTicStep(2, 2, first, span, step);
  EXPECT_EQ(step, 0.0);

  step = 1.0;
  FixedTicStart(0, 50.5, first, span, step);
  EXPECT_EQ(step, 0.0);  // more than 50 steps: no tics
  step = 1.0;
  FixedTicStart(10, 0.5, first, span, step);
  EXPECT_EQ(step, -1.0);
  EXPECT_EQ(first, 9.0);

  EXPECT_EQ(TicLabel(1e-9, 1.0), "0");  // a tic at 0 reads 0, not -0 or 1E-09
  EXPECT_EQ(TicLabel(1e-9, 0.5), "0.0");
  EXPECT_EQ(TicLabel(-0.004, 0.5), "0.0");
  EXPECT_EQ(TicLabel(2.5, 0.5), "2.5");
  EXPECT_EQ(TicLabel(120, 20), "120");
  EXPECT_EQ(TicLabel(25000, 5000), "2.50E+04");
}

TEST(Tics, AutomaticStepGrowsUntilLabelsFit) {
  const auto width = [](const std::string& label) { return static_cast<int>(label.size()) * 8; };
  // 10 ppm on 100 pixels keeps the step of 1 (the first tic inside the range is 9); on 50 pixels
  // the 8-pixel labels need 2 ppm between them.
  auto tics = MakeTics(10, 0, 100, {}, width);
  std::vector<std::string> labels;
  for (const Tic& t : tics)
    if (t.major) labels.push_back(t.label);
  EXPECT_EQ(labels, (std::vector<std::string>{"9", "8", "7", "6", "5", "4", "3", "2", "1", "0"}));
  EXPECT_EQ(tics.size(), 50u);  // five divisions for a leading 1: 4 minors before 9, none beyond 0
  tics = MakeTics(10, 0, 50, {}, width);
  labels.clear();
  for (const Tic& t : tics)
    if (t.major) labels.push_back(t.label);
  EXPECT_EQ(labels, (std::vector<std::string>{"8", "6", "4", "2", "0"}));
  // 2.6 to 0.6 ppm grows its step from 0.2 to 0.4: every multiple of 0.4 inside has its tic,
  // the one near the left edge too.
  tics = MakeTics(2.6, 0.6, 200, {}, width);
  labels.clear();
  for (const Tic& t : tics)
    if (t.major) labels.push_back(t.label);
  EXPECT_EQ(labels, (std::vector<std::string>{"2.4", "2.0", "1.6", "1.2", "0.8"}));
  // Manual: the given step and divisions, in the direction of the range.
  tics = MakeTics(0, 2, 500, {false, 1.0, 4}, width);
  ASSERT_EQ(tics.size(), 8u);
  EXPECT_DOUBLE_EQ(tics[0].value, 0.25);
  EXPECT_TRUE(tics[3].major);
  EXPECT_EQ(tics[3].label, "1");
}

TEST(Axes, LabelsCentredUnderTicsWithinTheRectangle) {
  test::RecordingSurface s;
  AxisStyle style;
  style.caption = "F2 (ppm)";
  DrawAxisF2(s, {100, 500, 401, 40}, 8.0f, 4.0f, style);
  std::vector<std::string> labels;
  for (const test::Recorded* t : s.Of(test::Recorded::Text)) {
    labels.push_back(t->text);
    EXPECT_GE(t->points[0].y, 500);
  }
  ASSERT_GE(labels.size(), 3u);
  EXPECT_EQ(labels.front(), "7.5");
  EXPECT_EQ(labels.back(), "F2 (ppm)");
  // The tic of 6.0 ppm stands in the middle of the axis.
  bool middle = false;
  for (const test::Segment& seg : s.Segments()) middle |= seg.from.x == 300 && seg.from.y == 500;
  EXPECT_TRUE(middle);
}

TEST(Axes, GridLinesAtRoundStepsOrTheChosenOnes) {
  test::RecordingSurface s;
  DisplayState v;
  v.ViewF2Start = 10;
  v.ViewF2End = 0;
  v.ViewF1Start = 0;
  v.ViewF1End = 4;
  DrawGridLines(s, {0, 0, 101, 51}, v, {});
  EXPECT_EQ(s.Segments().size(), 10u + 8u);  // 9..0 across, 0.5..4 down in steps of 0.5
  s.calls.clear();
  DrawGridLines(s, {0, 0, 101, 51}, v, {false, 2.5, 2.5});
  const auto segments = s.Segments();
  ASSERT_EQ(segments.size(), 4u + 1u);  // 7.5, 5, 2.5, 0 and 2.5
  EXPECT_EQ(segments[0].from, (platform::Point{25, 0}));
  EXPECT_EQ(segments[0].color, 65535u);
}

TEST(DisplayState, WindowLimitsPointsAndTools) {
  const std::vector<float> ppm{0, 1, 2, 3, 4};
  DisplayState v;
  v.ViewF2Start = 7;
  v.ViewF2End = -1;
  v.ViewF1Start = 2;
  v.ViewF1End = 2;
  Check_Start_End(v, ppm, ppm, 5, 5);
  EXPECT_EQ(v.ViewF2Start, 4.0f);
  EXPECT_EQ(v.ViewF2End, 0.0f);
  EXPECT_EQ(v.ViewF1Start, 0.0f);  // equal ends: the whole axis
  EXPECT_EQ(v.ViewF1End, 4.0f);

  EXPECT_EQ(PpmToPoint(ppm, 5, 2.5f), 3);
  EXPECT_EQ(PpmToPoint(ppm, 5, 9.0f), 4);
  EXPECT_EQ(PpmToPoint({4, 3, 2, 1, 0}, 5, 2.5f), 2);
  EXPECT_EQ(PpmToPoint(ppm, 5, -3.0f), 0);

  bool declined = true;
  int asked = 0;
  ToolEnders enders{{kPhaseF2, [&] { return ++asked == 1; }}};  // stays the first time
  ResolveActiveTool(v, enders, declined);
  EXPECT_FALSE(declined);  // no tool: nothing asked
  v.ToolMode = kPhaseF2;
  ResolveActiveTool(v, enders, declined);
  EXPECT_TRUE(declined);
  EXPECT_EQ(v.ToolMode, kPhaseF2);
  ResolveActiveTool(v, enders, declined);
  EXPECT_FALSE(declined);
  EXPECT_EQ(v.ToolMode, kNoTool);
}

}  // namespace
}  // namespace velk::display
