// "Pick All Area" on a 4096 x 2048 spectrum: noise everywhere and 600 peaks of both signs, picked
// with the threshold at 5 per cent of full scale and calculated tops. Target: at most 100 ms. The
// anchor is one plain pass over the plane that counts the points above the threshold, the least
// any picking must do.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <memory>

#include "model/spectrum.h"
#include "operations/peak_pick.h"

namespace {

constexpr std::int32_t kColumns = 4096, kRows = 2048;
constexpr float kThreshold = 0.05f;

std::unique_ptr<velk::model::Spectrum2D> MakePeakSet() {
  auto s = std::make_unique<velk::model::Spectrum2D>();
  velk::model::AllocateSpectrum2D(*s, kColumns, kRows);
  s->axis[velk::model::F2].Point = kColumns;
  s->axis[velk::model::F1].Point = kRows;
  s->axis[velk::model::F2].Resolution = s->axis[velk::model::F1].Resolution = 1;
  std::uint32_t seed = 12345;
  for (float& v : s->RR.data) {
    seed = seed * 1664525u + 1013904223u;
    v = (static_cast<float>(seed >> 8) / 16777216.0f - 0.5f) * 0.01f;
  }
  for (int k = 0; k < 600; ++k) {
    const int c0 = 8 + (k * 2654435761u) % (kColumns - 16), r0 = 8 + (k * 40503u) % (kRows - 16);
    const float height = (k % 3 == 0 ? -1.0f : 1.0f) * (0.1f + 0.9f * static_cast<float>(k % 7) / 6);
    for (int dr = -6; dr <= 6; ++dr)
      for (int dc = -6; dc <= 6; ++dc) s->RR.at(c0 + dc, r0 + dr) += height / (1 + (dc * dc + dr * dr) / 2.25f);
  }
  return s;
}

void BM_PickAll(benchmark::State& state) {
  const auto s = MakePeakSet();
  int picked = 0;
  for (auto _ : state) {
    s->peaks.peaks.clear();
    picked =
        velk::operations::PickArea(*s, velk::operations::AllArea(*s), kThreshold, velk::operations::kVirtualPeakTop);
  }
  state.counters["peaks"] = picked;
}
BENCHMARK(BM_PickAll)->Unit(benchmark::kMillisecond);

void BM_PickAllAnchorCountAbove(benchmark::State& state) {
  const auto s = MakePeakSet();
  for (auto _ : state) {
    long above = 0;
    for (float v : s->RR.data) above += std::fabs(v) > kThreshold;
    benchmark::DoNotOptimize(above);
  }
}
BENCHMARK(BM_PickAllAnchorCountAbove)->Unit(benchmark::kMillisecond);

}  // namespace
