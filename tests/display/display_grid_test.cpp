#include <cmath>
#include <functional>

#include <gtest/gtest.h>

#include "display/display_grid.h"
#include "model/data_type.h"

namespace velk::display {
namespace {

// A spectrum of the given size whose RR (and IR) hold the functions; ppm = index.
std::unique_ptr<model::Spectrum2D> MakeSpectrum(int cols, int rows, const std::function<float(int, int)>& rr,
                                                const std::function<float(int, int)>& ir = nullptr) {
  auto s = std::make_unique<model::Spectrum2D>();
  EXPECT_EQ(model::AllocateSpectrum2D(*s, cols, rows), 0);
  s->axis[model::F2].Point = cols;
  s->axis[model::F1].Point = rows;
  for (int r = 0; r < rows; ++r)
    for (int c = 0; c < cols; ++c) {
      s->RR.at(c, r) = rr(c, r);
      if (ir) s->IR.at(c, r) = ir(c, r);
    }
  for (int c = 0; c < cols; ++c) s->ppmF2[c] = static_cast<float>(c);
  for (int r = 0; r < rows; ++r) s->ppmF1[r] = static_cast<float>(r);
  return s;
}

TEST(GridFactor, GridHasBetweenOneAndTwiceThePixels) {
  for (int n : {2, 7, 100, 255, 1000, 4095})
    for (int p : {3, 5, 64, 100, 333, 1024, 3000}) {
      const double f = GridFactor(n, p);
      const int intervals = static_cast<int>(n * f);
      if (n / 2.0 < p && p < n) {
        EXPECT_EQ(f, 1.0) << n << " " << p;  // between half and whole: the data as they are
      } else {
        EXPECT_GE(intervals, p) << n << " " << p;
        EXPECT_LT(intervals, 2 * p) << n << " " << p;
      }
    }
  EXPECT_EQ(GridFactor(4095, 1024), 0.5);
  EXPECT_EQ(CappedPixels(1024, 0, 256), 256);
  EXPECT_EQ(CappedPixels(300, 512, 256), 300);
}

TEST(MakeDisplayGrid, ThinningKeepsTheLargestMagnitudeWithItsSignAndTiesKeepTheEarlier) {
  // Columns in pairs (stride 2): a spike beside a deeper negative point, a tie, a plain group.
  const float row[] = {0.5f, -0.8f, 0.5f, -0.5f, -0.5f, 0.5f, 0.1f, 0.2f, 0.3f};
  auto s = MakeSpectrum(128, 128, [&](int c, int r) { return c < 9 && r < 2 ? row[c] : 0.0f; });
  ContourSetting setting;
  ContourGrid g;
  ASSERT_TRUE(MakeDisplayGrid(g, {*s, model::VPH_HOMO, setting}, 0, 8, 0, 127, 4, 127, false));
  ASSERT_EQ(g.Cols, 4);
  EXPECT_EQ(g.at(0, 0), -0.8f);
  EXPECT_EQ(g.at(1, 0), 0.5f);
  EXPECT_EQ(g.at(2, 0), -0.5f);
  EXPECT_EQ(g.at(3, 0), 0.2f);
  EXPECT_EQ(g.at(4, 0), 0.3f);  // the last group is cut at the end of the range
  EXPECT_EQ(g.ColPpm[3], 6.0f);
  EXPECT_EQ(g.Rows, 127);

  // The same in the row direction; and the magnitude kinds show sqrt(RR^2 + IR^2).
  auto t = MakeSpectrum(128, 128, [&](int c, int r) { return r < 9 && c == 0 ? row[r] : 0.0f; },
                        [](int, int) { return 0.6f; });
  ASSERT_TRUE(MakeDisplayGrid(g, {*t, model::VPH_HOMO, setting}, 0, 127, 0, 8, 127, 4, false));
  EXPECT_EQ(g.at(0, 0), -0.8f);
  EXPECT_EQ(g.at(0, 2), -0.5f);
  ASSERT_TRUE(MakeDisplayGrid(g, {*t, model::VPH_HMBC, setting}, 0, 127, 0, 8, 127, 4, false));
  EXPECT_FLOAT_EQ(g.at(0, 0), 1.0f);
  EXPECT_FLOAT_EQ(g.at(1, 0), 0.6f);
}

TEST(MakeDisplayGrid, EnlargementReproducesACubicAtInteriorPoints) {
  const auto cubic = [](double x) { return 0.001 * x * x * x - 0.02 * x * x + 0.1 * x + 1.0; };
  auto s = MakeSpectrum(128, 128, [&](int c, int) { return static_cast<float>(cubic(c)); });
  ContourSetting setting;
  ContourGrid g;
  // 10 intervals onto 40 pixels: factor 4, two passes.
  ASSERT_TRUE(MakeDisplayGrid(g, {*s, model::VPH_HOMO, setting}, 0, 10, 0, 127, 40, 200, false));
  ASSERT_EQ(g.Cols, 40);
  EXPECT_EQ(g.ColFactor, 4.0f);
  for (int x = 8; x <= 32; ++x) EXPECT_NEAR(g.at(x, 5), cubic(x / 4.0), 1e-5) << x;
  EXPECT_FLOAT_EQ(g.ColPpm[13], 3.25f);
  // At the right edge the missing neighbour counts as 0.
  EXPECT_NEAR(g.at(39, 5), 0.5625 * (g.at(38, 5) + g.at(40, 5)) - 0.0625 * g.at(36, 5), 1e-6);
  EXPECT_GT(std::fabs(g.at(39, 5) - cubic(39 / 4.0)), 0.01);

  setting.Interpolation = 1;  // the fifth-order weights are exact for cubics as well
  ASSERT_TRUE(MakeDisplayGrid(g, {*s, model::VPH_HOMO, setting}, 0, 10, 0, 127, 40, 200, false));
  for (int x = 12; x <= 28; ++x) EXPECT_NEAR(g.at(x, 5), cubic(x / 4.0), 1e-5) << x;
}

TEST(MakeDisplayGrid, ReuseAndRefusal) {
  auto s = MakeSpectrum(128, 128, [](int c, int r) { return static_cast<float>(c + r); });
  ContourSetting setting;
  ContourGrid g;
  const GridSource src{*s, model::VPH_HOMO, setting};
  EXPECT_TRUE(MakeDisplayGrid(g, src, 0, 127, 0, 127, 100, 100, true));
  EXPECT_FALSE(MakeDisplayGrid(g, src, 0, 127, 0, 127, 110, 90, true));  // same factors and ranges
  EXPECT_TRUE(MakeDisplayGrid(g, src, 0, 127, 0, 127, 110, 90, false));
  // Too small a target or too few points, or ranges beyond the data: the values stay.
  const float kept = g.at(3, 3);
  EXPECT_FALSE(MakeDisplayGrid(g, src, 0, 127, 0, 127, 2, 100, false));
  EXPECT_FALSE(MakeDisplayGrid(g, src, 0, 1, 0, 127, 100, 100, false));
  EXPECT_FALSE(MakeDisplayGrid(g, src, 0, 500, 0, 127, 100, 100, false));
  EXPECT_EQ(g.DataColLast, 500);
  EXPECT_EQ(g.at(3, 3), kept);
}

}  // namespace
}  // namespace velk::display
