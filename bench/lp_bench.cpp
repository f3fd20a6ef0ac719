// Forward prediction along F1: order 32 from 64 points, 256 rows extended to 512, 2048 columns,
// both pairs, on one core; the figure that matters is the time per trace.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "processing/linear_prediction.h"

namespace {

namespace vp = velk::processing;

void FillColumns(velk::model::Plane& X, velk::model::Plane& Y, std::int32_t rows, unsigned seed) {
  std::mt19937 random(seed);
  std::normal_distribution<float> noise(0.0f, 0.01f);
  const double lines[][2] = {{0.11, 0.01}, {-0.23, 0.02}, {0.31, 0.005}, {0.02, 0.03}, {-0.4, 0.008}};
  for (std::int32_t j = 0; j < rows; ++j)
    for (std::int32_t c = 0; c < X.stride; ++c) {
      double re = 0, im = 0;
      for (const auto& l : lines) {
        const double e = std::exp(-l[1] * j) * (1 + 0.001 * c), a = 2 * M_PI * l[0] * j;
        re += e * std::cos(a);
        im += e * std::sin(a);
      }
      X.at(c, j) = static_cast<float>(re) + noise(random);
      Y.at(c, j) = static_cast<float>(im) + noise(random);
    }
}

velk::model::Plane MakePlane(std::int32_t columns, std::int32_t rows) {
  velk::model::Plane p;
  p.stride = columns;
  p.rows = rows;
  p.data.assign(static_cast<std::size_t>(columns) * rows, 0.0f);
  return p;
}

void LpForwardF1(benchmark::State& state) {
  constexpr std::int32_t kColumns = 2048, kRows = 256, kTarget = 512;
  std::array<velk::model::Plane, 4> planes;
  for (auto& p : planes) p = MakePlane(kColumns, kTarget);
  const vp::LpSetting s{.Order = 32, .Points = 64, .Start = 10};
  std::vector<std::string> list;
  const vp::Workers workers{.threads = 1};
  for (auto _ : state) {
    state.PauseTiming();
    for (int p = 0; p < 4; p += 2) FillColumns(planes[p], planes[p + 1], kRows, p);
    state.ResumeTiming();
    vp::LpForwardF1(planes[0], planes[1], s, kRows, kTarget, kColumns, {workers, list});
    vp::LpForwardF1(planes[2], planes[3], s, kRows, kTarget, kColumns, {workers, list});
  }
  state.counters["per_trace"] =
      benchmark::Counter(2 * kColumns, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  state.counters["failed_lines"] = static_cast<double>(list.size());
}
BENCHMARK(LpForwardF1)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();

}  // namespace
