#include "layout/layout_document.h"

#include <algorithm>

#include "layout/messages.h"

namespace velk::layout {
namespace {

platform::Outcome Refused(std::string_view text, std::string_view title) {
  platform::Message m{std::string(title), std::string(text), platform::Buttons::Ok, platform::Icon::Warning, true};
  return {1, m};
}

template <class T>
platform::Outcome Append(LayoutDocument& doc, std::vector<T>& table, const T& object, std::size_t limit,
                         ObjectKind kind, std::string_view text, std::string_view title) {
  if (table.size() >= limit) return Refused(text, title);
  table.push_back(object);
  doc.drawOrder.push_back({kind, static_cast<std::int32_t>(table.size() - 1)});
  return {};
}

std::size_t CountOf(const LayoutDocument& doc, ObjectKind kind) {
  switch (kind) {
    case ObjectKind::Image: return kImageTableSize;
    case ObjectKind::Circle: return doc.circles.size();
    case ObjectKind::Rectangle: return doc.rectangles.size();
    case ObjectKind::Line: return doc.lines.size();
    case ObjectKind::Text: return doc.texts.size();
  }
  return 0;
}

template <class T>
void EraseAt(std::vector<T>& table, std::int32_t index) {
  table.erase(table.begin() + index);
}

}  // namespace

platform::Outcome AddText(LayoutDocument& doc, const LayoutText& text) {
  return Append(doc, doc.texts, text, kMaxTexts, ObjectKind::Text, messages::kTextFull, {});
}
platform::Outcome AddLine(LayoutDocument& doc, const LayoutLine& line) {
  return Append(doc, doc.lines, line, kMaxLines, ObjectKind::Line, messages::kLineFull, messages::kLineFullTitle);
}
platform::Outcome AddCircle(LayoutDocument& doc, const LayoutCircle& circle) {
  return Append(doc, doc.circles, circle, kMaxCircles, ObjectKind::Circle, messages::kCircleFull,
                messages::kCircleFullTitle);
}
platform::Outcome AddRectangle(LayoutDocument& doc, const LayoutRectangle& rectangle) {
  return Append(doc, doc.rectangles, rectangle, kMaxRectangles, ObjectKind::Rectangle, messages::kRectangleFull, {});
}

platform::Outcome AddImage(LayoutDocument& doc, const LayoutImage& image) {
  for (int slot = kFirstImageSlot; slot <= kLastImageSlot; ++slot) {
    if (!doc.images[slot].free()) continue;
    doc.images[slot] = image;
    if (doc.images[slot].free()) doc.images[slot].Kind = 0;  // a placed image is never a free slot
    doc.drawOrder.push_back({ObjectKind::Image, slot});
    return {};
  }
  return Refused(messages::kImageFull, messages::kImageFullTitle);
}

bool IsLive(const LayoutDocument& doc, DrawOrderEntry object) {
  if (object.index < 0 || static_cast<std::size_t>(object.index) >= CountOf(doc, object.kind)) return false;
  if (object.kind == ObjectKind::Image)
    return object.index >= kFirstImageSlot && object.index <= kLastImageSlot && !doc.images[object.index].free();
  return true;
}

void DeleteObject(LayoutDocument& doc, DrawOrderEntry object) {
  if (!IsLive(doc, object)) return;
  switch (object.kind) {
    case ObjectKind::Image: doc.images[object.index] = LayoutImage{}; break;
    case ObjectKind::Circle: EraseAt(doc.circles, object.index); break;
    case ObjectKind::Rectangle: EraseAt(doc.rectangles, object.index); break;
    case ObjectKind::Line: EraseAt(doc.lines, object.index); break;
    case ObjectKind::Text: EraseAt(doc.texts, object.index); break;
  }
  std::erase(doc.drawOrder, object);
  if (object.kind == ObjectKind::Image) return;
  for (DrawOrderEntry& entry : doc.drawOrder)
    if (entry.kind == object.kind && entry.index > object.index) --entry.index;
}

void MoveToFront(LayoutDocument& doc, DrawOrderEntry object) {
  if (!IsLive(doc, object)) return;
  std::erase(doc.drawOrder, object);
  doc.drawOrder.push_back(object);
}

void MoveToBack(LayoutDocument& doc, DrawOrderEntry object) {
  if (!IsLive(doc, object)) return;
  std::erase(doc.drawOrder, object);
  doc.drawOrder.insert(doc.drawOrder.begin(), object);
}

PaintOrder ResolveDrawOrder(const LayoutDocument& doc) {
  PaintOrder result;
  std::vector<DrawOrderEntry> seen;
  for (const DrawOrderEntry& entry : doc.drawOrder) {
    if (!IsLive(doc, entry) || std::find(seen.begin(), seen.end(), entry) != seen.end()) {
      result.consistent = false;
      continue;
    }
    seen.push_back(entry);
  }
  result.order = seen;
  for (ObjectKind kind : {ObjectKind::Image, ObjectKind::Circle, ObjectKind::Rectangle, ObjectKind::Line,
                          ObjectKind::Text}) {
    for (std::int32_t index = 0; static_cast<std::size_t>(index) < CountOf(doc, kind); ++index) {
      const DrawOrderEntry entry{kind, index};
      if (!IsLive(doc, entry) || std::find(seen.begin(), seen.end(), entry) != seen.end()) continue;
      result.order.push_back(entry);
      result.consistent = false;
    }
  }
  return result;
}

platform::Message DrawOrderWarning() {
  return {std::string(messages::kDrawOrderErrorTitle), std::string(messages::kDrawOrderError), platform::Buttons::Ok,
          platform::Icon::Warning, false};
}

}  // namespace velk::layout
