// The whole plain 2D sequence on a synthetic phase-sensitive FID (2048 complex F2 points, 512 F1
// increments, four planes), zero fill x2 and sine bell on both axes, phase and normalisation, from
// planes in memory; and the same work done by FFTW (single precision, FFTW_MEASURE, one thread).
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <algorithm>
#include <cmath>

#include "processing/sequence.h"
#include "processing/transforms.h"

namespace {

using velk::model::F1;
using velk::model::F2;
namespace vp = velk::processing;

// The FID at its zero-filled size, so that a run re-dimensions nothing.
const velk::model::Spectrum2D& FidTemplate(std::int32_t nf2, std::int32_t nf1) {
  static velk::model::Spectrum2D s;
  if (s.RR.stride == 2 * nf2 && s.RR.rows == 2 * nf1) return s;
  velk::model::AllocateSpectrum2D(s, 2 * nf2, 2 * nf1);
  for (velk::model::Axis a : {F1, F2}) {
    const std::int32_t n = a == F1 ? nf1 : nf2;
    s.axis[a].Point = n;
    s.axis[a].Frequency = 5000;
    s.axis[a].Resolution = 5000.0 / n;
    s.extras[a].fidPoints = n;
    s.extras[a].absFreqCenter = 600.0;
    s.extras[a].absFreq0ppm = 599.997;
  }
  const double lines[][2] = {{0.11, 0.003}, {-0.23, 0.002}, {0.31, 0.004}};
  for (std::int32_t j = 0; j < nf1; ++j)
    for (std::int32_t i = 0; i < nf2; ++i) {
      double rr = 0, ir = 0, ri = 0, ii = 0;
      for (const auto& l : lines) {
        const double e = std::exp(-l[1] * i - 2 * l[1] * j), a2 = 2 * M_PI * l[0] * i, a1 = 2 * M_PI * l[0] * 0.7 * j;
        rr += e * std::cos(a2) * std::cos(a1);
        ir += e * std::sin(a2) * std::cos(a1);
        ri += e * std::cos(a2) * std::sin(a1);
        ii += e * std::sin(a2) * std::sin(a1);
      }
      s.RR.at(i, j) = static_cast<float>(rr);
      s.IR.at(i, j) = static_cast<float>(ir);
      s.RI.at(i, j) = static_cast<float>(ri);
      s.II.at(i, j) = static_cast<float>(ii);
    }
  return s;
}

vp::WindowFunctionSetting SineBell() {
  vp::WindowFunctionSetting w;
  w.type = vp::kSineBell;
  w.WS[0] = 0;
  w.WE[0] = 100;
  return w;
}

void CopyPlanes(const velk::model::Spectrum2D& from, velk::model::Spectrum2D& to) {
  for (auto [a, b] : {std::pair{&from.RR, &to.RR}, {&from.IR, &to.IR}, {&from.RI, &to.RI}, {&from.II, &to.II}})
    std::copy(a->data.begin(), a->data.end(), b->data.begin());
}

// Args: F2 points, F1 increments, threads (0: every core).
void Sequence2D(benchmark::State& state) {
  const auto nf2 = static_cast<std::int32_t>(state.range(0)), nf1 = static_cast<std::int32_t>(state.range(1));
  const auto& fid = FidTemplate(nf2, nf1);
  velk::model::Spectrum2D s = fid;
  std::vector<std::string> list;
  velk::platform::NoProgress progress;
  for (auto _ : state) {
    state.PauseTiming();
    CopyPlanes(fid, s);
    s.axis = fid.axis;
    s.extras = fid.extras;
    vp::SequenceSettings settings = vp::MakeSequenceSettings(s, 0, 12);
    settings.threads = static_cast<int>(state.range(2));
    for (auto& a : settings.axis) {
      a.zeroFill = 2;
      a.window = SineBell();
      a.phase0 = 10;
      a.phase1 = 5;
    }
    state.ResumeTiming();
    const vp::SequenceResult r = vp::Execute2DFft(s, settings, {progress, list});
    benchmark::DoNotOptimize(r.code);
  }
}
BENCHMARK(Sequence2D)->Args({2048, 512, 1})->Args({2048, 512, 0})->Unit(benchmark::kMillisecond)->UseRealTime();

// The anchor: the same passes around FFTW's split-complex transforms of rows and columns.
struct FftwPass {
  std::vector<float> window, cosine, sine;
};

FftwPass MakePass(std::int32_t fid, std::int32_t n) {
  FftwPass p;
  vp::WindowCurve w;
  vp::MakeWindowCurve(SineBell(), {5000, fid, n}, w);
  p.window.assign(w.fromZero(), w.fromZero() + n);
  for (std::int32_t i = 0; i < n; ++i) {
    const double a = (10 + (i - n / 2) * 5.0 / n) * 0.0174532925199433;
    p.cosine.push_back(static_cast<float>(std::cos(a)));
    p.sine.push_back(static_cast<float>(std::sin(a)));
  }
  return p;
}

void Sequence2DFftw(benchmark::State& state) {
  const auto nf2 = static_cast<std::int32_t>(state.range(0)), nf1 = static_cast<std::int32_t>(state.range(1));
  const std::int32_t n2 = 2 * nf2, n1 = 2 * nf1;
  const auto& fid = FidTemplate(nf2, nf1);
  velk::model::Spectrum2D s = fid;
  std::array<velk::model::Plane*, 4> planes{&s.RR, &s.IR, &s.RI, &s.II};
  fftwf_iodim rowDim{n2, 1, 1}, rowMany{nf1, n2, n2};
  fftwf_iodim colDim{n1, n2, n2}, colMany{n2, 1, 1};
  fftwf_plan rows[2], cols[2];
  for (int p = 0; p < 2; ++p) {
    float* re = planes[p == 0 ? 0 : 2]->data.data();  // F2 pairs (RR, IR), (RI, II)
    float* im = planes[p == 0 ? 1 : 3]->data.data();
    rows[p] = fftwf_plan_guru_split_dft(1, &rowDim, 1, &rowMany, re, im, re, im, FFTW_MEASURE);
    float* cre = planes[p == 0 ? 0 : 1]->data.data();  // F1 pairs (RR, RI), (IR, II)
    float* cim = planes[p == 0 ? 2 : 3]->data.data();
    cols[p] = fftwf_plan_guru_split_dft(1, &colDim, 1, &colMany, cre, cim, cre, cim, FFTW_MEASURE);
  }
  const FftwPass f2 = MakePass(nf2, n2), f1 = MakePass(nf1, n1);
  for (auto _ : state) {
    state.PauseTiming();
    CopyPlanes(fid, s);
    state.ResumeTiming();
    for (int p = 0; p < 2; ++p) {
      float* re = planes[p == 0 ? 0 : 2]->data.data();
      float* im = planes[p == 0 ? 1 : 3]->data.data();
      for (std::int32_t r = 0; r < nf1; ++r)
        for (std::int32_t i = 0; i < n2; ++i) {
          re[r * n2 + i] *= f2.window[i];
          im[r * n2 + i] *= -f2.window[i];
        }
      fftwf_execute_split_dft(rows[p], re, im, re, im);
      for (std::int32_t r = 0; r < nf1; ++r) {
        float* x = re + r * n2;
        float* y = im + r * n2;
        std::rotate(x, x + n2 / 2, x + n2);
        std::rotate(y, y + n2 / 2, y + n2);
        for (std::int32_t i = 0; i < n2; ++i) {
          const float a = x[i], b = y[i];
          x[i] = a * f2.cosine[i] - b * f2.sine[i];
          y[i] = a * f2.sine[i] + b * f2.cosine[i];
        }
      }
    }
    for (int p = 0; p < 2; ++p) {
      float* re = planes[p == 0 ? 0 : 1]->data.data();
      float* im = planes[p == 0 ? 2 : 3]->data.data();
      for (std::int32_t j = 0; j < n1; ++j)
        for (std::int32_t i = 0; i < n2; ++i) {
          re[j * n2 + i] *= f1.window[j];
          im[j * n2 + i] *= f1.window[j];
        }
      fftwf_execute_split_dft(cols[p], re, im, re, im);
      for (float* plane : {re, im})
        for (std::int32_t j = 0; j < n1 / 2; ++j) std::swap_ranges(plane + j * n2, plane + (j + 1) * n2, plane + (j + n1 / 2) * n2);
      for (std::int32_t j = 0; j < n1; ++j)
        for (std::int32_t i = 0; i < n2; ++i) {
          const float a = re[j * n2 + i], b = im[j * n2 + i];
          re[j * n2 + i] = a * f1.cosine[j] - b * f1.sine[j];
          im[j * n2 + i] = a * f1.sine[j] + b * f1.cosine[j];
        }
    }
    float largest = 0.1f;
    for (float v : s.RR.data) largest = std::max(largest, std::fabs(v));
    for (auto* p : planes)
      for (float& v : p->data) v /= largest;
    benchmark::DoNotOptimize(s.RR.data.data());
  }
  for (int p = 0; p < 2; ++p) {
    fftwf_destroy_plan(rows[p]);
    fftwf_destroy_plan(cols[p]);
  }
}
BENCHMARK(Sequence2DFftw)->Args({2048, 512})->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
