#pragma once
// A surface that records what is drawn on it as an enhanced metafile (EMF): pens, brushes,
// lines, polygons, clipping, text at an angle and images, in device units at a resolution, so
// that word processors and drawing programs take the page as a vector picture.
#include <cstdint>
#include <vector>

#include "platform/surface.h"

namespace velk::layout {

class EmfRecorder final : public platform::Surface {
 public:
  // size: the picture in device units at dotsPerInch. Text is measured on `measure`, a surface
  // with the same fonts as the one the picture stands for.
  EmfRecorder(platform::Extent size, double dotsPerInch, platform::Surface& measure);

  void SetPen(platform::Color color, int width) override;
  void SetBrush(platform::Color color) override;
  void SetNoBrush() override;
  void SetDrawMode(platform::DrawMode mode) override;
  void SetClip(int x, int y, int width, int height) override;
  void ClearClip() override;
  void MoveTo(int x, int y) override;
  void LineTo(int x, int y) override;
  void Polyline(std::span<const platform::Point> points) override;
  void Polygon(std::span<const platform::Point> points) override;
  void SetFont(const platform::Font& font) override;
  void SetTextColor(platform::Color color) override;
  void Text(int x, int y, double angleDegrees, std::string_view text) override;
  platform::Extent MeasureText(std::string_view text) override;
  void DrawImage(int x, int y, const platform::Image& image) override;
  platform::Extent Size() const override { return size_; }

  // The whole file: header, the records, the end record. The recorder is spent afterwards.
  std::vector<std::uint8_t> Finish();

 private:
  void Begin(std::uint32_t type);
  void End();
  void U32(std::uint32_t v);
  void I32(std::int32_t v) { U32(static_cast<std::uint32_t>(v)); }
  void Bounds(std::span<const platform::Point> points);
  void Poly(std::uint32_t type, std::span<const platform::Point> points);
  // Puts a new object into the handle of its kind: the stock object is selected while the old
  // one is deleted, so that no player deletes a selected object.
  void Renew(std::uint32_t handle, std::uint32_t stock);
  // The font with its escapement (tenths of a degree, counter-clockwise), selected.
  void MakeFont(const platform::Font& font, long escapement);

  platform::Extent size_;
  double dotsPerInch_;
  platform::Surface& measure_;
  std::vector<std::uint8_t> bytes_;
  std::size_t recordStart_ = 0;
  std::uint32_t records_ = 0;
  bool made_[4] = {};  // which of the pen, brush and font handles (1, 2, 3) hold an object
  bool clipped_ = false;
  platform::Font font_;
  platform::Color penColor_ = 0;
  int penWidth_ = -1;
};

}  // namespace velk::layout
