#include "processing/fast_fft.h"

#include <utility>

#include "processing/sine_table.h"

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__SANITIZE_ADDRESS__)
#define VELK_VECTOR_CLONES __attribute__((target_clones("avx512f", "avx2", "default")))
#else
#define VELK_VECTOR_CLONES
#endif

namespace velk::processing {
namespace {

// One radix-2 butterfly on B lanes: a' = a + b, b' = (a - b) * (c - i s).
template <int B>
[[gnu::always_inline]] inline void Butterfly(float* __restrict ar, float* __restrict ai, float* __restrict br,
                                             float* __restrict bi, float c, float s) {
  for (int l = 0; l < B; ++l) {
    const float xt = ar[l] - br[l];
    const float yt = ai[l] - bi[l];
    ar[l] = br[l] + ar[l];
    ai[l] = bi[l] + ai[l];
    br[l] = s * yt + c * xt;
    bi[l] = c * yt - s * xt;
  }
}

// Two stages of half-lengths L and L/2 in one pass: the same butterflies as the radix-2 stages,
// in an order that reads each element once.
template <int B>
[[gnu::always_inline]] inline void FusedStages(float* re, float* im, std::int32_t n, std::int32_t L,
                                               const float* c1, const float* s1, const float* c2,
                                               const float* s2) {
  const std::int32_t q = L / 2;
  for (std::int32_t base = 0; base < n; base += 2 * L) {
    for (std::int32_t k = 0; k < q; ++k) {
      const std::size_t i0 = static_cast<std::size_t>(base + k) * B;
      const std::size_t i1 = i0 + static_cast<std::size_t>(q) * B;
      const std::size_t i2 = i0 + static_cast<std::size_t>(L) * B;
      const std::size_t i3 = i2 + static_cast<std::size_t>(q) * B;
      Butterfly<B>(re + i0, im + i0, re + i2, im + i2, c1[k], s1[k]);
      Butterfly<B>(re + i1, im + i1, re + i3, im + i3, c1[k + q], s1[k + q]);
      Butterfly<B>(re + i0, im + i0, re + i1, im + i1, c2[k], s2[k]);
      Butterfly<B>(re + i2, im + i2, re + i3, im + i3, c2[k], s2[k]);
    }
  }
}

template <int B>
[[gnu::always_inline]] inline void SingleStage(float* re, float* im, std::int32_t n, std::int32_t L,
                                               const float* c, const float* s) {
  for (std::int32_t base = 0; base < n; base += 2 * L)
    for (std::int32_t k = 0; k < L; ++k) {
      const std::size_t i = static_cast<std::size_t>(base + k) * B;
      const std::size_t j = i + static_cast<std::size_t>(L) * B;
      Butterfly<B>(re + i, im + i, re + j, im + j, c[k], s[k]);
    }
}

// Stage twiddles sit one stage after the other: half-length L starts at offset n - 2L.
template <int B>
[[gnu::always_inline]] inline void Transform(const FastFftPlan& plan, float* re, float* im) {
  const std::int32_t n = plan.n;
  const float* c = plan.cosine.data();
  const float* s = plan.sine.data();
  std::int32_t L = n / 2;
  for (; L >= 2; L /= 4) {
    const std::int32_t o1 = n - 2 * L;
    const std::int32_t o2 = n - L;
    FusedStages<B>(re, im, n, L, c + o1, s + o1, c + o2, s + o2);
  }
  if (L == 1) SingleStage<B>(re, im, n, 1, c + n - 2, s + n - 2);
}

VELK_VECTOR_CLONES void TransformLanes(const FastFftPlan& plan, float* re, float* im) {
  Transform<kLanes>(plan, re, im);
}

void TransformOne(const FastFftPlan& plan, float* re, float* im) { Transform<1>(plan, re, im); }

}  // namespace

VELK_VECTOR_CLONES void LanesToNaturalOrder(const FastFftPlan& plan, float* re, float* im) {
  for (std::int32_t p = 0; p < plan.n; ++p) {
    const std::int32_t q = plan.reversed[p];
    if (q <= p) continue;
    float* a = re + static_cast<std::size_t>(p) * kLanes;
    float* b = re + static_cast<std::size_t>(q) * kLanes;
    float* c = im + static_cast<std::size_t>(p) * kLanes;
    float* d = im + static_cast<std::size_t>(q) * kLanes;
    for (int l = 0; l < kLanes; ++l) {
      std::swap(a[l], b[l]);
      std::swap(c[l], d[l]);
    }
  }
}

VELK_VECTOR_CLONES void RotateLanes(float* re, float* im, std::int32_t n, const double* cosine, const double* sine) {
  const std::int32_t half = n / 2;
  for (std::int32_t m = 0; m < n; ++m) {
    float* x = re + static_cast<std::size_t>(m ^ half) * kLanes;
    float* y = im + static_cast<std::size_t>(m ^ half) * kLanes;
    const double c = cosine[m], s = sine[m];
    for (int l = 0; l < kLanes; ++l) {
      const double xv = x[l], yv = y[l];
      x[l] = static_cast<float>(xv * c - yv * s);
      y[l] = static_cast<float>(xv * s + yv * c);
    }
  }
}

FastFftPlan MakeFastFftPlan(std::int32_t n) {
  const SineTable& table = SharedSineTable();
  FastFftPlan plan;
  plan.n = n;
  plan.cosine.reserve(n);
  plan.sine.reserve(n);
  for (std::int32_t L = n / 2; L >= 1; L /= 2) {
    const std::int64_t stride = kTableSize / (2 * static_cast<std::int64_t>(L));
    for (std::int32_t k = 0; k < L; ++k) {
      plan.sine.push_back(table[k * stride]);
      plan.cosine.push_back(table[k * stride + kTableSize / 4]);
    }
  }
  plan.reversed.assign(n, 0);
  for (std::int32_t bits = 0; (1 << bits) < n; ++bits)
    for (std::int32_t i = 0; i < n; ++i)
      if (i & (1 << bits)) plan.reversed[i] |= n >> (bits + 1);
  return plan;
}

void FastFftBatch(const FastFftPlan& plan, float* re, float* im) {
  if (plan.n >= 2) TransformLanes(plan, re, im);
}

void FastFft(const FastFftPlan& plan, float* re, float* im) {
  if (plan.n < 2) return;
  TransformOne(plan, re, im);
  for (std::int32_t i = 0; i < plan.n; ++i) {
    const std::int32_t j = plan.reversed[i];
    if (j > i) {
      std::swap(re[i], re[j]);
      std::swap(im[i], im[j]);
    }
  }
}

}  // namespace velk::processing
