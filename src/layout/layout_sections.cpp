#include "layout/layout_sections.h"

#include <algorithm>
#include <cstring>

#include "core/text.h"
#include "layout/line_record.h"
#include "native/fields.h"

namespace velk::layout {
namespace {

using native::Bytes;
using native::Read;

constexpr std::size_t kCountAt = 16;
constexpr std::size_t kRecordsAt = 32;
constexpr std::size_t kShapeRecord = 64;
constexpr std::size_t kPictureRecord = 32;
constexpr std::size_t kPictureBytesAt = 20;  // offset and length of the picture's bytes in the section
constexpr std::size_t kPictureExRecord = 48;
constexpr std::size_t kOrderRecord = 8;
constexpr std::size_t kTextHead = 80;
constexpr std::size_t kFontNameAt = 48;
constexpr std::size_t kFontNameWidth = 32;

// A section being written: its bytes, and which of them a field covers. The others are taken
// from the section as it was read.
class SectionBuilder {
 public:
  SectionBuilder(std::string_view tag, std::size_t count) {
    Grow(kRecordsAt);
    native::StoreText(bytes_, 0, native::kTagWidth, std::string(tag));
    Mark(0, native::kTagWidth);
    Put<std::int32_t>(kCountAt, static_cast<std::int32_t>(count));
  }
  template <class T>
  void Put(std::size_t at, T value) {
    Grow(at + sizeof(T));
    native::Store<T>(bytes_, at, value);
    Mark(at, sizeof(T));
  }
  void PutBytes(std::size_t at, Bytes data) {
    Grow(at + data.size());
    std::copy(data.begin(), data.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(at));
    Mark(at, data.size());
  }
  // A field that is zero in every file.
  void Zero(std::size_t at, std::size_t count) {
    Grow(at + count);
    Mark(at, count);
  }
  void Grow(std::size_t size) {
    if (bytes_.size() < size) {
      bytes_.resize(size, 0);
      known_.resize(size, false);
    }
  }
  std::size_t size() const { return bytes_.size(); }

  // The bytes merged with the section as read; its tail is kept when the record count is the same
  // and the records have a fixed size.
  std::vector<std::uint8_t> Finish(const model::CarriedSection* old, bool keepTail) {
    if (!old) return bytes_;
    const Bytes before(old->bytes);
    for (std::size_t i = 0; i < bytes_.size() && i < before.size(); ++i)
      if (!known_[i]) bytes_[i] = before[i];
    if (keepTail && before.size() > bytes_.size() && Read<std::int32_t>(before, kCountAt) == Read<std::int32_t>(bytes_, kCountAt))
      bytes_.insert(bytes_.end(), before.begin() + static_cast<std::ptrdiff_t>(bytes_.size()), before.end());
    return bytes_;
  }

 private:
  void Mark(std::size_t at, std::size_t count) { std::fill_n(known_.begin() + static_cast<std::ptrdiff_t>(at), count, true); }
  std::vector<std::uint8_t> bytes_;
  std::vector<bool> known_;
};

const model::CarriedSection* Find(const std::vector<model::CarriedSection>& sections, std::string_view tag) {
  for (const model::CarriedSection& s : sections)
    if (s.tag == tag) return &s;
  return nullptr;
}

Bytes SectionBytes(const std::vector<model::CarriedSection>& sections, std::string_view tag) {
  const model::CarriedSection* s = Find(sections, tag);
  return s ? Bytes(s->bytes) : Bytes();
}

// The count of records that the section claims and that really fit in it, at most limit.
std::size_t RecordCount(Bytes section, std::size_t recordSize, std::size_t limit) {
  if (section.size() < kRecordsAt) return 0;
  const std::int32_t claimed = Read<std::int32_t>(section, kCountAt);
  if (claimed <= 0) return 0;
  const std::size_t fit = (section.size() - kRecordsAt) / recordSize;
  return std::min({static_cast<std::size_t>(claimed), fit, limit});
}

std::size_t RecordAt(std::size_t index, std::size_t recordSize) { return kRecordsAt + index * recordSize; }

// ---- shapes ----

std::vector<LayoutShape> ReadShapes(Bytes section, std::size_t limit) {
  std::vector<LayoutShape> shapes(RecordCount(section, kShapeRecord, limit));
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    const std::size_t at = RecordAt(i, kShapeRecord);
    LayoutShape& s = shapes[i];
    s.X1 = Read<float>(section, at);
    s.Y1 = Read<float>(section, at + 4);
    s.X2 = Read<float>(section, at + 8);
    s.Y2 = Read<float>(section, at + 12);
    s.BorderColor = Read<std::uint32_t>(section, at + 16);
    s.FillColor = Read<std::uint32_t>(section, at + 20);
    s.LineWidth = Read<float>(section, at + 24);
    s.LineStyle = Read<std::int32_t>(section, at + 28);
    s.Ratio = Read<float>(section, at + 32);
  }
  return shapes;
}

void WriteShapes(SectionBuilder& out, const std::vector<LayoutShape>& shapes) {
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    const std::size_t at = RecordAt(i, kShapeRecord);
    const LayoutShape& s = shapes[i];
    out.Grow(at + kShapeRecord);
    out.Put(at, s.X1);
    out.Put(at + 4, s.Y1);
    out.Put(at + 8, s.X2);
    out.Put(at + 12, s.Y2);
    out.Put(at + 16, s.BorderColor);
    out.Put(at + 20, s.FillColor);
    out.Put(at + 24, s.LineWidth);
    out.Put(at + 28, s.LineStyle);
    out.Put(at + 32, s.Ratio);
  }
}

