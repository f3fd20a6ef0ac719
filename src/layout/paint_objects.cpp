#include "layout/paint_objects.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "layout/draw_coded_text.h"
#include "layout/play_picture.h"

namespace velk::layout {
namespace {

constexpr double kHeadSlope = 0.3249;  // tan 18 degrees: half the head's width per unit of length
constexpr int kEllipseCorners = 72;

struct Vec {
  double x = 0, y = 0;
};
Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y}; }
Vec operator-(Vec a, Vec b) { return {a.x - b.x, a.y - b.y}; }
Vec operator*(Vec a, double k) { return {a.x * k, a.y * k}; }

platform::Point Device(Vec v) { return {static_cast<std::int32_t>(std::lrint(v.x)), static_cast<std::int32_t>(std::lrint(v.y))}; }

Vec OnSurface(const PageScale& scale, float x, float y) {
  return {scale.originX + x * scale.pixelsPerCm, scale.originY + y * scale.pixelsPerCm};
}

// Dash and gap lengths of the line patterns, in units of the line width; an empty pattern is solid.
std::span<const double> Pattern(int lineType) {
  static constexpr double kBroken1[] = {1, 1}, kChain1[] = {4, 2}, kChain2[] = {8, 3}, kChain3[] = {12, 4},
                          kDotChain1[] = {6, 2, 1, 2}, kTwoDots1[] = {6, 2, 1, 2, 1, 2}, kDot2[] = {1, 2},
                          kDotChain2[] = {10, 3, 1, 3}, kTwoDots2[] = {10, 3, 1, 3, 1, 3};
  switch (lineType) {
    case 1: return kBroken1;
    case 2: return kChain1;
    case 3: return kChain2;
    case 4: return kChain3;
    case 5: return kDotChain1;
    case 6: return kTwoDots1;
    case 7: return kDot2;
    case 8: return kDotChain2;
    case 9: return kTwoDots2;
    default: return {};
  }
}

void Rod(platform::Surface& surface, Vec from, Vec to, std::span<const double> pattern, double unit) {
  const Vec d = to - from;
  const double length = std::hypot(d.x, d.y);
  if (length <= 0) return;
  if (pattern.empty()) {
    surface.MoveTo(Device(from).x, Device(from).y);
    surface.LineTo(Device(to).x, Device(to).y);
    return;
  }
  const Vec u = d * (1 / length);
  double at = 0;
  for (std::size_t k = 0; at < length; k = (k + 1) % pattern.size()) {
    const double next = std::min(length, at + pattern[k] * unit);
    if (k % 2 == 0) {
      surface.MoveTo(Device(from + u * at).x, Device(from + u * at).y);
      surface.LineTo(Device(from + u * next).x, Device(from + u * next).y);
    }
    at = next;
  }
}

void Head(platform::Surface& surface, Vec tip, Vec u, double length, int family, platform::Color color,
          platform::Color fill, int width) {
  if (length <= 0) return;
  const Vec base = tip - u * length;
  const Vec side = Vec{-u.y, u.x} * (length * kHeadSlope);
  const platform::Point corners[3] = {Device(base + side), Device(tip), Device(base - side)};
  if (family == 0) {
    surface.SetPen(color, width);
    surface.Polyline(corners);
    return;
  }
  surface.SetPen(color, 1);
  if (family == 3) {
    surface.SetNoBrush();
  } else {
    surface.SetBrush(family == 2 ? fill : color);
  }
  surface.Polygon(corners);
}

void DrawShape(platform::Surface& surface, const LayoutShape& shape, const PageScale& scale, bool ellipse) {
  const Vec a = OnSurface(scale, shape.X1, shape.Y1), b = OnSurface(scale, shape.X2, shape.Y2);
  std::vector<platform::Point> corners;
  if (ellipse) {
    const Vec centre = (a + b) * 0.5, radius = (b - a) * 0.5;
    for (int k = 0; k < kEllipseCorners; ++k) {
      const double t = 2 * M_PI * k / kEllipseCorners;
      corners.push_back(Device(centre + Vec{radius.x * std::cos(t), radius.y * std::sin(t)}));
    }
  } else {
    corners = {Device(a), Device({b.x, a.y}), Device(b), Device({a.x, b.y})};
  }
  surface.SetPen(shape.BorderColor, std::max(1, static_cast<int>(std::lrint(shape.LineWidth * scale.pixelsPerUnit))));
  if (shape.FillColor == kNoFill) {
    surface.SetNoBrush();
  } else {
    surface.SetBrush(shape.FillColor);
  }
  surface.Polygon(corners);
}

