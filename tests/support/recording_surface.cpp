#include "support/recording_surface.h"

namespace velk::test {

void RecordingSurface::SetPen(platform::Color color, int width) {
  calls.push_back({Recorded::Pen, {}, color, width});
}
void RecordingSurface::SetBrush(platform::Color color) { calls.push_back({Recorded::Brush, {}, color}); }
void RecordingSurface::SetDrawMode(platform::DrawMode mode) {
  calls.push_back({Recorded::Mode, {}, 0, mode == platform::DrawMode::Xor ? 1 : 0});
}
void RecordingSurface::SetClip(int x, int y, int width, int height) {
  calls.push_back({Recorded::Clip, {{x, y}, {x + width, y + height}}});
}
void RecordingSurface::MoveTo(int x, int y) { calls.push_back({Recorded::Move, {{x, y}}}); }
void RecordingSurface::LineTo(int x, int y) { calls.push_back({Recorded::Line, {{x, y}}}); }
void RecordingSurface::Polyline(std::span<const platform::Point> points) {
  calls.push_back({Recorded::Polyline, {points.begin(), points.end()}});
}
void RecordingSurface::Polygon(std::span<const platform::Point> points) {
  calls.push_back({Recorded::Polygon, {points.begin(), points.end()}});
}
void RecordingSurface::SetFont(const platform::Font& font) {
  fontHeight_ = font.pixelHeight;
  calls.push_back({Recorded::Font, {}, 0, font.pixelHeight, 0, font.family});
}
void RecordingSurface::SetTextColor(platform::Color color) { calls.push_back({Recorded::TextColor, {}, color}); }
void RecordingSurface::Text(int x, int y, double angleDegrees, std::string_view text) {
  calls.push_back({Recorded::Text, {{x, y}}, 0, 0, angleDegrees, std::string(text)});
}
platform::Extent RecordingSurface::MeasureText(std::string_view text) {
  return {static_cast<int>(text.size()) * fontHeight_ / 2, fontHeight_};
}
void RecordingSurface::DrawImage(int x, int y, const platform::Image& image) {
  calls.push_back({Recorded::Image, {{x, y}}, 0, image.width});
}

std::vector<Segment> RecordingSurface::Segments() const {
  std::vector<Segment> out;
  platform::Point at;
  platform::Color pen = 0;
  for (const Recorded& c : calls) {
    if (c.kind == Recorded::Pen) pen = c.color;
    if (c.kind == Recorded::Move) at = c.points[0];
    if (c.kind == Recorded::Line) {
      out.push_back({at, c.points[0], pen});
      at = c.points[0];
    }
  }
  return out;
}

std::vector<const Recorded*> RecordingSurface::Of(Recorded::Kind kind) const {
  std::vector<const Recorded*> out;
  for (const Recorded& c : calls)
    if (c.kind == kind) out.push_back(&c);
  return out;
}

}  // namespace velk::test
