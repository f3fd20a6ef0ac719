#pragma once
// Synthetic 2D spectra with peaks of known place, height and sign, for the display tests and the
// benchmarks.
#include <memory>
#include <vector>

#include "model/spectrum.h"

namespace velk::test {

struct Peak2D {
  double f2Ppm, f1Ppm;
  double height;   // signed
  double widthPpm; // Lorentzian half width at half height, both axes
};

// cols x rows points, both axes from 0 ppm (index 0) to 10 ppm, RR only; IR holds a dispersive
// companion so that the magnitude kinds see the peaks too. Noise of the given size is added.
std::unique_ptr<model::Spectrum2D> MakeSynthetic2D(int cols, int rows, const std::vector<Peak2D>& peaks,
                                                   double noise = 0.0);

// A crowded spectrum: n peaks of both signs spread over the plane, the largest of height 1.
std::vector<Peak2D> ManyPeaks(int n);

}  // namespace velk::test