// ---- lines ----

std::vector<LayoutLine> ReadLines(Bytes section) {
  std::vector<LayoutLine> lines(RecordCount(section, kLineRecordSize, kMaxLines));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    LineRecordBytes record;
    std::memcpy(record.data(), section.data() + RecordAt(i, kLineRecordSize), kLineRecordSize);
    lines[i] = UnpackLineRecord(record, LineTarget::Ver4);
  }
  return lines;
}

void WriteLines(SectionBuilder& out, const std::vector<LayoutLine>& lines) {
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const LineRecordBytes record = PackLineRecord(lines[i], LineTarget::Ver4);
    const std::size_t at = RecordAt(i, kLineRecordSize);
    out.PutBytes(at, Bytes(record).first(48));  // 48 to 59 belong to no field
    out.Zero(at + 60, 4);
  }
}

// ---- texts ----

Bytes AsBytes(const std::string& s) { return {reinterpret_cast<const std::uint8_t*>(s.data()), s.size()}; }

std::string ReadPart(Bytes section, std::size_t record, std::int32_t offset, std::int32_t length) {
  if (offset <= 0 || length <= 0) return {};
  const std::uint64_t start = record + static_cast<std::uint64_t>(offset);
  if (!core::Fits(section, start, static_cast<std::uint64_t>(length))) return {};
  return core::Cp932ToUtf8(std::string_view(reinterpret_cast<const char*>(section.data() + start), length));
}

std::vector<LayoutText> ReadTexts(Bytes section) {
  std::vector<LayoutText> texts;
  const std::size_t count = RecordCount(section, 4, kMaxTexts);
  for (std::size_t i = 0; i < count; ++i) {
    const std::int32_t at = Read<std::int32_t>(section, RecordAt(i, 4));
    if (at <= 0 || !core::Fits(section, static_cast<std::uint64_t>(at), kTextHead)) continue;  // a damaged entry
    const std::size_t r = static_cast<std::size_t>(at);
    LayoutText t;
    t.X = Read<float>(section, r);
    t.Y = Read<float>(section, r + 4);
    t.Points = Read<float>(section, r + 8);
    t.Angle = Read<float>(section, r + 12);
    t.Color = Read<std::uint32_t>(section, r + 16);
    t.Reserved = Read<std::uint32_t>(section, r + 20);
    t.Bold = Read<std::int16_t>(section, r + 24);
    t.Italic = Read<std::int16_t>(section, r + 26);
    t.Underline = Read<std::int16_t>(section, r + 28);
    t.StrikeOut = Read<std::int16_t>(section, r + 30);
    t.Text = ReadPart(section, r, Read<std::int32_t>(section, r + 32), Read<std::int32_t>(section, r + 36));
    t.RichText = ReadPart(section, r, Read<std::int32_t>(section, r + 40), Read<std::int32_t>(section, r + 44));
    t.FontName = native::ReadText(section, r + kFontNameAt, kFontNameWidth);
    texts.push_back(std::move(t));
  }
  return texts;
}

