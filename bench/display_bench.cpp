// The contour display: MakeDisplayGrid + TraceContour of a 4096 x 2048 spectrum into a 1024 x 1024
// image with 16 levels, in line and in fill mode, each as a ratio to the physical floor measured in
// the same run: reading every value of the spectrum once and writing every pixel of the image once.
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <ctime>
#include <cstdint>

#include <benchmark/benchmark.h>

#include "display/display_grid.h"
#include "display/levels.h"
#include "display/tracer.h"
#include "model/data_type.h"
#include "platform/qt/picture_file.h"
#include "platform/qt/qt_surface.h"
#include "support/synthetic_2d.h"

namespace velk {
namespace {

constexpr int kCols = 4096, kRows = 2048, kPixels = 1024;

// Thread CPU time: the machine is shared, and wall time would measure the neighbours too.
double CpuSeconds() {
  timespec t{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + t.tv_nsec * 1e-9;
}

const model::Spectrum2D& Spectrum() {
  static const auto s = test::MakeSynthetic2D(kCols, kRows, test::ManyPeaks(300), 0.002);
  return *s;
}

// The floor: one pass over the values, one write of every pixel. The best of several runs.
double FloorSeconds() {
  static const double seconds = [] {
    const model::Spectrum2D& s = Spectrum();
    QImage image(kPixels, kPixels, QImage::Format_RGB32);
    double best = 1e9;
    for (int run = 0; run < 7; ++run) {
      const double t0 = CpuSeconds();
      // Eight independent maxima, so that the pass runs at the speed of memory, not of one chain.
      float largest[8] = {};
      for (int r = 0; r < kRows; ++r) {
        const float* row = s.RR.row(r).data();
        for (int c = 0; c < kCols; c += 8)
          for (int k = 0; k < 8; ++k) largest[k] = row[c + k] > largest[k] ? row[c + k] : largest[k];
      }
      for (int y = 0; y < kPixels; ++y) {
        auto* line = reinterpret_cast<std::uint32_t*>(image.scanLine(y));
        for (int x = 0; x < kPixels; ++x) line[x] = 0xFFFFFFFFu;
      }
      benchmark::DoNotOptimize(largest);
      benchmark::DoNotOptimize(image.bits());
      best = std::min(best, CpuSeconds() - t0);
    }
    return best;
  }();
  return seconds;
}

void Contour(benchmark::State& state, int displayMode) {
  platform::qt::EnsureGuiApplication();
  const model::Spectrum2D& s = Spectrum();
  display::ContourSetting setting;
  setting.Steps = 16;
  setting.DisplayMode = displayMode;
  display::LevelTable levels;
  display::BuildLevelTable(levels, setting, 1.0f, 0.1f, model::VPH_HOMO);
  const double floor = FloorSeconds();
  QImage image(kPixels, kPixels, QImage::Format_RGB32);
  platform::NoProgress progress;
  double total = 0;
  for (auto _ : state) {
    const double t0 = CpuSeconds();
    display::ContourGrid grid;
    display::MakeDisplayGrid(grid, {s, model::VPH_HOMO, setting}, 0, kCols - 1, 0, kRows - 1, kPixels, kPixels, false);
    grid.ViewColStart = 10.0f;
    grid.ViewColEnd = 0.0f;
    grid.ViewRowStart = 0.0f;
    grid.ViewRowEnd = 10.0f;
    image.fill(Qt::white);
    {
      QPainter painter(&image);
      platform::qt::QtSurface surface(painter, {kPixels, kPixels});
      display::TraceContour(surface, grid, levels, {0, kPixels - 1, 0, kPixels - 1},
                            {0, 0, kPixels - 1, kPixels - 1}, 1, progress, displayMode);
    }
    benchmark::DoNotOptimize(image.bits());
    total += CpuSeconds() - t0;
  }
  const double each = total / static_cast<double>(state.iterations());
  state.counters["cpu_ms"] = each * 1e3;
  state.counters["floor_cpu_ms"] = floor * 1e3;
  state.counters["x_floor"] = each / floor;
}

void BM_ContourLines(benchmark::State& state) { Contour(state, display::kLines); }
void BM_ContourFilled(benchmark::State& state) { Contour(state, display::kFilled); }

BENCHMARK(BM_ContourLines)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_ContourFilled)->Unit(benchmark::kMillisecond)->MinTime(1.0);

}  // namespace
}  // namespace velk
