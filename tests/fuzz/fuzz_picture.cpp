// The player of image objects' metafiles on any bytes: no crash, no read outside the bytes, no
// undefined behaviour. The picture is drawn on a surface that keeps nothing.
#include "layout/play_picture.h"

namespace {

class NullSurface final : public velk::platform::Surface {
 public:
  void SetPen(velk::platform::Color, int) override {}
  void SetBrush(velk::platform::Color) override {}
  void SetNoBrush() override {}
  void SetDrawMode(velk::platform::DrawMode) override {}
  void SetClip(int, int, int, int) override {}
  void ClearClip() override {}
  void MoveTo(int, int) override {}
  void LineTo(int, int) override {}
  void Polyline(std::span<const velk::platform::Point>) override {}
  void Polygon(std::span<const velk::platform::Point>) override {}
  void SetFont(const velk::platform::Font&) override {}
  void SetTextColor(velk::platform::Color) override {}
  void Text(int, int, double, std::string_view) override {}
  velk::platform::Extent MeasureText(std::string_view text) override { return {static_cast<int>(text.size()) * 6, 12}; }
  void DrawImage(int, int, const velk::platform::Image&) override {}
  velk::platform::Extent Size() const override { return {800, 600}; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  NullSurface surface;
  velk::layout::PlayPicture(surface, std::span(data, size), velk::layout::PictureFrame{10, 10, 400, 300});
  return 0;
}
