#include "processing/lp_solver.h"

#include <array>
#include <cmath>
#include <utility>

namespace velk::processing {

void ComplexMatMul(const ComplexMatrix& a, const ComplexMatrix& b, ComplexMatrix& out) {
  out.Resize(a.rows, b.columns);
  for (std::int32_t i = 0; i < a.rows; ++i) {
    float* outRe = out.re.data() + out.index(i, 0);
    float* outIm = out.im.data() + out.index(i, 0);
    for (std::int32_t l = 0; l < a.columns; ++l) {
      const float ar = a.re[a.index(i, l)];
      const float ai = a.im[a.index(i, l)];
      const float* br = b.re.data() + b.index(l, 0);
      const float* bi = b.im.data() + b.index(l, 0);
      for (std::int32_t j = 0; j < b.columns; ++j) {
        outRe[j] += ar * br[j] - ai * bi[j];
        outIm[j] += ar * bi[j] + ai * br[j];
      }
    }
  }
}

bool InvertComplexMatrix(ComplexMatrix& a, std::vector<std::int16_t>& permutation) {
  const std::int32_t n = a.rows;
  permutation.assign(n, 0);
  auto swapRows = [&](std::int32_t r1, std::int32_t r2) {
    for (std::int32_t c = 0; c < n; ++c) {
      std::swap(a.re[a.index(r1, c)], a.re[a.index(r2, c)]);
      std::swap(a.im[a.index(r1, c)], a.im[a.index(r2, c)]);
    }
  };
  for (std::int32_t j = 0; j < n; ++j) {
    std::int32_t pivot = j;
    double largest = -1;
    for (std::int32_t r = j; r < n; ++r) {
      const double modulus = std::hypot(static_cast<double>(a.re[a.index(r, j)]), a.im[a.index(r, j)]);
      if (modulus > largest) {
        largest = modulus;
        pivot = r;
      }
    }
    if (largest <= 1e-15) return false;
    if (pivot != j) swapRows(pivot, j);
    permutation[j] = static_cast<std::int16_t>(pivot);
    // 1 / pivot, then the pivot row scaled; its pivot element becomes that inverse.
    const double pr = a.re[a.index(j, j)], pi = a.im[a.index(j, j)];
    const double d = pr * pr + pi * pi;
    const double invRe = pr / d, invIm = -pi / d;
    a.re[a.index(j, j)] = 1.0f;
    a.im[a.index(j, j)] = 0.0f;
    for (std::int32_t c = 0; c < n; ++c) {
      const double xr = a.re[a.index(j, c)], xi = a.im[a.index(j, c)];
      a.re[a.index(j, c)] = static_cast<float>(xr * invRe - xi * invIm);
      a.im[a.index(j, c)] = static_cast<float>(xr * invIm + xi * invRe);
    }
    for (std::int32_t r = 0; r < n; ++r) {
      if (r == j) continue;
      const double fr = a.re[a.index(r, j)], fi = a.im[a.index(r, j)];
      a.re[a.index(r, j)] = 0.0f;
      a.im[a.index(r, j)] = 0.0f;
      for (std::int32_t c = 0; c < n; ++c) {
        const double xr = a.re[a.index(j, c)], xi = a.im[a.index(j, c)];
        a.re[a.index(r, c)] = static_cast<float>(a.re[a.index(r, c)] - (fr * xr - fi * xi));
        a.im[a.index(r, c)] = static_cast<float>(a.im[a.index(r, c)] - (fr * xi + fi * xr));
      }
    }
  }
  // Row exchanges of the elimination become column exchanges of the inverse, undone last to first.
  for (std::int32_t j = n - 1; j >= 0; --j) {
    const std::int32_t p = permutation[j];
    if (p == j) continue;
    for (std::int32_t r = 0; r < n; ++r) {
      std::swap(a.re[a.index(r, j)], a.re[a.index(r, p)]);
      std::swap(a.im[a.index(r, j)], a.im[a.index(r, p)]);
    }
  }
  return true;
}

namespace {

struct Value {
  double u, v, du, dv;  // p(z) = u + iv, p'(z) = du + i dv
};

// The powers of z come from the real recurrence P(k) = 2x P(k-1) - (x^2 + y^2) P(k-2).
Value Evaluate(const float* re, const float* im, int n, double x, double y) {
  std::array<double, kMaxPolynomialLength> pr, pi;
  pr[0] = 1;
  pi[0] = 0;
  if (n > 1) {
    pr[1] = x;
    pi[1] = y;
  }
  const double twoX = 2 * x, r2 = x * x + y * y;
  for (int k = 2; k < n; ++k) {
    pr[k] = twoX * pr[k - 1] - r2 * pr[k - 2];
    pi[k] = twoX * pi[k - 1] - r2 * pi[k - 2];
  }
  Value v{re[n - 1], im[n - 1], 0, 0};
  for (int k = 1; k < n; ++k) {
    const double ar = re[n - 1 - k], ai = im[n - 1 - k];
    v.u += ar * pr[k] - ai * pi[k];
    v.v += ar * pi[k] + ai * pr[k];
    v.du += k * (ar * pr[k - 1] - ai * pi[k - 1]);
    v.dv += k * (ar * pi[k - 1] + ai * pr[k - 1]);
  }
  return v;
}

void Deflate(float* re, float* im, int n, double x, double y) {
  for (int k = 1; k < n - 1; ++k) {
    const double pr = re[k - 1], pi = im[k - 1];
    re[k] = static_cast<float>(re[k] + (x * pr - y * pi));
    im[k] = static_cast<float>(im[k] + (x * pi + y * pr));
  }
}

}  // namespace

int PolynomialRoot(float* re, float* im, int n, float& x, float& y, int limit) {
  if (n < 2 || n > kMaxPolynomialLength) return 0;
  constexpr double kTolerance = 1e-5, kSmallResidual = 1e-7, kNudge = 0.001;
  // Once a halved step no longer moves a single-precision point the halving cannot end by itself.
  constexpr int kMaxHalvings = 60;
  double best = 1e20, dx = 0, dy = 0;
  float lastX = x, lastY = y;
  int count = 1, halvings = 0;
  for (;;) {
    const Value p = Evaluate(re, im, n, x, y);
    const double f = p.u * p.u + p.v * p.v;
    if (best <= f && f >= kSmallResidual && halvings < kMaxHalvings) {
      dx *= 0.5;
      dy *= 0.5;
      x = static_cast<float>(lastX + dx);
      y = static_cast<float>(lastY + dy);
      ++halvings;
      continue;
    }
    halvings = 0;
    const double d = p.du * p.du + p.dv * p.dv;
    if (d == 0) {
      x = static_cast<float>(x + kNudge);
      y = static_cast<float>(y + kNudge);
      best = 1e20;
      if (++count > limit) return 0;
      continue;
    }
    dx = -(p.u * p.du + p.v * p.dv) / d;
    dy = (p.u * p.dv - p.v * p.du) / d;
    lastX = x;
    lastY = y;
    x = static_cast<float>(x + dx);
    y = static_cast<float>(y + dy);
    if (std::fabs(dx) <= kTolerance && std::fabs(dy) <= kTolerance) {
      Deflate(re, im, n, x, y);
      return count;
    }
    if (count > limit) return 0;
    ++count;
    best = f;
  }
}

}  // namespace velk::processing
