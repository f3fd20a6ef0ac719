#include "support/synthetic_2d.h"

#include <algorithm>
#include <cmath>

namespace velk::test {

std::unique_ptr<model::Spectrum2D> MakeSynthetic2D(int cols, int rows, const std::vector<Peak2D>& peaks,
                                                   double noise) {
  auto s = std::make_unique<model::Spectrum2D>();
  if (model::AllocateSpectrum2D(*s, cols, rows) != 0) return nullptr;
  s->axis[model::F2].Point = cols;
  s->axis[model::F1].Point = rows;
  s->extras[model::F2].nucleus = "1H";
  s->extras[model::F1].nucleus = "1H";
  const double stepF2 = 10.0 / (cols - 1), stepF1 = 10.0 / (rows - 1);
  for (int c = 0; c < cols; ++c) s->ppmF2[c] = static_cast<float>(c * stepF2);
  for (int r = 0; r < rows; ++r) s->ppmF1[r] = static_cast<float>(r * stepF1);
  // A 500 MHz proton on both axes: 10 ppm is 5000 Hz.
  for (int a : {model::F1, model::F2}) {
    const int n = s->axis[a].Point;
    s->axis[a].Frequency = 5000.0f;
    s->axis[a].Resolution = 5000.0 / n;
    s->extras[a].absFreqCenter = 500.0;
    s->extras[a].absFreq0ppm = 500.0;
    s->extras[a].ppmFirst = 0.0;
    s->extras[a].ppmStep = 10.0 / (n - 1);
  }
  for (const Peak2D& p : peaks) {
    // Each peak is written out to 40 half widths, far below any contour level.
    const int c0 = std::max(0, static_cast<int>((p.f2Ppm - 40 * p.widthPpm) / stepF2));
    const int c1 = std::min(cols - 1, static_cast<int>((p.f2Ppm + 40 * p.widthPpm) / stepF2));
    const int r0 = std::max(0, static_cast<int>((p.f1Ppm - 40 * p.widthPpm) / stepF1));
    const int r1 = std::min(rows - 1, static_cast<int>((p.f1Ppm + 40 * p.widthPpm) / stepF1));
    const double w2 = p.widthPpm * p.widthPpm;
    for (int r = r0; r <= r1; ++r) {
      const double y = r * stepF1 - p.f1Ppm;
      for (int c = c0; c <= c1; ++c) {
        const double x = c * stepF2 - p.f2Ppm;
        const double absorptive = w2 / (x * x + w2) * w2 / (y * y + w2);
        s->RR.at(c, r) += static_cast<float>(p.height * absorptive);
        s->IR.at(c, r) += static_cast<float>(p.height * absorptive * x / p.widthPpm);
      }
    }
  }
  unsigned seed = 2024;
  for (int r = 0; noise > 0 && r < rows; ++r)
    for (int c = 0; c < cols; ++c) {
      seed = seed * 1664525u + 1013904223u;
      s->RR.at(c, r) += static_cast<float>(noise * ((seed >> 8) / 16777216.0 - 0.5));
    }
  return s;
}

std::vector<Peak2D> ManyPeaks(int n) {
  std::vector<Peak2D> peaks;
  unsigned seed = 7;
  const auto next = [&] {
    seed = seed * 1664525u + 1013904223u;
    return (seed >> 8) / 16777216.0;
  };
  for (int i = 0; i < n; ++i) {
    const double height = (i == 0 ? 1.0 : 0.15 + 0.8 * next()) * (i % 3 == 2 ? -1 : 1);
    peaks.push_back({0.5 + 9 * next(), 0.5 + 9 * next(), height, 0.01 + 0.03 * next()});
  }
  return peaks;
}

}  // namespace velk::test
