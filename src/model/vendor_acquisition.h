#pragma once
// Acquisition facts of vendor files that the transform needs beyond the JEOL-keyed parameter block:
// the digital filter of the receiver, the quadrature scheme of F1, and the vendor's parameter tables.
#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "model/vendor_recipe.h"

namespace velk::model {

// F1 quadrature schemes as the Bruker parameter files number them.
enum QuadratureF1 : int {
  kQuadUndefined = 0, kQuadQF = 1, kQuadQSEQ = 2, kQuadTPPI = 3, kQuadStates = 4, kQuadStatesTPPI = 5,
  kQuadEchoAntiecho = 6
};

struct VendorAcquisition {
  double groupDelay = 0;  // digital filter delay in points (GRPDLY); 0 when the file has none
  std::int32_t decimation = 0;  // DECIM
  std::int32_t filterVersion = 0;  // DSPFVS
  int quadratureF1 = kQuadUndefined;  // FnMODE of the F1 parameter file
  bool echoAntiechoCombined = false;
  std::optional<VendorRecipe> recipe;
  // A pseudo-2D set (relaxation or diffusion series): 1D spectra stacked along a list, named here
  // ("t1ir, vdlist"); empty for a set with two frequency axes.
  std::string series;  // the processing stored beside raw data (pdata/N)  // echo/anti-echo row pairs were turned into cosine/sine pairs on reading
  // Tables indexed 1..31 as the files index them (element 0 unused).
  std::array<float, 32> pulses{}, delays{}, constants{}, increments{};
};

}  // namespace velk::model
