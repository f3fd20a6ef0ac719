#include <gtest/gtest.h>

#include "processing/ft_controls.h"

namespace velk::processing {
namespace {

TEST(PhaseSteps, Phase0WrapsIntoHalfOpenRangeAndPhase1Stops) {
  EXPECT_DOUBLE_EQ(AddPhase0(175, 10), -175);
  EXPECT_DOUBLE_EQ(AddPhase0(-175, -10), 175);
  EXPECT_DOUBLE_EQ(AddPhase0(170, 10), -180);  // 180 belongs to the lower end
  EXPECT_DOUBLE_EQ(AddPhase0(-170, -10), -180);
  EXPECT_DOUBLE_EQ(AddPhase0(0, 0.1), 0.1);
  EXPECT_DOUBLE_EQ(AddPhase1(1800, 1), 1800);
  EXPECT_DOUBLE_EQ(AddPhase1(-1795, -10), -1800);
  EXPECT_DOUBLE_EQ(AddPhase1(1795, -10), 1785);
  EXPECT_EQ(kPhaseSteps.front(), -10);
  EXPECT_EQ(kPhaseSteps.back(), 10);
}

TEST(HeldStep, FirstRepeatAfter500msThenEvery50ms) {
  HeldStep held;
  EXPECT_EQ(held.Due(0), 0);  // not pressed
  EXPECT_EQ(held.Press(1000), 1);
  EXPECT_EQ(held.Due(1000), 0);
  EXPECT_EQ(held.Due(1499), 0);
  EXPECT_EQ(held.Due(1500), 1);
  EXPECT_EQ(held.Due(1549), 0);
  EXPECT_EQ(held.Due(1550), 1);
  EXPECT_EQ(held.Next(), 1600);
  EXPECT_EQ(held.Due(1760), 4);  // a late timer catches up: 1600, 1650, 1700, 1750
  EXPECT_EQ(held.Due(1799), 0);
  held.Release();
  EXPECT_EQ(held.Due(5000), 0);
  EXPECT_EQ(held.Press(6000), 1);  // a new press starts the wait again
  EXPECT_EQ(held.Due(6499), 0);
}

TEST(WindowClamps, TrapezoidKeepsItsOrderAndATenPercentTop) {
  const std::array<float, 4> T{0, 10, 90, 100};
  EXPECT_EQ(ClampCorner(T, 0, -150), -100);
  EXPECT_EQ(ClampCorner(T, 0, 20), 10);
  EXPECT_EQ(ClampCorner(T, 1, -5), 0);   // a T2 below T1 becomes T1
  EXPECT_EQ(ClampCorner(T, 1, 85), 80);  // within 10 of T3
  EXPECT_EQ(ClampCorner(T, 2, 15), 20);  // a T3 within 10 of T2 becomes T2 + 10
  EXPECT_EQ(ClampCorner(T, 2, 150), 100);
  EXPECT_EQ(ClampCorner(T, 3, 300), 200);
  EXPECT_EQ(ClampCorner(T, 3, 50), 90);
  EXPECT_EQ(ClampStart(-130, 100), -100);
  EXPECT_EQ(ClampEnd(250, 0), 200);
  EXPECT_LT(ClampStart(120, 100), 100);
}

TEST(WindowEditor, StepsClampAndCancelPutsBackTheCurveExactly) {
  WindowFunctionSetting live;
  live.type = kSineBell;
  live.WS = {-99.5f, 0, 0, 0};
  live.WE = {100, 100, 100};
  live.T = {0, 10, 90, 100};
  const WindowFunctionSetting entry = live;
  const WindowAxis axis{5000, 512, 512, 0};
  WindowCurve before, after;
  ASSERT_EQ(MakeWindowCurve(entry, axis, before), 0);

  WindowEditor editor(live);
  EXPECT_EQ(editor.Step(WindowField::Start, +1), -98);  // the fraction is cut first
  for (int i = 0; i < 5; ++i) editor.Step(WindowField::Start, -1);
  EXPECT_EQ(editor.Value(WindowField::Start), -100);  // held down at -100 stays there
  EXPECT_EQ(editor.Set(WindowField::End, -200), -99);  // the end stays above the start
  EXPECT_EQ(editor.Set(WindowField::T3, 12), 20);
  editor.SetMultiplyTrapezoid(true);
  editor.SetType(kHann);
  EXPECT_NE(live.multiTrape[kSineBell], 0);

  editor.Cancel();
  ASSERT_EQ(MakeWindowCurve(live, axis, after), 0);
  EXPECT_EQ(after.values, before.values);
  EXPECT_EQ(live.type, kSineBell);
  EXPECT_EQ(live.WS, entry.WS);
  EXPECT_EQ(live.T, entry.T);
  EXPECT_EQ(live.multiTrape, entry.multiTrape);

  editor.Set(WindowField::Broadening, 3.5f);  // "Fix" keeps, and a later "Cancel" goes back to that
  editor.Fix();
  editor.Set(WindowField::Broadening, 9);
  editor.Cancel();
  EXPECT_EQ(live.BF, 3.5f);
}

TEST(WindowExpressions, EditedWordingGoesBackToTheInitialOnePerType) {
  WindowExpressions e = DefaultWindowExpressions();
  EXPECT_EQ(e.current, e.initial);
  e.current[kHann] = "my own";
  e.current[kGaussian] = "kept";
  SetInitialExpression(e, kHann);
  SetInitialExpression(e, 7);  // no such type
  EXPECT_EQ(e.current[kHann], e.initial[kHann]);
  EXPECT_EQ(e.current[kGaussian], "kept");
  EXPECT_EQ(ExpressionTitle(kHann), "Squared Sine Bell");
  EXPECT_TRUE(ExpressionTitle(5).empty());
}

}  // namespace
}  // namespace velk::processing
