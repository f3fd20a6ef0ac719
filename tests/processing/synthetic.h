#pragma once
// Synthetic time signals with known frequencies and decays.
#include <cmath>
#include <complex>
#include <cstdint>
#include <vector>

#include "model/plane.h"

namespace velk::test {

struct Line {
  double cycles;  // frequency in cycles per point (-0.5 .. 0.5)
  double decay;   // per point
  double amplitude = 1;
  double phase = 0;  // radians
};

inline std::complex<double> SignalAt(const std::vector<Line>& lines, double t) {
  std::complex<double> sum;
  for (const Line& l : lines)
    sum += l.amplitude * std::exp(std::complex<double>(-l.decay * t, 2 * M_PI * l.cycles * t + l.phase));
  return sum;
}

inline model::Plane MakePlane(std::int32_t columns, std::int32_t rows) {
  model::Plane p;
  p.stride = columns;
  p.rows = rows;
  p.data.assign(static_cast<std::size_t>(columns) * rows, 0.0f);
  return p;
}

// The index of the largest value of |re + i im| over n points of a row or a column.
template <class Get>
std::int32_t PeakIndex(std::int32_t n, Get get) {
  std::int32_t best = 0;
  double largest = -1;
  for (std::int32_t i = 0; i < n; ++i) {
    const auto [re, im] = get(i);
    const double m = std::hypot(re, im);
    if (m > largest) {
      largest = m;
      best = i;
    }
  }
  return best;
}

}  // namespace velk::test
