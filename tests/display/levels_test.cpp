#include <gtest/gtest.h>

#include "display/levels.h"
#include "model/data_type.h"

namespace velk::display {
namespace {

std::vector<int> DrawOrder(const LevelTable& t) {
  return {t.DrawIndex.begin(), t.DrawIndex.begin() + t.DrawCount + 1};
}

TEST(BuildLevelTable, ThirtyTwoLinearStepsThenSixteenLeaveTheOddEntriesAsTheyWere) {
  LevelTable t;
  ContourSetting setting;
  setting.Steps = 32;
  BuildLevelTable(t, setting, 1.0f, 0.1f, model::VPH_HOMO);
  EXPECT_FLOAT_EQ(t.Level[0], 1.0f);
  EXPECT_FLOAT_EQ(t.Level[14], 0.1f + 0.9f / 15);
  EXPECT_FLOAT_EQ(t.Level[15], 0.1f);
  EXPECT_FLOAT_EQ(t.Level[16], -0.1f);
  EXPECT_FLOAT_EQ(t.Level[31], -1.0f);
  EXPECT_EQ(t.DrawCount, 32);
  EXPECT_EQ(t.DrawIndex[0], 15);
  EXPECT_EQ(t.DrawIndex[15], 0);
  EXPECT_EQ(t.DrawIndex[16], 16);
  EXPECT_EQ(t.DrawIndex[32], -1);
  EXPECT_EQ(t.Color[30], setting.Palette[15]);

  setting.Steps = 16;
  BuildLevelTable(t, setting, 0.5f, 0.05f, model::VPH_HOMO);
  EXPECT_FLOAT_EQ(t.Level[0], 0.5f);
  EXPECT_FLOAT_EQ(t.Level[14], 0.05f);
  EXPECT_FLOAT_EQ(t.Level[15], 0.1f);  // not reached by a stride of 2
  EXPECT_FLOAT_EQ(t.Level[17], -0.05f);
}

TEST(BuildLevelTable, FourStepsDrawLowToHighOnEachSideWithTheirColours) {
  LevelTable t;
  ContourSetting setting;  // 4 steps, default palette
  BuildLevelTable(t, setting, 1.0f, 0.1f, model::VPH_HETERO);
  EXPECT_EQ(DrawOrder(t), (std::vector<int>{8, 0, 23, 31, -1}));
  EXPECT_EQ(t.DrawSign[2], -1);
  EXPECT_EQ(t.Color[8], setting.Palette[4]);
  EXPECT_EQ(t.Color[0], setting.Palette[0]);
  EXPECT_EQ(t.Color[23], setting.Palette[11]);
  EXPECT_EQ(t.Color[31], setting.Palette[15]);
  EXPECT_FLOAT_EQ(t.Level[8], 0.1f);
  EXPECT_FLOAT_EQ(t.Level[23], -0.1f);

  // No negative side for the magnitude classes, for a power display, nor for V_HOMO.
  BuildLevelTable(t, setting, 1.0f, 0.1f, model::VPH_HMBC);
  EXPECT_EQ(DrawOrder(t), (std::vector<int>{8, 0, -1}));
  BuildLevelTable(t, setting, 1.0f, 0.1f, model::V_HOMO);
  EXPECT_EQ(t.DrawCount, 2);
  setting.PowerSpectrum = 1;
  BuildLevelTable(t, setting, 1.0f, 0.1f, model::VPH_HOMO);
  EXPECT_EQ(t.DrawCount, 2);
}

TEST(BuildLevelTable, ExponentialSpacingCrowdsTowardsTheLowerLimit) {
  LevelTable t;
  ContourSetting setting;
  setting.Steps = 8;     // h = 4, stride 4
  setting.Interval = 1;  // base 2: levels L + (2^(4-i) - 1) (U-L) / 7
  BuildLevelTable(t, setting, 1.0f, 0.1f, model::VPH_HOMO);
  EXPECT_FLOAT_EQ(t.Level[0], 1.0f);
  EXPECT_FLOAT_EQ(t.Level[4], 0.1f + 3 * 0.9f / 7);
  EXPECT_FLOAT_EQ(t.Level[8], 0.1f + 0.9f / 7);
  EXPECT_FLOAT_EQ(t.Level[12], 0.1f);
  EXPECT_FLOAT_EQ(t.Level[19], -0.1f);
  EXPECT_EQ(DrawOrder(t), (std::vector<int>{12, 8, 4, 0, 19, 23, 27, 31, -1}));

  // A free base of 1.00 is the linear limit of the formula.
  setting.Interval = 100;
  BuildLevelTable(t, setting, 1.0f, 0.1f, model::VPH_HOMO);
  EXPECT_FLOAT_EQ(t.Level[4], 0.7f);
  EXPECT_DOUBLE_EQ(SpacingBase(250), 2.5);
  EXPECT_DOUBLE_EQ(SpacingBase(7), 2.0);
  EXPECT_EQ(NormalizeSteps(1), 4);
  EXPECT_EQ(NormalizeSteps(9), 16);
  EXPECT_EQ(NormalizeSteps(17), 32);
}

TEST(LevelList, PercentLinesAlignedOnThePoint) {
  LevelTable t;
  ContourSetting setting;
  setting.Steps = 8;
  BuildLevelTable(t, setting, 1.0f, 0.01f, model::VPH_HOMO);
  const auto lines = LevelListText(t, setting.Steps);
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0], "100.000000 %");
  EXPECT_EQ(lines[3], "  1.000000 %");
}

TEST(Limits, EntryAndArrowsKeepUpperAboveLower) {
  float upper = 1.0f, lower = 0.1f;
  EXPECT_FALSE(EnterUpperLimit("5", upper, lower));  // 5 % is below the lower limit
  EXPECT_FALSE(EnterUpperLimit("100", upper, lower));  // unchanged
  EXPECT_FALSE(EnterUpperLimit("abc", upper, lower));
  EXPECT_TRUE(EnterUpperLimit("50 %", upper, lower));
  EXPECT_FLOAT_EQ(upper, 0.5f);
  EXPECT_FALSE(EnterLowerLimit("50", upper, lower));
  EXPECT_FALSE(EnterLowerLimit("-1", upper, lower));
  EXPECT_TRUE(EnterLowerLimit("20", upper, lower));

  lower = 1.05e-8f;
  EXPECT_FALSE(StepLowerLimit(false, upper, lower));  // would go below 1e-8
  lower = 0.46f;
  EXPECT_FALSE(StepLowerLimit(true, upper, lower));   // 0.506 would pass the upper limit
  EXPECT_TRUE(StepUpperLimit(true, upper, lower));
  EXPECT_FLOAT_EQ(upper, 0.55f);
  EXPECT_EQ(FormatLimit(0.1f, kScientificUpper), "10.0");
  EXPECT_EQ(FormatLimit(0.0012345f, kScientificUpper), "0.12345");
  EXPECT_EQ(FormatLimit(2e-6f, kScientificUpper), "2.000E-04");
  EXPECT_EQ(FreeSpacingCode(1.5), 2);
  EXPECT_EQ(FreeSpacingCode(1.37), 137);
}

}  // namespace
}  // namespace velk::display
