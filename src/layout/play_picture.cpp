#include "layout/play_picture.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "core/bytes.h"
#include "layout/metafile_records.h"

namespace velk::layout {
namespace {

using core::Bytes;
namespace emr = metafile::emr;

constexpr std::uintmax_t kLargestPicture = 64u << 20;
constexpr std::int64_t kLargestImageSide = 8192;
constexpr std::size_t kLargestPolygon = 1u << 20;

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

// Draws on the surface, the source box stretched to the frame.
class SurfaceCanvas final : public Canvas {
 public:
  SurfaceCanvas(platform::Surface& s, const Box& source, const PictureFrame& f) : s_(s), source_(source), frame_(f) {
    sx_ = f.width / (source.right - source.left);
    sy_ = f.height / (source.bottom - source.top);
  }
  void Pen(platform::Color color, double width) override {
    s_.SetPen(color, width <= 0 ? 0 : std::max(1, static_cast<int>(std::lround(width * std::abs(sx_)))));
  }
  void Brush(std::optional<platform::Color> color) override {
    if (color) s_.SetBrush(*color);
    else s_.SetNoBrush();
  }
  void TextColor(platform::Color color) override { s_.SetTextColor(color); }
  void MoveTo(P p) override {
    const platform::Point q = Map(p);
    s_.MoveTo(q.x, q.y);
  }
  void LineTo(P p) override {
    const platform::Point q = Map(p);
    s_.LineTo(q.x, q.y);
  }
  void Poly(const std::vector<P>& points, bool closed) override {
    std::vector<platform::Point> mapped;
    for (P p : points) mapped.push_back(Map(p));
    if (closed) s_.Polygon(mapped);
    else s_.Polyline(mapped);
  }
  void Text(const TextRun& run) override {
    platform::Font font{run.family, std::max(1, static_cast<int>(std::lround(std::abs(run.height * sy_)))), run.bold,
                        run.italic};
    s_.SetFont(font);
    const std::string text = Utf8(run.text);
    const platform::Extent size = s_.MeasureText(text);
    // The reference point is the top-left corner unless the alignment says otherwise.
    double dx = (run.align & 6) == 6 ? -size.width / 2.0 : (run.align & 2) ? -size.width : 0;
    double dy = (run.align & 24) == 24 ? -0.8 * size.height : (run.align & 8) ? -size.height : 0;
    const double a = run.angle * 3.14159265358979323846 / 180;
    const platform::Point q = Map(run.at);
    s_.Text(static_cast<int>(std::lround(q.x + dx * std::cos(a) + dy * std::sin(a))),
            static_cast<int>(std::lround(q.y - dx * std::sin(a) + dy * std::cos(a))), run.angle, text);
  }
  void Picture(P topLeft, P size, const platform::Image& image) override {
    const platform::Point a = Map(topLeft), b = Map({topLeft.x + size.x, topLeft.y + size.y});
    const int w = std::abs(b.x - a.x), h = std::abs(b.y - a.y);
    if (w < 1 || h < 1 || w > kLargestImageSide || h > kLargestImageSide) return;
    platform::Image scaled{w, h, std::vector<std::uint32_t>(static_cast<std::size_t>(w) * h)};
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x)
        scaled.pixels[static_cast<std::size_t>(y) * w + x] =
            image.pixels[static_cast<std::size_t>(y * image.height / h) * image.width + x * image.width / w];
    s_.DrawImage(std::min(a.x, b.x), std::min(a.y, b.y), scaled);
  }

