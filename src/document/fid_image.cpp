#include "document/fid_image.h"

#include <algorithm>
#include <cmath>

namespace velk::document {

FidImage MakeFidImage(const model::Spectrum2D& s, std::int32_t columns, std::int32_t rows, std::int32_t width,
                      std::int32_t height) {
  FidImage image;
  columns = std::min({columns, s.RR.stride, s.IR.stride});
  rows = std::min({rows, s.RR.rows, s.IR.rows});
  if (columns < 1 || rows < 1 || width < 1 || height < 1) return image;
  image.width = std::min(width, columns);
  image.height = std::min(height, rows);
  std::vector<float> largest(static_cast<std::size_t>(image.width) * image.height, 0.0f);
  for (std::int32_t r = 0; r < rows; ++r) {
    const std::int32_t y = static_cast<std::int32_t>(static_cast<std::int64_t>(r) * image.height / rows);
    float* line = largest.data() + static_cast<std::size_t>(y) * image.width;
    for (std::int32_t c = 0; c < columns; ++c) {
      const std::int32_t x = static_cast<std::int32_t>(static_cast<std::int64_t>(c) * image.width / columns);
      line[x] = std::max(line[x], std::hypot(s.RR.at(c, r), s.IR.at(c, r)));
    }
  }
  const float top = *std::max_element(largest.begin(), largest.end());
  image.level.resize(largest.size(), 0);
  if (!(top > 0)) return image;
  for (std::size_t i = 0; i < largest.size(); ++i)
    image.level[i] = static_cast<std::uint8_t>(std::lrint(255.0 * std::sqrt(largest[i] / top)));
  return image;
}

}  // namespace velk::document
