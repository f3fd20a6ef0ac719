#pragma once
// The page document: the annotation objects of one page and the order they are painted in.
// It belongs to the data set it was made for and is saved in the same Ver.4 file.
#include <array>
#include <vector>

#include "layout/layout_objects.h"
#include "platform/message.h"

namespace velk::layout {

struct LayoutDocument {
  std::vector<LayoutText> texts;
  std::vector<LayoutLine> lines;
  std::vector<LayoutCircle> circles;
  std::vector<LayoutRectangle> rectangles;
  std::array<LayoutImage, kImageTableSize> images{};  // slots 1 to 50 are used, each keeps its place
  std::vector<DrawOrderEntry> drawOrder;              // from back to front
  friend bool operator==(const LayoutDocument&, const LayoutDocument&) = default;
};

// A new object goes to the front. A full table refuses with a beep and its message, and the
// document stays as it was. AddImage puts the image into the first free slot.
platform::Outcome AddText(LayoutDocument& doc, const LayoutText& text);
platform::Outcome AddLine(LayoutDocument& doc, const LayoutLine& line);
platform::Outcome AddCircle(LayoutDocument& doc, const LayoutCircle& circle);
platform::Outcome AddRectangle(LayoutDocument& doc, const LayoutRectangle& rectangle);
platform::Outcome AddImage(LayoutDocument& doc, const LayoutImage& image);

// Removes an object: the tables close up behind it (images only free their slot) and the draw
// order follows.
void DeleteObject(LayoutDocument& doc, DrawOrderEntry object);
// Moves an object to the front or the back of the draw order.
void MoveToFront(LayoutDocument& doc, DrawOrderEntry object);
void MoveToBack(LayoutDocument& doc, DrawOrderEntry object);

bool IsLive(const LayoutDocument& doc, DrawOrderEntry object);

// The order to paint in: the draw order's pairs that name a live object, each once, then every
// object the list did not reach, images first, then circles, rectangles, lines and texts.
// `consistent` is false when the list had to be repaired; the painter warns once and keeps the
// repaired list.
struct PaintOrder {
  std::vector<DrawOrderEntry> order;
  bool consistent = true;
};
PaintOrder ResolveDrawOrder(const LayoutDocument& doc);
platform::Message DrawOrderWarning();

}  // namespace velk::layout
