// The F2 row and F1 column transforms of the 2D sequence on the fast path: traces are copied into
// batches of kLanes (window and sign on the way in), transformed together, put into natural order
// and rotated in the batch, and copied back with the half swap. Each trace sees exactly the same
// arithmetic whatever batch or thread it falls in, so the result does not depend on the threads.
#include <algorithm>

#include "processing/fast_fft.h"
#include "processing/parallel.h"
#include "processing/transform_support.h"

namespace velk::processing {
namespace {

using model::Plane;

constexpr std::int32_t kTile = 64;   // points per tile of the row copies, so a tile stays in L1
constexpr std::int32_t kGroup = 8;   // batches per column pass: 128 columns read on each row visit

struct Batches {
  std::vector<float> re, im;  // kGroup batches of n points x kLanes
};

std::vector<Batches> MakeBatches(int threads, std::int32_t n, std::int32_t group) {
  std::vector<Batches> s(threads);
  for (auto& one : s) {
    one.re.assign(static_cast<std::size_t>(n) * kLanes * group, 0.0f);
    one.im.assign(static_cast<std::size_t>(n) * kLanes * group, 0.0f);
  }
  return s;
}

// out = sign * in * w, element by element (the sign first, as the plain form has it).
inline void Scale(float* __restrict out, const float* __restrict in, float w, float sign, int count) {
  for (int b = 0; b < count; ++b) out[b] = sign * in[b] * w;
}

inline void Copy(float* __restrict out, const float* __restrict in, int count) {
  for (int b = 0; b < count; ++b) out[b] = in[b];
}

// Column passes step through the planes a whole row apart, which the hardware does not foresee:
// the lines of a row some steps ahead are asked for early.
constexpr std::int32_t kAhead = 8;

void Prefetch(const Plane& X, const Plane& Y, std::int32_t row, std::int32_t rows, std::int32_t c0, std::int32_t count,
              bool forWriting) {
  if (row >= rows) return;
  const float* x = X.row(row).data() + c0;
  const float* y = Y.row(row).data() + c0;
  for (std::int32_t c = 0; c < count; c += 16) {
    if (forWriting) {
      __builtin_prefetch(x + c, 1);
      __builtin_prefetch(y + c, 1);
    } else {
      __builtin_prefetch(x + c, 0);
      __builtin_prefetch(y + c, 0);
    }
  }
}

void TransformBatch(const FastFftPlan& plan, const Rotation& rotation, float* re, float* im) {
  FastFftBatch(plan, re, im);
  LanesToNaturalOrder(plan, re, im);
  if (!rotation.cosine.empty()) RotateLanes(re, im, plan.n, rotation.cosine.data(), rotation.sine.data());
}

}  // namespace

bool TransformF2Rows(Plane& X, Plane& Y, std::int32_t rows, std::int32_t n, std::int32_t shift, bool conjugate,
                     const WindowCurve& w, const PhaseRotation& phase, const Workers& workers) {
  const FastFftPlan plan = MakeFastFftPlan(n);
  const Rotation rotation = MakeRotation(phase, n);
  const int threads = ResolveThreads(workers.threads);
  auto scratch = MakeBatches(threads, n, 1);
  const float* W = w.fromZero();
  const float sign = conjugate ? -1.0f : 1.0f;
  const std::int32_t half = n / 2;
  // Points i whose source i + shift lies inside the row; the others are zero.
  const std::int32_t lo = std::clamp(-shift, 0, n), hi = std::clamp(n - shift, lo, n);
  return ForEachChunk(rows, kLanes, threads, ProgressOf(workers), [&](std::int64_t first, std::int32_t count, int k) {
    float* re = scratch[k].re.data();
    float* im = scratch[k].im.data();
    if (count < kLanes || lo > 0 || hi < n) {
      std::fill(scratch[k].re.begin(), scratch[k].re.end(), 0.0f);
      std::fill(scratch[k].im.begin(), scratch[k].im.end(), 0.0f);
    }
    float* xs[kLanes];
    float* ys[kLanes];
    for (int b = 0; b < count; ++b) {
      xs[b] = X.row(static_cast<std::int32_t>(first) + b).data();
      ys[b] = Y.row(static_cast<std::int32_t>(first) + b).data();
    }
    for (std::int32_t i0 = lo; i0 < hi; i0 += kTile) {
      const std::int32_t i1 = std::min(hi, i0 + kTile);
      for (int b = 0; b < count; ++b) {
        const float* x = xs[b];
        const float* y = ys[b];
        for (std::int32_t i = i0; i < i1; ++i) {
          re[static_cast<std::size_t>(i) * kLanes + b] = x[i + shift] * W[i];
          im[static_cast<std::size_t>(i) * kLanes + b] = sign * y[i + shift] * W[i];
        }
      }
    }
    TransformBatch(plan, rotation, re, im);
    for (std::int32_t m0 = 0; m0 < n; m0 += kTile) {
      const std::int32_t m1 = std::min(n, m0 + kTile);
      for (int b = 0; b < count; ++b)
        for (std::int32_t m = m0; m < m1; ++m) {
          xs[b][m] = re[static_cast<std::size_t>(m ^ half) * kLanes + b];
          ys[b][m] = im[static_cast<std::size_t>(m ^ half) * kLanes + b];
        }
    }
  });
}

bool TransformF1Columns(Plane& X, Plane& Y, std::int32_t n, std::int32_t columns, bool conjugate,
                        const WindowCurve& w, const PhaseRotation& phase, const Workers& workers) {
  const FastFftPlan plan = MakeFastFftPlan(n);
  const Rotation rotation = MakeRotation(phase, n);
  const int threads = ResolveThreads(workers.threads);
  auto scratch = MakeBatches(threads, n, kGroup);
  const float* W = w.fromZero();
  const float sign = conjugate ? -1.0f : 1.0f;
  const std::int32_t half = n / 2;
  const std::size_t batch = static_cast<std::size_t>(n) * kLanes;
  constexpr std::int32_t kWidth = kLanes * kGroup;
  return ForEachChunk(columns, kWidth, threads, ProgressOf(workers), [&](std::int64_t first, std::int32_t count, int k) {
    float* re = scratch[k].re.data();
    float* im = scratch[k].im.data();
    const auto c0 = static_cast<std::int32_t>(first);
    const int groups = (count + kLanes - 1) / kLanes;
    if (count < kWidth) {
      std::fill(scratch[k].re.begin(), scratch[k].re.end(), 0.0f);
      std::fill(scratch[k].im.begin(), scratch[k].im.end(), 0.0f);
    }
    for (std::int32_t j = 0; j < n; ++j) {
      const float* x = X.row(j).data() + c0;
      const float* y = Y.row(j).data() + c0;
      Prefetch(X, Y, j + kAhead, n, c0, count, false);
      for (int g = 0; g < groups; ++g) {
        float* r = re + g * batch + static_cast<std::size_t>(j) * kLanes;
        float* m = im + g * batch + static_cast<std::size_t>(j) * kLanes;
        const int lanes = std::min(kLanes, count - g * kLanes);
        if (lanes == kLanes) {
          Scale(r, x + g * kLanes, W[j], 1.0f, kLanes);
          Scale(m, y + g * kLanes, W[j], sign, kLanes);
        } else {
          Scale(r, x + g * kLanes, W[j], 1.0f, lanes);
          Scale(m, y + g * kLanes, W[j], sign, lanes);
        }
      }
    }
    for (int g = 0; g < groups; ++g) TransformBatch(plan, rotation, re + g * batch, im + g * batch);
    for (std::int32_t m = 0; m < n; ++m) {
      float* x = X.row(m).data() + c0;
      float* y = Y.row(m).data() + c0;
      Prefetch(X, Y, m + kAhead, n, c0, count, true);
      const std::size_t from = static_cast<std::size_t>(m ^ half) * kLanes;
      for (int g = 0; g < groups; ++g) {
        const int lanes = std::min(kLanes, count - g * kLanes);
        const float* r = re + g * batch + from;
        const float* i = im + g * batch + from;
        if (lanes == kLanes) {
          Copy(x + g * kLanes, r, kLanes);
          Copy(y + g * kLanes, i, kLanes);
        } else {
          Copy(x + g * kLanes, r, lanes);
          Copy(y + g * kLanes, i, lanes);
        }
      }
    }
  });
}

}  // namespace velk::processing
