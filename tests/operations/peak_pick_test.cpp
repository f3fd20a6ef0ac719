// Picking on synthetic spectra whose tops are known: calculated tops within a tenth of a point,
// data-point tops on the highest point, both signs, the rim, plateaus, the limit of 1000 and the
// edits of the list. Widths are full widths at half height. The cubic mid-point lattice keeps a
// Gaussian of 4 points and a Lorentzian of 5 within a tenth of a point wherever the top lies;
// sharper peaks are more than four points can follow (a Lorentzian of 3 up to 0.155 off, a
// Gaussian of 3 up to 0.103).
#include "operations/peak_pick.h"

#include <gtest/gtest.h>

#include <cmath>

#include "operations/peak_synthetic.h"
#include "operations/peak_table_edit.h"

namespace velk::test {
namespace {

using namespace operations;

const std::vector<TruePeak> kPeaks = {
    {20.3, 17.8, 1.0, 5.0},         {45.45, 20.2, -0.8, 6.0}, {18.9, 44.62, 0.6, 4.0, true},
    {44.1, 47.37, -0.5, 4.0, true}, {70.77, 30.5, 0.9, 5.0},  {72.5, 55.25, 0.7, 5.0, true},
};

// The highest |value| in the 5 x 5 block around a point, found without the picking code.
std::pair<int, int> HighestNear(const model::Spectrum2D& s, double col, double row) {
  const int c0 = static_cast<int>(std::lround(col)), r0 = static_cast<int>(std::lround(row));
  std::pair<int, int> best{c0, r0};
  for (int c = c0 - 2; c <= c0 + 2; ++c)
    for (int r = r0 - 2; r <= r0 + 2; ++r)
      if (std::fabs(s.RR.at(c, r)) > std::fabs(s.RR.at(best.first, best.second))) best = {c, r};
  return best;
}

const model::Peak2D* PeakNear(const model::PeakTable2D& t, double col, double row) {
  for (const model::Peak2D& p : t.peaks)
    if (std::fabs(p.PointF2 - col) <= 1 && std::fabs(p.PointF1 - row) <= 1) return &p;
  return nullptr;
}

TEST(PeakPick, TopsOfBothKindsAtKnownPlaces) {
  for (PeakMode mode : {kVirtualPeakTop, kPeakOnDataPoint}) {
    model::Spectrum2D s = PeakSpectrum(96, 72, kPeaks);
    EXPECT_EQ(PickArea(s, AllArea(s), 0.1f, mode), static_cast<int>(kPeaks.size()));
    for (const TruePeak& truth : kPeaks) {
      const model::Peak2D* p = PeakNear(s.peaks, truth.col, truth.row);
      ASSERT_NE(p, nullptr) << truth.col << "," << truth.row;
      const auto [col, row] = HighestNear(s, truth.col, truth.row);
      EXPECT_EQ(p->PointF2, col);
      EXPECT_EQ(p->PointF1, row);
      EXPECT_EQ(p->Height, s.RR.at(col, row));
      EXPECT_EQ(p->Height < 0, truth.height < 0);
      if (mode == kPeakOnDataPoint) {
        EXPECT_EQ(p->PosF2, static_cast<float>(col * 10.0));
        EXPECT_EQ(p->PosF1, static_cast<float>(row * 5.0));
      } else {
        EXPECT_NEAR(p->PosF2 / 10.0, truth.col, 0.1) << "F2 of " << truth.col << (truth.gaussian ? " G" : " L");
        EXPECT_NEAR(p->PosF1 / 5.0, truth.row, 0.1) << "F1 of " << truth.row << (truth.gaussian ? " G" : " L");
      }
    }
  }
  // A threshold above the highest peak finds nothing.
  model::Spectrum2D s = PeakSpectrum(96, 72, kPeaks);
  EXPECT_EQ(PickArea(s, AllArea(s), 1.01f, kVirtualPeakTop), 0);
}

TEST(PeakPick, RimAndPlateau) {
  // A top on the first column is never a peak; one a point inside is found. The points beyond
  // the data count as zero, and the negative outer weight of the cubic then lifts the side
  // toward the rim: the top moves out by one lattice step.
  model::Spectrum2D s = PeakSpectrum(40, 40, {{0.0, 10.0, 1.0, 3.0}, {1.0, 30.0, 1.0, 3.0}});
  EXPECT_EQ(PickArea(s, AllArea(s), 0.1f, kVirtualPeakTop), 1);
  ASSERT_EQ(s.peaks.peaks.size(), 1u);
  EXPECT_EQ(s.peaks.peaks[0].PointF2, 1);
  EXPECT_EQ(s.peaks.peaks[0].PosF2, static_cast<float>((1 - 1 / 32.0) * 10));
  EXPECT_NEAR(s.peaks.peaks[0].PosF1 / 5.0, 30.0, 0.1);
  // A click on the rim adds nothing.
  EXPECT_FALSE(AddPeakNear(s, 0, 10, 0.1f, kVirtualPeakTop));

  // Two equal maxima side by side: neither passes the strict test, and a click on one of them
  // takes the clicked point itself.
  model::Spectrum2D flat = PeakSpectrum(20, 20, {});
  flat.RR.at(9, 9) = flat.RR.at(10, 9) = 1.0f;
  EXPECT_EQ(PickArea(flat, AllArea(flat), 0.1f, kPeakOnDataPoint), 0);
  EXPECT_TRUE(AddPeakNear(flat, 10, 9, 0.1f, kPeakOnDataPoint));
  EXPECT_EQ(flat.peaks.peaks[0].PointF2, 10);
  // The same point again is a duplicate top.
  EXPECT_FALSE(AddPeakNear(flat, 10, 9, 0.1f, kPeakOnDataPoint));
}

TEST(PeakPick, ClickSearchesRingsAndSkipsKnownPeaks) {
  model::Spectrum2D s = PeakSpectrum(40, 40, {{20.0, 20.0, 1.0, 3.0}});
  EXPECT_TRUE(AddPeakNear(s, 22, 18, 0.1f, kPeakOnDataPoint));  // two rings out
  EXPECT_EQ(s.peaks.peaks.back().PointF2, 20);
  EXPECT_EQ(s.peaks.peaks.back().PointF1, 20);
  // The peak is known now, so the next click nearby takes its own point.
  EXPECT_TRUE(AddPeakNear(s, 21, 20, 0.1f, kPeakOnDataPoint));
  EXPECT_EQ(s.peaks.peaks.back().PointF2, 21);
  // Three rings out is beyond the search: the clicked point.
  EXPECT_TRUE(AddPeakNear(s, 23, 23, 0.1f, kPeakOnDataPoint));
  EXPECT_EQ(s.peaks.peaks.back().PointF2, 23);
}

TEST(PeakPick, ListHoldsAtMostAThousand) {
  // 33 x 33 isolated spikes of rising height, 1089 in all.
  model::Spectrum2D s = PeakSpectrum(100, 100, {});
  for (int c = 1; c < 100; c += 3)
    for (int r = 1; r < 100; r += 3) s.RR.at(c, r) = 1.0f + c + r / 1000.0f;
  EXPECT_EQ(PickArea(s, AllArea(s), 0.5f, kPeakOnDataPoint), model::kMaxPeaks2D);
  // F2 in the outer loop: the last columns are the ones left out.
  EXPECT_EQ(s.peaks.peaks.front().PointF2, 1);
  EXPECT_EQ(s.peaks.peaks.back().PointF2, 91);
  EXPECT_FALSE(AddPeakNear(s, 97, 97, 0.5f, kPeakOnDataPoint));
  EXPECT_EQ(s.peaks.peaks.size(), 1000u);
}

TEST(PeakPick, DisplayedAreaIsTheShownWindow) {
  model::Spectrum2D s = PeakSpectrum(96, 72, kPeaks);
  display::DisplayState view;  // ppm = point * step / 100: F2 0.1 ppm and F1 0.05 ppm per point
  view.ViewF2Start = 3.0f;     // points 30 .. 80 of F2
  view.ViewF2End = 8.0f;
  view.ViewF1Start = 2.5f;  // points 0 .. 50 of F1
  view.ViewF1End = 0.0f;
  EXPECT_EQ(PickArea(s, DisplayedArea(s, view), 0.1f, kVirtualPeakTop), 3);
  for (const model::Peak2D& p : s.peaks.peaks) EXPECT_GE(p.PointF2, 30);
}

TEST(PeakTableEdit, DeleteMoveAndSort) {
  model::Spectrum2D s = PeakSpectrum(96, 72, kPeaks);
  PickArea(s, AllArea(s), 0.1f, kVirtualPeakTop);
  const PeakPlane plane = PlaneOf(s);
  for (std::size_t i = 0; i < s.peaks.peaks.size(); ++i) s.peaks.peaks[i].reserved1 = static_cast<int>(i);
  // The list comes in F2 order from the search; reversed, the sort puts it back, and the fields
  // set at creation stay where they were.
  const model::PeakTable2D sorted = s.peaks;
  std::reverse(s.peaks.peaks.begin(), s.peaks.peaks.end());
  SortPeaks(s.peaks);
  for (std::size_t i = 0; i < sorted.peaks.size(); ++i) {
    EXPECT_EQ(s.peaks.peaks[i].PosF2, sorted.peaks[i].PosF2);
    EXPECT_EQ(s.peaks.peaks[i].Height, sorted.peaks[i].Height);
    EXPECT_EQ(s.peaks.peaks[i].reserved1, static_cast<int>(sorted.peaks.size() - 1 - i));
  }
  // Move the first peak onto the top of the second: a duplicate, refused; elsewhere, it moves.
  const model::Peak2D second = s.peaks.peaks[1];
  EXPECT_FALSE(MovePeakTop(s.peaks, 0, plane, second.PointF2, second.PointF1, kVirtualPeakTop));
  EXPECT_TRUE(MovePeakTop(s.peaks, 0, plane, 5, 5, kPeakOnDataPoint));
  EXPECT_EQ(s.peaks.peaks[0].PosF2, 50.0f);
  EXPECT_FALSE(MovePeakTop(s.peaks, 0, plane, 0, 5, kPeakOnDataPoint));  // the rim
  // Delete the one nearest to a click at the second peak.
  EXPECT_TRUE(DeleteNearestPeak(s.peaks, second.PosF2 / 10 + 0.4, second.PosF1 / 5 - 0.3, 10, 5));
  EXPECT_EQ(s.peaks.peaks.size(), kPeaks.size() - 1);
  EXPECT_EQ(PeakNear(s.peaks, second.PointF2, second.PointF1), nullptr);
  DeleteAllPeaks(s.peaks);
  EXPECT_FALSE(DeleteNearestPeak(s.peaks, 1, 1, 10, 5));
}

}  // namespace
}  // namespace velk::test
