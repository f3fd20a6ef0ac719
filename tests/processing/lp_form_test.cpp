#include <gtest/gtest.h>

#include "processing/ft_controls.h"
#include "processing/lp_form.h"
#include "processing/messages.h"

namespace velk::processing {
namespace {

using model::F1;
using model::F2;

// Both axes with 256 measured points, F2 extended by prediction.
SequenceSettings Extended() {
  SequenceSettings s;
  for (AxisProcessing& a : s.axis) a.lp = {40, 60, 10, 3, 0, 0, 0};
  s.axis[F2].lpFactor = 2;
  s.axis[F2].lp.ForwardOn = 1;
  return s;
}

TEST(LpForm, LeftFieldsFallBackOrPullTheStartDown) {
  LpForm form(Extended(), {128, 256});
  EXPECT_EQ(form.Leave(F1, LpField::Order, 19), 40);   // below 20: the stored order
  EXPECT_EQ(form.Leave(F1, LpField::Order, 101), 40);  // above 100 likewise
  EXPECT_EQ(form.Leave(F1, LpField::BackPoints, 0), 3);
  EXPECT_EQ(form.Leave(F1, LpField::BackPoints, 11), 3);
  EXPECT_EQ(form.Leave(F1, LpField::BackPoints, 10), 10);
  EXPECT_EQ(form.Leave(F1, LpField::Start, 90), 90 - 42);  // at most 128 - 2 * 40
  EXPECT_EQ(form.Leave(F1, LpField::Order, 50), 50);
  EXPECT_EQ(form.Axis(F1).Start, 128 - 2 * 50 - 1);   // a larger order pulls the start down
  EXPECT_EQ(form.Axis(F2).Start, 10);                  // the other axis is untouched
  EXPECT_EQ(form.Leave(F1, LpField::Order, 20), 20);
  EXPECT_EQ(form.Axis(F1).Start, 27);                  // and a smaller one leaves it
}

TEST(LpForm, GoFftChecksOnlyWhatRunsAndTheLastTextWins) {
  SequenceSettings settings = Extended();
  {
    LpForm form(settings, {128, 256});
    form.Leave(F2, LpField::Points, 30);  // order 40 above points 30
    const platform::Message m = form.GoFft();
    EXPECT_EQ(m.title, messages::kLpParameterError);
    EXPECT_EQ(m.text, messages::kOrderAbovePoints);
    // F1 backward with too many points for 128 rows: its text comes last and wins.
    form.Leave(F1, LpField::Points, 90);
    form.SetBackward(F1, true);
    EXPECT_EQ(form.GoFft().text, messages::kOutsideData);
    form.SetBackward(F1, false);
    form.Leave(F2, LpField::Points, 60);
    EXPECT_TRUE(form.GoFft().empty());
    // A forward prediction asked on an axis without LP Fill is not checked: it does not run.
    form.SetForward(F1, true);
    EXPECT_TRUE(form.GoFft().empty());
  }
  {
    // Start below 10 becomes 10, above FID points - order - points + 1 that value.
    LpForm form(settings, {128, 256});
    form.Leave(F2, LpField::Start, 3);
    EXPECT_TRUE(form.GoFft().empty());
    EXPECT_EQ(form.Axis(F2).Start, 10);
    form.Leave(F2, LpField::Start, 170);
    EXPECT_TRUE(form.GoFft().empty());
    EXPECT_EQ(form.Axis(F2).Start, 256 - 40 - 60 + 1);
    form.Apply(settings);
    EXPECT_EQ(settings.axis[F2].lp.Start, 157);
  }
  {
    LpForm form(settings, {128, 256});
    form.SetForward(F2, false);
    const platform::Message m = form.GoFft();
    EXPECT_EQ(m.buttons, platform::Buttons::OkCancel);
    EXPECT_NE(m.text.find("Anyway, go FT conversion?"), std::string::npos);
  }
}

TEST(LpForm, PredictionMustBeAskedBeforeTheSetUp) {
  SequenceSettings s;
  EXPECT_EQ(PredictionAsked(s).text, messages::kSetLpFills);
  s.axis[F1].lp.BackwardOn = 1;
  EXPECT_TRUE(PredictionAsked(s).empty());
  s.axis[F1].lp.BackwardOn = 0;
  s.axis[F2].lpFactor = 2;
  EXPECT_TRUE(PredictionAsked(s).empty());
}

TEST(FidShiftSteps, StopAtZeroWhenThePressBeganOnTheOtherSide) {
  // Held down from +2: 1, 0, then 0 again until a new press.
  EXPECT_EQ(StepFidShift(2, -1, 2, 512), 1);
  EXPECT_EQ(StepFidShift(1, -1, 2, 512), 0);
  EXPECT_EQ(StepFidShift(0, -1, 2, 512), 0);
  EXPECT_EQ(StepFidShift(0, -1, 0, 512), -1);  // the new press goes on
  EXPECT_EQ(StepFidShift(-1, +1, -3, 512), 0);
  EXPECT_EQ(StepFidShift(0, +1, -3, 512), 0);
  EXPECT_EQ(StepFidShift(0, +1, 0, 512), 1);
  EXPECT_EQ(StepFidShift(511, +1, 0, 512), 511);  // NF2 - 1
  EXPECT_EQ(StepFidShift(-511, -1, 0, 512), -511);
}

}  // namespace
}  // namespace velk::processing
