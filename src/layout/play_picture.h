#pragma once
// Pictures of image objects played into their frame on the page: enhanced metafiles, plain
// Windows metafiles, and plain metafiles behind a placeable header.
#include <cstdint>
#include <filesystem>
#include <span>

#include "platform/surface.h"

namespace velk::layout {

// The frame of the picture on the surface, in device units.
struct PictureFrame {
  int x = 0, y = 0, width = 0, height = 0;
};

// Tries an enhanced metafile first, then a plain metafile, then the placeable header (key
// 0x9AC6CDD7, the metafile from byte 22 on, whose type word must be 1 or 2). The picture is
// stretched to the frame: an enhanced metafile's bounds, a plain metafile's window (or the
// placeable header's box, or what is drawn) become the frame. Returns 0 when played, 1 when the
// bytes are no picture of these kinds or are damaged; nothing is drawn then. Every offset is
// checked against the bytes.
int PlayPicture(platform::Surface& surface, std::span<const std::uint8_t> bytes, const PictureFrame& frame);

// The same for a file; -1 when it cannot be read or is larger than a picture may be.
int PlayPicture(platform::Surface& surface, const std::filesystem::path& file, const PictureFrame& frame);

}  // namespace velk::layout
