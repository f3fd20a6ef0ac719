#include "formats/fid_scaling.h"

#include <algorithm>
#include <cmath>

namespace velk::formats {
namespace {

float TailMean(std::span<const float> values, std::size_t n) {
  double sum = 0;
  for (std::size_t i = values.size() - n; i < values.size(); ++i) sum += values[i];
  return static_cast<float>(sum / static_cast<double>(n));
}

}  // namespace

float RemoveTailAndScale(std::span<float> re, std::span<float> im, float floor) {
  const std::size_t points = std::min(re.size(), im.size());
  const std::size_t n = static_cast<std::size_t>(std::nearbyint(0.4 * static_cast<double>(points)));
  if (n > 0) {
    const float meanRe = TailMean(re.first(points), n);
    const float meanIm = TailMean(im.first(points), n);
    for (std::size_t i = 0; i < points; ++i) {
      re[i] -= meanRe;
      im[i] -= meanIm;
    }
  }
  float maximum = floor;
  for (std::size_t i = 0; i < points; ++i) maximum = std::max(maximum, std::fabs(re[i]));
  for (std::size_t i = 0; i < points; ++i) {
    re[i] /= maximum;
    im[i] /= maximum;
  }
  return maximum;
}

std::int32_t PaddedFidSize(std::int64_t count) {
  std::int64_t size = 2;
  while (size < count) size *= 2;
  return static_cast<std::int32_t>(size);
}

}  // namespace velk::formats
