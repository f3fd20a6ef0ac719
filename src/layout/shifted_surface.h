#pragma once
#include <span>
#include <string_view>
#include <vector>

#include "platform/surface.h"

namespace velk::layout {

// A surface whose origin lies at (dx, dy) of another one, so that a picture drawn for a surface
// of its own lands inside a frame of the page.
class ShiftedSurface final : public platform::Surface {
 public:
  ShiftedSurface(platform::Surface& target, int dx, int dy, platform::Extent size)
      : t_(target), dx_(dx), dy_(dy), size_(size) {}
  void SetPen(platform::Color c, int w) override { t_.SetPen(c, w); }
  void SetBrush(platform::Color c) override { t_.SetBrush(c); }
  void SetNoBrush() override { t_.SetNoBrush(); }
  void SetDrawMode(platform::DrawMode m) override { t_.SetDrawMode(m); }
  void SetClip(int x, int y, int w, int h) override { t_.SetClip(x + dx_, y + dy_, w, h); }
  void ClearClip() override { t_.ClearClip(); }
  void MoveTo(int x, int y) override { t_.MoveTo(x + dx_, y + dy_); }
  void LineTo(int x, int y) override { t_.LineTo(x + dx_, y + dy_); }
  void Polyline(std::span<const platform::Point> p) override { t_.Polyline(Shifted(p)); }
  void Polygon(std::span<const platform::Point> p) override { t_.Polygon(Shifted(p)); }
  void SetFont(const platform::Font& f) override { t_.SetFont(f); }
  void SetTextColor(platform::Color c) override { t_.SetTextColor(c); }
  void Text(int x, int y, double a, std::string_view s) override { t_.Text(x + dx_, y + dy_, a, s); }
  platform::Extent MeasureText(std::string_view s) override { return t_.MeasureText(s); }
  void DrawImage(int x, int y, const platform::Image& i) override { t_.DrawImage(x + dx_, y + dy_, i); }
  platform::Extent Size() const override { return size_; }

 private:
  const std::vector<platform::Point>& Shifted(std::span<const platform::Point> points) {
    shifted_.assign(points.begin(), points.end());
    for (platform::Point& p : shifted_) p.x += dx_, p.y += dy_;
    return shifted_;
  }
  platform::Surface& t_;
  int dx_, dy_;
  platform::Extent size_;
  std::vector<platform::Point> shifted_;
};

}  // namespace velk::layout
