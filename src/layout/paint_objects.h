#pragma once
// Painting the annotation objects of a page onto a surface, back to front.
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

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

// Turns picture bytes (PNG, JPEG, SVG ...) into pixels of the given size; nothing when they can't be
// decoded. The decoding belongs to the platform.
using PictureDecoder = std::function<std::optional<platform::Image>(std::span<const std::uint8_t>, int width, int height)>;

// The device rectangle of an image's frame (left, top, width, height), whichever corners were set.
struct DeviceRect {
  int x = 0, y = 0, width = 0, height = 0;
};
DeviceRect ImageRect(const LayoutImage& image, const PageScale& scale);

// Paints every live object in the repaired draw order. An image's picture is played into its frame
// when it is a metafile, else decoded by the platform; one that can't be, or that holds none, is
// not drawn. Returns the repaired order (its flag says whether the painter
// should warn once).
PaintOrder PaintObjects(platform::Surface& surface, const LayoutDocument& doc, const PageScale& scale,
                        const PictureDecoder* pictures = nullptr);

}  // namespace velk::layout
