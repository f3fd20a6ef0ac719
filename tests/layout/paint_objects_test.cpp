// Painting the annotation objects: arrow rods and heads, patterns, shapes and the painting order.
#include <gtest/gtest.h>

#include "layout/paint_objects.h"
#include "support/recording_surface.h"

namespace velk::layout {
namespace {

using test::Recorded;
using test::RecordingSurface;
using test::Segment;

TEST(DrawArrow, RodStopsWhereTheHeadBeginsAndTheTipStaysOnTheEnd) {
  RecordingSurface surface;
  const PageScale scale{10, 1, 1};
  // A solid head at the end: 10 units long, 3.249 units to each side.
  DrawArrow(surface, {.X1 = 1, .Y1 = 1, .X2 = 5, .Y2 = 1, .Color = 0xFF, .HeadLengthEnd = 10, .StyleCode = 4 + 1}, scale);
  EXPECT_EQ(surface.Segments(), (std::vector<Segment>{{{10, 10}, {40, 10}, 0xFF}}));
  const auto heads = surface.Of(Recorded::Polygon);
  ASSERT_EQ(heads.size(), 1u);
  EXPECT_EQ(heads[0]->points, (std::vector<platform::Point>{{40, 13}, {50, 10}, {40, 7}}));
  EXPECT_EQ(surface.Of(Recorded::Brush)[0]->color, 0xFFu) << "a solid head takes the rod's colour";

  // Both open heads on a line of no length: only the heads are drawn.
  surface.calls.clear();
  DrawArrow(surface, {.X1 = 2, .Y1 = 2, .X2 = 2, .Y2 = 2, .HeadLengthStart = 5, .HeadLengthEnd = 5, .StyleCode = 3}, scale);
  EXPECT_TRUE(surface.Segments().empty());
  EXPECT_EQ(surface.Of(Recorded::Polyline).size(), 2u);

  // The third family fills with the fill colour; erasing paints everything white.
  surface.calls.clear();
  DrawArrow(surface, {.X2 = 5, .Color = 0xFF, .FillColor = 0xFF00, .HeadLengthEnd = 10, .StyleCode = 2 * 4 + 1}, scale,
            true);
  EXPECT_EQ(surface.Of(Recorded::Brush)[0]->color, platform::kWhite);
  EXPECT_EQ(surface.Segments()[0].color, platform::kWhite);
}

TEST(DrawArrow, PatternsApplyToTheFirstFamilyOnly) {
  RecordingSurface surface;
  const PageScale scale{10, 1, 1};
  // "Chain(1)": dashes of 4 and gaps of 2 line units, a unit being at least 2 pixels.
  DrawArrow(surface, {.X2 = 3, .LineType = 2}, scale);
  EXPECT_EQ(surface.Segments(), (std::vector<Segment>{{{0, 0}, {8, 0}, 0}, {{12, 0}, {20, 0}, 0}, {{24, 0}, {30, 0}, 0}}));
  surface.calls.clear();
  DrawArrow(surface, {.X2 = 3, .StyleCode = 4, .LineType = 2}, scale);
  EXPECT_EQ(surface.Segments().size(), 1u);
}

TEST(PaintObjects, ObjectsFollowTheDrawOrderAndShapesKeepTheirFill) {
  LayoutDocument doc;
  AddText(doc, {.X = 1, .Y = 1, .Text = "\\< note"});
  AddRectangle(doc, {.X1 = 0, .Y1 = 0, .X2 = 2, .Y2 = 1, .FillColor = 0x00FF00});
  AddCircle(doc, {.X1 = 0, .Y1 = 0, .X2 = 2, .Y2 = 2});
  MoveToBack(doc, {ObjectKind::Circle, 0});
  doc.drawOrder.push_back({ObjectKind::Line, 7});  // names nothing
  RecordingSurface surface;
  const PaintOrder painted = PaintObjects(surface, doc, {10, 1, 1});
  EXPECT_FALSE(painted.consistent);
  std::vector<Recorded::Kind> drawn;
  for (const Recorded& call : surface.calls)
    if (call.kind == Recorded::Polygon || call.kind == Recorded::Text || call.kind == Recorded::Brush ||
        call.kind == Recorded::NoBrush)
      drawn.push_back(call.kind);
  EXPECT_EQ(drawn, (std::vector<Recorded::Kind>{Recorded::NoBrush, Recorded::Polygon, Recorded::Text, Recorded::Brush,
                                                Recorded::Polygon}));
  EXPECT_EQ(surface.Of(Recorded::Polygon)[0]->points.size(), 72u);
  EXPECT_EQ(surface.Of(Recorded::Text)[0]->points[0], (platform::Point{10, 10}));
}

}  // namespace
}  // namespace velk::layout
