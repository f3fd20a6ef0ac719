#include "layout/metafile_canvas.h"

#include <cmath>

namespace velk::layout::metafile {

std::string Utf8(const std::u16string& text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000)
      c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
    else if (c >= 0xD800 && c < 0xE000) c = 0xFFFD;
    if (c < 0x80) out += static_cast<char>(c);
    else if (c < 0x800) out += {static_cast<char>(0xC0 | (c >> 6)), static_cast<char>(0x80 | (c & 0x3F))};
    else if (c < 0x10000)
      out += {static_cast<char>(0xE0 | (c >> 12)), static_cast<char>(0x80 | ((c >> 6) & 0x3F)), static_cast<char>(0x80 | (c & 0x3F))};
    else
      out += {static_cast<char>(0xF0 | (c >> 18)), static_cast<char>(0x80 | ((c >> 12) & 0x3F)),
              static_cast<char>(0x80 | ((c >> 6) & 0x3F)), static_cast<char>(0x80 | (c & 0x3F))};
  }
  return out;
}

GdiObject PenObject(std::uint32_t style, std::uint32_t color, double width) {
  GdiObject o;
  o.kind = GdiObject::Pen;
  o.color = color & 0xFFFFFF;
  o.width = (style & 0xF) == 5 ? 0 : std::max(1.0, width);  // style 5 draws nothing
  return o;
}

GdiObject BrushObject(std::uint32_t style, std::uint32_t color) {
  GdiObject o;
  o.kind = GdiObject::Brush;
  o.color = color & 0xFFFFFF;
  o.hollow = style == 1;
  return o;
}

void SelectObject(Canvas& c, const GdiObject& o, TextRun& font) {
  if (o.kind == GdiObject::Pen) c.Pen(o.color, o.width);
  else if (o.kind == GdiObject::Brush) c.Brush(o.hollow ? std::nullopt : std::optional{o.color});
  else if (o.kind == GdiObject::Font) font = o.font;
}

// A device-independent bitmap of 24 or 32 bits without compression, rows from the bottom.

std::optional<platform::Image> ReadDib(core::Bytes bytes, std::uint64_t header, std::uint64_t bits, std::uint64_t bitsSize) {
  const auto L = core::ByteOrder::Little;
  const auto width = core::Decode<std::int32_t>(bytes, header + 4, L);
  const auto height = core::Decode<std::int32_t>(bytes, header + 8, L);
  const auto depth = core::Decode<std::uint16_t>(bytes, header + 14, L);
  const auto compression = core::Decode<std::uint32_t>(bytes, header + 16, L);
  if (!width || !height || !depth || !compression || *compression != 0 || (*depth != 24 && *depth != 32)) return std::nullopt;
  const std::int64_t w = *width, h = std::abs(static_cast<std::int64_t>(*height));
  if (w < 1 || h < 1 || w > kLargestImageSide || h > kLargestImageSide) return std::nullopt;
  const std::uint64_t stride = (static_cast<std::uint64_t>(w) * *depth / 8 + 3) / 4 * 4;
  if (bitsSize < stride * h || !core::Fits(bytes, bits, stride * h)) return std::nullopt;
  platform::Image image{static_cast<int>(w), static_cast<int>(h), std::vector<std::uint32_t>(static_cast<std::size_t>(w * h))};
  for (std::int64_t y = 0; y < h; ++y) {
    const std::int64_t row = *height > 0 ? h - 1 - y : y;
    const std::uint8_t* p = bytes.data() + bits + row * stride;
    for (std::int64_t x = 0; x < w; ++x, p += *depth / 8)
      image.pixels[static_cast<std::size_t>(y * w + x)] = 0xFF000000u | (p[2] << 16) | (p[1] << 8) | p[0];
  }
  return image;
}

}  // namespace velk::layout::metafile
