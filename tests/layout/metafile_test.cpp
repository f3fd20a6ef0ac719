// Metafiles: the recorder's EMF against its own header fields and the player, plain and placeable
// metafiles of known bytes, damaged bytes, and the printed peak list's pages.
#include <gtest/gtest.h>

#include <cstring>

#include "core/bytes.h"
#include "layout/emf_recorder.h"
#include "layout/play_picture.h"
#include "layout/print_list_2d.h"
#include "support/recording_surface.h"

namespace velk::layout {
namespace {

using test::Recorded;
using test::RecordingSurface;

std::uint32_t U32At(const std::vector<std::uint8_t>& b, std::size_t at) {
  return core::DecodeOr<std::uint32_t>(b, at, core::ByteOrder::Little, 0);
}

std::vector<std::uint8_t> RecordSample() {
  RecordingSurface measure;
  EmfRecorder emf({400, 300}, 96, measure);
  emf.SetPen(platform::MakeColor(255, 0, 0), 2);
  emf.MoveTo(10, 20);
  emf.LineTo(390, 20);
  emf.SetBrush(platform::MakeColor(0, 0, 255));
  const platform::Point triangle[] = {{50, 50}, {150, 50}, {100, 120}};
  emf.Polygon(triangle);
  emf.SetClip(0, 0, 200, 200);
  emf.SetFont({"DejaVu Sans", 20, true, false});
  emf.SetTextColor(platform::MakeColor(0, 128, 0));
  emf.Text(30, 200, 0, "F2 (ppm) δ");
  emf.Text(350, 250, 90, "F1");
  emf.ClearClip();
  emf.DrawImage(300, 100, platform::Image{2, 2, {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFFFF}});
  return emf.Finish();
}

TEST(EmfRecorder, HeaderRecordsAndPlayback) {
  const std::vector<std::uint8_t> emf = RecordSample();
  // The header: bounds of the picture, its frame in 0.01 mm at 96 dots per inch, the signature,
  // the file's length and the number of records, which a walk over the records confirms.
  EXPECT_EQ(U32At(emf, 0), 1u);
  EXPECT_EQ(U32At(emf, 16), 399u);
  EXPECT_EQ(U32At(emf, 32), 10583u);  // 400 / 96 inch
  EXPECT_EQ(U32At(emf, 40), 0x464D4520u);
  EXPECT_EQ(U32At(emf, 48), emf.size());
  std::size_t at = 0, records = 0, last = 0;
  while (at < emf.size()) {
    ASSERT_GE(U32At(emf, at + 4), 8u);
    ASSERT_EQ(U32At(emf, at + 4) % 4, 0u);
    last = U32At(emf, at);
    at += U32At(emf, at + 4);
    ++records;
  }
  EXPECT_EQ(at, emf.size());
  EXPECT_EQ(last, 14u);
  EXPECT_EQ(U32At(emf, 52), records);

  // Played into a frame twice the size, everything lands twice as far from the frame's corner.
  RecordingSurface played({2000, 2000});
  ASSERT_EQ(PlayPicture(played, emf, PictureFrame{100, 100, 800, 600}), 0);
  const auto segments = played.Segments();
  ASSERT_EQ(segments.size(), 1u);
  EXPECT_EQ(segments[0].from, (platform::Point{120, 140}));
  EXPECT_EQ(segments[0].to, (platform::Point{880, 140}));
  EXPECT_EQ(segments[0].color, platform::MakeColor(255, 0, 0));
  const auto polygons = played.Of(Recorded::Polygon);
  ASSERT_EQ(polygons.size(), 1u);
  EXPECT_EQ(polygons[0]->points[2], (platform::Point{300, 340}));
  const auto texts = played.Of(Recorded::Text);
  ASSERT_EQ(texts.size(), 2u);
  EXPECT_EQ(texts[0]->text, "F2 (ppm) δ");
  EXPECT_EQ(texts[0]->points[0], (platform::Point{160, 500}));
  EXPECT_EQ(texts[1]->angle, 90);
  bool bigFont = false;
  for (const auto* font : played.Of(Recorded::Font)) bigFont = bigFont || (font->width == 40 && font->text == "DejaVu Sans");
  EXPECT_TRUE(bigFont);
  const auto images = played.Of(Recorded::Image);
  ASSERT_EQ(images.size(), 1u);
  EXPECT_EQ(images[0]->points[0], (platform::Point{700, 300}));
  EXPECT_EQ(images[0]->width, 4);
}

TEST(EmfRecorder, DamagedBytesAreRefusedWithoutReadingOutside) {
  const std::vector<std::uint8_t> emf = RecordSample();
  // Every cut of the file, and a record whose size points past the end, is refused whole.
  for (std::size_t length = 0; length < emf.size(); length += 7) {
    const std::vector<std::uint8_t> cut(emf.begin(), emf.begin() + static_cast<std::ptrdiff_t>(length));
    RecordingSurface surface;
    EXPECT_EQ(PlayPicture(surface, cut, PictureFrame{0, 0, 100, 100}), 1) << length;
    EXPECT_TRUE(surface.calls.empty());
  }
  std::vector<std::uint8_t> broken = emf;
  broken[108 + 7] = 0x7F;  // the first record after the header claims a huge size
  RecordingSurface surface;
  EXPECT_EQ(PlayPicture(surface, broken, PictureFrame{0, 0, 100, 100}), 1);
}

// A plain metafile of known bytes: window 0..1000 x 0..500, a blue pen, a line, a hollow box.
std::vector<std::uint8_t> PlainMetafile(std::uint16_t type) {
  core::ByteSink s;
  for (std::uint16_t w : {type, std::uint16_t{9}, std::uint16_t{0x300}}) s.Put(w);
  s.Put(std::uint32_t{0}), s.Put(std::uint16_t{1}), s.Put(std::uint32_t{0}), s.Put(std::uint16_t{0});
  const auto record = [&](std::uint16_t function, std::initializer_list<std::uint16_t> words) {
    s.Put(static_cast<std::uint32_t>(3 + words.size()));
    s.Put(function);
    for (std::uint16_t w : words) s.Put(w);
  };
  record(0x020B, {0, 0});                    // window origin
  record(0x020C, {500, 1000});               // window extent, y first
  record(0x02FA, {0, 10, 0, 0x0000, 0x00FF});  // pen: solid, width 10, colour 0xFF0000 (blue)
  record(0x012D, {0});
  record(0x0214, {100, 0});                  // move to (0, 100)
  record(0x0213, {400, 1000});               // line to (1000, 400)
  record(0x041B, {500, 1000, 250, 500});     // rectangle (500, 250) - (1000, 500)
  record(0x0000, {});
  return s.bytes;
}

TEST(PlayPicture, PlainAndPlaceableMetafiles) {
  RecordingSurface plain;
  ASSERT_EQ(PlayPicture(plain, PlainMetafile(1), PictureFrame{10, 20, 200, 100}), 0);
  ASSERT_EQ(plain.Segments().size(), 1u);
  EXPECT_EQ(plain.Segments()[0].from, (platform::Point{10, 40}));
  EXPECT_EQ(plain.Segments()[0].to, (platform::Point{210, 100}));
  EXPECT_EQ(plain.Segments()[0].color, 0xFF0000u);
  ASSERT_EQ(plain.Of(Recorded::Polygon).size(), 1u);
  EXPECT_EQ(plain.Of(Recorded::Polygon)[0]->points[0], (platform::Point{110, 70}));

  // Behind a placeable header the metafile starts at byte 22; its type word must be 1 or 2.
  const auto placeable = [](std::uint16_t type) {
    core::ByteSink s;
    s.Put(std::uint32_t{0x9AC6CDD7});
    for (std::uint16_t w : {0, 0, 0, 1000, 500, 1440, 0, 0, 0}) s.Put(static_cast<std::uint16_t>(w));
    const std::vector<std::uint8_t> body = PlainMetafile(type);
    s.bytes.insert(s.bytes.end(), body.begin(), body.end());
    return s.bytes;
  };
  RecordingSurface two;
  EXPECT_EQ(PlayPicture(two, placeable(2), PictureFrame{10, 20, 200, 100}), 0);
  EXPECT_EQ(two.Segments().size(), 1u);
  RecordingSurface three;
  EXPECT_EQ(PlayPicture(three, placeable(3), PictureFrame{10, 20, 200, 100}), 1);
  EXPECT_TRUE(three.calls.empty());

  RecordingSurface none;
  const std::vector<std::uint8_t> text{'h', 'e', 'l', 'l', 'o'};
  EXPECT_EQ(PlayPicture(none, text, PictureFrame{0, 0, 10, 10}), 1);
  EXPECT_EQ(PlayPicture(none, std::span<const std::uint8_t>{}, PictureFrame{0, 0, 10, 10}), 1);
}

TEST(PrintList2D, PagesRepeatTheHeading) {
  operations::PrintList list;
  list.heading = {"\\< Peak List", "File:  a.vlk2", "\\< Comment:  "};
  list.captions = {"\\< No.", "\\<     F2/ppm(Hz)", "\\<     F1/ppm(Hz)", "\\< Height"};
  for (int i = 1; i <= 120; ++i) list.rows.push_back({std::to_string(i), "7.2500(3625.00)", "120.5(15150.00)", "0.5"});
  const Paper a5 = *PaperOf("A5", false);
  std::size_t row = 0;
  int pages = 0;
  while (row < list.rows.size()) {
    RecordingSurface page;
    const std::size_t next = PrintList2D(page, list, TextFont{"Courier New", 10}, a5, 72, row);
    ASSERT_GT(next, row);
    int headings = 0, lowest = 0;
    for (const auto* t : page.Of(Recorded::Text)) {
      headings += t->text == "Peak List";
      lowest = std::max(lowest, t->points[0].y);
    }
    EXPECT_EQ(headings, 1) << "page " << pages;
    EXPECT_LE(lowest, static_cast<int>(21.0 / 2.54 * 72 - 2.0 / 2.54 * 72)) << "rows stop at the lower margin";
    row = next;
    ++pages;
  }
  EXPECT_GE(pages, 3);
  EXPECT_EQ(row, 120u);
}

}  // namespace
}  // namespace velk::layout
