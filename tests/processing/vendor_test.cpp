// The pieces of the spectrometer's recipe against known answers: window shapes at their defining
// points, Burg extension of a sum of damped exponentials, and a trace whose time zero lies a
// fraction of a point inside the data coming out absorptive, turned by the stored phase.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>

#include "processing/burg_prediction.h"
#include "processing/vendor_sequence.h"
#include "processing/vendor_window.h"

namespace velk::processing {
namespace {

using cd = std::complex<double>;
constexpr double kPi = std::numbers::pi;

TEST(VendorWindow, ShapesAtTheirDefiningPoints) {
  model::VendorAxisRecipe r;
  const double sw = 1000;
  r.window = model::kVendorExponential;
  r.lb = 3;
  auto w = VendorWindowCurve(r, sw, 200);
  EXPECT_NEAR(w[100], std::exp(-kPi * 3 * 0.1), 1e-6);

  r.window = model::kVendorGaussian;  // LB -2, the maximum at 0.25 of the acquisition time
  r.lb = -2;
  r.gb = 0.25;
  w = VendorWindowCurve(r, sw, 200);
  EXPECT_EQ(std::max_element(w.begin(), w.end()) - w.begin(), 50);
  EXPECT_FLOAT_EQ(w[0], 1.0f);

  r.window = model::kVendorSquaredSine;  // SSB 2: a squared cosine from 1 to 0
  r.ssb = 2;
  w = VendorWindowCurve(r, sw, 200);
  EXPECT_FLOAT_EQ(w[0], 1.0f);
  EXPECT_NEAR(w[100], 0.5, 1e-6);
  EXPECT_LT(w[199], 1e-3);

  r.window = model::kVendorSine;  // SSB 0 and 1: the plain bell, 0 at the start, 1 halfway
  for (double ssb : {0.0, 1.0}) {
    r.ssb = ssb;
    w = VendorWindowCurve(r, sw, 200);
    EXPECT_FLOAT_EQ(w[0], 0.0f);
    EXPECT_NEAR(w[100], 1.0, 1e-6);
  }

  r.window = model::kVendorTrapezoid;  // rise over 20 ms, fall over the last 50 ms of 200
  r.tm1 = 0.02;
  r.tm2 = 0.15;
  w = VendorWindowCurve(r, sw, 200);
  EXPECT_NEAR(w[10], 0.5, 1e-6);
  EXPECT_FLOAT_EQ(w[100], 1.0f);
  EXPECT_NEAR(w[175], 0.5, 1e-6);

  r.window = model::kVendorNoWindow;
  w = VendorWindowCurve(r, sw, 5);
  EXPECT_EQ(w, std::vector<float>(5, 1.0f));
}

// Burg's fit is exact for one undamped line, close for several (its known frequency bias makes the
// error grow slowly with the distance predicted) and never grows: an extension of a decaying
// signal stays below the signal's start.
TEST(BurgPrediction, ExtendsLinesFourfoldAndStaysBounded) {
  const auto lines = [](int k, double decay) {
    return 2.0 * std::exp(cd(-decay, 0.7) * double(k)) + cd(0, 1) * std::exp(cd(-decay, -1.9) * double(k)) +
           0.5 * std::exp(cd(-decay, 0.05) * double(k));
  };
  std::vector<cd> x(256);
  for (int k = 0; k < 64; ++k) x[k] = std::exp(cd(0, 0.3) * double(k));
  BurgExtend(x.data(), 64, 256, 4);
  EXPECT_LT(std::abs(x[255] - std::exp(cd(0, 0.3) * 255.0)), 1e-9);
  for (int k = 0; k < 64; ++k) x[k] = lines(k, 0);
  BurgExtend(x.data(), 64, 256, 8);
  for (int k : {64, 100}) EXPECT_LT(std::abs(x[k] - lines(k, 0)), 1e-2) << k;
  for (int k : {200, 255}) EXPECT_LT(std::abs(x[k] - lines(k, 0)), 0.05 * 3.5) << k;
  for (int k = 0; k < 64; ++k) x[k] = lines(k, 0.05);
  BurgExtend(x.data(), 64, 256, 8);
  EXPECT_LT(std::abs(x[64] - lines(64, 0.05)), 0.1);
  for (int k = 64; k < 256; ++k) EXPECT_LT(std::abs(x[k]), std::abs(x[0])) << k;
  // Too short a signal for the order asked: the order it allows, and nothing breaks.
  std::vector<cd> y{1.0, 0.5, 0.25, 0, 0};
  BurgExtend(y.data(), 3, 5, 16);
  EXPECT_TRUE(std::isfinite(std::abs(y[4])));
  EXPECT_LT(std::abs(y[4]), 0.25);
}

// A line at bin +32 of 256 whose time zero is 67.3 points into the data: with the whole points
// moved behind the zero fill and the fraction as first-order phase it is absorptive, and a stored
// PHC0 of 90 turns it to -i (the stored phase is applied as exp(-i PHC0)).
TEST(VendorTrace, FilterDelayComesOutAbsorptiveAndTheStoredPhaseTurnsIt) {
  const int n = 256, points = 256;
  const double delay = 67.3;
  std::vector<float> re(n), im(n);
  for (int k = 0; k < points; ++k) {
    const cd v = std::exp(cd(-0.01, 2 * kPi * 32 / n) * (k - delay));
    re[k] = static_cast<float>(v.real());
    im[k] = static_cast<float>(v.imag());
  }
  for (double phc0 : {0.0, 90.0}) {
    VendorTracePlan plan;
    plan.points = plan.predictTo = points;
    plan.size = n;
    plan.onset = 67;
    plan.window.assign(points - plan.onset, 1.0f);
    plan.firstPoint = 0.5f;  // the first point of a transform counts half
    VendorRotation(plan, phc0, 0, delay - plan.onset, 0);
    std::vector<float> r = re, i = im;
    std::vector<cd> scratch;
    VendorTransformTrace(plan, r.data(), i.data(), 1, scratch);
    const int peak = n / 2 + 32;
    const double height = std::hypot(r[peak], i[peak]);
    if (phc0 == 0) {
      EXPECT_GT(r[peak], 0.999 * height);
      EXPECT_LT(std::fabs(r[peak - 20]), 0.02 * height);  // no dispersive wings
    } else {
      EXPECT_LT(i[peak], -0.999 * height);
    }
  }
}

}  // namespace
}  // namespace velk::processing
