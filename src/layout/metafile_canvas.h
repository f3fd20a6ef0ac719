#pragma once
// What the metafile players share: the canvas the records are drawn on (the picture's bounds, or
// the surface), the objects of a metafile's table, and the bitmaps inside a picture.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/bytes.h"
#include "platform/surface.h"

namespace velk::layout::metafile {

inline constexpr std::int64_t kLargestImageSide = 8192;
inline constexpr std::size_t kLargestPolygon = 1u << 20;

struct P {
  double x = 0, y = 0;
};

struct TextRun {
  P at;
  std::u16string text;
  double height = 12;  // in picture units
  bool bold = false, italic = false;
  std::string family = "Arial";
  double angle = 0;
  int align = 0;  // the text-align flags of the metafile
};

// What the parsers draw on: the bounds of a picture, or the surface.
class Canvas {
 public:
  virtual ~Canvas() = default;
  virtual void Pen(platform::Color color, double width) = 0;  // width 0: no pen
  virtual void Brush(std::optional<platform::Color> color) = 0;
  virtual void TextColor(platform::Color color) = 0;
  virtual void MoveTo(P p) = 0;
  virtual void LineTo(P p) = 0;
  virtual void Poly(const std::vector<P>& points, bool closed) = 0;
  virtual void Text(const TextRun& run) = 0;
  virtual void Picture(P topLeft, P size, const platform::Image& image) = 0;
};

struct Box {
  double left = 1e300, top = 1e300, right = -1e300, bottom = -1e300;
  bool empty() const { return left > right || top > bottom; }
  void Add(P p) { left = std::min(left, p.x), right = std::max(right, p.x), top = std::min(top, p.y), bottom = std::max(bottom, p.y); }
};

class BoundsCanvas final : public Canvas {
 public:
  Box box;
  void Pen(platform::Color, double) override {}
  void Brush(std::optional<platform::Color>) override {}
  void TextColor(platform::Color) override {}
  void MoveTo(P p) override { box.Add(p); }
  void LineTo(P p) override { box.Add(p); }
  void Poly(const std::vector<P>& points, bool) override {
    for (P p : points) box.Add(p);
  }
  void Text(const TextRun& run) override { box.Add(run.at); }
  void Picture(P topLeft, P size, const platform::Image&) override {
    box.Add(topLeft);
    box.Add({topLeft.x + size.x, topLeft.y + size.y});
  }
};

std::string Utf8(const std::u16string& text);

// A pen, brush or font of a metafile's object table.
struct GdiObject {
  enum Kind { None, Pen, Brush, Font } kind = None;
  platform::Color color = 0;
  double width = 0;     // pens; 0: no pen
  bool hollow = false;  // brushes
  TextRun font;
};
GdiObject PenObject(std::uint32_t style, std::uint32_t color, double width);
GdiObject BrushObject(std::uint32_t style, std::uint32_t color);
// Selecting an object: pens and brushes go to the canvas, a font becomes the text's font.
void SelectObject(Canvas& c, const GdiObject& o, TextRun& font);

// A device-independent bitmap of 24 or 32 bits without compression; nothing for other kinds.
std::optional<platform::Image> ReadDib(core::Bytes bytes, std::uint64_t header, std::uint64_t bits,
                                       std::uint64_t bitsSize);

// Enhanced metafiles: the bounds of the header (nothing when the bytes are none), and the records
// in device units up to the end record (false when damaged).
std::optional<Box> EnhancedBounds(core::Bytes bytes);
bool PlayEnhancedRecords(core::Bytes bytes, Canvas& canvas);

// Plain metafiles: the records in logical units up to the end record (false when damaged or no
// plain metafile); the window the picture set first, if any.
bool PlayPlainRecords(core::Bytes bytes, Canvas& canvas, std::optional<Box>& window);

}  // namespace velk::layout::metafile
