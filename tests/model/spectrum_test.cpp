#include <gtest/gtest.h>

#include "model/data_type.h"
#include "model/spectrum.h"

namespace velk::model {

TEST(Spectrum2D, AllocationRaisesBuffersButNotPointCounts) {
  Spectrum2D s;
  s.axis[F2].Point = 10;
  s.axis[F1].Point = 3000;
  ASSERT_EQ(AllocateSpectrum2D(s, 10, 3000), 0);
  EXPECT_EQ(s.RR.stride, 128);
  EXPECT_EQ(s.RR.rows, 3000);
  EXPECT_EQ(s.II.data.size(), 128u * 3000u);
  EXPECT_EQ(s.axis[F2].Point, 10);
  EXPECT_EQ(s.workTraces[0].size(), 16385u);
  s.RR.at(9, 2999) = 5.0f;
  EXPECT_EQ(s.RR.row(2999)[9], 5.0f);
}

TEST(Spectrum2D, ImpossibleAllocationFailsCleanly) {
  Spectrum2D s;
  EXPECT_NE(AllocateSpectrum2D(s, kMaxAxisPoints, kMaxAxisPoints), 0);
  EXPECT_TRUE(s.RR.data.empty());
}

TEST(Spectrum1D, RepairBeforeWriteFixesWidthResolutionAndRanges) {
  Spectrum1D s;
  ASSERT_EQ(AllocateSpectrum1D(s, 4), 0);
  EXPECT_EQ(s.re.size(), 129u);
  EXPECT_EQ(s.baselineWork.size(), 129u + kBaselineWorkOffset);
  s.params.POINT = 4;
  s.axisPpm = {10.0, 7.0, 4.0, 1.0};
  s.params.FREQU = 1000;   // axis span 9 ppm at 400 MHz is 3600 Hz
  s.params.RESOL = 900.5;  // within 1 % of 3600 / 4 after the width repair
  s.arrayCount = 0;
  s.verticalRange = {0.0f, 55.0f};
  RepairBeforeWrite1D(s, 400.0);
  EXPECT_FLOAT_EQ(s.params.FREQU, 3600.0f);
  EXPECT_DOUBLE_EQ(s.params.RESOL, 900.5);
  EXPECT_DOUBLE_EQ(s.axisStep, -3.0);
  EXPECT_EQ(s.arrayCount, 1);
  EXPECT_FLOAT_EQ(s.verticalRange[0], 10.6f);
  EXPECT_FLOAT_EQ(s.verticalRange[1], 55.0f);
}

TEST(Spectrum2D, HomonuclearReadTakesOneFrequency) {
  Spectrum2D s;
  s.extras[F2].absFreqCenter = 500.13;
  s.extras[F1].absFreqCenter = 125.0;
  s.params.ACQTM = 0.2f;
  s.params.PD = 1.5f;
  RepairAfterRead2D(s, V_HETERO);
  EXPECT_DOUBLE_EQ(s.extras[F1].absFreqCenter, 125.0);
  RepairAfterRead2D(s, V_HOMO);
  EXPECT_DOUBLE_EQ(s.extras[F1].absFreqCenter, 500.13);
  EXPECT_FLOAT_EQ(s.cycleTime, 1.7f);
}

}  // namespace velk::model
