// Linear prediction continues decaying exponentials, reflects growing ones, and leaves a trace it
// cannot solve unchanged with eleven lines in the list.
#include <gtest/gtest.h>

#include <cmath>

#include "processing/linear_prediction.h"
#include "processing/lp_solver.h"
#include "synthetic.h"

namespace velk::processing {
namespace {

using test::Line;

// The norm of the error over the norm of the true continuation.
double RelativeError(const model::Plane& X, const model::Plane& Y, std::int32_t column, std::int32_t from,
                     std::int32_t to, const std::vector<Line>& lines) {
  double error = 0, norm = 0;
  for (std::int32_t j = from; j < to; ++j) {
    const auto want = test::SignalAt(lines, j);
    const std::complex<double> got(X.at(column, j), Y.at(column, j));
    error += std::norm(got - want);
    norm += std::norm(want);
  }
  return std::sqrt(error / norm);
}

TEST(LpForward, ContinuesASumOfDecayingExponentials) {
  const std::vector<Line> lines{{0.11, 0.01}, {-0.23, 0.02, 0.7, 1.0}, {0.31, 0.005, 0.4, -0.5}};
  const std::int32_t fid = 64, target = 128, columns = 5;
  auto X = test::MakePlane(columns, target), Y = test::MakePlane(columns, target);
  for (std::int32_t c = 0; c < columns; ++c)
    for (std::int32_t j = 0; j < fid; ++j) {
      const auto v = test::SignalAt(lines, j);
      X.at(c, j) = static_cast<float>(v.real());
      Y.at(c, j) = static_cast<float>(v.imag());
    }
  LpSetting s{.Order = 3, .Points = 40, .Start = 2};
  std::vector<std::string> list;
  Workers workers{.threads = 2};
  ASSERT_TRUE(LpForwardF1(X, Y, s, fid, target, columns, {workers, list}));
  EXPECT_TRUE(list.empty());
  for (std::int32_t c = 0; c < columns; ++c) EXPECT_LT(RelativeError(X, Y, c, fid, target, lines), 1e-4);
}

TEST(LpForward, ReflectsAGrowingExponentialIntoADecayingOne) {
  const std::int32_t fid = 32, target = 64;
  auto X = test::MakePlane(target, 1), Y = test::MakePlane(target, 1);
  for (std::int32_t i = 0; i < fid; ++i) {
    const auto v = test::SignalAt({{0.2, -0.05}}, i);  // grows by e^0.05 a point
    X.at(i, 0) = static_cast<float>(v.real());
    Y.at(i, 0) = static_cast<float>(v.imag());
  }
  LpSetting s{.Order = 1, .Points = 10, .Start = 1};
  std::vector<std::string> list;
  Workers workers;
  ASSERT_TRUE(LpForwardF2(X, Y, s, fid, target, 1, {workers, list}));
  // The pole z = e^(0.05 + 0.4 pi i) becomes 1/conj(z): the continuation decays at the same rate.
  const std::complex<double> last(X.at(fid - 1, 0), Y.at(fid - 1, 0));
  for (std::int32_t k = 1; k <= 10; ++k) {
    const std::complex<double> got(X.at(fid - 1 + k, 0), Y.at(fid - 1 + k, 0));
    const auto want = last * std::exp(std::complex<double>(-0.05 * k, 2 * M_PI * 0.2 * k));
    EXPECT_LT(std::abs(got - want), 1e-4 * std::abs(want)) << k;
  }
}

TEST(LpForward, AnAllZeroColumnStaysZeroWithElevenFailureLines) {
  auto X = test::MakePlane(2, 256), Y = test::MakePlane(2, 256);
  for (std::int32_t j = 0; j < 128; ++j) X.at(1, j) = std::cos(0.3 * j) * std::exp(-0.01 * j);
  LpSetting s{.Order = 8, .Points = 16, .Start = 100};
  std::vector<std::string> list;
  Workers workers{.threads = 2};
  ASSERT_TRUE(LpForwardF1(X, Y, s, 128, 256, 2, {workers, list}));
  ASSERT_EQ(list.size(), 11u);
  EXPECT_EQ(list[0], " 0   100 (InvGJ)");
  EXPECT_EQ(list[1], " 0   101 (InvGJ)");
  EXPECT_EQ(list[5], " 0   105 (InvGJ)");  // 16 + 8 + 105 - 1 = 128 still fits
  EXPECT_EQ(list[6], " 0   1 (InvGJ)");    // wrapped after 106 would pass the data
  for (std::int32_t j = 0; j < 256; ++j) ASSERT_EQ(X.at(0, j), 0.0f);
  EXPECT_NE(X.at(1, 200), 0.0f);

  // The preview says why instead of writing lines.
  std::vector<float> re(256, 0.0f), im(256, 0.0f);
  const platform::Outcome preview = LpForwardTrace(re.data(), im.data(), s, 128, 256);
  EXPECT_EQ(preview.message.title, "Data Error");
  EXPECT_EQ(preview.message.text, "Can not calculate(InvGJ)!");
}

TEST(LpBackward, RecalculatesTheFirstPoints) {
  const std::vector<Line> lines{{0.07, 0.01}, {-0.19, 0.03, 0.5}};
  const std::int32_t n = 96;
  auto X = test::MakePlane(n, 1), Y = test::MakePlane(n, 1);
  for (std::int32_t i = 0; i < n; ++i) {
    const auto v = test::SignalAt(lines, i);
    X.at(i, 0) = i < 3 ? 99.0f : static_cast<float>(v.real());  // spoiled first points
    Y.at(i, 0) = i < 3 ? -99.0f : static_cast<float>(v.imag());
  }
  LpSetting s{.Order = 2, .Points = 30, .BackPoints = 3, .StabilityCheck = 0};
  std::vector<std::string> list;
  Workers workers;
  ASSERT_TRUE(LpBackwardF2(X, Y, s, n, n, 0, 1, {workers, list}));
  for (std::int32_t i = 0; i < 3; ++i) {
    const auto want = test::SignalAt(lines, i);
    EXPECT_NEAR(X.at(i, 0), want.real(), 1e-4);
    EXPECT_NEAR(Y.at(i, 0), want.imag(), 1e-4);
  }
}

TEST(LpSolver, InversionRootsAndChecks) {
  ComplexMatrix a;
  a.Resize(2, 2);
  a.re = {0, 2, 1, 0};  // needs a row exchange
  a.im = {0, 0, 0, 1};
  std::vector<std::int16_t> perm;
  ASSERT_TRUE(InvertComplexMatrix(a, perm));
  // [[0, 2], [1, i]]^-1 = [[-i/2, 1], [1/2, 0]]
  EXPECT_NEAR(a.re[0], 0, 1e-7);
  EXPECT_NEAR(a.im[0], -0.5, 1e-7);
  EXPECT_NEAR(a.re[1], 1, 1e-7);
  EXPECT_NEAR(a.re[2], 0.5, 1e-7);
  EXPECT_NEAR(a.re[3], 0, 1e-7);
  a.re = {1, 2, 2, 4};
  a.im = {0, 0, 0, 0};
  EXPECT_FALSE(InvertComplexMatrix(a, perm));

  // (z - 2)(z - i) = z^2 - (2 + i) z + 2i: both roots, the polynomial deflated to one term.
  float re[] = {1, -2, 0}, im[] = {0, -1, 2};
  float x = 0.5f, y = 0.5f;
  ASSERT_GT(PolynomialRoot(re, im, 3, x, y, 100), 0);
  const bool first = std::abs(x - 2) < 1e-4 && std::abs(y) < 1e-4;
  const bool second = std::abs(x) < 1e-4 && std::abs(y - 1) < 1e-4;
  EXPECT_TRUE(first || second) << x << " " << y;
  float x2 = 0.5f, y2 = 0.5f;
  ASSERT_GT(PolynomialRoot(re, im, 2, x2, y2, 100), 0);
  EXPECT_NEAR(x + x2, 2, 1e-4);
  EXPECT_NEAR(y + y2, 1, 1e-4);

  LpSetting s{.Order = 30, .Points = 20, .Start = 10};
  EXPECT_EQ(CheckLpBack(s, 100).text, "Illegal LP parameter");
  LpSetting f2{.Order = 10, .Points = 20, .Start = 5, .BackPoints = 200, .BackwardOn = 1};
  const auto m = CheckLpDialog({&s, 100, true}, {&f2, 100, false});
  EXPECT_EQ(m.title, "LP Parameter Error");
  EXPECT_EQ(m.text, "Start point or End point exceeds the Data!");  // F2 backward is checked after F1 forward
  EXPECT_EQ(f2.Start, 10);
}

}  // namespace
}  // namespace velk::processing
