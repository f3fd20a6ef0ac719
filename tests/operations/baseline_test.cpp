// Baseline correction against values worked out by hand: one point, two neighbouring points, the
// averaging window at the end of the axis, and F1 as F2 of the transposed data.
#include <gtest/gtest.h>

#include <cstring>

#include "operations/baseline.h"
#include "operations/blank_spectrum.h"

namespace velk::test {
namespace {

using model::F1;
using model::F2;
using operations::BasePoint;

model::Spectrum2D Ramps(std::int32_t n2, std::int32_t n1) {
  model::Spectrum2D s = BlankSpectrum(n2, n1);
  // Row r: offset r, slope 0.5 per column, and a bump at every seventh column.
  for (std::int32_t r = 0; r < n1; ++r)
    for (std::int32_t c = 0; c < n2; ++c) {
      s.RR.at(c, r) = static_cast<float>(r + 0.5 * c + (c % 7 == 0 ? 3 : 0));
      s.IR.at(c, r) = -1;
    }
  return s;
}

TEST(Baseline, OnePointTakesOffThatTracesMeanOnly) {
  model::Spectrum2D s = Ramps(128, 130);
  const model::Plane backup = s.RR;
  std::vector<BasePoint> points{{42, 0}};
  // AvePoint 2: the mean over columns 41, 42 (with its bump of 3), 43 is r + 21 + 3 / 3.
  operations::ApplyBaseF2(backup, s, points, 2);
  for (std::int32_t r : {0, 77, 129})
    for (std::int32_t c : {0, 40, 127})
      EXPECT_FLOAT_EQ(s.RR.at(c, r), backup.at(c, r) - (r + 22.0f)) << c << "," << r;
  EXPECT_FLOAT_EQ(points[0].value, 129 + 22.0f);  // the last trace's mean
  EXPECT_EQ(s.IR.at(3, 3), -1.0f);
  // A second preview starts from the backup again.
  operations::ApplyBaseF2(backup, s, points, 2);
  EXPECT_FLOAT_EQ(s.RR.at(0, 0), backup.at(0, 0) - 22.0f);
  // No point: the data come back as they were.
  points.clear();
  operations::ApplyBaseF2(backup, s, points, 2);
  EXPECT_EQ(s.RR.data, backup.data);
}

TEST(Baseline, NeighbouringPointsAndTheEndOfTheAxis) {
  model::Spectrum2D s = Ramps(128, 128);
  const model::Plane backup = s.RR;
  // Points at 13 and 14 with AvePoint 1: windows rnd(12.5) = 12 .. 13 and rnd(13.5) = 14 .. 15.
  std::vector<BasePoint> points{{13, 0}, {14, 0}};
  operations::ApplyBaseF2(backup, s, points, 1);
  const double y0 = (backup.at(12, 5) + backup.at(13, 5)) / 2.0, y1 = (backup.at(14, 5) + backup.at(15, 5)) / 2.0;
  EXPECT_FLOAT_EQ(s.RR.at(0, 5), static_cast<float>(backup.at(0, 5) - y0));
  EXPECT_FLOAT_EQ(s.RR.at(13, 5), static_cast<float>(backup.at(13, 5) - y0));
  EXPECT_FLOAT_EQ(s.RR.at(14, 5), static_cast<float>(backup.at(14, 5) - y1));
  EXPECT_FLOAT_EQ(s.RR.at(127, 5), static_cast<float>(backup.at(127, 5) - y1));

  // AvePoint 1 at the last point: rnd(126.5) = 126, so 126 and 127 with 128 points; with 129
  // points rnd(127.5) = 128, and the window is cut to that one point.
  points = {{127, 0}};
  operations::ApplyBaseF2(backup, s, points, 1);
  EXPECT_FLOAT_EQ(s.RR.at(0, 9), static_cast<float>(backup.at(0, 9) - (backup.at(126, 9) + backup.at(127, 9)) / 2.0));
  model::Spectrum2D odd = Ramps(129, 128);
  const model::Plane oddBackup = odd.RR;
  points = {{128, 0}};
  operations::ApplyBaseF2(oddBackup, odd, points, 1);
  EXPECT_FLOAT_EQ(odd.RR.at(128, 9), 0.0f);

  // Between two distant points the line is subtracted: at 3/4 of the way.
  points = {{20, 0}, {60, 0}};
  operations::ApplyBaseF2(backup, s, points, 4);
  const auto mean = [&](std::int32_t from) {
    double sum = 0;
    for (std::int32_t c = from; c <= from + 4; ++c) sum += backup.at(c, 2);
    return sum / 5;
  };
  EXPECT_FLOAT_EQ(s.RR.at(50, 2), static_cast<float>(backup.at(50, 2) - (mean(18) + 3 * mean(58)) / 4));
}

TEST(Baseline, F1IsF2OfTheTransposedDataOnAnyThreads) {
  model::Spectrum2D s = Ramps(160, 200);
  model::Spectrum2D t = BlankSpectrum(200, 160);
  for (std::int32_t r = 0; r < 200; ++r)
    for (std::int32_t c = 0; c < 160; ++c) t.RR.at(r, c) = s.RR.at(c, r);
  std::vector<BasePoint> points{{0, 0}, {30, 0}, {30, 0}, {101, 0}, {199, 0}};
  const model::Plane backup = s.RR, transposedBackup = t.RR;
  operations::ApplyBaseF1(backup, s, points, 3, 1);
  const float lastMean = points[3].value;
  operations::ApplyBaseF2(transposedBackup, t, points, 3, 4);
  for (std::int32_t r = 0; r < 200; ++r)
    for (std::int32_t c = 0; c < 160; ++c) ASSERT_EQ(s.RR.at(c, r), t.RR.at(r, c)) << c << "," << r;
  EXPECT_EQ(points[3].value, lastMean);
  model::Spectrum2D again = s;
  operations::ApplyBaseF1(backup, again, points, 3, 3);
  EXPECT_EQ(std::memcmp(again.RR.data.data(), s.RR.data.data(), s.RR.data.size() * 4), 0);
}

TEST(Baseline, PointListStaysSortedAndFull) {
  std::vector<BasePoint> points;
  for (std::int32_t p : {50, 10, 50, 30}) EXPECT_TRUE(operations::InsertBasePoint(points, p));
  ASSERT_EQ(points.size(), 4u);
  EXPECT_EQ(points[0].position, 10);
  EXPECT_EQ(points[3].position, 50);
  EXPECT_EQ(operations::NearestBasePoint(points, 24), 1);
  EXPECT_EQ(operations::NearestBasePoint({}, 24), -1);
  while (points.size() < 1000) operations::InsertBasePoint(points, 7);
  EXPECT_FALSE(operations::InsertBasePoint(points, 8));
}

}  // namespace
}  // namespace velk::test
