#include <algorithm>
#include <cmath>
#include <ctime>
#include <sstream>

#include "core/text.h"
#include "model/data_type.h"
#include "processing/parallel.h"
#include "processing/sequence_stages.h"
#include "processing/window.h"

namespace velk::processing {
namespace {

using model::F1;
using model::F2;

// Numbers as general formatting prints them: no trailing zeros, no exponent for usual values.
std::string General(double value) {
  std::ostringstream out;
  out.precision(7);
  out << value;
  return out.str();
}

std::string_view ModeText(int mode) {
  switch (mode) {
    case 0: return "HOMO Nucler, Phase Sensitive";
    case 1: return "HOMO Nucler, Absolute";
    case 2: return "HETERO Nucler, Mix Phase";
    case 3: return "HETERO Nucler, Phase Sensitive";
    case 4: return "HETERO Nucler, Absolute";
    case 10: return "INADEQUATE, Phase Sensitive";
    case 11: return "INADEQUATE, Absolute";
    default: return "";
  }
}

void WindowLines(std::vector<std::string>& lines, const WindowFunctionSetting& w, const std::string& axis) {
  lines.push_back(axis + std::string(WindowName(w.type)));
  auto value = [&](const char* name, double v, const char* unit) {
    lines.push_back(std::string(name) + axis + " = " + General(v) + unit);
  };
  switch (w.type) {
    case kExponential: value("BF", w.BF, " Hz"); break;
    case kSineBell:
    case kHann:
    case kBlackmanHarris:
      value("WS", StartOf(w), " %");
      value("WE", EndOf(w), " %");
      break;
    case kGaussian:
      value("WS", StartOf(w), " %");
      value("G-BF", w.GBF, " Hz");
      value("GF", w.GF, " Hz");
      break;
    default: break;
  }
  const bool trape = w.type >= 0 && w.type <= 4 && w.multiTrape[w.type] != 0;
  lines.push_back("Multi Trape" + axis + (trape ? " ON" : " OFF"));
  if (trape)
    for (int k = 0; k < 4; ++k) lines.push_back("T" + std::to_string(k + 1) + " = " + General(w.T[k]) + " %");
}

void LpLines(std::vector<std::string>& lines, const AxisProcessing& a, const std::string& axis, bool withPrediction) {
  const bool forward = withPrediction && a.lpFactor >= 2 && a.lp.ForwardOn;
  const bool backward = withPrediction && a.lp.BackwardOn;
  lines.push_back(backward ? axis + "LP Backward ON" : "");
  lines.push_back(forward ? axis + "LP Forward ON" : "");
  const bool any = forward || backward;
  lines.push_back(any ? axis + "LP Order = " + std::to_string(a.lp.Order) : "");
  lines.push_back(any ? axis + "LP Point = " + std::to_string(a.lp.Points) : "");
  lines.push_back(forward ? axis + "LP Start = " + std::to_string(a.lp.Start) : "");
}

std::string Now() {
  const std::time_t t = std::time(nullptr);
  std::tm local{};
  localtime_r(&t, &local);
  char text[32];
  std::strftime(text, sizeof text, "%Y/%m/%d  %H:%M:%S", &local);
  return text;
}

// The 0 ppm frequency from the reference table, when the set names its instrument and a row
// matches; F1 of heteronuclear modes looks for the irradiated nucleus.
std::optional<double> TableReference(const model::Spectrum2D& s, const SequenceSettings& settings, model::Axis axis) {
  if (!settings.referenceTable || s.texts.instrumentId.empty()) return std::nullopt;
  const bool irradiated = axis == F1 && !model::IsHomonuclear(settings.pulseModeClass);
  const std::string nucleus = core::ToUpper(irradiated ? s.params.IRNUC : s.params.OBNUC);
  return settings.referenceTable(core::ToUpper(s.texts.instrumentId), core::ToUpper(s.params.SLVNT), nucleus,
                                 s.extras[axis].absFreqCenter);
}

// Axis of a finished transform: the ppm step from the frequency of point 0; the ppm of the centre
// point from the reference table, else as the reader gave it.
void SetAxis(model::Spectrum2D& s, const SequenceSettings& settings, model::Axis axis, std::int32_t size) {
  model::AxisExtras& e = s.extras[axis];
  model::AxisInfo& info = s.axis[axis];
  double centrePpm = e.ppmFirst + std::lrint(info.Point / 2.0) * e.ppmStep;
  if (const auto zeroPpm = TableReference(s, settings, axis); zeroPpm && *zeroPpm > 0) {
    e.absFreq0ppm = *zeroPpm;
    centrePpm = (e.absFreqCenter - *zeroPpm) / *zeroPpm * 1e6;
  }
  const double frequency0 = e.absFreqCenter - info.Frequency * 0.5 * 1e-6;
  const double resolution = size > 0 ? static_cast<double>(info.Frequency) / size : 0;
  e.ppmStep = frequency0 > 0 ? static_cast<float>(resolution / frequency0) : 0.0;
  e.ppmFirst = centrePpm - std::lrint(size / 2.0) * e.ppmStep;
  info.Point = size;
  info.RefPoint = 0;
  info.Reference = static_cast<float>(e.ppmFirst);
}

// Every point of the four planes divided by the largest |RR| (at least 0.1). The maximum does not
// depend on the order of the search, so the rows may be shared out.
void Normalise(model::Spectrum2D& s, std::int32_t n1, std::int32_t n2, int requestedThreads) {
  const int threads = ResolveThreads(requestedThreads);
  platform::NoProgress quiet;
  std::vector<float> largest(threads, 0.1f);
  constexpr std::int32_t kRows = 16;
  ForEachChunk(n1, kRows, threads, quiet, [&](std::int64_t first, std::int32_t count, int worker) {
    for (std::int32_t j = 0; j < count; ++j)
      for (float v : s.RR.row(static_cast<std::int32_t>(first) + j).first(n2))
        largest[worker] = std::max(largest[worker], std::fabs(v));
  });
  const float divisor = *std::max_element(largest.begin(), largest.end());
  ForEachChunk(n1, kRows, threads, quiet, [&](std::int64_t first, std::int32_t count, int) {
    for (model::Plane* p : {&s.RR, &s.IR, &s.RI, &s.II})
      for (std::int32_t j = 0; j < count; ++j)
        for (float& v : p->row(static_cast<std::int32_t>(first) + j).first(n2)) v /= divisor;
  });
}

}  // namespace

void WriteProcessingText(model::Spectrum2D& s, const SequenceSettings& settings, bool withPrediction) {
  const AxisProcessing& f1 = settings.axis[F1];
  const AxisProcessing& f2 = settings.axis[F2];
  std::vector<std::string> lines{
      std::string(ModeText(settings.mode)),
      settings.fidEdit ? "FID Edit ON" : "",
      settings.f1Exchange ? "(F1)Exchage Upper & Lower" : "",
      "",
      settings.fidBaseline ? "FID BaseLine Corr. ON" : "",
      "FID Shift " + std::to_string(s.fidShift),
      settings.t1Noise ? "T1 Noise Corr ON" : "",
      settings.t1Noise ? "FistPoint Corr. x" + General(settings.t1Factor) : "",
      f1.singleAd ? "(F1) Single AD" : "(F1) Dual AD",
      f2.singleAd ? "(F2) Single AD" : "(F2) Dual AD",
      "ZeroFill F1 x" + std::to_string(f1.zeroFill),
      "ZeroFill F2 x" + std::to_string(f2.zeroFill)};
  LpLines(lines, f1, "(F1)", withPrediction);
  LpLines(lines, f2, "(F2)", withPrediction);
  WindowLines(lines, f1.window, "(F1)");
  WindowLines(lines, f2.window, "(F2)");
  s.processing.fill("");
  for (std::size_t i = 0; i < std::min(lines.size(), s.processing.size()); ++i) s.processing[i] = lines[i];
}

std::string FinalStage(model::Spectrum2D& s, SequenceSettings& settings, bool withPrediction) {
  const std::int32_t n1 = CurrentSize(settings.axis[F1]), n2 = CurrentSize(settings.axis[F2]);
  if (model::IsPhaseSensitive(settings.pulseModeClass) || settings.f2Only) Normalise(s, n1, n2, settings.threads);
  if (!settings.f2Only) SetAxis(s, settings, F1, n1);
  SetAxis(s, settings, F2, n2);
  model::RebuildPpmTables(s);
  for (AxisProcessing& a : settings.axis) a.phase0 = a.phase1 = 0;
  WriteProcessingText(s, settings, withPrediction);
  s.texts.fftUser = settings.operatorName;
  s.firstFftDate = Now();
  return s.firstFftDate;
}

}  // namespace velk::processing