void WriteTexts(SectionBuilder& out, const std::vector<LayoutText>& texts) {
  std::size_t at = RecordAt(texts.size(), 4);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const LayoutText& t = texts[i];
    const std::string text = core::Utf8ToCp932(t.Text);
    const std::string rich = core::Utf8ToCp932(t.RichText);
    out.Put(RecordAt(i, 4), static_cast<std::int32_t>(at));
    out.Put(at, t.X);
    out.Put(at + 4, t.Y);
    out.Put(at + 8, t.Points);
    out.Put(at + 12, t.Angle);
    out.Put(at + 16, t.Color);
    out.Put(at + 20, t.Reserved);
    out.Put(at + 24, t.Bold);
    out.Put(at + 26, t.Italic);
    out.Put(at + 28, t.Underline);
    out.Put(at + 30, t.StrikeOut);
    out.Put(at + 32, static_cast<std::int32_t>(text.empty() ? 0 : kTextHead));
    out.Put(at + 36, static_cast<std::int32_t>(text.size()));
    out.Put(at + 40, static_cast<std::int32_t>(rich.empty() ? 0 : kTextHead + text.size()));
    out.Put(at + 44, static_cast<std::int32_t>(rich.size()));
    const std::string font = native::FieldBytes(t.FontName, kFontNameWidth);
    out.Zero(at + kFontNameAt, kFontNameWidth);
    out.PutBytes(at + kFontNameAt, AsBytes(font));
    out.PutBytes(at + kTextHead, AsBytes(text));
    out.PutBytes(at + kTextHead + text.size(), AsBytes(rich));
    at += kTextHead + text.size() + rich.size();
  }
}

// ---- images ----

void ReadImages(Bytes frames, Bytes extended, LayoutDocument& doc) {
  const std::size_t count = RecordCount(frames, kPictureRecord, kImageTableSize);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = RecordAt(i, kPictureRecord);
    const std::int32_t slot = Read<std::int32_t>(frames, at);
    if (slot < kFirstImageSlot || slot > kLastImageSlot) continue;
    LayoutImage& image = doc.images[slot];
    image.Kind = 0;
    image.Left = Read<float>(frames, at + 4);
    image.Top = Read<float>(frames, at + 8);
    image.Right = Read<float>(frames, at + 12);
    image.Bottom = Read<float>(frames, at + 16);
    const std::int32_t offset = Read<std::int32_t>(frames, at + kPictureBytesAt);
    const std::int32_t length = Read<std::int32_t>(frames, at + kPictureBytesAt + 4);
    if (offset > 0 && length > 0 && core::Fits(frames, static_cast<std::uint64_t>(offset), static_cast<std::uint64_t>(length))) {
      const auto first = frames.begin() + offset;
      image.Picture = MakePictureBytes({first, first + length});
      image.Kind = static_cast<std::int32_t>(SniffPicture(*image.Picture.bytes));
    }
  }
  const std::size_t extras = RecordCount(extended, kPictureExRecord, kImageTableSize);
  for (std::size_t i = 0; i < extras; ++i) {
    const std::size_t at = RecordAt(i, kPictureExRecord);
    const std::int32_t slot = Read<std::int32_t>(extended, at);
    if (slot < kFirstImageSlot || slot > kLastImageSlot || doc.images[slot].free()) continue;
    doc.images[slot].Kind = std::max(0, Read<std::int32_t>(extended, at + 4));
    for (std::size_t k = 0; k < 4; ++k) doc.images[slot].Extended[k] = Read<std::uint32_t>(extended, at + 16 + 4 * k);
  }
}

std::vector<std::int32_t> UsedSlots(const LayoutDocument& doc) {
  std::vector<std::int32_t> slots;
  for (int slot = kFirstImageSlot; slot <= kLastImageSlot; ++slot)
    if (!doc.images[slot].free()) slots.push_back(slot);
  return slots;
}

void WriteImageFrames(SectionBuilder& out, const LayoutDocument& doc) {
  const std::vector<std::int32_t> slots = UsedSlots(doc);
  std::size_t bytesAt = RecordAt(slots.size(), kPictureRecord);
  for (std::size_t i = 0; i < slots.size(); ++i) {
    const std::size_t at = RecordAt(i, kPictureRecord);
    const LayoutImage& image = doc.images[slots[i]];
    out.Grow(at + kPictureRecord);
    out.Put(at, slots[i]);
    out.Put(at + 4, image.Left);
    out.Put(at + 8, image.Top);
    out.Put(at + 12, image.Right);
    out.Put(at + 16, image.Bottom);
    // The picture's bytes follow the records; a slot without them keeps zeros here.
    if (image.Picture.empty()) continue;
    out.Put(at + kPictureBytesAt, static_cast<std::int32_t>(bytesAt));
    out.Put(at + kPictureBytesAt + 4, static_cast<std::int32_t>(image.Picture.size()));
    out.PutBytes(bytesAt, Bytes(*image.Picture.bytes));
    bytesAt += image.Picture.size();
  }
}

void WriteImageExtras(SectionBuilder& out, const LayoutDocument& doc) {
  const std::vector<std::int32_t> slots = UsedSlots(doc);
  for (std::size_t i = 0; i < slots.size(); ++i) {
    const std::size_t at = RecordAt(i, kPictureExRecord);
    out.Grow(at + kPictureExRecord);
    out.Put(at, slots[i]);
    out.Put(at + 4, doc.images[slots[i]].Kind);
    for (std::size_t k = 0; k < 4; ++k) out.Put(at + 16 + 4 * k, doc.images[slots[i]].Extended[k]);
  }
}

