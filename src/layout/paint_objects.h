#pragma once
// Painting the annotation objects of a page onto a surface, back to front.
#include "layout/layout_document.h"
#include "platform/surface.h"

namespace velk::layout {

// How page units become device units.
struct PageScale {
  double pixelsPerCm = 1;      // positions and frames
  double pixelsPerUnit = 1;    // stored line widths and head lengths
  double pixelsPerPoint = 1;   // text sizes
  double originX = 0, originY = 0;  // where the page's corner lies on the surface
};

// One arrow or line: the rod from where a head begins, so that the tip stays on the end point;
// open heads for the first family, solid heads in the rod colour for the second, heads in the
// fill colour for the third and hollow heads for the fourth. The pattern applies to the first
// family only. With erase the colours become white.
void DrawArrow(platform::Surface& surface, const LayoutLine& line, const PageScale& scale, bool erase = false);

// Paints every live object in the repaired draw order. Images have no picture bytes in the
// document; their slots are left empty. Returns the repaired order (its flag says whether the
// painter should warn once).
PaintOrder PaintObjects(platform::Surface& surface, const LayoutDocument& doc, const PageScale& scale);

}  // namespace velk::layout
