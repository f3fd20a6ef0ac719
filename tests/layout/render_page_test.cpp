// The whole page on a recording surface: every part inside its frame.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <sstream>
#include <tuple>

#include "layout/print_set.h"
#include "layout/render_page.h"
#include "model/data_type.h"
#include "support/recording_surface.h"
#include "support/synthetic_2d.h"

namespace velk::layout {
namespace {

TEST(RenderPage, CommentSpectrumParametersAndObjectsInTheirFrames) {
  auto s = test::MakeSynthetic2D(256, 256, {{7, 3, 1.0, 0.08}});
  s->extras[model::F2].nucleus = "1H";
  display::ContourSetting setting;
  setting.Steps = 4;
  display::MainViewInput view{*s, model::VPH_HOMO, setting, {}, display::TraceKind::Projection, "F2 (ppm)", "F1 (ppm)"};
  view.view.ViewF2Start = 10, view.view.ViewF2End = 0, view.view.ViewF1Start = 0, view.view.ViewF1End = 10;
  const ParameterList parameters = DefaultParameterList();
  const ParameterSource source{.s = *s};
  LayoutDocument objects;
  AddText(objects, {.X = 10, .Y = 28, .Text = "\\< marked"});
  const PageContent content{view, parameters, source, "\\< The comment", objects};

  const Paper a4 = *PaperOf("a4", false);
  const double dpi = 100;
  const platform::Extent page = PageExtent(a4, dpi);
  EXPECT_EQ(page.width, 827);
  EXPECT_EQ(page.height, 1169);
  test::RecordingSurface surface(page);
  platform::NoProgress progress;
  ASSERT_TRUE(RenderPage(surface, content, a4, dpi, progress));

  PageFrames f = DefaultPageFrames(a4);
  const auto dots = [&](double cm) { return static_cast<int>(std::lrint(cm / 2.54 * dpi)); };
  const auto check = [&](const PageFrames& f, const char* when) {
    bool comment = false, label = false, marked = false;
    for (const auto* call : surface.Of(test::Recorded::Text)) {
      const platform::Point at = call->points[0];
      const PageFrame& c = f[FrameKind::Comment];
      const PageFrame& p = f[FrameKind::Parameter];
      if (call->text == "The comment") comment = at == platform::Point{dots(c.X), dots(c.Y)};
      if (call->text == "F2-Nucleus") label = at.y >= dots(p.Y) && at.x >= dots(p.X) && at.y < dots(p.Y + p.Height);
      if (call->text == "marked") marked = at == platform::Point{dots(10), dots(28)};
    }
    EXPECT_TRUE(comment) << when;
    EXPECT_TRUE(label) << when << ": the parameters stand in their frame";
    EXPECT_TRUE(marked) << when;
    // Everything drawn in lines (contour, axes, traces, level bar) lies inside the frames of the view.
    const auto segments = surface.Segments();
    ASSERT_FALSE(segments.empty());
    double top = 1e9, bottom = -1e9;
    for (FrameKind k : {FrameKind::Spectrum, FrameKind::TraceF2, FrameKind::TraceF1, FrameKind::Level}) {
      top = std::min<double>(top, dots(f[k].Y));
      bottom = std::max<double>(bottom, dots(f[k].Y + f[k].Height));
    }
    for (const auto& seg : segments) {
      EXPECT_GE(seg.from.y, top - 1) << when;
      EXPECT_LE(seg.from.y, bottom + 1) << when;
    }
  };
  check(f, "default page");
  EXPECT_LT(f[FrameKind::TraceF2].Y + f[FrameKind::TraceF2].Height, f[FrameKind::Spectrum].Y) << "F2 trace above";
  EXPECT_LT(f[FrameKind::TraceF1].X + f[FrameKind::TraceF1].Width, f[FrameKind::Spectrum].X) << "F1 trace beside";
  EXPECT_GT(f[FrameKind::Parameter].Y, f[FrameKind::Spectrum].Y + f[FrameKind::Spectrum].Height);

  // Moved frames take their parts with them.
  for (FrameKind k : {FrameKind::Spectrum, FrameKind::TraceF2, FrameKind::TraceF1, FrameKind::Level}) f[k].Y += 3;
  f[FrameKind::Parameter].Y = 2, f[FrameKind::Parameter].Height = 4;
  f[FrameKind::Comment].X = 5;
  const PageContent moved{view, parameters, source, "\\< The comment", objects, &f};
  surface.calls.clear();
  ASSERT_TRUE(RenderPage(surface, moved, a4, dpi, progress));
  check(f, "moved frames");
  EXPECT_EQ(PaperOf("B5", true)->widthCm, 25.7);
  EXPECT_FALSE(PaperOf("Letter", false).has_value());
}

// The print set's fonts (the parameter font handed over as a set read hands it to "Parameter
// Print") and parameter colour reach the texts (at 72 dots per inch a point is a
// pixel), its colours and widths the grid, the slice line and the peak crosses.
TEST(RenderPage, TextsAndMarksInThePrintSetsLook) {
  auto s = test::MakeSynthetic2D(128, 128, {{5, 5, 1.0, 0.1}});
  s->peaks.peaks.push_back({.PosF2 = static_cast<float>(64 * s->axis[model::F2].Resolution),
                            .PosF1 = static_cast<float>(64 * s->axis[model::F1].Resolution)});
  const display::ContourSetting setting;
  const display::GridSetting grid{.shown = true};
  display::MainViewInput view{*s, model::VPH_HOMO, setting, {}, display::TraceKind::Projection, "F2 (ppm)", "F1 (ppm)"};
  view.grid = &grid;
  view.view.SliceF1 = 64;
  view.view.ViewF2Start = 10, view.view.ViewF2End = 0, view.view.ViewF1Start = 0, view.view.ViewF1End = 10;
  const ParameterList parameters = DefaultParameterList();
  core::Settings set = DefaultPrintSet();
  std::istringstream file("COLOR SET OF PRINT 2D VER.4\nAXIS FONT NAME;Times New Roman\nAXIS FONT SIZE;20\n"
                          "PARA FONT NAME;Courier New\nPARA FONT SIZE;14\nPARAMETER COL;32768\n"
                          "GRID COL;12632256\nWIDTH GRID;2\nPEAK LINE COL;8388736\nWIDTH PEAK LINE;4\n"
                          "SLICE LINE COL;8421376\nWIDTH SLICE LINE;6\n");
  ASSERT_TRUE(ReadPrintSet(file, set).ok());
  const ParameterSource source{.s = *s};
  const LayoutDocument objects;
  const PageContent content{view, parameters, source, "", objects, nullptr, nullptr, &set, PrintSetFont(set, "PARA")};
  const Paper a4 = *PaperOf("A4", false);
  test::RecordingSurface surface(PageExtent(a4, 72));
  platform::NoProgress progress;
  ASSERT_TRUE(RenderPage(surface, content, a4, 72, progress));
  using Look = std::tuple<std::string, int, platform::Color>;  // font, height, colour
  Look now;
  std::map<std::string, Look> drawnIn;
  std::map<platform::Color, int> penWidths;
  for (const test::Recorded& call : surface.calls) {
    if (call.kind == test::Recorded::Pen) penWidths[call.color] = call.width;
    if (call.kind == test::Recorded::Font) std::get<0>(now) = call.text, std::get<1>(now) = call.width;
    if (call.kind == test::Recorded::TextColor) std::get<2>(now) = call.color;
    if (call.kind == test::Recorded::Text) drawnIn[call.text] = now;
  }
  EXPECT_EQ(drawnIn["F2-Nucleus"], Look("Courier New", 14, 32768));
  EXPECT_EQ(drawnIn["F2 (ppm)"], Look("Times New Roman", 20, 0));
  EXPECT_EQ(penWidths[12632256], 2) << "the grid at 72 dots per inch: 2 of 1/96 inch";
  EXPECT_EQ(penWidths[8388736], 3) << "the peak crosses";
  EXPECT_EQ(penWidths[8421376], 4) << "the slice line";
}

}  // namespace
}  // namespace velk::layout
