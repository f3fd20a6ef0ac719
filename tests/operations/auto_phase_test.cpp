// "Auto" on the corpus's edited HSQC: transformed from ser with zero phases, then phased by the
// spectrum alone, RR must carry the vendor's sign at the vendor's peaks, at the vendor's size
// and at the set's own coarse size.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "formats/bruker_vendor.h"
#include "operations/auto_phase.h"

namespace velk::test {
namespace {

using model::F1;
using model::F2;

TEST(AutoPhase, EditedHsqcGetsTheVendorsSigns) {
  Processed t = Process("cyclosporin_hsqc/3");
  ASSERT_TRUE(t.phaseSensitive);
  ASSERT_EQ(t.vendorPeaks.size(), 20u);
  model::Spectrum2D& s = t.ours;
  const auto found = operations::FindAutoPhase(s, s.axis[F1].Point / 2, s.axis[F2].Point / 2);
  ASSERT_GT(found.peaksUsed, 20);
  const operations::QuadrantBackup raw = operations::BackUpQuadrants(s);
  operations::RotatePhaseF2(raw, s, found.f2);
  const operations::QuadrantBackup halfway = operations::BackUpQuadrants(s);
  operations::RotatePhaseF1(halfway, s, found.f1);
  int agreeing = 0;
  for (const Peak& v : t.vendorPeaks) {
    const std::int32_t c = IndexOf(s, F2, Ppm(t.vendor, F2, v.column));
    const std::int32_t r = IndexOf(s, F1, Ppm(t.vendor, F1, v.row));
    agreeing += s.RR.at(c, r) * t.vendor.RR.at(v.column, v.row) > 0;
  }
  EXPECT_GE(agreeing, 18) << "F2 " << found.f2.Phase0 << ", " << found.f2.Phase1 << "  F1 " << found.f1.Phase0 << ", "
                          << found.f1.Phase1;
}

// At the set's own 512 x 128 points the peak tops lie up to half a point from the lines' centres
// and the carbons crowd into a quarter of F1. The read-out takes the largest |RR| within one point
// of the vendor's peak place, since on 128 rows the nearest point is often a side lobe. With the
// phases found at 1024 x 1024 this read-out gives 77 of the 100 strongest peaks; an estimate that
// summed nine points along the axis and let the F1 first order run to 180 degrees gave 70, and
// the nearest point alone gives only 17 of the 20 strongest even with those phases.
TEST(AutoPhase, CoarseHsqcAgreesWithTheVendorOverTheWholeSpectrum) {
  Processed t = Process("cyclosporin_hsqc/3", false);
  model::Spectrum2D& s = t.ours;
  ASSERT_EQ(s.axis[F1].Point, 128);
  const auto found = operations::FindAutoPhase(s, s.axis[F1].Point / 2, s.axis[F2].Point / 2);
  EXPECT_LT(std::fabs(found.f1.Phase1), 90.0f);
  const operations::QuadrantBackup raw = operations::BackUpQuadrants(s);
  operations::RotatePhaseF2(raw, s, found.f2);
  const operations::QuadrantBackup halfway = operations::BackUpQuadrants(s);
  operations::RotatePhaseF1(halfway, s, found.f1);
  auto peaks = LocalMaxima(t.vendor.axis[F2].Point, t.vendor.axis[F1].Point,
                           [&](int c, int r) { return std::fabs(t.vendor.RR.at(c, r)); });
  peaks.resize(100);
  int agreeing = 0;
  for (const Peak& v : peaks) {
    const std::int32_t c = IndexOf(s, F2, Ppm(t.vendor, F2, v.column));
    const std::int32_t r = IndexOf(s, F1, Ppm(t.vendor, F1, v.row));
    float largest = 0;
    for (int dr = -1; dr <= 1; ++dr)
      for (int dc = -1; dc <= 1; ++dc) {
        const float x = s.RR.at(std::clamp(c + dc, 0, s.axis[F2].Point - 1), std::clamp(r + dr, 0, s.axis[F1].Point - 1));
        if (std::fabs(x) > std::fabs(largest)) largest = x;
      }
    agreeing += largest * t.vendor.RR.at(v.column, v.row) > 0;
  }
  EXPECT_GE(agreeing, 74) << "F2 " << found.f2.Phase0 << ", " << found.f2.Phase1 << "  F1 " << found.f1.Phase0
                          << ", " << found.f1.Phase1;
}

}  // namespace
}  // namespace velk::test
