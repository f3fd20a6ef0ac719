#pragma once
// Synthetic RR planes with peaks of known place, shape and sign, for the peak tests.
#include <cmath>
#include <vector>

#include "model/spectrum.h"

namespace velk::test {

struct TruePeak {
  double col, row;  // centre in points, fractions allowed
  double height;    // signed
  double width;     // full width at half height, points
  bool gaussian = false;
};

inline double Shape(const TruePeak& p, double d) {
  const double x = d / (p.width / 2);
  return p.gaussian ? std::exp(-std::log(2.0) * x * x) : 1 / (1 + x * x);
}

// columns x rows points, 10 Hz per point in F2 and 5 Hz in F1, ppm from 0 at index 0.
inline model::Spectrum2D PeakSpectrum(int columns, int rows, const std::vector<TruePeak>& peaks) {
  model::Spectrum2D s;
  s.axis[model::F2].Point = columns;
  s.axis[model::F1].Point = rows;
  s.axis[model::F2].Resolution = 10;
  s.axis[model::F1].Resolution = 5;
  for (int a : {model::F1, model::F2}) {
    s.axis[a].Frequency = static_cast<float>(s.axis[a].Resolution * s.axis[a].Point);
    s.extras[a].absFreq0ppm = 100;
    s.extras[a].ppmStep = s.axis[a].Resolution / 100;
  }
  model::AllocateSpectrum2D(s, columns, rows);
  model::RebuildPpmTables(s);
  for (int r = 0; r < rows; ++r)
    for (int c = 0; c < columns; ++c) {
      double v = 0;
      for (const TruePeak& p : peaks) v += p.height * Shape(p, c - p.col) * Shape(p, r - p.row);
      s.RR.at(c, r) = static_cast<float>(v);
    }
  return s;
}

}  // namespace velk::test