 private:
  platform::Point Map(P p) const {
    return {static_cast<std::int32_t>(std::lround(frame_.x + (p.x - source_.left) * sx_)),
            static_cast<std::int32_t>(std::lround(frame_.y + (p.y - source_.top) * sy_))};
  }
  platform::Surface& s_;
  Box source_;
  PictureFrame frame_;
  double sx_ = 1, sy_ = 1;
};

// A pen, brush or font of a metafile's object table.
struct GdiObject {
  enum Kind { None, Pen, Brush, Font } kind = None;
  platform::Color color = 0;
  double width = 0;  // pens; 0: no pen
  bool hollow = false;  // brushes
  TextRun font;
};

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

// Selecting an object: pens and brushes go to the canvas, a font becomes the text's font.
void SelectObject(Canvas& c, const GdiObject& o, TextRun& font) {
  if (o.kind == GdiObject::Pen) c.Pen(o.color, o.width);
  else if (o.kind == GdiObject::Brush) c.Brush(o.hollow ? std::nullopt : std::optional{o.color});
  else if (o.kind == GdiObject::Font) font = o.font;
}

// A device-independent bitmap of 24 or 32 bits without compression, rows from the bottom.
std::optional<platform::Image> ReadDib(Bytes bytes, std::uint64_t header, std::uint64_t bits, std::uint64_t bitsSize) {
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

// ---- Enhanced metafiles ----------------------------------------------------------------------

class EmfParser {
 public:
  explicit EmfParser(Bytes b) : b_(b) {}

  // The bounds of the header, or nothing when this is no enhanced metafile.
  std::optional<Box> Bounds() const {
    if (U32(0) != emr::kHeader || U32(40) != metafile::kEmfSignature || U32(4) < 88) return std::nullopt;
    Box box{static_cast<double>(I32(8)), static_cast<double>(I32(12)), static_cast<double>(I32(16)) + 1,
            static_cast<double>(I32(20)) + 1};
    if (!ok_ || box.empty()) return std::nullopt;
    return box;
  }

  bool Play(Canvas& c) {
    std::uint64_t at = 0;
    while (ok_) {
      const std::uint32_t type = U32(at), size = U32(at + 4);
      if (!ok_ || size < 8 || size % 4 != 0 || !core::Fits(b_, at, size)) return false;
      if (type == emr::kEof) return true;
      Record(c, type, at, size);
      at += size;
    }
    return false;
  }

 private:
  std::uint32_t U32(std::uint64_t at) const {
    const auto v = core::Decode<std::uint32_t>(b_, at, core::ByteOrder::Little);
    if (!v) ok_ = false;
    return v.value_or(0);
  }
  std::int32_t I32(std::uint64_t at) const { return static_cast<std::int32_t>(U32(at)); }
  std::int16_t I16(std::uint64_t at) const {
    const auto v = core::Decode<std::int16_t>(b_, at, core::ByteOrder::Little);
    if (!v) ok_ = false;
    return v.value_or(0);
  }
  P Point(std::uint64_t at) const { return Device(I32(at), I32(at + 4)); }
  // Logical to device units through the window and viewport the picture set.
  P Device(double x, double y) const {
    return {(x - windowOrg_.x) * viewportExt_.x / windowExt_.x + viewportOrg_.x,
            (y - windowOrg_.y) * viewportExt_.y / windowExt_.y + viewportOrg_.y};
  }
  double Scale() const { return std::abs(viewportExt_.y / windowExt_.y); }

  void Points(Canvas& c, std::uint64_t at, std::uint32_t size, bool small, bool closed) {
    const std::uint32_t count = U32(at + 24);
    const std::uint64_t each = small ? 4 : 8;
    if (count > kLargestPolygon || 28 + count * each > size) {
      ok_ = false;
      return;
    }
    std::vector<P> points;
    for (std::uint32_t i = 0; i < count; ++i) {
      const std::uint64_t p = at + 28 + i * each;
      points.push_back(small ? Device(I16(p), I16(p + 2)) : Point(p));
    }
    c.Poly(points, closed);
  }

  void SetExtent(P& ext, std::uint64_t at) {
    const P e{static_cast<double>(I32(at + 8)), static_cast<double>(I32(at + 12))};
    if (e.x != 0 && e.y != 0) ext = e;
  }

  void Select(Canvas& c, std::uint32_t handle) {
    if (handle & 0x80000000u) {
      const std::uint32_t stock = handle & 0x7FFFFFFFu;
      if (stock <= 4) c.Brush(stock == 0 ? platform::kWhite : stock == 4 ? platform::kBlack : platform::MakeColor(128, 128, 128));
      else if (stock == 5) c.Brush(std::nullopt);
      else if (stock == 6 || stock == 7) c.Pen(stock == 6 ? platform::kWhite : platform::kBlack, 1);
      else if (stock == 8) c.Pen(0, 0);
      return;
    }
    if (handle < objects_.size()) SelectObject(c, objects_[handle], font_);
  }

  void Record(Canvas& c, std::uint32_t type, std::uint64_t at, std::uint32_t size) {
    switch (type) {
      case emr::kMoveToEx: c.MoveTo(Point(at + 8)); break;
      case emr::kLineTo: c.LineTo(Point(at + 8)); break;
      case emr::kPolyline: Points(c, at, size, false, false); break;
      case emr::kPolygon: Points(c, at, size, false, true); break;
      case emr::kPolyline16: Points(c, at, size, true, false); break;
      case emr::kPolygon16: Points(c, at, size, true, true); break;
      case 43: {  // rectangle
        const P a = Point(at + 8), b = Point(at + 16);
        c.Poly({a, {b.x, a.y}, b, {a.x, b.y}}, true);
        break;
      }
      case 42: {  // ellipse
        const P a = Point(at + 8), b = Point(at + 16);
        std::vector<P> points;
        for (int k = 0; k < 72; ++k) {
          const double t = k * 3.14159265358979323846 / 36;
          points.push_back({(a.x + b.x) / 2 + (b.x - a.x) / 2 * std::cos(t), (a.y + b.y) / 2 + (b.y - a.y) / 2 * std::sin(t)});
        }
        c.Poly(points, true);
        break;
      }
      case 9: SetExtent(windowExt_, at); break;
      case 10: windowOrg_ = {static_cast<double>(I32(at + 8)), static_cast<double>(I32(at + 12))}; break;
      case 11: SetExtent(viewportExt_, at); break;
      case 12: viewportOrg_ = {static_cast<double>(I32(at + 8)), static_cast<double>(I32(at + 12))}; break;
      case emr::kSetTextAlign: align_ = static_cast<int>(U32(at + 8)); break;
      case emr::kSetTextColor: c.TextColor(U32(at + 8) & 0xFFFFFF); break;
      case emr::kCreatePen: Keep(U32(at + 8), PenObject(U32(at + 12), U32(at + 24), I32(at + 16) * Scale())); break;
      case emr::kCreateBrushIndirect: Keep(U32(at + 8), BrushObject(U32(at + 12), U32(at + 16))); break;
      case emr::kExtCreateFontIndirectW: Font(at, size); break;
      case emr::kSelectObject: Select(c, U32(at + 8)); break;
      case emr::kExtTextOutW: TextOut(c, at, size); break;
      case emr::kStretchDIBits: Bitmap(c, at, size); break;
      default: break;  // records that change nothing the page shows
    }
  }

  void Keep(std::uint32_t handle, GdiObject o) {
    if (handle == 0 || handle > 0xFFFF) return;
    if (handle >= objects_.size()) objects_.resize(handle + 1);
    objects_[handle] = std::move(o);
  }

  void Font(std::uint64_t at, std::uint32_t size) {
    if (size < 104) return;
    GdiObject o;
    o.kind = GdiObject::Font;
    o.font.height = std::abs(I32(at + 12)) * Scale();
    o.font.angle = I32(at + 20) / 10.0;
    o.font.bold = I32(at + 28) >= 600;
    o.font.italic = (U32(at + 32) & 0xFF) != 0;
    std::u16string face;
    for (int i = 0; i < 32; ++i) {
      const auto unit = static_cast<char16_t>(U32(at + 40 + 2 * i) & 0xFFFF);
      if (unit == 0) break;
      face.push_back(unit);
    }
    if (!face.empty()) o.font.family = Utf8(face);
    Keep(U32(at + 8), o);
  }

  void TextOut(Canvas& c, std::uint64_t at, std::uint32_t size) {
    const std::uint32_t count = U32(at + 44), offset = U32(at + 48);
    if (!ok_ || count > size || offset > size || offset + 2ull * count > size) return;
    TextRun run = font_;
    run.at = Point(at + 36);
    run.align = align_;
    for (std::uint32_t i = 0; i < count; ++i) run.text.push_back(static_cast<char16_t>(I16(at + offset + 2ull * i)));
    c.Text(run);
  }

  void Bitmap(Canvas& c, std::uint64_t at, std::uint32_t size) {
    const std::uint32_t header = U32(at + 48), bits = U32(at + 56), bitsSize = U32(at + 60);
    if (!ok_ || header >= size || bits >= size) return;
    const std::optional<platform::Image> image = ReadDib(b_.subspan(at, size), header, bits, bitsSize);
    if (!image) return;
    const P topLeft = Point(at + 24), corner = Device(I32(at + 24) + I32(at + 72), I32(at + 28) + I32(at + 76));
    c.Picture(topLeft, {corner.x - topLeft.x, corner.y - topLeft.y}, *image);
  }

  Bytes b_;
  mutable bool ok_ = true;
  std::vector<GdiObject> objects_;
  TextRun font_;
  int align_ = 0;
  P windowOrg_, windowExt_{1, 1}, viewportOrg_, viewportExt_{1, 1};
};

// ---- Plain metafiles -------------------------------------------------------------------------

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

bool Usable(const Box& box) {
  return !box.empty() && box.right - box.left > 0 && box.bottom - box.top > 0 && std::isfinite(box.right - box.left) &&
         std::isfinite(box.bottom - box.top);
}

int PlayEnhanced(platform::Surface& surface, Bytes bytes, const PictureFrame& frame) {
  EmfParser check(bytes);
  const std::optional<Box> box = check.Bounds();
  BoundsCanvas bounds;
  if (!box || !Usable(*box) || !check.Play(bounds)) return 1;
  SurfaceCanvas canvas(surface, *box, frame);
  EmfParser(bytes).Play(canvas);
  return 0;
}

// A plain metafile: its window, else the given box, else what it draws, becomes the frame.
int PlayPlain(platform::Surface& surface, Bytes bytes, const PictureFrame& frame, std::optional<Box> given) {
  WmfParser check(bytes);
  BoundsCanvas bounds;
  if (!check.Header() || !check.Play(bounds)) return 1;
  const Box box = check.Window() ? *check.Window() : given ? *given : bounds.box;
  if (!Usable(box)) return 1;
  SurfaceCanvas canvas(surface, box, frame);
  WmfParser(bytes).Play(canvas);
  return 0;
}

}  // namespace

int PlayPicture(platform::Surface& surface, std::span<const std::uint8_t> bytes, const PictureFrame& frame) {
  if (frame.width < 1 || frame.height < 1) return 1;
  if (PlayEnhanced(surface, bytes, frame) == 0) return 0;
  if (PlayPlain(surface, bytes, frame, std::nullopt) == 0) return 0;
  const auto L = core::ByteOrder::Little;
  if (core::DecodeOr<std::uint32_t>(bytes, 0, L, 0) != metafile::kPlaceableKey || bytes.size() <= metafile::kPlaceableHeaderSize)
    return 1;
  const auto corner = [&](int at) { return static_cast<double>(core::DecodeOr<std::int16_t>(bytes, at, L, 0)); };
  const Box box{corner(6), corner(8), corner(10), corner(12)};
  return PlayPlain(surface, bytes.subspan(metafile::kPlaceableHeaderSize), frame, Usable(box) ? std::optional{box} : std::nullopt);
}

int PlayPicture(platform::Surface& surface, const std::filesystem::path& file, const PictureFrame& frame) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  if (error || size > kLargestPicture) return -1;
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
  std::ifstream in(file, std::ios::binary);
  if (!in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()))) return -1;
  return PlayPicture(surface, bytes, frame);
}

}  // namespace velk::layout
