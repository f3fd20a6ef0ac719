#pragma once
// The processing the spectrometer's own software applied to a data set, as its processing
// parameter files record it: per axis the zero fill, window, points used, phase, first-point
// factor and forward prediction; the F1 scheme it used and the scale of its stored integers.
#include <array>
#include <cstdint>
#include <string>

namespace velk::model {

// Window shapes as the Bruker processing files number them (WDW), and Varian's product of the
// terms that are switched on: exponential (lb), Gaussian (gf, gfs) and sine bell (sb, sbs).
enum VendorWindow : int {
  kVendorNoWindow = 0, kVendorExponential = 1, kVendorGaussian = 2, kVendorSine = 3, kVendorSquaredSine = 4,
  kVendorTrapezoid = 5, kVendorCombined = 100
};

// Whose software wrote the recipe: it decides the names the recipe is shown with.
enum VendorFamily : int { kBrukerRecipe = 0, kVarianRecipe = 1 };

struct VendorAxisRecipe {
  std::int32_t si = 0;         // real points of the spectrum (its complex size is si)
  int window = kVendorNoWindow;
  double lb = 0;               // Hz; negative with the Gaussian
  double gb = 0;               // fraction of the acquisition time where the Gaussian peaks
  double ssb = 0;              // sine shift: the bell starts at pi / ssb (0 and 1: pure sine)
  double tm1 = 0, tm2 = 0;     // trapezoid rise and fall, seconds from the start
  // The combined window's terms in seconds, 0 leaving a term out: the sine bell rises over |sb|
  // from sbs on (squared when sb is negative), the Gaussian is exp(-((t - gfs) / gf)^2).
  double sb = 0, sbs = 0, gf = 0, gfs = 0;
  std::int32_t leftShift = 0;  // complex points dropped from the start (negative: zeros put in front)
  std::int32_t tdEff = 0;      // real points used (0: all)
  double phc0 = 0, phc1 = 0;   // degrees, totals after any automatic phasing
  double fcor = 1;             // factor of the first point
  int predictionMode = 0;      // ME_mod: 0 none, 1 forward real, 2 forward complex, 3/4 backward
  std::int32_t ncoef = 0;      // prediction coefficients (the complex order is half of them)
  std::int32_t lpbin = 0;      // points after prediction (0: twice the acquired points)
  int phaseMode = 0;           // PH_mod: 0 none, 1 phased, 2 magnitude, 3 power
  int ftMode = -1;             // FT_mod: 0 the axis was not transformed (a series along it); -1 not given
};

struct VendorRecipe {
  std::array<VendorAxisRecipe, 2> axis;  // indexed by model::F1, model::F2
  int f1Scheme = 0;       // MC2: 0 QF, 1 QSEQ, 2 TPPI, 3 States, 4 States-TPPI, 5 echo/anti-echo
  std::int32_t scaleExponent = 0;  // NC_proc: stored integers are the spectrum / 2^NC_proc
  int family = kBrukerRecipe;
  std::string source;     // the folder or file the recipe was read from
};

}  // namespace velk::model
