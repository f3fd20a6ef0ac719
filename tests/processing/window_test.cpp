// Window curves against their closed forms at chosen points.
#include <gtest/gtest.h>

#include <cmath>

#include "processing/window.h"

namespace velk::processing {
namespace {

constexpr double kPi = 3.14159265358979;

WindowCurve Make(const WindowFunctionSetting& w, std::int32_t length, std::int32_t size, std::int32_t shift = 0,
                 double sw = 1000) {
  WindowCurve c;
  EXPECT_EQ(MakeWindowCurve(w, {sw, length, size, shift}, c), 0);
  return c;
}

TEST(WindowCurve, FiveTypesMatchTheirClosedForms) {
  WindowFunctionSetting w;
  w.BF = 2;
  WindowCurve c = Make(w, 100, 256);
  EXPECT_FLOAT_EQ(c.at(10), std::exp(-2 * 10 * kPi / 1000));
  EXPECT_GT(c.at(-5), 1.0f);  // negative indices of a shifted FID rise above 1
  EXPECT_EQ(c.at(100), 0.0f);  // the zero-filled part is cut
  EXPECT_EQ(c.low, kAxisWindowLow);
  EXPECT_EQ(c.high(), kAxisWindowHigh);

  w.type = kSineBell;
  w.WS[0] = 0;
  w.WE[0] = 100;
  c = Make(w, 100, 256);
  EXPECT_FLOAT_EQ(c.at(50), 1.0f);
  EXPECT_FLOAT_EQ(c.at(25), std::sin(kPi / 4));
  EXPECT_EQ(c.at(-1), 0.0f);

  w.type = kHann;
  w.WS[1] = 20;
  w.WE[1] = 60;  // i0 = 20, i1 = 60, top at 40
  c = Make(w, 100, 256);
  EXPECT_FLOAT_EQ(c.at(40), 1.0f);
  EXPECT_FLOAT_EQ(c.at(30), std::pow(std::sin(kPi / 4), 2));
  EXPECT_EQ(c.at(19), 0.0f);
  EXPECT_EQ(c.at(61), 0.0f);

  w.type = kBlackmanHarris;
  w.WS[3] = 0;
  w.WE[2] = 100;
  c = Make(w, 100, 256);
  const double u = static_cast<float>(2 * kPi * 0.25);
  const double quarter = 0.35874998569488525 - 0.488290011882782 * std::cos(u) + 0.14127999544143677 * std::cos(2 * u) -
                         0.011680000461637974 * std::cos(3 * u);
  EXPECT_FLOAT_EQ(c.at(50), 1.0f);  // the peak sums the four coefficients: 1 within rounding
  EXPECT_NEAR(c.at(25), quarter, 1e-6);

  w.type = kGaussian;
  w.WS[2] = 10;  // peak at index 10
  w.GBF = -5;
  w.GF = 3;
  c = Make(w, 100, 256);
  auto gauss = [&](int i) {
    const double t = static_cast<float>((i - 10) / 1000.0);
    return std::exp(static_cast<float>(t * -5 * kPi - t * t * 9 * kPi));
  };
  double top = 0;
  for (int i = kAxisWindowLow; i < 100; ++i) top = std::max(top, static_cast<double>(static_cast<float>(gauss(i))));
  EXPECT_NEAR(c.at(60), gauss(60) / top, 1e-6);
}

TEST(WindowCurve, GaussianAboveTheLimitIsZeroNotSaturated) {
  WindowFunctionSetting w;
  w.type = kGaussian;
  w.WS[2] = 0;
  w.GBF = 4000;  // x grows past 85 within the data: those points are 0 before normalisation
  w.GF = 1;
  WindowCurve c = Make(w, 100, 128, 0, 50);
  EXPECT_GT(c.at(0), 0.0f);
  EXPECT_EQ(c.at(99), 0.0f);
}

TEST(WindowCurve, TrapezoidRampsHardEdgesAndTheShiftedLength) {
  WindowFunctionSetting w;  // flat 1
  w.multiTrape[kExponential] = 1;
  w.T = {10, 20, 80, 90};
  WindowCurve c = Make(w, 100, 128);
  EXPECT_EQ(c.at(9), 0.0f);
  EXPECT_FLOAT_EQ(c.at(15), 0.5f);
  EXPECT_FLOAT_EQ(c.at(50), 1.0f);
  EXPECT_FLOAT_EQ(c.at(85), 0.5f);
  EXPECT_EQ(c.at(90), 0.0f);
  EXPECT_EQ(c.at(-50), 0.0f);
  w.T = {10, 10, 100, 100};  // no ramp: a hard edge at T1
  c = Make(w, 100, 128);
  EXPECT_EQ(c.at(9), 0.0f);
  EXPECT_EQ(c.at(10), 1.0f);
  c = Make(w, 100, 128, 20);  // the corners are worked out on n - shift points
  EXPECT_EQ(c.at(7), 0.0f);
  EXPECT_EQ(c.at(8), 1.0f);
  EXPECT_EQ(c.at(80), 0.0f);
}

TEST(WindowCurve, ACurveThatStaysZeroIsAnArithmeticError) {
  WindowFunctionSetting w;
  w.type = kSineBell;
  w.WS[0] = 150;
  w.WE[0] = 200;
  WindowCurve c;
  EXPECT_EQ(MakeWindowCurve(w, {1000, 100, 128}, c), 1);
  w.WS[0] = w.WE[0] = 50;  // zero width inside the data
  EXPECT_EQ(MakeWindowCurve(w, {1000, 100, 128}, c), 1);
}

}  // namespace
}  // namespace velk::processing
