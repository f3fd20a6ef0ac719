#include "support/synthetic_inadequate.h"

#include <cmath>

namespace velk::test {
namespace {

double Bump(double d) { return std::exp(-d * d / 1.5); }

}  // namespace

model::Spectrum2D FoldedInadequateSet() {
  model::Spectrum2D s;
  for (int a : {model::F1, model::F2}) {
    s.axis[a].Point = 128;
    s.axis[a].Resolution = 10;
    s.axis[a].Frequency = 1280;
    s.extras[a].absFreq0ppm = 100;
    s.extras[a].ppmStep = 0.1;
  }
  model::AllocateSpectrum2D(s, 128, 128);
  model::RebuildPpmTables(s);
  for (int r = 0; r < 128; ++r)
    for (int c = 0; c < 128; ++c) {
      double v = 0;
      for (const CarbonPair& p : kCarbonPairs) {
        const int folded = (p.a + p.b - 64 + 128) % 128;
        const double dr = std::remainder(r - folded, 128.0);  // folded data repeat in F1
        v += (Bump(c - p.a) + Bump(c - p.b)) * Bump(dr);
      }
      s.RR.at(c, r) = static_cast<float>(v);
      s.IR.at(c, r) = s.RI.at(c, r) = s.II.at(c, r) = -0.5f * s.RR.at(c, r);
    }
  s.peaks.peaks.push_back({30, 16, 300.0f, 160.0f, 0, 0, 1.0f});
  s.InadequateMode = 1;
  return s;
}

}  // namespace velk::test
