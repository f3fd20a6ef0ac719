// Symmetrization of an asymmetric synthetic COSY whose axes differ in points and spacing, against
// a bilinear interpolation computed here from the axes' first value and step.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "model/data_type.h"
#include "operations/symmetrize.h"
#include "support/synthetic_2d.h"

namespace velk::test {
namespace {

using model::F1;
using model::F2;

// RR at (f2, f1) ppm from the axes' linear description; 0 outside.
double Bilinear(const model::Plane& p, const model::Spectrum2D& s, double f2, double f1) {
  const double u = (f2 - s.extras[F2].ppmFirst) / s.extras[F2].ppmStep;
  const double v = (f1 - s.extras[F1].ppmFirst) / s.extras[F1].ppmStep;
  const std::int32_t n2 = s.axis[F2].Point, n1 = s.axis[F1].Point;
  if (u < 0 || v < 0 || u > n2 - 1 || v > n1 - 1) return 0;
  const std::int32_t c = std::min<std::int32_t>(static_cast<std::int32_t>(u), n2 - 2);
  const std::int32_t r = std::min<std::int32_t>(static_cast<std::int32_t>(v), n1 - 2);
  const double wu = u - c, wv = v - r;
  const double low = (1 - wu) * p.at(c, r) + wu * p.at(c + 1, r);
  const double high = (1 - wu) * p.at(c, r + 1) + wu * p.at(c + 1, r + 1);
  return (1 - wv) * low + wv * high;
}

std::unique_ptr<model::Spectrum2D> AsymmetricCosy() {
  // Cross peaks of unequal height on the two sides; one without any partner; negative ones.
  return MakeSynthetic2D(256, 160,
                         {{2.0, 2.0, 1.0, 0.05}, {7.5, 7.5, -0.8, 0.05}, {2.0, 7.5, 0.6, 0.05}, {7.5, 2.0, 0.3, 0.05},
                          {4.0, 6.0, -0.5, 0.08}, {6.0, 4.0, 0.4, 0.08}, {3.3, 8.8, 0.7, 0.04}},
                         0.01);
}

void ExpectMirrorRule(int pulseModeClass, float symShift) {
  auto s = AsymmetricCosy();
  const model::Plane backup = s->RR;
  operations::SymmetrizeData(backup, *s, pulseModeClass, symShift, 1);
  // d: F1 at point 80 minus F2 at point 128, plus the shift in F2 points (5000 / 256 Hz at 500 MHz).
  const double d = 80 * 10.0 / 159 - 128 * 10.0 / 255 + symShift * (5000.0 / 256) / 500;
  int zeroed = 0, lowered = 0;
  for (std::int32_t r = 0; r < 160; ++r)
    for (std::int32_t c = 0; c < 256; ++c) {
      const double v = backup.at(c, r);
      const double m = Bilinear(backup, *s, r * 10.0 / 159 - d, d + c * 10.0 / 255);
      double want = v;
      if (pulseModeClass == model::V_HOMO) want = std::max(std::min(v, m), 0.0);
      else if (v * m <= 0) want = 0;
      else if (std::fabs(v) > std::fabs(m)) want = m;
      zeroed += want == 0 && v != 0;
      lowered += want != v && want != 0;
      ASSERT_NEAR(s->RR.at(c, r), want, 2e-5) << c << "," << r << " mirror " << m;
    }
  EXPECT_GT(zeroed, 1000);
  EXPECT_GT(lowered, 1000);
  // The same on four threads, to the bit.
  model::Spectrum2D again = *s;
  operations::SymmetrizeData(backup, again, pulseModeClass, symShift, 4);
  EXPECT_EQ(std::memcmp(again.RR.data.data(), s->RR.data.data(), s->RR.data.size() * 4), 0);
}

TEST(Symmetrize, AsymmetricCosyWithUnequalAxesAgainstBilinearMirror) {
  ExpectMirrorRule(model::VPH_HOMO, 0);
  ExpectMirrorRule(model::VPH_HOMO, -3.75f);
  ExpectMirrorRule(model::V_HOMO, 10);
}

TEST(Symmetrize, OtherClassesAndTheShiftButtons) {
  auto s = AsymmetricCosy();
  const model::Plane backup = s->RR;
  s->RR.data.assign(s->RR.data.size(), 5.0f);
  operations::SymmetrizeData(backup, *s, model::VPH_HETERO, 0);
  EXPECT_EQ(s->RR.data, backup.data);
  // ValueAtPpm on a data point is that point, between points the mean, beyond the axis 0.
  EXPECT_FLOAT_EQ(operations::ValueAtPpm(backup, *s, s->ppmF2[40], s->ppmF1[30]), backup.at(40, 30));
  EXPECT_NEAR(operations::ValueAtPpm(backup, *s, (s->ppmF2[40] + s->ppmF2[41]) / 2.0, s->ppmF1[30]),
              (backup.at(40, 30) + backup.at(41, 30)) / 2.0, 1e-6);
  EXPECT_EQ(operations::ValueAtPpm(backup, *s, -0.01, 5.0), 0.0);
  EXPECT_EQ(operations::ValueAtPpm(backup, *s, 5.0, 10.01), 0.0);
  EXPECT_EQ(operations::StepSymShift(10.0f, 1), 10.0f);
  EXPECT_EQ(operations::StepSymShift(10.0f, -1), 9.75f);
  EXPECT_EQ(operations::StepSymShift(-9.9f, -1), -10.0f);
}

}  // namespace
}  // namespace velk::test
