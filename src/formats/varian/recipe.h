#pragma once
// What a Varian procpar says beyond the acquisition: the channel of the F1 axis, the processing
// the spectrometer's software applies (windows, Fourier numbers, phases, FID left shift), and
// whether the increments were sampled non-uniformly.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "formats/varian/procpar.h"
#include "model/vendor_recipe.h"

namespace velk::formats::varian {

// The channel F1 was evolved on: refsource1 names it ("sfrq" the observe channel tn, "dfrq" the
// decoupler dn, "dfrq2" the second decoupler dn2) and reffrq1 is its 0 ppm frequency. Only without
// refsource1 does dn decide (a dn that is neither tn nor "nul" makes a heteronuclear F1).
struct F1Channel {
  std::string nucleus;   // normalised
  double mhz = 0;        // the channel's frequency
  double zeroPpmMhz = 0; // reffrq1, or the channel's frequency
  bool heteronuclear = false;
};
F1Channel F1ChannelOf(const VarianParameters& p);

// The recipe of a raw 2D set of f2Points x f1Points complex points, or nothing when the procpar
// holds no processing parameters. Fourier numbers count real and imaginary values (fn 4096 is a
// 2048-point spectrum); an inactive ('n') parameter leaves its term out. The stored phases are
// kept in the form the transform applies to every recipe: rp + lp at the high-frequency edge
// falling to rp at the low-frequency edge, as phc0 = rp + lp, phc1 = -lp. Forward prediction of
// F1 (proc1 'lp') extends the increments from all of them, to strtext1 - 1 + lpext1 points.
std::optional<model::VendorRecipe> VarianRecipe(const VarianParameters& p, std::int32_t f2Points,
                                                std::int32_t f1Points, const std::string& source);

// Why the increments were not sampled at even steps (sampling 'sparse', a schedule file beside
// the data), or nothing.
std::string NonUniformSamplingOf(const VarianParameters& p, const std::filesystem::path& folder);

}  // namespace velk::formats::varian
