#include <algorithm>
#include <cstring>
#include <string_view>

#include "layout/layout_objects.h"

namespace velk::layout {

PictureBytes MakePictureBytes(std::vector<std::uint8_t> bytes) {
  return {std::make_shared<const std::vector<std::uint8_t>>(std::move(bytes))};
}

PictureKind SniffPicture(const std::vector<std::uint8_t>& b) {
  const auto starts = [&](std::string_view mark, std::size_t at = 0) {
    return b.size() >= at + mark.size() && std::memcmp(b.data() + at, mark.data(), mark.size()) == 0;
  };
  if (starts("\x89PNG\r\n\x1a\n")) return PictureKind::Png;
  if (starts("\xFF\xD8\xFF")) return PictureKind::Jpeg;
  if (starts("BM")) return PictureKind::Bitmap;
  if (starts("\xD7\xCD\xC6\x9A")) return PictureKind::PlaceableMetafile;
  if (starts(std::string_view("\x01\x00\x00\x00", 4)) && starts(" EMF", 40)) return PictureKind::EnhancedMetafile;
  if (starts(std::string_view("\x01\x00\x09\x00", 4)) || starts(std::string_view("\x02\x00\x09\x00", 4)))
    return PictureKind::Metafile;
  // SVG is text: look for its element near the start, after a declaration or comments.
  const std::string_view head(reinterpret_cast<const char*>(b.data()), std::min<std::size_t>(b.size(), 1024));
  if (head.find("<svg") != std::string_view::npos) return PictureKind::Svg;
  return PictureKind::Unknown;
}

}  // namespace velk::layout
