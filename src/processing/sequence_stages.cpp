#include "processing/sequence_stages.h"
#include "model/data_type.h"

#include <algorithm>
#include <cmath>

#include "processing/fid_corrections.h"
#include "processing/linear_prediction.h"

namespace velk::processing {
namespace {

using model::F1;
using model::F2;

PhaseRotation RotationOf(const AxisProcessing& a) {
  const bool on = a.phase0 != 0 || a.phase1 != 0;
  return {on, a.phase0, a.phase1, a.pivot};
}

}  // namespace

Stages::Stages(model::Spectrum2D& spectrum, SequenceSettings& seqSettings, const SequenceRun& seqRun)
    : s(spectrum),
      settings(seqSettings),
      run(seqRun),
      workers{seqSettings.threads, &seqRun.progress},
      n1(CurrentSize(seqSettings.axis[F1])),
      n2(CurrentSize(seqSettings.axis[F2])),
      rows(std::clamp(spectrum.extras[F1].fidPoints, 0, CurrentSize(seqSettings.axis[F1]))),
      phase(model::IsPhaseSensitive(seqSettings.pulseModeClass)) {
  settings.axis[F1].pivot = std::lrint(n1 / 2.0);
}

void Stages::Caption(std::string_view text) const {
  if (run.onCaption) run.onCaption(text);
}

bool Stages::Windows(SequenceResult& result) {
  for (const platform::Outcome& out : {Make_CL_Wind(s, settings, w1), Make_RW_Wind(s, settings, w2)})
    if (!out.ok()) {
      result = Cancelled(out.message);
      return false;
    }
  return true;
}

bool Stages::F2Transforms() {
  const bool c = ConjugateF2(settings.pulseModeClass, settings.formatNumber, settings.axis[F2].singleAd);
  const PhaseRotation rotation = phase ? RotationOf(settings.axis[F2]) : PhaseRotation{};
  Caption(phase ? "F2FFT(1)" : "F2FFT");
  if (!TransformF2Rows(s.RR, s.IR, rows, n2, s.fidShift, c, w2, rotation, workers)) return false;
  if (phase) {
    Caption("F2FFT(2)");
    if (!TransformF2Rows(s.RI, s.II, rows, n2, s.fidShift, c, w2, rotation, workers)) return false;
  }
  return true;
}

bool Stages::F1Transforms(bool allowSequential) {
  const AxisProcessing& f1 = settings.axis[F1];
  const bool sequential = allowSequential && f1.singleAd && settings.brukerData;
  const bool c = sequential ? ConjugateF1Sequential(settings.pulseModeClass)
                            : ConjugateF1(settings.pulseModeClass, settings.formatNumber, settings.f1Inverse);
  if (sequential) s.extras[F1].acqMod = 1;
  const PhaseRotation rotation = phase ? RotationOf(f1) : PhaseRotation{};
  auto transform = sequential ? TransformF1Sequential : TransformF1Columns;
  Caption(phase ? "F1FFT(1)" : "F1FFT");
  if (!transform(s.RR, phase ? s.RI : s.IR, n1, n2, c, w1, rotation, workers)) return false;
  if (phase) {
    Caption("F1FFT(2)");
    if (!transform(s.IR, s.II, n1, n2, c, w1, rotation, workers)) return false;
  }
  return true;
}

void Stages::T1Noise() {
  if (!settings.t1Noise) return;
  if (phase)
    T1NoiseCorrection({&s.RR, &s.IR, &s.RI, &s.II}, n2, settings.t1Factor);
  else
    T1NoiseCorrection({&s.RR, &s.IR}, n2, settings.t1Factor);
}

// The magnitude of the absolute path, normalised to its maximum (at least 0.1).
void Stages::Power() {
  run.list.push_back("POWER");
  Caption("POWER");
  float largest = 0.1f;
  for (std::int32_t j = 0; j < n1; ++j)
    for (std::int32_t i = 0; i < n2; ++i) {
      const float x = s.RR.at(i, j), y = s.IR.at(i, j);
      const float m = std::sqrt(x * x + y * y);
      s.RR.at(i, j) = m;
      largest = std::max(largest, m);
    }
  for (std::int32_t j = 0; j < n1; ++j)
    for (std::int32_t i = 0; i < n2; ++i) s.RR.at(i, j) /= largest;
}

SequenceResult Stages::Plain() {
  SequenceResult result;
  if (!Windows(result)) return result;
  if (!F2Transforms()) return Cancelled();
  T1Noise();
  s.axis[F2].Resolution /= settings.axis[F2].zeroFill;
  if (settings.f2Only) return Finish(false);
  run.list.push_back("F1FFT");
  if (!F1Transforms(true)) return Cancelled();
  s.axis[F1].Resolution /= settings.axis[F1].zeroFill;
  if (!phase) Power();
  return Finish(false);
}

// Forward and backward prediction along F2, before its window and shift.
bool Stages::Predict() {
  const AxisProcessing& f2 = settings.axis[F2];
  const LpRun lp{workers, run.list};
  const std::int32_t nf2 = std::min(s.extras[F2].fidPoints, n2);
  auto pairs = [&](const char* list, const char* caption, auto step) {
    for (int pair = 1; pair <= (phase ? 2 : 1); ++pair) {
      run.list.push_back(std::string(list) + std::to_string(pair));
      Caption(std::string(caption) + "(" + std::to_string(pair) + ")");
      if (!(pair == 1 ? step(s.RR, s.IR) : step(s.RI, s.II))) return false;
    }
    return true;
  };
  if (f2.lpFactor >= 2 &&
      !pairs("LP Forward(F2) Calc.-", "LP Forward F2", [&](model::Plane& x, model::Plane& y) {
        return LpForwardF2(x, y, f2.lp, nf2, n2, rows, lp);
      }))
    return false;
  if (f2.lp.BackwardOn &&
      !pairs("LP Backward(F2) Calc.-", "LP Backward F2", [&](model::Plane& x, model::Plane& y) {
        return LpBackwardF2(x, y, f2.lp, nf2, n2, s.fidShift, rows, lp);
      }))
    return false;
  return true;
}

// Single-converter Bruker data: the F1 time signal is made uniform before prediction. The
// transforms need a power of two, so they run over the F1 size as read (rows past the data are 0).
bool Stages::BrukerCorrection() {
  if (!(settings.axis[F1].singleAd && settings.brukerData)) return true;
  run.list.push_back("Bruker Correction");
  const std::int32_t n = settings.axis[F1].baseSize;
  const std::array<std::pair<model::Plane*, model::Plane*>, 2> pairs{
      std::pair{&s.RR, phase ? &s.RI : &s.IR}, std::pair{&s.IR, &s.II}};
  int caption = 1;
  for (int p = 0; p < (phase ? 2 : 1); ++p) {
    Caption("BrukerCorr(" + std::to_string(caption++) + ")");
    BrukerCorrectionF1(*pairs[p].first, *pairs[p].second, n, n2);
    Caption("BrukerCorr(" + std::to_string(caption++) + ")");
    if (!InverseColumns(*pairs[p].first, *pairs[p].second, n, n2, true, workers)) return false;
  }
  return true;
}

SequenceResult Stages::WithPrediction() {
  SequenceResult result;
  if (!Predict()) return Cancelled();
  if (!Windows(result)) return result;
  run.list.push_back("F2FFT");
  if (!F2Transforms()) return Cancelled();
  s.axis[F2].Resolution /= settings.axis[F2].zeroFill;
  if (!BrukerCorrection()) return Cancelled();
  const AxisProcessing& f1 = settings.axis[F1];
  const LpRun lp{workers, run.list};
  const std::int32_t nf1 = rows;
  const std::array<std::pair<model::Plane*, model::Plane*>, 2> pairs{
      std::pair{&s.RR, phase ? &s.RI : &s.IR}, std::pair{&s.IR, &s.II}};
  for (int p = 0; p < (phase ? 2 : 1) && f1.lpFactor >= 2; ++p) {
    run.list.push_back("LP Forward(F1) Calc.-" + std::to_string(p + 1));
    Caption(phase ? "LP Forward F1(" + std::to_string(p + 1) + ")" : "LP Forward F1");
    if (!LpForwardF1(*pairs[p].first, *pairs[p].second, f1.lp, nf1, n1, n2, lp)) return Cancelled();
  }
  for (int p = 0; p < (phase ? 2 : 1) && f1.lp.BackwardOn; ++p) {
    run.list.push_back("LP Backward(F1) Calc.-" + std::to_string(p + 1));
    Caption(phase ? "LP Backward F1(" + std::to_string(p + 1) + ")" : "LP Backward F1");
    if (!LpBackwardF1(*pairs[p].first, *pairs[p].second, f1.lp, nf1, n2, lp)) return Cancelled();
  }
  run.list.push_back("F1FFT");
  T1Noise();
  if (!F1Transforms(false)) return Cancelled();
  s.axis[F1].Resolution /= settings.axis[F1].zeroFill;
  if (!phase) Power();
  return Finish(true);
}

SequenceResult Stages::Finish(bool withPrediction) {
  run.list.push_back("Make Display Data");
  SequenceResult result;
  result.fftDate = FinalStage(s, settings, withPrediction);
  return result;
}

}  // namespace velk::processing
