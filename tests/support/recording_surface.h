#pragma once
// A drawing surface that keeps every call, for tests of the tracer, the axes and the page.
#include <string>
#include <utility>
#include <vector>

#include "platform/surface.h"

namespace velk::test {

struct Recorded {
  enum Kind { Pen, Brush, NoBrush, Mode, Move, Line, Polyline, Polygon, Font, TextColor, Text, Image, Clip, NoClip };
  Recorded(Kind k, std::vector<platform::Point> p = {}, platform::Color c = 0, int w = 0, double a = 0,
           std::string t = {})
      : kind(k), points(std::move(p)), color(c), width(w), angle(a), text(std::move(t)) {}
  Kind kind;
  std::vector<platform::Point> points;  // Move/Line: one point; Polyline/Polygon: all of them
  platform::Color color = 0;
  int width = 0;  // pen width, font height, image width
  double angle = 0;
  std::string text;
};

struct Segment {
  platform::Point from, to;
  platform::Color color;
  friend bool operator==(const Segment&, const Segment&) = default;
};

class RecordingSurface final : public platform::Surface {
 public:
  explicit RecordingSurface(platform::Extent size = {1000, 1000}) : size_(size) {}

  void SetPen(platform::Color color, int width) override;
  void SetBrush(platform::Color color) override;
  void SetNoBrush() override { calls.emplace_back(Recorded::NoBrush); }
  void SetDrawMode(platform::DrawMode mode) override;
  void SetClip(int x, int y, int width, int height) override;
  void ClearClip() override { calls.emplace_back(Recorded::NoClip); }
  void MoveTo(int x, int y) override;
  void LineTo(int x, int y) override;
  void Polyline(std::span<const platform::Point> points) override;
  void Polygon(std::span<const platform::Point> points) override;
  void SetFont(const platform::Font& font) override;
  void SetTextColor(platform::Color color) override;
  void Text(int x, int y, double angleDegrees, std::string_view text) override;
  // Every character is half the font height wide.
  platform::Extent MeasureText(std::string_view text) override;
  void DrawImage(int x, int y, const platform::Image& image) override;
  platform::Extent Size() const override { return size_; }

  // The straight pieces drawn by LineTo, each from the current position, in the pen's colour.
  std::vector<Segment> Segments() const;
  std::vector<const Recorded*> Of(Recorded::Kind kind) const;

  std::vector<Recorded> calls;

 private:
  platform::Extent size_;
  int fontHeight_ = 12;
};

}  // namespace velk::test
