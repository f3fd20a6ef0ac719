// The whole page on a recording surface: every part inside its frame.
#include <gtest/gtest.h>

#include <cmath>

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

  const PageFrames f = DefaultFrames(a4);
  const auto dots = [&](double cm) { return static_cast<int>(std::lrint(cm / 2.54 * dpi)); };
  bool comment = false, label = false, marked = false;
  for (const auto* call : surface.Of(test::Recorded::Text)) {
    const platform::Point at = call->points[0];
    if (call->text == "The comment") comment = at == platform::Point{dots(f.commentX), dots(f.commentY)};
    if (call->text == "F2-Nucleus") label = at.y >= dots(f.parameterY) && at.x >= dots(f.parameterX);
    if (call->text == "marked") marked = at == platform::Point{dots(10), dots(28)};
  }
  EXPECT_TRUE(comment);
  EXPECT_TRUE(label) << "the parameters stand below the spectrum";
  EXPECT_TRUE(marked);
  // The contour lies inside the spectrum frame.
  const auto segments = surface.Segments();
  ASSERT_FALSE(segments.empty());
  for (const auto& seg : segments) {
    EXPECT_GE(seg.from.y, dots(f.spectrumY) - 1);
    EXPECT_LE(seg.from.y, dots(f.spectrumY + f.spectrumHeight) + 1);
  }
  EXPECT_EQ(PaperOf("B5", true)->widthCm, 25.7);
  EXPECT_FALSE(PaperOf("Letter", false).has_value());
}

}  // namespace
}  // namespace velk::layout
