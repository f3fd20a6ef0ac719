#pragma once
// The picture of an image object played into its frame: PNG and JPEG images and SVG drawings
// through Qt's readers, metafiles through the page's own player.
#include <cstdint>
#include <filesystem>
#include <span>

#include "layout/play_picture.h"

namespace velk::gui {

// 0 played, 1 when the bytes are no picture of a known kind or are damaged (nothing drawn).
int PlayImage(platform::Surface& surface, std::span<const std::uint8_t> bytes, const layout::PictureFrame& frame);
// The same for a file; -1 when it cannot be read or is too large.
int PlayImageFile(platform::Surface& surface, const std::filesystem::path& file, const layout::PictureFrame& frame);

}  // namespace velk::gui
