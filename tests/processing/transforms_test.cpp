// Peaks of synthetic FIDs land at the right index with the sign conventions of each family, the
// fast plane transforms agree with the reference kernel, and threads do not change a bit.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "processing/fft_kernel.h"
#include "processing/transforms.h"
#include "synthetic.h"

namespace velk::processing {
namespace {

using test::Line;

WindowCurve Flat(std::int32_t length, std::int32_t size) {
  WindowCurve w;
  WindowFunctionSetting none;  // exponential with BF = 0: 1 over the FID, 0 beyond
  EXPECT_EQ(MakeWindowCurve(none, {1000, length, size}, w), 0);
  return w;
}

void FillRow(model::Plane& X, model::Plane& Y, std::int32_t row, std::int32_t n, const std::vector<Line>& lines) {
  for (std::int32_t i = 0; i < n; ++i) {
    const auto v = test::SignalAt(lines, i);
    X.at(i, row) = static_cast<float>(v.real());
    Y.at(i, row) = static_cast<float>(v.imag());
  }
}

TEST(TransformF2Rows, PeaksAtTheRightIndexForBothSignsAndEveryZeroFill) {
  const std::int32_t fid = 64;
  for (std::int32_t size : {64, 128, 256}) {
    for (double cycles : {0.125, -0.25}) {
      for (bool conjugate : {false, true}) {
        auto X = test::MakePlane(size, 4), Y = test::MakePlane(size, 4);
        FillRow(X, Y, 0, fid, {{cycles, 0.02}});
        ASSERT_TRUE(TransformF2Rows(X, Y, 1, size, 0, conjugate, Flat(fid, size), {}, {}));
        const double f = conjugate ? -cycles : cycles;
        const auto expected = static_cast<std::int32_t>(size / 2 + f * size);
        EXPECT_EQ(test::PeakIndex(size, [&](std::int32_t i) { return std::pair{X.at(i, 0), Y.at(i, 0)}; }), expected)
            << "size " << size << " cycles " << cycles << " conjugate " << conjugate;
        for (std::int32_t i = 0; i < size; ++i) ASSERT_EQ(X.at(i, 1), 0.0f);  // rows past the count stay
      }
    }
  }
}

TEST(TransformF2Rows, ShiftWindowAndSignAgreeWithTheReferenceKernel) {
  const std::int32_t n = 128;
  std::mt19937 random(3);
  std::uniform_real_distribution<float> value(-1, 1);
  WindowFunctionSetting bell;
  bell.type = kSineBell;
  bell.WE[0] = 100;
  WindowCurve w;
  ASSERT_EQ(MakeWindowCurve(bell, {1000, 100, n}, w), 0);
  for (std::int32_t shift : {0, 5, -7, n, -n - 3}) {
    auto X = test::MakePlane(n, 20), Y = test::MakePlane(n, 20);
    for (float& v : X.data) v = value(random);
    for (float& v : Y.data) v = value(random);
    const auto X0 = X, Y0 = Y;
    ASSERT_TRUE(TransformF2Rows(X, Y, 20, n, shift, true, w, {}, {.threads = 2}));
    for (std::int32_t r = 0; r < 20; ++r) {
      std::vector<float> re(n, 0.0f), im(n, 0.0f);
      for (std::int32_t i = 0; i < n; ++i)
        if (i + shift >= 0 && i + shift < n) {
          re[i] = X0.at(i + shift, r) * w.at(i);
          im[i] = -Y0.at(i + shift, r) * w.at(i);
        }
      FftKernel(re.data(), im.data(), n);
      HalfSwap(re.data(), im.data(), n);
      for (std::int32_t i = 0; i < n; ++i) {
        ASSERT_NEAR(X.at(i, r), re[i], 2e-5) << "shift " << shift;
        ASSERT_NEAR(Y.at(i, r), im[i], 2e-5) << "shift " << shift;
      }
    }
  }
}

TEST(ConjugateFlags, FollowTheFamilyConventions) {
  // F2: clear for the usual classes when single AD or a Bruker format; class 2 always set.
  EXPECT_FALSE(ConjugateF2(0, 3, true));
  EXPECT_FALSE(ConjugateF2(3, 4, false));
  EXPECT_TRUE(ConjugateF2(3, 3, false));
  EXPECT_TRUE(ConjugateF2(2, 4, true));
  EXPECT_TRUE(ConjugateF2(-1, 8, true));
  // F1: format 0 and format 2 differ in class 3; the inverse flag flips; unknown formats never set.
  EXPECT_TRUE(ConjugateF1(3, 0, false));
  EXPECT_FALSE(ConjugateF1(3, 2, false));
  EXPECT_TRUE(ConjugateF1(3, 2, true));
  EXPECT_TRUE(ConjugateF1(0, 3, false));
  EXPECT_FALSE(ConjugateF1(0, 4, false));
  EXPECT_TRUE(ConjugateF1(4, 8, false));
  EXPECT_TRUE(ConjugateF1(3, 6, false));
  EXPECT_FALSE(ConjugateF1(1, 12, false));
  EXPECT_FALSE(ConjugateF1Sequential(3));
  EXPECT_TRUE(ConjugateF1Sequential(4));
}

TEST(TransformF1Columns, PeakSignFollowsTheFlagAndPhaseRotationIsFused) {
  const std::int32_t rows = 32, size = 64, columns = 19;
  auto X = test::MakePlane(columns, size), Y = test::MakePlane(columns, size);
  for (std::int32_t c = 0; c < columns; ++c)
    for (std::int32_t j = 0; j < rows; ++j) {
      const auto v = test::SignalAt({{0.25, 0.05}}, j);
      X.at(c, j) = static_cast<float>(v.real());
      Y.at(c, j) = static_cast<float>(v.imag());
    }
  auto X2 = X, Y2 = Y;
  PhaseRotation phase{true, 30, 45, 32};
  ASSERT_TRUE(TransformF1Columns(X, Y, size, columns, true, Flat(rows, size), phase, {.threads = 3}));
  ASSERT_TRUE(TransformF1Columns(X2, Y2, size, columns, true, Flat(rows, size), {}, {.threads = 1}));
  RotatePhaseF1(X2, Y2, size, columns, phase);
  EXPECT_EQ(std::memcmp(X.data.data(), X2.data.data(), X.data.size() * 4), 0);
  EXPECT_EQ(std::memcmp(Y.data.data(), Y2.data.data(), Y.data.size() * 4), 0);
  for (std::int32_t c = 0; c < columns; ++c)
    EXPECT_EQ(test::PeakIndex(size, [&](std::int32_t j) { return std::pair{X.at(c, j), Y.at(c, j)}; }), 16);
}

TEST(PlaneTransforms, ThreadsGiveBitIdenticalResultsAndQuitStops) {
  const std::int32_t n = 256, rows = 100;
  std::mt19937 random(11);
  std::uniform_real_distribution<float> value(-1, 1);
  auto X = test::MakePlane(n, n), Y = test::MakePlane(n, n);
  for (float& v : X.data) v = value(random);
  for (float& v : Y.data) v = value(random);
  auto X1 = X, Y1 = Y;
  const WindowCurve w = Flat(200, n);
  const PhaseRotation phase{true, 10, -20, 100};
  ASSERT_TRUE(TransformF2Rows(X, Y, rows, n, 3, false, w, phase, {.threads = 1}));
  ASSERT_TRUE(TransformF1Columns(X, Y, n, n, true, w, phase, {.threads = 1}));
  ASSERT_TRUE(TransformF2Rows(X1, Y1, rows, n, 3, false, w, phase, {.threads = 4}));
  ASSERT_TRUE(TransformF1Columns(X1, Y1, n, n, true, w, phase, {.threads = 4}));
  EXPECT_EQ(std::memcmp(X.data.data(), X1.data.data(), X.data.size() * 4), 0);
  EXPECT_EQ(std::memcmp(Y.data.data(), Y1.data.data(), Y.data.size() * 4), 0);

  struct QuitAfter final : platform::Progress {
    std::int64_t steps = 0, last = 0;
    bool Step(std::int64_t done, std::int64_t) override {
      last = done;
      return ++steps < 20;
    }
  } quit;
  EXPECT_FALSE(TransformF2Rows(X, Y, rows, n, 0, false, w, {}, {.threads = 2, .progress = &quit}));
  EXPECT_EQ(quit.steps, 20);
  EXPECT_LT(quit.last, rows);
}

TEST(InverseRows, UndoesTheForwardTransformUpToTheConjugate) {
  const std::int32_t n = 64;
  auto X = test::MakePlane(n, 2), Y = test::MakePlane(n, 2);
  FillRow(X, Y, 0, n, {{0.1, 0.03}, {-0.3, 0.01, 0.5}});
  const auto X0 = X, Y0 = Y;
  FftKernel(X.row(0).data(), Y.row(0).data(), n);
  ASSERT_TRUE(InverseRows(X, Y, n, 1, true, {}));
  for (std::int32_t i = 0; i < n; ++i) {
    EXPECT_NEAR(X.at(i, 0), X0.at(i, 0), 1e-5);
    EXPECT_NEAR(Y.at(i, 0), -Y0.at(i, 0), 1e-5);
  }
}

}  // namespace
}  // namespace velk::processing
