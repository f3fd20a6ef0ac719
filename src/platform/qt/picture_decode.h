#pragma once
// Pictures of page image objects turned into pixels: PNG, JPEG, BMP and the other raster formats
// Qt reads, and SVG drawn at the size asked for.
#include <cstdint>
#include <optional>
#include <span>

#include "platform/surface.h"

namespace velk::platform::qt {

// The picture scaled to width x height; nothing when the bytes are no picture Qt can read.
std::optional<Image> DecodePicture(std::span<const std::uint8_t> bytes, int width, int height);

// The picture's height over its width; 0 when the bytes can't be read.
double PictureAspect(std::span<const std::uint8_t> bytes);

}  // namespace velk::platform::qt
