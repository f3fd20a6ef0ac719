#pragma once
// Pieces shared by the plane transforms (transforms.cpp, fast_transforms.cpp).
#include <cmath>
#include <vector>

#include "processing/transforms.h"

namespace velk::processing {

inline constexpr double kDegree = 0.0174532925199433;

struct Rotation {
  std::vector<double> cosine, sine;  // empty when the rotation is off
};

inline Rotation MakeRotation(const PhaseRotation& p, std::int32_t n) {
  Rotation r;
  if (!p.on) return r;
  r.cosine.resize(n);
  r.sine.resize(n);
  for (std::int32_t i = 0; i < n; ++i) {
    const double angle = (p.phase0 + (i - p.pivot) * p.phase1 / n) * kDegree;
    r.cosine[i] = std::cos(angle);
    r.sine[i] = std::sin(angle);
  }
  return r;
}

// Stores (x, y) at point m, rotated when the rotation is on; the same arithmetic as a separate pass.
inline void Put(const Rotation& r, std::int32_t m, float x, float y, float& outX, float& outY) {
  if (r.cosine.empty()) {
    outX = x;
    outY = y;
  } else {
    outX = static_cast<float>(x * r.cosine[m] - y * r.sine[m]);
    outY = static_cast<float>(x * r.sine[m] + y * r.cosine[m]);
  }
}

inline platform::Progress& ProgressOf(const Workers& w) {
  static platform::NoProgress none;
  return w.progress ? *w.progress : none;
}

}  // namespace velk::processing
