#pragma once
// A folded 2D-INADEQUATE set whose true places are known: 128 columns and 128 rows of 10 Hz, both
// spans equal. Each carbon pair (a, b) belongs at F1 row a + b of the doubled span, and appears
// folded at row (a + b - 64) mod 128. The set is marked INADEQUATE and carries one peak.
#include "model/spectrum.h"

namespace velk::test {

struct CarbonPair {
  int a, b;
};
inline constexpr CarbonPair kCarbonPairs[] = {{30, 50}, {40, 100}, {70, 105}, {25, 35}, {90, 100}};

model::Spectrum2D FoldedInadequateSet();

}  // namespace velk::test
