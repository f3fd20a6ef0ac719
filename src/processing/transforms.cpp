#include "processing/transforms.h"
#include "model/data_type.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "processing/fft_kernel.h"
#include "processing/parallel.h"
#include "processing/transform_support.h"

namespace velk::processing {
namespace {

using model::Plane;
constexpr double kPi = 3.14159265358979;

// Runs one trace at a time through the reference kernel, for the forms that are not on the hot
// path; `trace` gets the trace index and the scratch of its thread: `doubles` and `floats` arrays
// of n points.
template <class PerTrace>
bool ForEachTrace(std::int32_t count, std::int32_t n, std::int32_t doubles, std::int32_t floats,
                  const Workers& workers, PerTrace trace) {
  const int threads = ResolveThreads(workers.threads);
  std::vector<std::vector<double>> d(threads, std::vector<double>(static_cast<std::size_t>(n) * doubles));
  std::vector<std::vector<float>> f(threads, std::vector<float>(static_cast<std::size_t>(n) * floats));
  return ForEachChunk(count, 1, threads, ProgressOf(workers), [&](std::int64_t first, std::int32_t, int worker) {
    trace(static_cast<std::int32_t>(first), d[worker].data(), f[worker].data());
  });
}

}  // namespace

bool ConjugateF2(int pulseModeClass, int formatNumber, bool f2SingleAd) {
  const bool usualClass = model::IsKnownClass(pulseModeClass) && pulseModeClass != model::VPH_HMBC;
  const bool bruker = model::IsBrukerFormat(formatNumber);
  return !(usualClass && (f2SingleAd || bruker));
}

bool ConjugateF1(int pulseModeClass, int formatNumber, bool f1Inverse) {
  // Bit k set: flag set in pulse-mode class k. These are the sign conventions of each family.
  int classes = 0;
  switch (formatNumber) {
    case model::kAlice: case model::kJeolGx: classes = 0b01110; break;
    case model::kLambda: classes = 0b10010; break;
    case model::kDelta: classes = 0b11011; break;
    case model::kBruker: case model::kAlpha: case model::kBrukerAspect: classes = 0b10010; break;
    case model::kVarian: classes = 0b11010; break;
    default: classes = 0;
  }
  const bool c = model::IsKnownClass(pulseModeClass) && (classes >> pulseModeClass & 1) != 0;
  return f1Inverse ? !c : c;
}

bool ConjugateF1Sequential(int pulseModeClass) {
  // The presets of the FT window (20, 21) count with the last class.
  return pulseModeClass == model::V_HOMO || pulseModeClass == model::VPH_HMBC || pulseModeClass >= model::V_HETERO;
}

void TransformSequentialTrace(float* re, float* im, std::int32_t n, bool conjugate, const float* W, double* scratch) {
  const float sign = conjugate ? -1.0f : 1.0f;
  double *aRe = scratch, *aIm = scratch + n, *bRe = scratch + 2 * n, *bIm = scratch + 3 * n;
  for (std::int32_t j = 0; j < n; ++j) {
    aRe[j] = 0;
    aIm[j] = sign * im[j] * W[j];
    bRe[j] = re[j] * W[j];
    bIm[j] = 0;
  }
  FftKernel(aRe, aIm, n);
  HalfSwap(aRe, aIm, n);
  FftKernel(bRe, bIm, n);
  HalfSwap(bRe, bIm, n);
  for (std::int32_t k = 0; k < n; ++k) {
    const double a = (static_cast<double>(k) / n - 0.5) * kPi;
    re[k] = static_cast<float>(std::cos(a) * aRe[k] + bRe[k] + std::sin(a) * aIm[k]);
    im[k] = static_cast<float>(std::cos(a) * aIm[k] + bIm[k] - std::sin(a) * aRe[k]);
  }
}

bool TransformF1Sequential(Plane& X, Plane& Y, std::int32_t n, std::int32_t columns, bool conjugate,
                           const WindowCurve& w, const PhaseRotation& phase, const Workers& workers) {
  const Rotation rotation = MakeRotation(phase, n);
  return ForEachTrace(columns, n, 4, 2, workers, [&](std::int32_t c, double* s, float* re) {
    float* im = re + n;
    for (std::int32_t j = 0; j < n; ++j) {
      re[j] = X.at(c, j);
      im[j] = Y.at(c, j);
    }
    TransformSequentialTrace(re, im, n, conjugate, w.fromZero(), s);
    for (std::int32_t k = 0; k < n; ++k) Put(rotation, k, re[k], im[k], X.at(c, k), Y.at(c, k));
  });
}

bool InverseColumns(Plane& X, Plane& Y, std::int32_t n, std::int32_t columns, bool conjugate, const Workers& workers) {
  return ForEachTrace(columns, n, 0, 2, workers, [&](std::int32_t c, double*, float* re) {
    float* im = re + n;
    for (std::int32_t j = 0; j < n; ++j) {
      re[j] = X.at(c, j);
      im[j] = conjugate ? -Y.at(c, j) : Y.at(c, j);
    }
    FftKernel(re, im, n);
    for (std::int32_t j = 0; j < n; ++j) {
      X.at(c, j) = re[j] / n;
      Y.at(c, j) = im[j] / n;
    }
  });
}

bool InverseRows(Plane& X, Plane& Y, std::int32_t n, std::int32_t rows, bool conjugate, const Workers& workers) {
  return ForEachTrace(rows, n, 0, 0, workers, [&](std::int32_t r, double*, float*) {
    float* x = X.row(r).data();
    float* y = Y.row(r).data();
    if (conjugate)
      for (std::int32_t i = 0; i < n; ++i) y[i] = -y[i];
    FftKernel(x, y, n);
    for (std::int32_t i = 0; i < n; ++i) {
      x[i] /= n;
      y[i] /= n;
    }
  });
}

void RotatePhaseTrace(float* re, float* im, std::int32_t n, const PhaseRotation& p) {
  const Rotation r = MakeRotation(p, n);
  if (r.cosine.empty()) return;
  for (std::int32_t i = 0; i < n; ++i) Put(r, i, re[i], im[i], re[i], im[i]);
}

void RotatePhaseF2(Plane& X, Plane& Y, std::int32_t rows, std::int32_t n, const PhaseRotation& p) {
  const Rotation r = MakeRotation(p, n);
  if (r.cosine.empty()) return;
  for (std::int32_t row = 0; row < rows; ++row)
    for (std::int32_t i = 0; i < n; ++i) Put(r, i, X.at(i, row), Y.at(i, row), X.at(i, row), Y.at(i, row));
}

void RotatePhaseF1(Plane& X, Plane& Y, std::int32_t n, std::int32_t columns, const PhaseRotation& p) {
  const Rotation r = MakeRotation(p, n);
  if (r.cosine.empty()) return;
  for (std::int32_t j = 0; j < n; ++j)
    for (std::int32_t c = 0; c < columns; ++c) Put(r, j, X.at(c, j), Y.at(c, j), X.at(c, j), Y.at(c, j));
}

}  // namespace velk::processing
