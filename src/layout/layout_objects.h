#pragma once
// The annotation objects of the printed page: text, arrow or line, circle or oval, rectangle and
// image. Positions are page centimetres.
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace velk::layout {

// The arrow and line record as the page editor holds it.
struct LayoutLine {
  float X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
  std::uint32_t Color = 0;      // rod and border, blue-green-red
  std::uint32_t FillColor = 0;  // the arrow head's fill
  std::int16_t HeadLengthStart = 0;
  std::int16_t HeadLengthEnd = 0;
  std::int16_t Width = 1;
  std::int16_t StyleCode = 0;  // arrow kind * 4 + head flags (0 none, 1 end, 2 start, 3 both)
  std::int16_t Reserved1 = 0;
  std::int16_t Reserved2 = 0;
  std::int32_t LineType = 0;  // pattern 0 to 24
  friend bool operator==(const LayoutLine&, const LayoutLine&) = default;
};

// A text object: position, look and angle, and the text in the internal codes with, when the rich
// text editor made it, its rich text.
struct LayoutText {
  float X = 0, Y = 0;
  float Points = 10;       // size
  float Angle = 0;         // degrees, counter-clockwise
  std::uint32_t Color = 0;
  std::uint32_t Reserved = 0;
  std::int16_t Bold = 0, Italic = 0, Underline = 0, StrikeOut = 0;
  std::string FontName = "Arial";
  std::string Text{};      // internal codes
  std::string RichText{};  // empty when there is none
  friend bool operator==(const LayoutText&, const LayoutText&) = default;
};

// A fill colour that no blue-green-red word can be: the shape stays hollow.
inline constexpr std::uint32_t kNoFill = 0xFFFFFFFF;

// Circles (ovals) and rectangles share one record.
struct LayoutShape {
  float X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;  // the frame
  std::uint32_t BorderColor = 0;
  std::uint32_t FillColor = kNoFill;
  float LineWidth = 1;
  std::int32_t LineStyle = 0;
  float Ratio = 1;  // circles: 1.0 is a true circle; rectangles: held as stored
  friend bool operator==(const LayoutShape&, const LayoutShape&) = default;
};
using LayoutCircle = LayoutShape;
using LayoutRectangle = LayoutShape;

// The bytes of a stored picture, shared between the copies of a document that undo keeps; two
// are equal when their bytes are.
struct PictureBytes {
  std::shared_ptr<const std::vector<std::uint8_t>> bytes;
  bool empty() const { return !bytes || bytes->empty(); }
  std::size_t size() const { return bytes ? bytes->size() : 0; }
  friend bool operator==(const PictureBytes& a, const PictureBytes& b) {
    if (a.empty() || b.empty()) return a.empty() == b.empty();
    return a.bytes == b.bytes || *a.bytes == *b.bytes;
  }
};
PictureBytes MakePictureBytes(std::vector<std::uint8_t> bytes);

// The kinds of picture an image slot holds, found from the bytes' first marks.
enum class PictureKind : std::int32_t {
  Unknown = 0, EnhancedMetafile = 1, Metafile = 2, PlaceableMetafile = 3, Bitmap = 4, Png = 5, Jpeg = 6, Svg = 7
};
PictureKind SniffPicture(const std::vector<std::uint8_t>& bytes);

// One image slot; a negative Kind marks a free slot, otherwise Kind is the PictureKind.
struct LayoutImage {
  std::int32_t Kind = -1;
  float Left = 0, Top = 0, Right = 0, Bottom = 0;
  std::array<std::uint32_t, 4> Extended{};  // kept in the extended table only
  PictureBytes Picture;                     // the picture file's bytes as they were inserted
  bool free() const { return Kind < 0; }
  friend bool operator==(const LayoutImage&, const LayoutImage&) = default;
};

// The kinds in the painting order list.
enum class ObjectKind : std::int32_t { Image = 1, Circle = 2, Rectangle = 3, Line = 4, Text = 5 };

struct DrawOrderEntry {
  ObjectKind kind = ObjectKind::Image;
  std::int32_t index = 0;  // inside that kind's table
  friend bool operator==(const DrawOrderEntry&, const DrawOrderEntry&) = default;
};

// Limits of the tables.
inline constexpr std::size_t kMaxTexts = 200;
inline constexpr std::size_t kMaxLines = 200;
inline constexpr std::size_t kMaxCircles = 500;
inline constexpr std::size_t kMaxRectangles = 500;
inline constexpr int kFirstImageSlot = 1;
inline constexpr int kLastImageSlot = 50;
inline constexpr std::size_t kImageTableSize = 52;
inline constexpr std::size_t kMaxDrawOrder = 2000;

}  // namespace velk::layout
