// The reference kernel against hand-worked transforms, and the fast path against the reference.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "processing/fast_fft.h"
#include "processing/fft_kernel.h"
#include "processing/sine_table.h"

namespace velk::processing {
namespace {

TEST(SineTable, AngleIsRoundedToSinglePrecisionFirst) {
  const SineTable& s = SharedSineTable();
  ASSERT_EQ(s.values.size(), 5u * kTableSize / 4 + 1);
  EXPECT_EQ(s[0], 0.0f);
  EXPECT_EQ(s[kTableSize / 4], 1.0f);
  // sin of pi rounded to single precision is not zero: the table keeps that.
  EXPECT_EQ(s[kTableSize / 2], static_cast<float>(std::sin(static_cast<double>(static_cast<float>(3.14159265358979)))));
  EXPECT_LT(s[kTableSize / 2], 0.0f);
  EXPECT_EQ(s[kTableSize + kTableSize / 4], s[kTableSize / 4]);
}

TEST(FftKernel, HandWorkedSmallTransforms) {
  {  // N = 2: one stage at angle 0.
    float re[] = {3, 1}, im[] = {2, 5};
    FftKernel(re, im, 2);
    EXPECT_EQ(re[0], 4.0f);
    EXPECT_EQ(im[0], 7.0f);
    EXPECT_EQ(re[1], 2.0f);
    EXPECT_EQ(im[1], -3.0f);
  }
  {  // N = 4 of 1, 2, 3, 4: -2 + 2i, -2, -2 - 2i, with sin(pi) of the table (-8.74e-8) on the way.
    float re[] = {1, 2, 3, 4}, im[] = {0, 0, 0, 0};
    FftKernel(re, im, 4);
    const float expectRe[] = {10.0f, std::nextafter(-2.0f, 0.0f), -2.0f, std::nextafter(-2.0f, -3.0f)};
    const float expectIm[] = {0.0f, 2.0f, 0.0f, -2.0f};
    for (int k = 0; k < 4; ++k) {
      EXPECT_EQ(re[k], expectRe[k]) << k;
      EXPECT_EQ(im[k], expectIm[k]) << k;
    }
  }
  {  // N = 8, a cosine at bin 2 and the alternating sequence: every twiddle meets a zero difference.
    float re[] = {1, 0, -1, 0, 1, 0, -1, 0}, im[8] = {};
    FftKernel(re, im, 8);
    const float expectRe[] = {0, 0, 4, 0, 0, 0, 4, 0};
    for (int k = 0; k < 8; ++k) EXPECT_EQ(re[k], expectRe[k]) << k;
    for (int k = 0; k < 8; ++k) EXPECT_EQ(std::fabs(im[k]), 0.0f) << k;
    float alt[] = {1, -1, 1, -1, 1, -1, 1, -1}, zero[8] = {};
    FftKernel(alt, zero, 8);
    for (int k = 0; k < 8; ++k) EXPECT_EQ(alt[k], k == 4 ? 8.0f : 0.0f) << k;
  }
  {  // The half swap puts the carrier at N/2.
    double re[] = {0, 1, 2, 3}, im[] = {4, 5, 6, 7};
    HalfSwap(re, im, 4);
    EXPECT_EQ(re[0], 2.0);
    EXPECT_EQ(re[2], 0.0);
    EXPECT_EQ(im[3], 5.0);
  }
}

TEST(FftKernel, MatchesTheDirectSumWithNegativeExponent) {
  const int n = 64;
  std::vector<float> re(n), im(n);
  for (int i = 0; i < n; ++i) {
    re[i] = std::cos(0.3 * i) + 0.1f * i;
    im[i] = std::sin(0.7 * i);
  }
  std::vector<float> outRe = re, outIm = im;
  FftKernel(outRe.data(), outIm.data(), n);
  for (int k = 0; k < n; ++k) {
    double sr = 0, si = 0;
    for (int m = 0; m < n; ++m) {
      const double a = -2 * M_PI * k * m / n;
      sr += re[m] * std::cos(a) - im[m] * std::sin(a);
      si += re[m] * std::sin(a) + im[m] * std::cos(a);
    }
    EXPECT_NEAR(outRe[k], sr, 1e-4) << k;
    EXPECT_NEAR(outIm[k], si, 1e-4) << k;
  }
}

TEST(FastFft, AgreesWithTheReferenceToSinglePrecisionForEverySize) {
  std::mt19937 random(7);
  std::uniform_real_distribution<float> value(-1.0f, 1.0f);
  for (int n = 2; n <= 65536; n *= 2) {
    std::vector<float> re(n), im(n);
    for (int i = 0; i < n; ++i) {
      re[i] = value(random);
      im[i] = value(random);
    }
    std::vector<float> refRe = re, refIm = im;
    FftKernel(refRe.data(), refIm.data(), n);
    const FastFftPlan plan = MakeFastFftPlan(n);
    FastFft(plan, re.data(), im.data());
    double energy = 0, worst = 0;
    for (int k = 0; k < n; ++k) {
      energy += double(refRe[k]) * refRe[k] + double(refIm[k]) * refIm[k];
      worst = std::max({worst, std::fabs(double(re[k]) - refRe[k]), std::fabs(double(im[k]) - refIm[k])});
    }
    // Rounding of single precision grows with the number of stages, relative to the rms value.
    const double rms = std::sqrt(energy / n);
    EXPECT_LE(worst, 2e-7 * std::log2(n) * rms * 4) << "n = " << n;
  }
}

TEST(FastFft, EveryLaneOfABatchIsTheSingleTraceTransform) {
  const int n = 32;
  const FastFftPlan plan = MakeFastFftPlan(n);
  std::vector<float> re(n * kLanes), im(n * kLanes);
  for (int i = 0; i < n; ++i)
    for (int b = 0; b < kLanes; ++b) {
      re[i * kLanes + b] = std::sin(0.1f * i * (b + 1));
      im[i * kLanes + b] = std::cos(0.05f * i + b);
    }
  const std::vector<float> inRe = re, inIm = im;
  FastFftBatch(plan, re.data(), im.data());
  for (int b = 0; b < kLanes; ++b) {
    std::vector<float> oneRe(n), oneIm(n);
    for (int i = 0; i < n; ++i) {
      oneRe[i] = inRe[i * kLanes + b];
      oneIm[i] = inIm[i * kLanes + b];
    }
    FastFft(plan, oneRe.data(), oneIm.data());
    for (int k = 0; k < n; ++k) {
      EXPECT_EQ(re[plan.reversed[k] * kLanes + b], oneRe[k]);
      EXPECT_EQ(im[plan.reversed[k] * kLanes + b], oneIm[k]);
    }
  }
}

}  // namespace
}  // namespace velk::processing
