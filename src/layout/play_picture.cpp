#include "layout/play_picture.h"

#include <cmath>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "core/bytes.h"
#include "layout/metafile_canvas.h"
#include "layout/metafile_records.h"

namespace velk::layout {
namespace {

using core::Bytes;
using metafile::BoundsCanvas;
using metafile::Box;
using metafile::P;
using metafile::TextRun;

constexpr std::uintmax_t kLargestPicture = 64u << 20;

// Draws on the surface, the source box stretched to the frame.
class SurfaceCanvas final : public metafile::Canvas {
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
    const std::string text = metafile::Utf8(run.text);
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
    if (w < 1 || h < 1 || w > metafile::kLargestImageSide || h > metafile::kLargestImageSide) return;
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


bool Usable(const Box& box) {
  return !box.empty() && box.right - box.left > 0 && box.bottom - box.top > 0 && std::isfinite(box.right - box.left) &&
         std::isfinite(box.bottom - box.top);
}

// Each picture is walked twice: once to find it whole and undamaged, then to draw it.
int PlayEnhanced(platform::Surface& surface, Bytes bytes, const PictureFrame& frame) {
  const std::optional<Box> box = metafile::EnhancedBounds(bytes);
  BoundsCanvas bounds;
  if (!box || !Usable(*box) || !metafile::PlayEnhancedRecords(bytes, bounds)) return 1;
  SurfaceCanvas canvas(surface, *box, frame);
  metafile::PlayEnhancedRecords(bytes, canvas);
  return 0;
}

// A plain metafile: its window, else the given box, else what it draws, becomes the frame.
int PlayPlain(platform::Surface& surface, Bytes bytes, const PictureFrame& frame, std::optional<Box> given) {
  BoundsCanvas bounds;
  std::optional<Box> window;
  if (!metafile::PlayPlainRecords(bytes, bounds, window)) return 1;
  const Box box = window ? *window : given ? *given : bounds.box;
  if (!Usable(box)) return 1;
  SurfaceCanvas canvas(surface, box, frame);
  metafile::PlayPlainRecords(bytes, canvas, window);
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
