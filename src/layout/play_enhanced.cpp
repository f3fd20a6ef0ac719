// The records of enhanced metafiles: lines, polygons, rectangles and ellipses, pens, brushes,
// fonts and text, bitmaps, and the window and viewport that map logical to device units.
#include <cmath>

#include "layout/metafile_canvas.h"
#include "layout/metafile_records.h"

namespace velk::layout::metafile {
namespace {

using core::Bytes;

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

}  // namespace

std::optional<Box> EnhancedBounds(core::Bytes bytes) { return EmfParser(bytes).Bounds(); }

bool PlayEnhancedRecords(core::Bytes bytes, Canvas& canvas) { return EmfParser(bytes).Play(canvas); }

}  // namespace velk::layout::metafile
