#include "layout/paste_object.h"

#include <algorithm>

namespace velk::layout {
namespace {

// Moves the span [low, high] by delta, then back inside [0, limit] when it sticks out.
float Shift(float low, float high, double delta, double limit) {
  double moved = delta;
  const double a = std::min(low, high) + moved, b = std::max(low, high) + moved;
  if (b > limit) moved -= b - limit;
  if (a + (moved - delta) < 0) moved -= a + (moved - delta);
  return static_cast<float>(moved);
}

struct Placement {
  double offset, width, height;
};

void Move(LayoutText& t, const Placement& p) {
  t.X += Shift(t.X, t.X, p.offset, p.width);
  t.Y += Shift(t.Y, t.Y, p.offset, p.height);
}

template <class T>  // lines and shapes: two corners
void Move(T& o, const Placement& p) {
  const float dx = Shift(o.X1, o.X2, p.offset, p.width), dy = Shift(o.Y1, o.Y2, p.offset, p.height);
  o.X1 += dx, o.X2 += dx, o.Y1 += dy, o.Y2 += dy;
}

void Move(LayoutImage& image, const Placement& p) {
  const float dx = Shift(image.Left, image.Right, p.offset, p.width);
  const float dy = Shift(image.Top, image.Bottom, p.offset, p.height);
  image.Left += dx, image.Right += dx, image.Top += dy, image.Bottom += dy;
}

}  // namespace

std::optional<CopiedObject> CopyObject(const LayoutDocument& doc, DrawOrderEntry entry) {
  if (!IsLive(doc, entry)) return std::nullopt;
  const auto i = static_cast<std::size_t>(entry.index);
  switch (entry.kind) {
    case ObjectKind::Text: return CopiedObject{entry.kind, doc.texts[i]};
    case ObjectKind::Line: return CopiedObject{entry.kind, doc.lines[i]};
    case ObjectKind::Circle: return CopiedObject{entry.kind, doc.circles[i]};
    case ObjectKind::Rectangle: return CopiedObject{entry.kind, doc.rectangles[i]};
    case ObjectKind::Image: return CopiedObject{entry.kind, doc.images[i]};
  }
  return std::nullopt;
}

platform::Outcome PasteObject(LayoutDocument& doc, const CopiedObject& copied, double offsetCm, double pageWidthCm,
                              double pageHeightCm) {
  const Placement placement{offsetCm, pageWidthCm, pageHeightCm};
  auto object = copied.object;
  std::visit([&](auto& o) { Move(o, placement); }, object);
  switch (copied.kind) {
    case ObjectKind::Text: return AddText(doc, std::get<LayoutText>(object));
    case ObjectKind::Line: return AddLine(doc, std::get<LayoutLine>(object));
    case ObjectKind::Circle: return AddCircle(doc, std::get<LayoutShape>(object));
    case ObjectKind::Rectangle: return AddRectangle(doc, std::get<LayoutShape>(object));
    case ObjectKind::Image: return AddImage(doc, std::get<LayoutImage>(object));
  }
  return {};
}

}  // namespace velk::layout