// ---- draw order ----

std::vector<DrawOrderEntry> ReadDrawOrder(Bytes section) {
  std::vector<DrawOrderEntry> order(RecordCount(section, kOrderRecord, kMaxDrawOrder));
  for (std::size_t i = 0; i < order.size(); ++i) {
    const std::size_t at = RecordAt(i, kOrderRecord);
    order[i] = {static_cast<ObjectKind>(Read<std::int32_t>(section, at)), Read<std::int32_t>(section, at + 4)};
  }
  return order;  // pairs that name nothing are the painter's to repair
}

void WriteDrawOrder(SectionBuilder& out, const std::vector<DrawOrderEntry>& order) {
  for (std::size_t i = 0; i < order.size(); ++i) {
    out.Put(RecordAt(i, kOrderRecord), static_cast<std::int32_t>(order[i].kind));
    out.Put(RecordAt(i, kOrderRecord) + 4, order[i].index);
  }
}

}  // namespace

LayoutTags TagsOf(LayoutPage page) {
  switch (page) {
    case LayoutPage::Page1D:
      return {"## LINE DATA-0", "## TEXT DATA-0", "## PICTURE-0", "## PICTUREEX-0", "## CIRCLE -0", "## RECTANGLE-1D",
              "##DRAW ORDER 1D"};
    case LayoutPage::Simulation:
      return {"## LINE DATA-SIM", "## TEXT DATA-SIM", "## PICTURE-SIM", "## PICTUREEX-SIM", "## CIRCLE-SIM",
              "## RECTANGLE-S", "##DRAW ORDER SIM"};
    default:
      return {"## LINE DATA 2D", "## TEXT DATA 2D", "## PICTURE 2D", "## PICTUREEX 2D", "## CIRCLE -2D",
              "## RECTANGLE-2D", "##DRAW ORDER 2D"};
  }
}

LayoutDocument ReadLayoutSections(const std::vector<model::CarriedSection>& sections, LayoutPage page) {
  const LayoutTags tags = TagsOf(page);
  LayoutDocument doc;
  doc.lines = ReadLines(SectionBytes(sections, tags.line));
  doc.texts = ReadTexts(SectionBytes(sections, tags.text));
  doc.circles = ReadShapes(SectionBytes(sections, tags.circle), kMaxCircles);
  doc.rectangles = ReadShapes(SectionBytes(sections, tags.rectangle), kMaxRectangles);
  ReadImages(SectionBytes(sections, tags.picture), SectionBytes(sections, tags.pictureEx), doc);
  doc.drawOrder = ReadDrawOrder(SectionBytes(sections, tags.drawOrder));
  return doc;
}

void WriteLayoutSections(const LayoutDocument& doc, LayoutPage page, std::vector<model::CarriedSection>& sections) {
  const LayoutTags tags = TagsOf(page);
  auto put = [&](std::string_view tag, std::size_t count, auto&& fill) {
    const auto old = std::find_if(sections.begin(), sections.end(), [&](const auto& s) { return s.tag == tag; });
    if (count == 0 && old == sections.end()) return;
    SectionBuilder out(tag, count);
    fill(out);
    std::vector<std::uint8_t> bytes = out.Finish(old == sections.end() ? nullptr : &*old, tag != tags.text && tag != tags.picture);
    if (old != sections.end()) {
      old->bytes = std::move(bytes);
    } else {
      sections.push_back({std::string(tag), std::move(bytes)});
    }
  };
  const std::size_t images = UsedSlots(doc).size();
  put(tags.line, doc.lines.size(), [&](SectionBuilder& out) { WriteLines(out, doc.lines); });
  put(tags.text, doc.texts.size(), [&](SectionBuilder& out) { WriteTexts(out, doc.texts); });
  put(tags.picture, images, [&](SectionBuilder& out) { WriteImageFrames(out, doc); });
  put(tags.pictureEx, images, [&](SectionBuilder& out) { WriteImageExtras(out, doc); });
  put(tags.circle, doc.circles.size(), [&](SectionBuilder& out) { WriteShapes(out, doc.circles); });
  put(tags.rectangle, doc.rectangles.size(), [&](SectionBuilder& out) { WriteShapes(out, doc.rectangles); });
  put(tags.drawOrder, doc.drawOrder.size(), [&](SectionBuilder& out) { WriteDrawOrder(out, doc.drawOrder); });
}

}  // namespace velk::layout
