// The FT window keeping up with a held phase step label: one step of phase 0 on a 16384-point
// trace re-rotates the transform kept in the window and redraws the trace panel into an image.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <cmath>

#include "document/ft_window.h"
#include "gui/trace_panel.h"

namespace {

using velk::model::F1;
using velk::model::F2;

velk::document::Document& Fid16k() {
  static velk::document::Document d;
  if (d.spectrum.RR.stride) return d;
  velk::model::Spectrum2D& s = d.spectrum;
  velk::model::AllocateSpectrum2D(s, 16384, 128);
  for (velk::model::Axis a : {F1, F2}) {
    s.axis[a].Point = a == F1 ? 128 : 16384;
    s.axis[a].Frequency = 8000;
    s.extras[a].fidPoints = s.axis[a].Point;
  }
  for (std::int32_t i = 0; i < 16384; ++i) {
    const double e = std::exp(-0.0004 * i);
    s.RR.at(i, 0) = static_cast<float>(e * std::cos(0.37 * i) + 0.5 * e * std::cos(1.9 * i));
    s.IR.at(i, 0) = static_cast<float>(e * std::sin(0.37 * i) + 0.5 * e * std::sin(1.9 * i));
  }
  d.words.pulseModeClass = velk::model::VPH_HOMO;
  return d;
}

void FtTracePhaseStep(benchmark::State& state) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  int argc = 1;
  char name[] = "velk2d-bench";
  char* argv[] = {name, nullptr};
  static QApplication app(argc, argv);
  velk::document::FtWindow window(Fid16k());
  velk::gui::TracePanel panel(window);
  panel.resize(1100, 560);
  QImage image(panel.size(), QImage::Format_ARGB32_Premultiplied);
  for (auto _ : state) {
    window.AddPhase0(0.1);
    panel.render(&image);
    benchmark::DoNotOptimize(image.constBits());
  }
}
BENCHMARK(FtTracePhaseStep)->Unit(benchmark::kMillisecond);

}  // namespace
