// Phase correction against hand-computed points and against a synthetic hypercomplex spectrum
// whose phase errors are known.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstring>
#include <numbers>

#include "operations/auto_phase.h"
#include "operations/blank_spectrum.h"
#include "operations/phase.h"
#include "operations/phase_panel.h"

namespace velk::test {
namespace {

using model::F1;
using model::F2;
using operations::PhaseValues;
using Complex = std::complex<double>;

constexpr double kRad = std::numbers::pi / 180;

// Lorentzian lines of both signs in both dimensions; each axis's line multiplied by exp(i error(k)).
struct Line {
  double c, r, height;
};
const std::vector<Line> kLines{{60, 40, 1.0}, {200, 90, -0.6}, {130, 20, 0.4}, {30, 110, -0.3}};
constexpr double kWidth = 2.0;

Complex Lorentz(double x) { return 1.0 / Complex(1.0, x / kWidth); }  // absorption + i dispersion

model::Spectrum2D Hypercomplex(std::int32_t n2, std::int32_t n1, PhaseValues error2, PhaseValues error1) {
  model::Spectrum2D s = BlankSpectrum(n2, n1);
  const auto angle = [](const PhaseValues& p, std::int32_t k, std::int32_t n) {
    return (p.Phase0 + (k - p.pivot) * static_cast<double>(p.Phase1) / n) * kRad;
  };
  for (std::int32_t r = 0; r < n1; ++r)
    for (std::int32_t c = 0; c < n2; ++c)
      for (const Line& l : kLines) {
        const Complex f2 = Lorentz(c - l.c) * std::polar(1.0, angle(error2, c, n2));
        const Complex f1 = Lorentz(r - l.r) * std::polar(1.0, angle(error1, r, n1));
        s.RR.at(c, r) += static_cast<float>(l.height * f2.real() * f1.real());
        s.IR.at(c, r) += static_cast<float>(l.height * f2.imag() * f1.real());
        s.RI.at(c, r) += static_cast<float>(l.height * f2.real() * f1.imag());
        s.II.at(c, r) += static_cast<float>(l.height * f2.imag() * f1.imag());
      }
  return s;
}

float MaxDifference(const model::Plane& a, const model::Plane& b) {
  float worst = 0;
  for (std::size_t i = 0; i < a.data.size(); ++i) worst = std::max(worst, std::fabs(a.data[i] - b.data[i]));
  return worst;
}

bool SameBits(const model::Plane& a, const model::Plane& b) {
  return a.data.size() == b.data.size() && std::memcmp(a.data.data(), b.data.data(), a.data.size() * 4) == 0;
}

TEST(Phase, HandComputedPointsFollowPivotAndAxisPairs) {
  model::Spectrum2D s = BlankSpectrum(128, 256);
  s.RR.at(96, 10) = 1;    // F2: RR mixes with IR over the column's angle
  s.RI.at(96, 10) = 2;    // and RI with II
  s.RR.at(5, 192) = 3;    // F1: RR mixes with RI over the row's angle
  s.IR.at(5, 192) = 4;    // and IR with II
  const auto backup = operations::BackUpQuadrants(s);

  // Angle at column 96 of 128 about pivot 32: 30 + (96 - 32) * 90 / 128 = 75 degrees.
  operations::RotatePhaseF2(backup, s, {30, 90, 32});
  EXPECT_NEAR(s.RR.at(96, 10), std::cos(75 * kRad), 1e-6);
  EXPECT_NEAR(s.IR.at(96, 10), std::sin(75 * kRad), 1e-6);
  EXPECT_NEAR(s.RI.at(96, 10), 2 * std::cos(75 * kRad), 1e-6);
  EXPECT_NEAR(s.II.at(96, 10), 2 * std::sin(75 * kRad), 1e-6);
  // Row 192 of 256 about pivot 64 in F1: 30 + 128 * 90 / 256 = 75 degrees; RR goes to RI, not IR.
  operations::RotatePhaseF1(backup, s, {30, 90, 64});
  EXPECT_NEAR(s.RR.at(5, 192), 3 * std::cos(75 * kRad), 1e-6);
  EXPECT_NEAR(s.RI.at(5, 192), 3 * std::sin(75 * kRad), 1e-6);
  EXPECT_NEAR(s.IR.at(5, 192), 4 * std::cos(75 * kRad), 1e-6);
  EXPECT_NEAR(s.II.at(5, 192), 4 * std::sin(75 * kRad), 1e-6);
  // The F1 preview started again from the backups: the F2 rotation left nothing behind.
  const double a = (30 + (10 - 64) * 90.0 / 256) * kRad;
  EXPECT_NEAR(s.RR.at(96, 10), std::cos(a) - 2 * std::sin(a), 1e-6);
  EXPECT_EQ(s.IR.at(96, 10), 0.0f);

  // At the pivot the first order does nothing; the trace preview agrees with the whole rotation.
  std::vector<float> re, im;
  operations::PhaseTraceF1(backup, s, 5, {0, 700, 192}, re, im);
  EXPECT_NEAR(re[192], 3.0f, 1e-6);
  EXPECT_NEAR(im[192], 0.0f, 1e-6);
  operations::PhaseTraceF2(backup, s, 10, {30, 90, 32}, re, im);
  operations::RotatePhaseF2(backup, s, {30, 90, 32});
  ASSERT_EQ(re.size(), 128u);
  for (std::int32_t c = 0; c < 128; ++c) {
    EXPECT_NEAR(re[c], s.RR.at(c, 10), 1e-6);
    EXPECT_NEAR(im[c], s.IR.at(c, 10), 1e-6);
  }
}

TEST(Phase, PanelWrapsZeroOrderAndClampsFirstOrder) {
  EXPECT_NEAR(operations::StepPhase0(179.9f, 9), -179.6f, 1e-4);  // +0.5
  EXPECT_NEAR(operations::StepPhase0(-179.95f, 0), 170.05f, 1e-4);  // -10
  EXPECT_EQ(operations::StepPhase1(1799.5f, 10), 1800.0f);          // +1
  EXPECT_EQ(operations::StepPhase1(-1795.0f, 0), -1800.0f);
  EXPECT_EQ(operations::WrapPhase0Scroll(1801), -1799);
  EXPECT_EQ(operations::WrapPhase0Scroll(-1801), 1799);
  EXPECT_EQ(operations::WrapPhase0Scroll(1800), 1800);
  EXPECT_EQ(operations::PhaseScrollValue(-12.35f), -124);
  EXPECT_NEAR(*operations::ParsePhase0("905"), -175.0f, 1e-4);
  EXPECT_EQ(*operations::ParsePhase1("-2500"), -1800.0f);
  EXPECT_FALSE(operations::ParsePhase0("12x").has_value());
  EXPECT_EQ(operations::FormatPhase(12.0f), "12.0");
  EXPECT_EQ(operations::FormatPhase(-3.25f), "-3.25");
  EXPECT_EQ(operations::kPhaseStepLabels[9], "+0.5");
}

TEST(Phase, KnownErrorsComeBackToPureAbsorption) {
  const PhaseValues error2{35, -120, 100}, error1{-70, 45, 16};
  model::Spectrum2D s = Hypercomplex(256, 128, error2, error1);
  const model::Spectrum2D pure = Hypercomplex(256, 128, {0, 0, 0}, {0, 0, 0});

  // The inverse rotations, one axis after the other, each from the data as it then stands.
  auto backup = operations::BackUpQuadrants(s);
  operations::RotatePhaseF2(backup, s, {-error2.Phase0, -error2.Phase1, error2.pivot}, 1);
  model::Spectrum2D manyThreads = s;
  operations::RotatePhaseF2(backup, manyThreads, {-error2.Phase0, -error2.Phase1, error2.pivot}, 4);
  EXPECT_TRUE(SameBits(s.RR, manyThreads.RR) && SameBits(s.II, manyThreads.II));
  backup = operations::BackUpQuadrants(s);
  operations::RotatePhaseF1(backup, s, {-error1.Phase0, -error1.Phase1, error1.pivot}, 3);
  for (auto [got, want] : {std::pair{&s.RR, &pure.RR}, {&s.IR, &pure.IR}, {&s.RI, &pure.RI}, {&s.II, &pure.II}})
    EXPECT_LT(MaxDifference(*got, *want), 2e-6);

  // "Auto" finds its own way back from the same errors, about other pivots.
  model::Spectrum2D again = Hypercomplex(256, 128, error2, error1);
  const auto found = operations::FindAutoPhase(again, 64, 128);
  EXPECT_EQ(found.f2.pivot, 128);
  backup = operations::BackUpQuadrants(again);
  operations::RotatePhaseF2(backup, again, found.f2);
  backup = operations::BackUpQuadrants(again);
  operations::RotatePhaseF1(backup, again, found.f1);
  EXPECT_LT(MaxDifference(again.RR, pure.RR), 0.01) << found.f2.Phase0 << " " << found.f2.Phase1 << " / "
                                                     << found.f1.Phase0 << " " << found.f1.Phase1;
}

}  // namespace
}  // namespace velk::test
