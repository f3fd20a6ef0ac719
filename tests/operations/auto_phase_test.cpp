// "Auto" on the corpus's edited HSQC: transformed from ser with zero phases, then phased by the
// spectrum alone, RR must carry the vendor's sign at the vendor's strongest peaks.
#include <gtest/gtest.h>

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

}  // namespace
}  // namespace velk::test
