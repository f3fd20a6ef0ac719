#include "processing/vendor_window.h"

#include <cmath>
#include <numbers>

namespace velk::processing {
namespace {

// Varian's terms multiply; the sine bell is a quarter period long over |sb| (its top at sbs + |sb|)
// and is 0 outside its positive half period.
double CombinedWindow(const model::VendorAxisRecipe& r, double t) {
  constexpr double pi = std::numbers::pi;
  double v = std::exp(-pi * r.lb * t);
  if (r.gf > 0) {
    const double x = (t - r.gfs) / r.gf;
    v *= std::exp(-x * x);
  }
  if (r.sb != 0) {
    const double u = (t - r.sbs) / std::fabs(r.sb);
    const double bell = u >= 0 && u <= 2 ? std::sin(pi / 2 * u) : 0.0;
    v *= r.sb > 0 ? bell : bell * bell;
  }
  return v;
}

}  // namespace

std::vector<float> VendorWindowCurve(const model::VendorAxisRecipe& r, double swHz, std::int32_t points) {
  std::vector<float> w(static_cast<std::size_t>(std::max(points, 0)), 1.0f);
  if (points <= 0 || !(swHz > 0)) return w;
  constexpr double pi = std::numbers::pi;
  const double aq = points / swHz;
  // The sine family starts at pi / SSB; SSB below 2 is the plain bell from 0.
  const double start = r.ssb >= 2 ? pi / r.ssb : 0.0;
  for (std::int32_t i = 0; i < points; ++i) {
    const double t = i / swHz;
    double v = 1;
    switch (r.window) {
      case model::kVendorExponential: v = std::exp(-pi * r.lb * t); break;
      case model::kVendorGaussian: {
        // exp(-a t - b t^2) with a = pi LB (LB negative) and its maximum at GB times the time.
        const double a = pi * r.lb;
        const double b = r.gb > 0 ? -a / (2 * r.gb * aq) : 0.0;
        v = std::exp(-a * t - b * t * t);
        break;
      }
      case model::kVendorSine:
      case model::kVendorSquaredSine: {
        const double s = std::sin((pi - start) * i / points + start);
        v = r.window == model::kVendorSine ? s : s * s;
        break;
      }
      case model::kVendorCombined: v = CombinedWindow(r, t); break;
      case model::kVendorTrapezoid:
        if (r.tm1 > 0 && t < r.tm1) v = t / r.tm1;
        else if (r.tm2 > 0 && r.tm2 < aq && t > r.tm2) v = (aq - t) / (aq - r.tm2);
        break;
      default: break;
    }
    w[static_cast<std::size_t>(i)] = static_cast<float>(v);
  }
  return w;
}

}  // namespace velk::processing
