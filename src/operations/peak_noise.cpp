#include "operations/peak_noise.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "operations/peak_pick.h"

namespace velk::operations {
namespace {

constexpr std::int32_t kTile = 32;
constexpr double kMadToDeviation = 1.4826;  // the MAD of normal noise is 0.6745 of its deviation

double Median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

double EstimateNoise(const model::Spectrum2D& s) {
  const PeakPlane plane = PlaneOf(s);
  std::vector<double> deviations, tile;
  for (std::int32_t r0 = 0; r0 < plane.rows; r0 += kTile)
    for (std::int32_t c0 = 0; c0 < plane.columns; c0 += kTile) {
      tile.clear();
      for (std::int32_t r = r0; r < std::min(r0 + kTile, plane.rows); ++r)
        for (std::int32_t c = c0; c < std::min(c0 + kTile, plane.columns); ++c) tile.push_back(plane.rr.at(c, r));
      if (tile.size() < 16) continue;  // a sliver at the edge says little
      const double centre = Median(tile);
      for (double& v : tile) v = std::fabs(v - centre);
      deviations.push_back(kMadToDeviation * Median(tile));
    }
  return deviations.empty() ? 0.0 : Median(deviations);
}

float AutoThreshold(const model::Spectrum2D& s) {
  const double noise = EstimateNoise(s);
  return noise > 0 ? static_cast<float>(kAutoThresholdDeviations * noise) : s.LowerLimit;
}

}  // namespace velk::operations
