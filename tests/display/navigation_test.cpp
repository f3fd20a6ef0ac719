// Moving the shown window with the basic tool, and leaving tools through the one question.
#include <gtest/gtest.h>

#include "display/display_area.h"
#include "display/tools.h"
#include "display/view_navigation.h"
#include "support/synthetic_2d.h"

namespace velk::display {
namespace {

// 101 points on both axes, 0 to 10 ppm: 0.1 ppm per point. The contour is 201 pixels square at
// (50, 40), so that in the full view every point falls on an even pixel.
struct Fixture {
  std::unique_ptr<model::Spectrum2D> s = test::MakeSynthetic2D(101, 101, {{4, 6, 1.0, 0.1}});
  DisplayState v;
  Rect contour{50, 40, 201, 201};
  Fixture() { ShowFullSpectrum(v, *s); }
  int X(double f2) const { return static_cast<int>(ValueToPixel(v.ViewF2Start, v.ViewF2End, contour.x, 201, f2)); }
  int Y(double f1) const { return static_cast<int>(ValueToPixel(v.ViewF1Start, v.ViewF1End, contour.y, 201, f1)); }
};

TEST(Navigation, RubberBandZoomOutAndPanStayOnTheData) {
  Fixture f;
  // High ppm at the left and at the bottom.
  EXPECT_FLOAT_EQ(f.v.ViewF2Start, 10);
  EXPECT_FLOAT_EQ(f.v.ViewF1End, 10);
  EXPECT_EQ(f.X(10), 50);
  EXPECT_DOUBLE_EQ(PixelToValue(10, 0, 50, 201, 150), 5.0);

  // A band drawn from the lower right to the upper left: the ends snap to points, the window
  // keeps the direction of the axes. 2.04 ppm F1 lies inside pixel 80, at 2.0 ppm.
  ASSERT_TRUE(ZoomToBand(f.v, *f.s, f.contour, f.X(3.0), f.Y(8.0), f.X(6.0), f.Y(2.04)));
  EXPECT_NEAR(f.v.ViewF2Start, 6.0, 1e-5);
  EXPECT_NEAR(f.v.ViewF2End, 3.0, 1e-5);
  EXPECT_NEAR(f.v.ViewF1Start, 2.0, 1e-5);
  EXPECT_NEAR(f.v.ViewF1End, 8.0, 1e-5);
  // A band thinner than one point changes nothing.
  const DisplayState before = f.v;
  EXPECT_FALSE(ZoomToBand(f.v, *f.s, f.contour, 100, 100, 100, 180));
  EXPECT_EQ(f.v.ViewF2Start, before.ViewF2Start);

  // The window doubles about its middle, pushed back inside the data at the edge.
  ZoomOut(f.v, *f.s);
  EXPECT_NEAR(f.v.ViewF2Start, 7.5, 1e-5);
  EXPECT_NEAR(f.v.ViewF2End, 1.5, 1e-5);
  EXPECT_NEAR(f.v.ViewF1Start, 0.0, 1e-5);  // 2..8 doubled is -1..11: the whole axis
  EXPECT_NEAR(f.v.ViewF1End, 10.0, 1e-5);

  // Dragging the picture 40 pixels to the right brings higher F2 values in at the left: 6 ppm
  // over 200 pixels is 0.03 ppm a pixel; the window stops at the end of the data.
  Pan(f.v, *f.s, f.contour, 40, 0);
  EXPECT_NEAR(f.v.ViewF2Start, 8.7, 1e-4);
  Pan(f.v, *f.s, f.contour, 400, 0);
  EXPECT_NEAR(f.v.ViewF2Start, 10.0, 1e-4);
  EXPECT_NEAR(f.v.ViewF2End, 4.0, 1e-4);

  // "Change Display Area" in kHz: 400 MHz makes 0.4 kHz a ppm; "Exchange" turns F2 round.
  f.s->extras[model::F2].absFreq0ppm = 400.0;
  f.s->extras[model::F1].absFreq0ppm = 100.0;
  DisplayArea area = DefaultArea(*f.s, AreaUnit::KHz);
  EXPECT_NEAR(area.f2Start, 4.0, 1e-6);
  EXPECT_NEAR(area.f1End, 1.0, 1e-6);
  area.f2End = 0.8;
  ExchangeEnds(area, false);
  ApplyArea(f.v, area, *f.s);
  EXPECT_NEAR(f.v.ViewF2Start, 2.0, 1e-5);
  EXPECT_NEAR(f.v.ViewF2End, 10.0, 1e-5);
  EXPECT_NEAR(f.v.ViewF1End, 10.0, 1e-5);

  // The reading at the peak: its point, ppm, Hz from the 0 ppm frequency, and its height.
  ShowFullSpectrum(f.v, *f.s);
  const CursorReading r = ReadCursor(f.v, *f.s, f.contour, f.X(4.0), f.Y(6.0));
  EXPECT_EQ(r.col, 40);
  EXPECT_EQ(r.row, 60);
  EXPECT_NEAR(r.hzF2, 1600.0, 1e-3);
  EXPECT_NEAR(r.value, 1.0, 1e-3);
}

TEST(Navigation, BasicToolDragsSlicesAndClicks) {
  Fixture f;
  BasicTool tool;
  ToolBox box;
  ASSERT_TRUE(box.Switch(f.v, kNoTool));
  ToolContext c{f.v, *f.s, f.contour};
  // A click without a drag is no rubber band.
  tool.Press(c, {120, 120});
  tool.Release(c, {121, 121});
  EXPECT_FALSE(c.windowChanged);
  tool.Press(c, {f.X(9), f.Y(1)});
  EXPECT_TRUE(tool.BandShown());
  tool.Move(c, {f.X(5), f.Y(5)});
  tool.Release(c, {f.X(5), f.Y(5)});
  EXPECT_TRUE(c.windowChanged);
  EXPECT_FALSE(tool.BandShown());
  EXPECT_NEAR(f.v.ViewF2End, 5.0, 1e-5);

  // Slices follow the pointer while the button is held; the right button removes them.
  f.v.ToolCode = kSlice;
  ShowFullSpectrum(f.v, *f.s);
  ToolContext s{f.v, *f.s, f.contour};
  tool.Press(s, {f.X(4), f.Y(6)});
  EXPECT_EQ(f.v.SliceF2, 40);
  EXPECT_EQ(f.v.SliceF1, 60);
  tool.Move(s, {f.X(3), f.Y(6)});
  tool.Release(s, {f.X(3), f.Y(6)});
  EXPECT_EQ(f.v.SliceF2, 30);
  tool.Move(s, {f.X(2), f.Y(6)});  // no button held: the cursor stays
  EXPECT_EQ(f.v.SliceF2, 30);
  tool.Press(s, {f.X(2), f.Y(6), true});
  EXPECT_EQ(f.v.SliceF2, -1);
}

// A tool with unfixed work that the user keeps keeps every other command out.
class KeptTool final : public Tool {
 public:
  bool keep = true;
  int left = 0;
  void Activate(DisplayState&) override {}
  void Press(ToolContext&, const Pointer&) override {}
  void Move(ToolContext&, const Pointer&) override {}
  void Release(ToolContext&, const Pointer&) override {}
  bool CanLeave() override { return !keep; }
  void Leave(DisplayState&) override { ++left; }
  void DrawOverlay(platform::Surface&, const DisplayState&, const model::Spectrum2D&, const Rect&) const override {}
};

TEST(Navigation, ResolveAsksTheActiveTool) {
  DisplayState v;
  ToolBox box;
  auto owned = std::make_unique<KeptTool>();
  KeptTool& tool = *owned;
  box.Add(kPhaseF2, std::move(owned));
  ASSERT_TRUE(box.Switch(v, kPhaseF2));
  EXPECT_EQ(&box.Active(v), &tool);
  EXPECT_FALSE(box.Switch(v, kNoTool));
  EXPECT_EQ(v.ToolMode, kPhaseF2);
  tool.keep = false;
  EXPECT_TRUE(box.Resolve(v));
  EXPECT_EQ(v.ToolMode, kNoTool);
  EXPECT_EQ(tool.left, 1);
  EXPECT_FALSE(box.Switch(v, kPeakPicking));  // no tool of that mode: nothing activated
}

}  // namespace
}  // namespace velk::display
