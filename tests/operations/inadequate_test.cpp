// INADEQUATE: the spans that count as full, and the extension of a folded set whose true places
// are known, with the slope 2 line through the middle of every pair.
#include "operations/inadequate.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/synthetic_inadequate.h"

namespace velk::test {
namespace {

using model::F1;
using model::F2;
using namespace operations;

TEST(Inadequate, SpansThatCountAsFull) {
  model::Spectrum2D s;
  s.axis[F2].Frequency = 1000;
  s.axis[F1].Frequency = 1000;  // same spans: folded
  EXPECT_TRUE(ChangeInadequateMode(s, 1));
  EXPECT_EQ(s.InadequateFull, 0);
  EXPECT_FALSE(ChangeInadequateMode(s, 1));  // unchanged: nothing happens
  EXPECT_TRUE(ChangeInadequateMode(s, 0));   // leaving the mode clears the word whatever the spans
  EXPECT_EQ(s.InadequateFull, 0);
  s.axis[F1].Frequency = 1995;  // one part in 400 short of the double: full
  EXPECT_TRUE(ChangeInadequateMode(s, 1));
  EXPECT_EQ(s.InadequateFull, 1);
  EXPECT_TRUE(ChangeInadequateMode(s, 0));
  EXPECT_EQ(s.InadequateFull, 0);
  EXPECT_EQ(InadequateFullOf(1979, 1000), 0);  // 1.05 per cent short
  EXPECT_EQ(InadequateFullOf(2500, 1000), 1);  // wider than needed
}

TEST(Inadequate, ExtensionPutsFoldedPairsInPlace) {
  model::Spectrum2D s = FoldedInadequateSet();
  display::DisplayState view;
  view.ViewF1Start = 2.0f;
  view.ViewF1End = 3.0f;
  ASSERT_TRUE(ExtendFoldedData(s, view).ok());
  EXPECT_EQ(s.axis[F1].Point, 256);
  EXPECT_EQ(s.axis[F1].Frequency, 2560.0f);
  EXPECT_EQ(s.axis[F1].RefPoint, 128);
  EXPECT_EQ(s.InadequateFull, 1);
  EXPECT_FLOAT_EQ(s.ppmF1[128], 0.0f);
  EXPECT_FLOAT_EQ(std::max(view.ViewF1Start, view.ViewF1End), s.ppmF1[255]);
  EXPECT_FLOAT_EQ(std::min(view.ViewF1Start, view.ViewF1End), s.ppmF1[0]);
  EXPECT_EQ(s.peaks.peaks[0].PosF1, 800.0f);  // 640 Hz up, with its row

  for (const CarbonPair& p : kCarbonPairs) {
    EXPECT_NEAR(s.RR.at(p.a, p.a + p.b), 1.0, 0.02) << p.a << "," << p.b;
    EXPECT_NEAR(s.RR.at(p.b, p.a + p.b), 1.0, 0.02) << p.a << "," << p.b;
  }
  // Nothing stands anywhere else, and all four planes moved alike.
  for (int r = 0; r < 256; ++r)
    for (int c = 0; c < 128; ++c) {
      bool nearTruth = false;
      for (const CarbonPair& p : kCarbonPairs)
        nearTruth |= std::abs(r - (p.a + p.b)) <= 4 && (std::abs(c - p.a) <= 4 || std::abs(c - p.b) <= 4);
      if (!nearTruth) {
        ASSERT_LT(std::fabs(s.RR.at(c, r)), 1e-3) << c << "," << r;
      }
      ASSERT_EQ(s.II.at(c, r), -0.5f * s.RR.at(c, r));
    }
  // The slope 2 line passes through the middle of every pair.
  const Slope2Line line = Slope2LineOf(s);
  for (const CarbonPair& p : kCarbonPairs) {
    const double col = (p.a + p.b) / 2.0;
    const double row = line.row1 + (col - line.col1) * (line.row2 - line.row1) / (line.col2 - line.col1);
    EXPECT_NEAR(row, p.a + p.b, 1e-9);
  }
  // Once full, the extension is not offered again.
  EXPECT_EQ(ExtendFoldedData(s, view).code, 1);
}

TEST(Inadequate, TooLargeLeavesTheSetAsItWas) {
  model::Spectrum2D s = FoldedInadequateSet();
  s.axis[F1].Frequency = 0.1f;  // a doubled F2 span of 25600 times F1: far beyond the largest axis
  display::DisplayState view;
  const platform::Outcome out = ExtendFoldedData(s, view);
  EXPECT_EQ(out.code, 1);
  EXPECT_EQ(out.message.text, "Data Size is too large!");
  EXPECT_EQ(s.axis[F1].Point, 128);
  EXPECT_EQ(s.RR.at(30, 16), FoldedInadequateSet().RR.at(30, 16));
}

}  // namespace
}  // namespace velk::test