void DrawText(platform::Surface& surface, const LayoutText& text, const PageScale& scale) {
  const Vec at = OnSurface(scale, text.X, text.Y);
  const TextFont font{text.FontName, text.Points, text.Bold != 0, text.Italic != 0, text.Underline != 0,
                      text.StrikeOut != 0};
  DrawCodedText(surface, {at.x, at.y, scale.pixelsPerPoint, kNoWidthLimit, text.Angle}, text.Text, font, text.Color);
}

}  // namespace

DeviceRect ImageRect(const LayoutImage& image, const PageScale& scale) {
  const Vec a = OnSurface(scale, std::min(image.Left, image.Right), std::min(image.Top, image.Bottom));
  const Vec b = OnSurface(scale, std::max(image.Left, image.Right), std::max(image.Top, image.Bottom));
  const platform::Point p = Device(a), q = Device(b);
  return {p.x, p.y, q.x - p.x, q.y - p.y};
}

void DrawArrow(platform::Surface& surface, const LayoutLine& line, const PageScale& scale, bool erase) {
  surface.SetDrawMode(platform::DrawMode::Copy);
  const int family = std::clamp(line.StyleCode / 4, 0, 3);
  const int flags = ((line.StyleCode % 4) + 4) % 4;
  const platform::Color color = erase ? platform::kWhite : line.Color;
  const platform::Color fill = erase ? platform::kWhite : line.FillColor;
  const int width = std::max(1, static_cast<int>(std::lrint(line.Width * scale.pixelsPerUnit)));
  const double halfWidth = std::max(0.5, width / 2.0);
  const double startLength = flags >= 2 ? line.HeadLengthStart * scale.pixelsPerUnit : 0;
  const double endLength = flags % 2 ? line.HeadLengthEnd * scale.pixelsPerUnit : 0;

  const Vec from = OnSurface(scale, line.X1, line.Y1), to = OnSurface(scale, line.X2, line.Y2);
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  const Vec u = length > 0 ? (to - from) * (1 / length) : Vec{1, 0};
  // The rod runs between the heads' bases; heads longer than the rod leave no rod.
  if (startLength + endLength < length) {
    surface.SetPen(color, width);
    Rod(surface, from + u * startLength, to - u * endLength, family == 0 ? Pattern(line.LineType) : std::span<const double>{},
        std::max(2.0, 2 * halfWidth));
  }
  Head(surface, to, u, endLength, family, color, fill, width);
  Head(surface, from, u * -1, startLength, family, color, fill, width);
}

PaintOrder PaintObjects(platform::Surface& surface, const LayoutDocument& doc, const PageScale& scale,
                        const PictureDecoder* pictures) {
  PaintOrder order = ResolveDrawOrder(doc);
  surface.SetDrawMode(platform::DrawMode::Copy);
  for (const DrawOrderEntry& entry : order.order) {
    const auto i = static_cast<std::size_t>(entry.index);
    switch (entry.kind) {
      case ObjectKind::Circle: DrawShape(surface, doc.circles[i], scale, true); break;
      case ObjectKind::Rectangle: DrawShape(surface, doc.rectangles[i], scale, false); break;
      case ObjectKind::Line: DrawArrow(surface, doc.lines[i], scale); break;
      case ObjectKind::Text: DrawText(surface, doc.texts[i], scale); break;
      case ObjectKind::Image: {
        const DeviceRect r = ImageRect(doc.images[i], scale);
        const PictureBytes& picture = doc.images[i].Picture;
        if (picture.empty() || r.width < 1 || r.height < 1) break;
        if (PlayPicture(surface, *picture.bytes, {r.x, r.y, r.width, r.height}) == 0 || !pictures) break;
        if (const auto pixels = (*pictures)(*picture.bytes, r.width, r.height)) surface.DrawImage(r.x, r.y, *pixels);
        break;
      }
    }
  }
  return order;
}

}  // namespace velk::layout
