#pragma once
// The fast transform of the 2D sequence: the same sign and no scaling as FftKernel, the same table
// twiddles, single-precision storage throughout. It transforms kLanes traces at once, laid out
// point by point ([point][lane]), so that every butterfly is one vector operation across traces;
// two radix-2 stages are fused per pass over the data. Results agree with FftKernel to
// single-precision rounding.
#include <cstdint>
#include <vector>

namespace velk::processing {

inline constexpr int kLanes = 16;

struct FastFftPlan {
  std::int32_t n = 0;
  std::vector<float> cosine, sine;     // per stage, W(k) = cosine - i sine, stage after stage
  std::vector<std::int32_t> reversed;  // bit reversal of every index
};

FastFftPlan MakeFastFftPlan(std::int32_t n);

// In place on kLanes traces of plan.n points. The result is in bit-reversed order: frequency k
// sits at position plan.reversed[k]. The callers fold that order into their copy-out.
void FastFftBatch(const FastFftPlan& plan, float* re, float* im);

// Puts a batch into natural order: frequency k of every lane at position k.
void LanesToNaturalOrder(const FastFftPlan& plan, float* re, float* im);

// Rotates a batch in natural order by the angles of the output points after the half swap: output
// point m, which is frequency m ^ n/2, turns by (cosine[m], sine[m]); products in double precision.
void RotateLanes(float* re, float* im, std::int32_t n, const double* cosine, const double* sine);

// One trace, natural order in and out (the test and preview form).
void FastFft(const FastFftPlan& plan, float* re, float* im);

}  // namespace velk::processing
