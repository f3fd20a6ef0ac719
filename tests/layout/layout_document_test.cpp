// The page document: its limits and messages, deleting and ordering, the line-record fold, and the
// document through the sections of a Ver.4 file.
#include <gtest/gtest.h>

#include <cstring>

#include "layout/layout_sections.h"
#include "layout/line_record.h"
#include "layout/paste_object.h"
#include "layout/undo_captions.h"
#include "native/fixture.h"
#include "native/ver4_file.h"
#include "support/temp_folder.h"

namespace velk::layout {
namespace {

template <class T>
T At(const LineRecordBytes& r, std::size_t offset) {
  T v;
  std::memcpy(&v, r.data() + offset, sizeof v);
  return v;
}

TEST(LayoutDocument, FullTablesRefuseWithTheirMessages) {
  LayoutDocument doc;
  for (int k = 0; k < 200; ++k) ASSERT_TRUE(AddText(doc, {}).ok());
  for (int k = 0; k < 200; ++k) ASSERT_TRUE(AddLine(doc, {}).ok());
  for (int k = 0; k < 500; ++k) ASSERT_TRUE(AddCircle(doc, {}).ok() && AddRectangle(doc, {}).ok());
  for (int k = 0; k < 50; ++k) ASSERT_TRUE(AddImage(doc, {}).ok());
  const LayoutDocument full = doc;
  const auto text = AddText(doc, {});
  EXPECT_EQ(text.message.text, "Exceed Max String Number");
  const auto line = AddLine(doc, {});
  EXPECT_EQ(line.message.text, "Exceed Max String Number!");
  EXPECT_EQ(line.message.title, "Arrow/Line Paste Error");
  const auto circle = AddCircle(doc, {});
  EXPECT_EQ(circle.message.text, "Exceed Max Circle Number!");
  EXPECT_EQ(circle.message.title, "Circle Paste Error");
  EXPECT_EQ(AddRectangle(doc, {}).message.text, "Exceed Max Rectangle Number!");
  const auto image = AddImage(doc, {});
  EXPECT_EQ(image.message.text, "Exceed Max Image Number");
  EXPECT_EQ(image.message.title, "Image Paste Error");
  EXPECT_TRUE(text.message.beep && !text.ok());
  EXPECT_EQ(doc, full);
  EXPECT_TRUE(doc.images[0].free() && doc.images[51].free()) << "slots 0 and 51 are never used";
}

TEST(LayoutDocument, DeletingCompactsTablesButImagesKeepTheirSlots) {
  LayoutDocument doc;
  for (float x : {1.f, 2.f, 3.f}) AddText(doc, LayoutText{.X = x});
  for (int k = 0; k < 3; ++k) AddImage(doc, LayoutImage{.Kind = 1, .Left = float(k)});
  DeleteObject(doc, {ObjectKind::Text, 0});
  DeleteObject(doc, {ObjectKind::Image, 2});
  ASSERT_EQ(doc.texts.size(), 2u);
  EXPECT_EQ(doc.texts[0].X, 2.f);
  EXPECT_TRUE(doc.images[2].free());
  EXPECT_EQ(doc.images[3].Left, 2.f);
  const std::vector<DrawOrderEntry> expected{{ObjectKind::Text, 0}, {ObjectKind::Text, 1}, {ObjectKind::Image, 1},
                                             {ObjectKind::Image, 3}};
  EXPECT_EQ(doc.drawOrder, expected);
  AddImage(doc, {});
  EXPECT_FALSE(doc.images[2].free()) << "the first free slot is taken again";
  MoveToBack(doc, {ObjectKind::Image, 2});
  EXPECT_EQ(doc.drawOrder.front(), (DrawOrderEntry{ObjectKind::Image, 2}));
  EXPECT_TRUE(ResolveDrawOrder(doc).consistent);
}

TEST(LayoutDocument, PastedCopiesMoveByTheOffsetAndStayOnThePage) {
  LayoutDocument doc;
  AddText(doc, {.X = 20.8f, .Y = 1});
  AddLine(doc, {.X1 = 18, .Y1 = 1, .X2 = 20.8f, .Y2 = 2});
  AddImage(doc, {.Kind = 1, .Left = 1, .Top = 1, .Right = 3, .Bottom = 3});
  for (DrawOrderEntry entry : std::vector(doc.drawOrder))
    ASSERT_TRUE(PasteObject(doc, *CopyObject(doc, entry), 0.5, 21, 29.7).ok());
  EXPECT_FLOAT_EQ(doc.texts[1].X, 21);
  EXPECT_FLOAT_EQ(doc.texts[1].Y, 1.5f);
  EXPECT_FLOAT_EQ(doc.lines[1].X1, 18.2f) << "pulled in whole";
  EXPECT_FLOAT_EQ(doc.lines[1].X2, 21);
  EXPECT_FLOAT_EQ(doc.images[2].Left, 1.5f) << "the image goes to the next free slot";
  EXPECT_FALSE(CopyObject(doc, {ObjectKind::Image, 3}).has_value());
  for (int k = 0; k < 198; ++k) AddLine(doc, {});
  EXPECT_EQ(PasteObject(doc, *CopyObject(doc, {ObjectKind::Line, 0}), 0.5, 21, 29.7).message.text,
            "Exceed Max String Number!");
}

TEST(LayoutDocument, ABrokenDrawOrderIsRepairedOnce) {
  LayoutDocument doc;
  AddText(doc, {});
  AddCircle(doc, {});
  AddImage(doc, {});
  doc.drawOrder = {{ObjectKind::Text, 0}, {ObjectKind::Text, 5}, {ObjectKind::Text, 0}, {ObjectKind::Image, 9}};
  const PaintOrder repaired = ResolveDrawOrder(doc);
  EXPECT_FALSE(repaired.consistent);
  const std::vector<DrawOrderEntry> expected{{ObjectKind::Text, 0}, {ObjectKind::Image, 1}, {ObjectKind::Circle, 0}};
  EXPECT_EQ(repaired.order, expected);
  doc.drawOrder = repaired.order;
  EXPECT_TRUE(ResolveDrawOrder(doc).consistent);
  EXPECT_EQ(DrawOrderWarning().text, "There are Display Errors of Text/Image/figure.");
}

TEST(LayoutDocument, UndoCaptionsKeepTheirSpelling) {
  EXPECT_EQ(UndoCaption(12), "UnDo(Add Line)");
  EXPECT_EQ(UndoCaption(102), "UnDo(2D Back Graound and Frame)");
  EXPECT_EQ(UndoCaption(3), "UnDo");
  EXPECT_EQ(TextEditorUndoCaption(1), "UnDo(Text Input)");
  EXPECT_EQ(TextEditorUndoCaption(2), "UnDo");
}

TEST(LineRecord, FoldsKindHeadsAndPatternForEachStyleAndTarget) {
  LayoutLine line{.X1 = 1, .Y1 = 2, .X2 = 3, .Y2 = 4, .Color = 0x123456, .FillColor = 0x00FF00,
                  .HeadLengthStart = 1234, .HeadLengthEnd = 56, .Width = 3, .StyleCode = 9 * 4 + 3,
                  .Reserved1 = 7, .Reserved2 = 8, .LineType = 27};
  const LineRecordBytes ver4 = PackLineRecord(line, LineTarget::Ver4);
  EXPECT_EQ(At<float>(ver4, 4), 3.f) << "X2 comes second";
  EXPECT_EQ(At<std::int32_t>(ver4, 20), 9234) << "kind in the thousands, the head cut below 1000";
  EXPECT_EQ(At<std::int32_t>(ver4, 24), 56);
  EXPECT_EQ(At<std::uint32_t>(ver4, 36), 0xFF00FFu);
  EXPECT_EQ(At<std::int32_t>(ver4, 44), 2);
  EXPECT_EQ(At<std::int32_t>(ver4, 60), 0);
  const LineRecordBytes folded = PackLineRecord(line, LineTarget::Folded);
  EXPECT_EQ(At<std::int32_t>(folded, 24), 7056) << "pattern 2 stored as 7 thousands";
  LayoutLine expected = line;
  expected.HeadLengthStart = 234;
  expected.LineType = 2;
  EXPECT_EQ(UnpackLineRecord(ver4, LineTarget::Ver4), expected);
  EXPECT_EQ(UnpackLineRecord(folded, LineTarget::Folded), expected);

  // The head flags decide which lengths survive.
  for (int flags = 0; flags < 4; ++flags) {
    LayoutLine l{.HeadLengthStart = 30, .HeadLengthEnd = 40, .StyleCode = std::int16_t(5 * 4 + flags), .LineType = 25};
    for (LineTarget target : {LineTarget::Ver4, LineTarget::Folded}) {
      const LayoutLine back = UnpackLineRecord(PackLineRecord(l, target), target);
      EXPECT_EQ(back.StyleCode, l.StyleCode) << flags;
      EXPECT_EQ(back.HeadLengthStart, flags >= 2 ? 30 : 0) << flags;
      EXPECT_EQ(back.HeadLengthEnd, flags % 2 ? 40 : 0) << flags;
      EXPECT_EQ(back.LineType, 0);
    }
  }
}

LayoutDocument EveryObject() {
  LayoutDocument doc;
  AddText(doc, LayoutText{.X = 1.5f, .Y = 2.5f, .Points = 12, .Angle = 90, .Color = 0xFF, .Bold = 1,
                          .FontName = "ＭＳ ゴシック", .Text = "\\< 試料 \\g1 a\\g0 ", .RichText = "{\\rtf1 x}"});
  AddText(doc, LayoutText{.X = 3, .Text = "\\< plain"});
  AddLine(doc, LayoutLine{.X1 = 1, .Y1 = 1, .X2 = 5, .Y2 = 5, .HeadLengthEnd = 20, .Width = 2, .StyleCode = 4 * 2 + 1,
                          .LineType = 3});
  AddCircle(doc, LayoutCircle{.X1 = 1, .Y1 = 1, .X2 = 2, .Y2 = 3, .Ratio = 1.5f});
  AddRectangle(doc, LayoutRectangle{.X1 = 4, .Y1 = 4, .X2 = 6, .Y2 = 7, .BorderColor = 0xFF0000, .LineStyle = 2});
  // A picture whose bytes are odd in length, so that the section's end is padded.
  const std::vector<std::uint8_t> png{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0, 0, 0, 13, 'I'};
  AddImage(doc, LayoutImage{.Kind = 5, .Left = 1, .Top = 2, .Right = 3, .Bottom = 4, .Extended = {1, 2, 3, 4},
                            .Picture = MakePictureBytes(png)});
  AddImage(doc, LayoutImage{.Kind = 1, .Left = 5});
  DeleteObject(doc, {ObjectKind::Image, 1});  // slot 1 free, slot 2 used
  MoveToBack(doc, {ObjectKind::Text, 1});
  return doc;
}

TEST(LayoutSections, EveryObjectKindThroughAVer4FileByteForByte) {
  auto s = test::MakeSpectrum2D(128, 128);
  const LayoutDocument doc = EveryObject();
  WriteLayoutSections(doc, LayoutPage::Page2D, s->carried.fileSections);
  WriteLayoutSections(doc, LayoutPage::Page1D, s->carried.fileSections);
  // Bytes that belong to no field are carried: the rest of a line record, a section's head.
  for (model::CarriedSection& section : s->carried.fileSections) {
    if (section.tag == "## LINE DATA 2D") section.bytes[32 + 50] = 0xAB;
    if (section.tag == "## CIRCLE -2D") section.bytes[24] = 0xCD;
  }
  test::TempFolder folder;
  const auto file = folder / "page.vlk2";
  const model::DataWords words{0x210C, 0, 0};
  const native::WriteOptions options{false, nullptr};
  ASSERT_TRUE(native::WriteDataR4(file, *s, nullptr, nullptr, words, native::SaveMode::AllPlanes, options).ok());
  const std::vector<std::uint8_t> first = test::Slurp(file);

  auto back = test::Read2D(first);
  ASSERT_TRUE(back->outcome.ok());
  std::vector<model::CarriedSection>& sections = back->s->carried.fileSections;
  EXPECT_EQ(ReadLayoutSections(sections, LayoutPage::Page2D), doc);
  EXPECT_EQ(ReadLayoutSections(sections, LayoutPage::Page1D), doc);
  EXPECT_EQ(ReadLayoutSections(sections, LayoutPage::Simulation), LayoutDocument{});
  WriteLayoutSections(ReadLayoutSections(sections, LayoutPage::Page2D), LayoutPage::Page2D, sections);
  WriteLayoutSections(ReadLayoutSections(sections, LayoutPage::Page1D), LayoutPage::Page1D, sections);
  ASSERT_TRUE(native::WriteDataR4(file, *back->s, nullptr, nullptr, words, native::SaveMode::AllPlanes, options).ok());
  EXPECT_TRUE(test::Slurp(file) == first);

  // A changed document is written with the change and still carries the foreign bytes.
  LayoutDocument changed = doc;
  changed.lines[0].X1 = 9;
  AddLine(changed, {});
  WriteLayoutSections(changed, LayoutPage::Page2D, sections);
  EXPECT_EQ(ReadLayoutSections(sections, LayoutPage::Page2D), changed);
  for (const model::CarriedSection& section : sections)
    if (section.tag == "## LINE DATA 2D") {
      EXPECT_EQ(section.bytes[32 + 50], 0xAB);
    }
}

TEST(LayoutSections, DamagedSectionsReadWithinTheirBounds) {
  std::vector<std::uint8_t> lines(32 + 64, 0);
  lines[16] = 0xFF, lines[17] = 0xFF, lines[18] = 0xFF, lines[19] = 0x7F;  // claims two billion records
  std::vector<std::uint8_t> texts(40, 0);
  texts[16] = 2;
  texts[32] = 36;               // a head that runs past the end
  texts[36] = 0xF0, texts[39] = 0x7F;  // an offset far outside
  std::vector<std::uint8_t> pictures(32 + 64, 0);
  pictures[16] = 1;
  pictures[32] = 51;            // a slot past the table
  pictures[16] = 2;
  pictures[64] = 1;             // slot 1, its picture said to lie far outside
  pictures[64 + 20] = 40, pictures[64 + 24] = 0xFF, pictures[64 + 27] = 0x7F;
  const std::vector<model::CarriedSection> sections{
      {"## LINE DATA 2D", lines}, {"## TEXT DATA 2D", texts}, {"## PICTURE 2D", pictures}, {"##DRAW ORDER 2D", {1, 2, 3}}};
  const LayoutDocument doc = ReadLayoutSections(sections, LayoutPage::Page2D);
  EXPECT_EQ(doc.lines.size(), 1u);
  EXPECT_TRUE(doc.texts.empty());
  EXPECT_TRUE(doc.images[51].free());
  EXPECT_FALSE(doc.images[1].free());
  EXPECT_TRUE(doc.images[1].Picture.empty());
  EXPECT_TRUE(doc.drawOrder.empty());
}

}  // namespace
}  // namespace velk::layout
