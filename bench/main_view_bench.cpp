// The main view's own drawing on a 4096 x 2048 spectrum in a 1200 x 900 window: a level change
// (new level table, re-trace from the kept grid, compose), a zoom to a quarter of the spectrum (new
// grid and trace), and opening a 128 MiB four-plane Ver.4 file to the first complete picture.
// Each reports x_floor, its time over the physical floor measured in the same run: reading the
// spectrum's values once and writing every pixel of the picture once. Targets: 50 ms, 80 ms, 1 s.
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <chrono>
#include <filesystem>

#include <benchmark/benchmark.h>

#include "display/contour_view.h"
#include "display/display_grid.h"
#include "display/page_picture.h"
#include "display/view_navigation.h"
#include "model/data_type.h"
#include "native/ver4_file.h"
#include "platform/qt/picture_file.h"
#include "platform/qt/qt_surface.h"
#include "support/scripted_prompt.h"
#include "support/synthetic_2d.h"

namespace velk {
namespace {

using Clock = std::chrono::steady_clock;
constexpr int kCols = 4096, kRows = 2048;
constexpr platform::Extent kWindow{1200, 900};

double Since(Clock::time_point t0) { return std::chrono::duration<double>(Clock::now() - t0).count(); }

model::Spectrum2D& Spectrum() {
  static const auto s = [] {
    auto made = test::MakeSynthetic2D(kCols, kRows, test::ManyPeaks(300), 0.002);
    // Four planes, as a phase-sensitive spectrum is kept.
    made->RI = made->RR;
    made->II = made->IR;
    return made;
  }();
  return *s;
}

// One pass over the values that the picture is made from, one write of every pixel.
double FloorSeconds(const model::Spectrum2D& s, int planes) {
  QImage image(kWindow.width, kWindow.height, QImage::Format_ARGB32_Premultiplied);
  double best = 1e9;
  for (int run = 0; run < 5; ++run) {
    const auto t0 = Clock::now();
    float largest[8] = {};
    const model::Plane* all[4] = {&s.RR, &s.RI, &s.IR, &s.II};
    for (int p = 0; p < planes; ++p)
      for (int r = 0; r < kRows; ++r) {
        const float* row = all[p]->row(r).data();
        for (int c = 0; c < kCols; c += 8)
          for (int k = 0; k < 8; ++k) largest[k] = std::max(largest[k], row[c + k]);
      }
    image.fill(Qt::white);
    benchmark::DoNotOptimize(largest);
    benchmark::DoNotOptimize(image.bits());
    best = std::min(best, Since(t0));
  }
  return best;
}

// The view as the window keeps it: grid and levels between pictures, the projections of the data.
struct View {
  const model::Spectrum2D& s;
  display::ContourSetting setting;
  display::DisplayState state;
  display::ContourGrid grid;
  display::LevelTable levels;
  display::Projection f2, f1;
  QImage contour, frame{kWindow.width, kWindow.height, QImage::Format_ARGB32_Premultiplied};
  display::MainViewLayout layout = display::LayOutMainView(kWindow, true);

  explicit View(const model::Spectrum2D& spectrum) : s(spectrum) {
    setting.Steps = 16;
    setting.DisplayMode = display::kLines;
    display::ShowFullSpectrum(state, s);
    contour = QImage(layout.contour.width, layout.contour.height, QImage::Format_ARGB32_Premultiplied);
  }
  void Project() {
    f2 = display::MakeProjectionF2(s, model::VPH_HOMO, setting, true);
    f1 = display::MakeProjectionF1(s, model::VPH_HOMO, setting, true);
  }
  void Picture(bool reuse) {
    contour.fill(Qt::white);
    {
      QPainter painter(&contour);
      platform::qt::QtSurface surface(painter, {contour.width(), contour.height()});
      platform::NoProgress progress;
      display::DrawContourView(surface, grid, levels, {s, model::VPH_HOMO, setting}, state,
                               {0, 0, contour.width(), contour.height()}, 0, 0, reuse, progress);
    }
    frame.fill(Qt::white);
    QPainter painter(&frame);
    painter.drawImage(layout.contour.x, layout.contour.y, contour);
    platform::qt::QtSurface surface(painter, kWindow);
    const display::MainViewInput input{s, model::VPH_HOMO, setting, state, display::TraceKind::ProjectionPosNeg,
                                       "F2 (ppm)", "F1 (ppm)"};
    display::DrawSurround(surface, layout, input, levels, f2, f1);
  }
};

void Report(benchmark::State& state, double seconds, double floor) {
  const double each = seconds / static_cast<double>(state.iterations());
  state.counters["ms"] = each * 1e3;
  state.counters["floor_ms"] = floor * 1e3;
  state.counters["x_floor"] = each / floor;
}

void MainViewLevelChange(benchmark::State& state) {
  platform::qt::EnsureGuiApplication();
  model::Spectrum2D& s = Spectrum();
  View view(s);
  view.Project();
  view.Picture(false);
  const double floor = FloorSeconds(s, 1);
  double total = 0;
  int step = 0;
  for (auto _ : state) {
    s.LowerLimit = (++step % 2) ? 0.05f : 0.1f;
    const auto t0 = Clock::now();
    view.Picture(true);
    total += Since(t0);
  }
  s.LowerLimit = 0.1f;
  Report(state, total, floor);
}

void MainViewZoom(benchmark::State& state) {
  platform::qt::EnsureGuiApplication();
  const model::Spectrum2D& s = Spectrum();
  View view(s);
  view.Project();
  const double floor = FloorSeconds(s, 1);
  double total = 0;
  int step = 0;
  for (auto _ : state) {
    // A quarter of the spectrum, in turn at two places, so that the grid is always made anew.
    const float at = (++step % 2) ? 0.0f : 5.0f;
    view.state.ViewF2Start = at + 5.0f;
    view.state.ViewF2End = at;
    view.state.ViewF1Start = 2.5f;
    view.state.ViewF1End = 7.5f;
    const auto t0 = Clock::now();
    view.Picture(true);
    total += Since(t0);
  }
  Report(state, total, floor);
}

void MainViewOpen(benchmark::State& state) {
  platform::qt::EnsureGuiApplication();
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "velk-bench-main-view.vlk2";
  native::WriteDataR4(file, Spectrum(), nullptr, nullptr, {0x210C, model::VPH_HOMO, 0}, native::SaveMode::AllPlanes,
                      {false, nullptr});
  const double floor = FloorSeconds(Spectrum(), 4);
  test::ScriptedPrompt prompt;
  platform::NoProgress progress;
  double total = 0;
  for (auto _ : state) {
    const auto t0 = Clock::now();
    auto s = std::make_unique<model::Spectrum2D>();
    model::DataWords words;
    model::ReadContext context{prompt, progress, words, nullptr};
    if (!native::ReadDataR4(file, *s, context).ok()) state.SkipWithError("read failed");
    View view(*s);
    view.Project();
    view.Picture(false);
    total += Since(t0);
  }
  std::filesystem::remove(file);
  Report(state, total, floor);
}

BENCHMARK(MainViewLevelChange)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(1.0);
BENCHMARK(MainViewZoom)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(1.0);
BENCHMARK(MainViewOpen)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

}  // namespace
}  // namespace velk
