// One transform of N points: the reference kernel, the fast path on one trace and per trace of a
// batch, and FFTW (single precision, FFTW_MEASURE) in the same run.
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <cmath>
#include <vector>

#include "processing/fast_fft.h"
#include "processing/fft_kernel.h"

namespace {

namespace vp = velk::processing;

std::vector<float> Signal(std::size_t n) {
  std::vector<float> v(n);
  for (std::size_t i = 0; i < n; ++i) v[i] = static_cast<float>(std::sin(0.001 * i * i));
  return v;
}

void FftKernel(benchmark::State& state) {
  const auto n = static_cast<std::int32_t>(state.range(0));
  std::vector<float> re = Signal(n), im = Signal(n);
  vp::SharedSineTable();
  for (auto _ : state) {
    vp::FftKernel(re.data(), im.data(), n);
    benchmark::DoNotOptimize(re.data());
  }
}

void FastFft(benchmark::State& state) {
  const auto n = static_cast<std::int32_t>(state.range(0));
  const vp::FastFftPlan plan = vp::MakeFastFftPlan(n);
  std::vector<float> re = Signal(n), im = Signal(n);
  for (auto _ : state) {
    vp::FastFft(plan, re.data(), im.data());
    benchmark::DoNotOptimize(re.data());
  }
}

// Time per trace of a batch of kLanes traces, the form the 2D sequence uses.
void FastFftBatch(benchmark::State& state) {
  const auto n = static_cast<std::int32_t>(state.range(0));
  const vp::FastFftPlan plan = vp::MakeFastFftPlan(n);
  std::vector<float> re = Signal(std::size_t(n) * vp::kLanes), im = Signal(std::size_t(n) * vp::kLanes);
  for (auto _ : state) {
    vp::FastFftBatch(plan, re.data(), im.data());
    benchmark::DoNotOptimize(re.data());
  }
  state.counters["per_trace"] =
      benchmark::Counter(vp::kLanes, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Fftw(benchmark::State& state) {
  const auto n = static_cast<std::int32_t>(state.range(0));
  fftwf_complex* data = fftwf_alloc_complex(n);
  fftwf_plan plan = fftwf_plan_dft_1d(n, data, data, FFTW_FORWARD, FFTW_MEASURE);
  const std::vector<float> s = Signal(n);
  for (std::int32_t i = 0; i < n; ++i) {
    data[i][0] = s[i];
    data[i][1] = s[i];
  }
  for (auto _ : state) {
    fftwf_execute(plan);
    benchmark::DoNotOptimize(data);
  }
  fftwf_destroy_plan(plan);
  fftwf_free(data);
}

BENCHMARK(FftKernel)->RangeMultiplier(2)->Range(1024, 65536);
BENCHMARK(FastFft)->RangeMultiplier(2)->Range(1024, 65536);
BENCHMARK(FastFftBatch)->RangeMultiplier(2)->Range(1024, 65536);
BENCHMARK(Fftw)->RangeMultiplier(2)->Range(1024, 65536);

}  // namespace
