#pragma once
// The corpus's raw Bruker sets transformed by our engine beside the vendor's own processed 2rr of
// the same experiment, and the peak tools that compare them.
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "model/spectrum.h"

namespace velk::test {

struct Peak {
  std::int32_t column = 0, row = 0;
  float height = 0;
};

// Points higher than their eight neighbours, highest first; height(column, row).
template <class Height>
std::vector<Peak> LocalMaxima(std::int32_t columns, std::int32_t rows, Height height) {
  std::vector<Peak> peaks;
  for (std::int32_t r = 1; r + 1 < rows; ++r)
    for (std::int32_t c = 1; c + 1 < columns; ++c) {
      const float h = height(c, r);
      bool highest = true;
      for (int dr = -1; dr <= 1 && highest; ++dr)
        for (int dc = -1; dc <= 1 && highest; ++dc)
          if ((dr || dc) && height(c + dc, r + dr) >= h) highest = false;
      if (highest) peaks.push_back({c, r, h});
    }
  std::sort(peaks.begin(), peaks.end(), [](const Peak& a, const Peak& b) { return a.height > b.height; });
  return peaks;
}

double Ppm(const model::Spectrum2D& s, int axis, double index);
std::int32_t IndexOf(const model::Spectrum2D& s, int axis, double ppm);

struct Processed {
  model::Spectrum2D vendor, ours;
  bool phaseSensitive = false;
  std::vector<Peak> vendorPeaks;  // the 20 strongest by |RR|
};

// The raw set as read (class as preselected) and transformed with default settings and zero
// phases, zero filled to the vendor's size where that is larger (or left at its own size).
Processed Process(const std::string& set, bool toVendorSize = true);

}  // namespace velk::test
