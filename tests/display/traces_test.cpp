#include <algorithm>
#include <map>

#include <gtest/gtest.h>

#include "display/page_picture.h"
#include "display/traces.h"
#include "model/data_type.h"
#include "support/recording_surface.h"
#include "support/synthetic_2d.h"

namespace velk::display {
namespace {

TEST(Projections, PeaksOfBothSignsLandOnTheirPoints) {
  // 0.5 ppm at 2 ppm F2, 3 ppm F1; -0.8 at 7 ppm F2, 6 ppm F1; 101 points: 0.1 ppm per point.
  auto s = test::MakeSynthetic2D(101, 101, {{2, 3, 0.5, 0.05}, {7, 6, -0.8, 0.05}});
  ContourSetting setting;
  const Projection f2 = MakeProjectionF2(*s, model::VPH_HOMO, setting, true);
  ASSERT_EQ(f2.positive.size(), 101u);
  EXPECT_NEAR(f2.positive[20], 0.5, 1e-3);
  EXPECT_NEAR(f2.negative[70], -0.8, 1e-3);
  EXPECT_NEAR(f2.max, 0.5, 1e-3);
  EXPECT_NEAR(f2.min, -0.8, 1e-3);
  const Projection f1 = MakeProjectionF1(*s, model::VPH_HOMO, setting, false);
  EXPECT_NEAR(f1.positive[30], 0.5, 1e-3);
  EXPECT_TRUE(f1.negative.empty());
  // The magnitude of VPH_HMBC sees the negative peak as a positive one.
  const Projection hmbc = MakeProjectionF2(*s, model::VPH_HMBC, setting, true);
  EXPECT_NEAR(hmbc.positive[70], 0.8, 1e-3);
  EXPECT_TRUE(hmbc.negative.empty());

  EXPECT_EQ(SliceAlongF2(*s, 30)[20], s->RR.at(20, 30));
  EXPECT_EQ(SliceAlongF1(*s, 70)[60], s->RR.at(70, 60));
  EXPECT_TRUE(SliceAlongF1(*s, 101).empty());
  EXPECT_EQ(SliceCaption(true, 3.25f), "Slice(F1) at 3.250");

  EXPECT_FLOAT_EQ(StepPanelFactor(1.0f, true, false), 1.1f);
  EXPECT_FLOAT_EQ(StepPanelFactor(0.95f, true, true), 1.0f);  // stops on 1.0 when passing it
  EXPECT_FLOAT_EQ(StepPanelFactor(0.001f, false, false), 0.001f);
}

TEST(ThinTrace, AtMostTwoPointsPerPixelKeepingTheExtremesInOrder) {
  std::vector<float> ppm(1000), values(1000);
  for (int i = 0; i < 1000; ++i) {
    ppm[i] = i * 0.01f;
    values[i] = static_cast<float>((i * 7919) % 1000) / 1000.0f;
  }
  values[503] = 2.0f;  // a spike must survive the thinning
  const TracePanel panel{{0, 0, 101, 201}, 0.0f, 9.99f, 0.0f, 2.0f, false};
  const auto line = ThinTrace(panel, ppm, values, 1000);
  std::map<int, int> perColumn;
  for (const auto& p : line) ++perColumn[p.x];
  for (const auto& [x, n] : perColumn) EXPECT_LE(n, 2) << x;
  EXPECT_EQ(perColumn.size(), 101u);
  EXPECT_EQ(std::min_element(line.begin(), line.end(), [](auto a, auto b) { return a.y < b.y; })->y, 0);

  // A flat run keeps only its ends; the F1 panel runs down with values to the left.
  const std::vector<float> flat(1000, 0.5f);
  EXPECT_EQ(ThinTrace(panel, ppm, flat, 1000).size(), 2u);
  const TracePanel side{{0, 0, 51, 101}, 0.0f, 9.99f, 0.0f, 1.0f, true};
  const auto down = ThinTrace(side, ppm, flat, 1000);
  EXPECT_EQ(down.front(), (platform::Point{25, 0}));
  EXPECT_EQ(down.back(), (platform::Point{25, 100}));
}

// A slice cursor's caption stays inside its panel: the narrow F1 panel takes it on two lines.
TEST(SliceCaptions, StayInsideTheirPanels) {
  auto s = test::MakeSynthetic2D(101, 101, {{2, 3, 0.5, 0.05}});
  const ContourSetting setting;
  MainViewInput input{*s, model::VPH_HOMO, setting, {}, TraceKind::Projection, "F2 (ppm)", "F1 (ppm)"};
  input.view.ViewF2Start = 10, input.view.ViewF2End = 0, input.view.ViewF1Start = 0, input.view.ViewF1End = 10;
  input.view.SliceF1 = input.view.SliceF2 = 30;
  const platform::Extent size{600, 500};
  test::RecordingSurface surface(size);
  platform::NoProgress progress;
  ASSERT_TRUE(DrawMainView(surface, size, input, progress));
  const MainViewLayout l = LayOutMainView(size, true);
  int font = 0;
  std::vector<std::string> shown;
  for (const test::Recorded& call : surface.calls) {
    if (call.kind == test::Recorded::Font) font = call.width;
    if (call.kind != test::Recorded::Text || call.points[0].y > l.traceF1.bottom()) continue;
    const int x = call.points[0].x, right = x + static_cast<int>(call.text.size()) * font / 2;
    for (const Rect& panel : {l.traceF1, l.traceF2})
      if (x >= panel.x && x < panel.right() && call.points[0].y >= panel.y && call.points[0].y < panel.bottom()) {
        EXPECT_LE(right, panel.right()) << call.text;
        shown.push_back(call.text);
      }
  }
  EXPECT_EQ(shown, (std::vector<std::string>{"Slice(F2) at 3.000", "Slice(F1)", "at 3.000"}));
}

}  // namespace
}  // namespace velk::display
