// Single-converter data: the sequential transform and the Bruker correction give the spectrum and
// the uniform time signal of the true complex signal; the FID shift rules; baseline; the preview.
#include <gtest/gtest.h>

#include <cmath>

#include "processing/fid_corrections.h"
#include "processing/trace_transform.h"
#include "processing/transforms.h"
#include "synthetic.h"

namespace velk::processing {
namespace {

constexpr double kCycles = 3.0 / 32;  // a whole number of turns in 32 points: periodic, so exact

// The imaginary point is taken half a dwell after the real one.
void FillSequential(model::Plane& X, model::Plane& Y, std::int32_t column, std::int32_t n) {
  for (std::int32_t k = 0; k < n; ++k) {
    X.at(column, k) = static_cast<float>(std::cos(2 * M_PI * kCycles * k));
    Y.at(column, k) = static_cast<float>(std::sin(2 * M_PI * kCycles * (k + 0.5)));
  }
}

TEST(SequentialData, TransformLeavesNoMirrorImageAndCorrectionGivesTheUniformSignal) {
  const std::int32_t n = 32;
  auto X = test::MakePlane(2, n), Y = test::MakePlane(2, n);
  FillSequential(X, Y, 0, n);
  FillSequential(X, Y, 1, n);
  WindowCurve flat;
  ASSERT_EQ(MakeWindowCurve({}, {1000, n, n}, flat), 0);
  ASSERT_TRUE(TransformF1Sequential(X, Y, n, 1, false, flat, {}, {}));
  const std::int32_t peak = n / 2 + 3, mirror = n / 2 - 3;
  EXPECT_NEAR(X.at(0, peak), n, 1e-3);
  EXPECT_NEAR(std::hypot(X.at(0, mirror), Y.at(0, mirror)), 0, 1e-3);

  BrukerCorrectionF1(X, Y, n, 2);  // column 1 only is still a time signal
  ASSERT_TRUE(InverseColumns(X, Y, n, 2, true, {}));
  for (std::int32_t k = 0; k < n; ++k) {
    EXPECT_NEAR(X.at(1, k), std::cos(2 * M_PI * kCycles * k), 1e-5) << k;
    EXPECT_NEAR(Y.at(1, k), std::sin(2 * M_PI * kCycles * k), 1e-5) << k;
  }
}

TEST(FidShift, SearchDefaultsAndKeys) {
  float zero[8] = {};
  EXPECT_EQ(AutoFidShift(zero, zero, 8), 0);
  float re[] = {0.1f, 0.15f, 0.3f, 1.0f, 0.5f}, im[5] = {};
  EXPECT_EQ(AutoFidShift(re, im, 5), 2);  // the first point at or above 20% of the largest
  float top[] = {1.0f, 0.1f}, none[2] = {};
  EXPECT_EQ(AutoFidShift(top, none, 2), 0);

  FidShiftDefaults d;
  EXPECT_TRUE(d.autoShift);  // the search is what a fresh settings file asks for
  d.autoShift = false;
  d.instruments = {{"AV600", 76}};
  SaveFidShiftDefault(d, kBrukerFamily, "13C", 70);
  SaveFidShiftDefault(d, kJeolFamily, "H1", 3);
  EXPECT_EQ(ChooseFidShift(d, "AV600", kBrukerFamily, "13C", re, im, 5), 76);
  EXPECT_EQ(ChooseFidShift(d, "AV400", kBrukerFamily, "C13", re, im, 5), 70);
  EXPECT_EQ(ChooseFidShift(d, "", kJeolFamily, "", re, im, 5), 3);  // an empty nucleus counts as H1
  EXPECT_EQ(ChooseFidShift(d, "", 7, "15N", re, im, 5), 0);
  d.autoShift = true;
  EXPECT_EQ(ChooseFidShift(d, "AV600", kBrukerFamily, "13C", re, im, 5), 2);
  EXPECT_EQ(FidShiftKey(kBrukerFamily, kH1), "FID SHFT H1 BRU");
  EXPECT_EQ(FidShiftKey(9, kOtherNucleus), "FID SHIFT X");
}

TEST(FidBaselineAndT1Noise, SubtractTheTailMeanAndScaleRowZero) {
  auto p = test::MakePlane(10, 2);
  for (std::int32_t i = 0; i < 10; ++i) p.at(i, 0) = p.at(i, 1) = i < 8 ? 5.0f : 2.0f;  // tail: points 8, 9
  FidBaseline(p, 1, 10);
  EXPECT_FLOAT_EQ(p.at(0, 0), 3.0f);
  EXPECT_FLOAT_EQ(p.at(9, 0), 0.0f);
  EXPECT_FLOAT_EQ(p.at(0, 1), 5.0f);  // rows past the count stay
  T1NoiseCorrection({&p}, 10, ClampT1NoiseFactor(7.0f));
  EXPECT_FLOAT_EQ(p.at(0, 0), 6.0f);
  EXPECT_FLOAT_EQ(p.at(0, 1), 5.0f);
}

TEST(TransformTrace, SignRuleXTableAndYScale) {
  const std::int32_t n = 64;
  WindowCurve flat;
  ASSERT_EQ(MakeWindowCurve({}, {1000, n, n}, flat), 0);
  auto peakOf = [&](const TraceView& v) {
    std::vector<float> re(n), im(n);
    for (std::int32_t i = 0; i < n; ++i) {
      const auto s = test::SignalAt({{0.125, 0.05}}, i);
      re[i] = static_cast<float>(s.real());
      im[i] = static_cast<float>(s.imag());
    }
    const TraceScale scale = TransformTrace(re.data(), im.data(), flat, v);
    EXPECT_FLOAT_EQ(scale.x[2], 2 * 1000.0f / n / 2);
    return test::PeakIndex(n, [&](std::int32_t i) { return std::pair{re[i], im[i]}; });
  };
  TraceView v{.axis = model::F2, .span = 1000, .size = n, .zeroFill = 2, .pulseModeClass = 0, .formatNumber = 4};
  EXPECT_EQ(peakOf(v), n / 2 + 8);  // Bruker, usual class: kept
  v.formatNumber = 3;
  EXPECT_EQ(peakOf(v), n / 2 - 8);  // others negated
  v.fidShift = -1;
  v.brukerData = true;
  EXPECT_FALSE(TraceConjugate(v));  // a negative shift keeps the sign of Bruker data in class 0
  // A column takes the sign of the run's F1 transform: kept for a Bruker HSQC, negated for a
  // Bruker magnitude COSY.
  v.axis = model::F1;
  v.formatNumber = 4;
  v.pulseModeClass = 3;
  EXPECT_FALSE(TraceConjugate(v));
  v.pulseModeClass = 1;
  EXPECT_TRUE(TraceConjugate(v));
  std::vector<float> zeros(n, 0.0f), zeros2(n, 0.0f);
  EXPECT_FLOAT_EQ(TransformTrace(zeros.data(), zeros2.data(), flat, v).yMaximum, 2 * std::sqrt(0.1f));
}

}  // namespace
}  // namespace velk::processing
