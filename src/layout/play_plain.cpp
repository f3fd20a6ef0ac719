// The records of plain Windows metafiles: the window, lines, polygons and rectangles, pens,
// brushes, fonts and text, with the object table that fills its lowest free slot first.
#include <cmath>

#include "layout/metafile_canvas.h"

namespace velk::layout::metafile {
namespace {

using core::Bytes;

class WmfParser {
 public:
  explicit WmfParser(Bytes b) : b_(b) {}

  // The type word (1 in memory, 2 on disk) and the header's size of 9 words.
  bool Header() const { return (U16(0) == 1 || U16(0) == 2) && U16(2) == 9 && ok_; }
  std::optional<Box> Window() const { return window_; }

  bool Play(Canvas& c) {
    std::uint64_t at = 18;
    while (ok_) {
      const std::uint64_t words = U32(at);
      const std::uint16_t function = U16(at + 4);
      if (!ok_ || words < 3 || !core::Fits(b_, at, words * 2)) return false;
      if (function == 0) return true;
      Record(c, function, at + 6, words * 2 - 6);
      at += words * 2;
    }
    return false;
  }

 private:
  std::uint16_t U16(std::uint64_t at) const {
    const auto v = core::Decode<std::uint16_t>(b_, at, core::ByteOrder::Little);
    if (!v) ok_ = false;
    return v.value_or(0);
  }
  std::int16_t I16(std::uint64_t at) const { return static_cast<std::int16_t>(U16(at)); }
  std::uint32_t U32(std::uint64_t at) const { return U16(at) | (static_cast<std::uint32_t>(U16(at + 2)) << 16); }
  // Points are stored y first in many records; this reads (x at, y at + 2).
  P XY(std::uint64_t at) const { return {static_cast<double>(I16(at)), static_cast<double>(I16(at + 2))}; }
  P YX(std::uint64_t at) const { return {static_cast<double>(I16(at + 2)), static_cast<double>(I16(at))}; }

  // A new object takes the lowest free index of the table.
  void Keep(GdiObject o) {
    for (auto& slot : objects_)
      if (!slot) {
        slot = std::move(o);
        return;
      }
    if (objects_.size() < 0xFFFF) objects_.push_back(std::move(o));
  }

  void Record(Canvas& c, std::uint16_t function, std::uint64_t p, std::uint64_t size) {
    switch (function) {
      case 0x020B: SetWindow(YX(p), true); break;
      case 0x020C: SetWindow(YX(p), false); break;
      case 0x0214: c.MoveTo(YX(p)); break;
      case 0x0213: c.LineTo(YX(p)); break;
      case 0x0325:
      case 0x0324: {
        const std::uint16_t count = U16(p);
        if (2 + 4ull * count > size) return;
        std::vector<P> points;
        for (std::uint16_t i = 0; i < count; ++i) points.push_back(XY(p + 2 + 4ull * i));
        c.Poly(points, function == 0x0324);
        break;
      }
      case 0x041B: {  // rectangle: bottom, right, top, left
        const P a{static_cast<double>(I16(p + 6)), static_cast<double>(I16(p + 4))}, b = YX(p);
        c.Poly({a, {b.x, a.y}, b, {a.x, b.y}}, true);
        break;
      }
      case 0x02FA: Keep(PenObject(U16(p), U32(p + 6), I16(p + 2))); break;
      case 0x02FC: Keep(BrushObject(U16(p), U32(p + 2))); break;
      case 0x02FB: {
        GdiObject o;
        o.kind = GdiObject::Font;
        o.font.height = std::abs(I16(p));
        o.font.angle = I16(p + 4) / 10.0;
        o.font.bold = I16(p + 8) >= 600;
        o.font.italic = (U16(p + 10) & 0xFF) != 0;
        std::u16string face;
        for (std::uint64_t i = 18; i < std::min<std::uint64_t>(size, 50); ++i) {
          const auto byte = static_cast<char16_t>(b_[p + i]);
          if (byte == 0) break;
          face.push_back(byte);
        }
        if (!face.empty()) o.font.family = Utf8(face);
        Keep(o);
        break;
      }
      case 0x00F7:  // palette, region and pattern brush: they take a slot too
      case 0x06FF:
      case 0x01F9:
      case 0x0142: Keep({}); break;
      case 0x012D: Select(c, U16(p)); break;
      case 0x01F0:
        if (U16(p) < objects_.size()) objects_[U16(p)].reset();
        break;
      case 0x0209: c.TextColor(U32(p) & 0xFFFFFF); break;
      case 0x012E: align_ = U16(p); break;
      case 0x0521: {  // count, text padded to words, y, x
        const std::uint16_t count = U16(p);
        const std::uint64_t words = (count + 1ull) / 2;
        if (2 + words * 2 + 4 > size) return;
        Text(c, YX(p + 2 + words * 2), p + 2, count);
        break;
      }
      case 0x0A32: {  // y, x, count, options, [rectangle], text
        const std::uint16_t count = U16(p + 4), options = U16(p + 6);
        const std::uint64_t text = p + 8 + ((options & 6) ? 8 : 0);
        if (text - p + count > size) return;
        Text(c, YX(p), text, count);
        break;
      }
      default: break;
    }
  }

  void SetWindow(P value, bool origin) {
    P org = origin ? value : org_, ext = origin ? ext_ : value;
    if (origin) org_ = value;
    else if (value.x != 0 && value.y != 0) ext_ = value, hasExtent_ = true;
    ext = ext_;
    if (hasExtent_ && !window_) window_ = Box{org.x, org.y, org.x + ext.x, org.y + ext.y};
  }

  void Select(Canvas& c, std::uint16_t index) {
    if (index < objects_.size() && objects_[index]) SelectObject(c, *objects_[index], font_);
  }

  // The text is in the system code page; its bytes go through as Latin-1.
  void Text(Canvas& c, P at, std::uint64_t bytes, std::uint16_t count) {
    if (!core::Fits(b_, bytes, count)) return;
    TextRun run = font_;
    run.at = at;
    run.align = align_;
    for (std::uint16_t i = 0; i < count; ++i) run.text.push_back(static_cast<char16_t>(b_[bytes + i]));
    c.Text(run);
  }

  Bytes b_;
  mutable bool ok_ = true;
  std::vector<std::optional<GdiObject>> objects_;
  TextRun font_;
  int align_ = 0;
  P org_, ext_{1, 1};
  bool hasExtent_ = false;
  std::optional<Box> window_;
};

}  // namespace

bool PlayPlainRecords(core::Bytes bytes, Canvas& canvas, std::optional<Box>& window) {
  WmfParser parser(bytes);
  if (!parser.Header() || !parser.Play(canvas)) return false;
  window = parser.Window();
  return true;
}

}  // namespace velk::layout::metafile
