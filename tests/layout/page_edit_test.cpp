// The page editor without its window: what the pointer hits, what a drag does, the undo commands,
// and the page's frames and pictures kept with the data set.
#include <gtest/gtest.h>

#include "layout/page_store.h"
#include "layout/page_undo.h"
#include "native/fixture.h"
#include "native/ver4_file.h"
#include "support/temp_folder.h"

namespace velk::layout {
namespace {

EditedPage A4Page() {
  const Paper a4{21, 29.7};
  return {{}, DefaultPageFrames(a4), a4};
}

TEST(PageEdit, TheFrontmostThingUnderThePointerAndTheSelectionsHandlesFirst) {
  EditedPage page = A4Page();
  AddRectangle(page.objects, {.X1 = 4, .Y1 = 8, .X2 = 8, .Y2 = 11});
  AddCircle(page.objects, {.X1 = 5, .Y1 = 9, .X2 = 7, .Y2 = 10});
  AddLine(page.objects, {.X1 = 2, .Y1 = 20, .X2 = 6, .Y2 = 24, .Width = 20});
  AddText(page.objects, {.X = 10, .Y = 15, .Angle = 90});
  // A text turned a quarter to the left runs upward from its anchor.
  const std::vector<TextFrame> texts{{10, 15, 3, 0.5, 90}};
  const auto at = [&](double x, double y, std::optional<Target> selected = std::nullopt) {
    return HitTest(page, texts, {x, y}, 0.1, selected);
  };
  const Target circle = Target::Of(DrawOrderEntry{ObjectKind::Circle, 0});
  const Target rectangle = Target::Of(DrawOrderEntry{ObjectKind::Rectangle, 0});
  EXPECT_EQ(at(6, 9.5)->target, circle) << "the circle was added later and lies in front";
  EXPECT_EQ(at(4.5, 8.5)->target, rectangle) << "the circle's corner is outside the oval";
  MoveToFront(page.objects, rectangle.object);
  EXPECT_EQ(at(6, 9.5)->target, rectangle);

  EXPECT_EQ(at(4, 22.05)->target.object.kind, ObjectKind::Line) << "within half the 2 mm width";
  EXPECT_FALSE(at(4, 22.4) && at(4, 22.4)->target.what == Target::What::Object);
  EXPECT_EQ(at(10.2, 13)->target.object.kind, ObjectKind::Text);
  EXPECT_NE(at(11.5, 14)->target.what, Target::What::Object) << "right of the turned text's anchor is empty";

  // The selection's handles win over what lies in front of them.
  const Hit corner = *at(8, 11, rectangle);
  EXPECT_EQ(corner.handle, Handle::BottomRight);
  EXPECT_EQ(DragModeOf(corner), 11);
  const Hit end = *at(6, 24, Target::Of(DrawOrderEntry{ObjectKind::Line, 0}));
  EXPECT_EQ(end.handle, Handle::End);
  EXPECT_EQ(HintOf(end), "Rotate Arrow/Change Length");

  // Empty paper inside a frame hits the frame; the small ones lie above the spectrum's.
  const PageFrame& f1 = page.frames[FrameKind::TraceF1];
  const Hit frame = *at(f1.X + 0.5, f1.Y + 0.5);
  EXPECT_EQ(frame.target, Target::Of(FrameKind::TraceF1));
  EXPECT_EQ(HintOf(frame), "Move F1 Spectrum");
  EXPECT_EQ(DragUndoCode(frame), 41);
  EXPECT_FALSE(at(0.2, 0.2).has_value()) << "the margin";
}

TEST(PageEdit, DragsSnapStayOnThePaperKeepTheSmallestSizeAndNeverDrift) {
  EditedPage page = A4Page();
  AddRectangle(page.objects, {.X1 = 2, .Y1 = 2, .X2 = 5, .Y2 = 4});
  AddLine(page.objects, {.X1 = 1, .Y1 = 1, .X2 = 4, .Y2 = 1});
  AddText(page.objects, {.X = 3, .Y = 3});
  const EditedPage begun = page;
  const Hit body{Target::Of(DrawOrderEntry{ObjectKind::Rectangle, 0}), Handle::Body};

  // Many small steps end where one large step would, on the 1 mm grid.
  for (double x = 0; x <= 1.234; x += 0.01) ApplyDrag(page, begun, body, {3, 3}, {3 + x, 3 + x});
  const LayoutShape& r = page.objects.rectangles[0];
  EXPECT_FLOAT_EQ(r.X1, 3.2f);
  EXPECT_FLOAT_EQ(r.X2, 6.2f);
  EXPECT_FLOAT_EQ(r.Y1, 3.2f);

  ApplyDrag(page, begun, body, {3, 3}, {40, -10});
  EXPECT_FLOAT_EQ(r.X2, 21.f) << "pushed against the right edge, whole";
  EXPECT_FLOAT_EQ(r.X1, 18.f);
  EXPECT_FLOAT_EQ(r.Y1, 0.f);

  const Hit left{body.target, Handle::Left};
  ApplyDrag(page, begun, left, {2, 3}, {9, 3});
  EXPECT_FLOAT_EQ(r.X1, 5.f - float(kSmallestObject)) << "a side never passes the opposite one";
  EXPECT_FLOAT_EQ(r.X2, 5.f);

  const Hit end{Target::Of(DrawOrderEntry{ObjectKind::Line, 0}), Handle::End};
  ApplyDrag(page, begun, end, {4, 1}, {4.04, 3.96});
  EXPECT_FLOAT_EQ(page.objects.lines[0].X2, 4.f);
  EXPECT_FLOAT_EQ(page.objects.lines[0].Y2, 4.f);
  EXPECT_FLOAT_EQ(page.objects.lines[0].X1, 1.f) << "the other end stays";
  const Hit line{end.target, Handle::Body};
  ApplyDrag(page, begun, line, {2, 1}, {-5, 1});
  EXPECT_FLOAT_EQ(page.objects.lines[0].X1, 0.f);
  EXPECT_FLOAT_EQ(page.objects.lines[0].X2, 3.f) << "the arrow keeps its length at the edge";

  const Hit turn{Target::Of(DrawOrderEntry{ObjectKind::Text, 0}), Handle::Rotate};
  ApplyDrag(page, begun, turn, {5, 3}, {3, 1});
  EXPECT_FLOAT_EQ(page.objects.texts[0].Angle, 90.f) << "straight up from the anchor";
  ApplyDrag(page, begun, turn, {5, 3}, {3, 5});
  EXPECT_FLOAT_EQ(page.objects.texts[0].Angle, 270.f);

  const Hit frame{Target::Of(FrameKind::Parameter), Handle::Top};
  const PageFrame before = begun.frames[FrameKind::Parameter];
  ApplyDrag(page, begun, frame, {5, before.Y}, {5, 40});
  EXPECT_FLOAT_EQ(page.frames[FrameKind::Parameter].Height, float(kSmallestFrame));
  EXPECT_FLOAT_EQ(page.frames[FrameKind::Parameter].Y + page.frames[FrameKind::Parameter].Height,
                  before.Y + before.Height);
}

TEST(PageEdit, NewObjectsLandOnThePaper) {
  const EditedPage page = A4Page();
  const LayoutLine arrow = NewLine(page, {20.5, 29});
  EXPECT_FLOAT_EQ(arrow.X2, 21.f);
  EXPECT_FLOAT_EQ(arrow.X2 - arrow.X1, 3.f);
  EXPECT_EQ(arrow.HeadLengthStart, 0) << "no head at the start: the file keeps none";
  LayoutLine both = arrow;
  SetArrowKind(both, 15, 1234);
  EXPECT_EQ(both.HeadLengthStart, 999);
  EXPECT_EQ(both.HeadLengthEnd, 999);
  const LayoutImage image = NewImage(page, {10, 10}, MakePictureBytes({'<', 's', 'v', 'g', '>'}), 0.5);
  EXPECT_EQ(image.Kind, static_cast<int>(PictureKind::Svg));
  EXPECT_FLOAT_EQ(image.Bottom - image.Top, 2.5f);
  EXPECT_EQ(SniffPicture({0xFF, 0xD8, 0xFF, 0xE0}), PictureKind::Jpeg);
  EXPECT_EQ(SniffPicture({0xD7, 0xCD, 0xC6, 0x9A, 0, 0}), PictureKind::PlaceableMetafile);
  EXPECT_EQ(SniffPicture({'x'}), PictureKind::Unknown);
}

TEST(PageUndo, CommandsPutBackWhatTheyChangedNewestFirst) {
  EditedPage page = A4Page();
  const EditedPage start = page;
  PageUndo undo;
  EXPECT_EQ(undo.Caption(), "UnDo");
  undo.Before(page, Target::Of(DrawOrderEntry{ObjectKind::Circle, 0}), AddUndoCode(ObjectKind::Circle));
  AddCircle(page.objects, NewCircle(page, {5, 5}));
  const EditedPage withCircle = page;
  const Hit size{Target::Of(FrameKind::Spectrum), Handle::Right};
  undo.Before(page, size.target, DragUndoCode(size));
  ApplyDrag(page, withCircle, size, {15, 10}, {12, 10});
  undo.Before(page, Target::Of(DrawOrderEntry{ObjectKind::Circle, 0}), DeleteUndoCode(ObjectKind::Circle));
  DeleteObject(page.objects, {ObjectKind::Circle, 0});

  EXPECT_EQ(undo.Caption(), "UnDo(Delete Circle)");
  ASSERT_TRUE(undo.Undo(page));
  EXPECT_EQ(page.objects, withCircle.objects);
  EXPECT_NE(page.frames, withCircle.frames);
  EXPECT_EQ(undo.Caption(), "UnDo(Size of Frame)");
  ASSERT_TRUE(undo.Undo(page));
  EXPECT_EQ(page, withCircle);
  EXPECT_EQ(undo.Caption(), "UnDo(Add Circle)");
  ASSERT_TRUE(undo.Undo(page));
  EXPECT_EQ(page, start);
  EXPECT_FALSE(undo.Undo(page));
}

TEST(PageStore, FramesAndPicturesComeBackFromTheFileAndOtherPrintSetBytesStay) {
  auto s = test::MakeSpectrum2D(128, 128);
  s->carried.printSet.assign(256, 0);
  s->carried.printSet[0] = 0x11;  // the print set's own values are not the frames'
  s->carried.printSet[252] = 0x22;
  const Paper a4{21, 29.7};
  EXPECT_EQ(ReadStoredPage(s->carried, a4), A4Page()) << "a page never edited is the default page";

  EditedPage page = A4Page();
  page.frames[FrameKind::Level].Shown = false;
  page.frames[FrameKind::Spectrum] = {.X = 3, .Y = 4, .Width = 12, .Height = 11, .Background = 0xEEEEEE,
                                      .Filled = true, .LineColor = 0xFF, .LineWidth = 0.5f, .Framed = true};
  std::vector<std::uint8_t> svg{'<', 's', 'v', 'g', '/', '>'};
  AddImage(page.objects, NewImage(page, {8, 8}, MakePictureBytes(svg), 1));
  StorePage(page, s->carried);

  test::TempFolder folder;
  const auto file = folder / "page.vlk2";
  const model::DataWords words{0x210C, 0, 0};
  ASSERT_TRUE(native::WriteDataR4(file, *s, nullptr, nullptr, words, native::SaveMode::AllPlanes, {false, nullptr}).ok());
  auto back = test::Read2D(test::Slurp(file));
  ASSERT_TRUE(back->outcome.ok());
  EXPECT_EQ(ReadStoredPage(back->s->carried, a4), page);
  EXPECT_EQ(back->s->carried.printSet[0], 0x11);
  EXPECT_EQ(back->s->carried.printSet[252], 0x22);
}

}  // namespace
}  // namespace velk::layout
