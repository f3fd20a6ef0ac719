#include "document/ft_window.h"

#include <algorithm>
#include <cmath>

#include "document/ft_settings.h"
#include "document/transform.h"
#include "processing/fid_corrections.h"
#include "processing/ft_controls.h"
#include "processing/lp_form.h"
#include "processing/sequence_stages.h"
#include "processing/transforms.h"

namespace velk::document {

using model::F1;
using model::F2;

constexpr double kDegree = 0.0174532925199433;

FtWindow::FtWindow(Document& d) : document_(d), settings_(DefaultSettingsOf(d)) {
  Refresh();
  ShowWholeFid();
}

std::int32_t FtWindow::Rows() const { return settings_.axis[F1].baseSize; }
std::int32_t FtWindow::Columns() const { return settings_.axis[F2].baseSize; }
bool FtWindow::PhaseSensitive() const { return model::IsPhaseSensitive(settings_.pulseModeClass); }

void FtWindow::ShowF2() {
  view_ = F2;
  Refresh();
  ShowWholeFid();
}

void FtWindow::ShowF1() {
  view_ = F1;
  settings_.axis[F1].pivot = std::round(processing::CurrentSize(settings_.axis[F1]) / 2.0);
  Refresh();
  ShowWholeFid();
}

void FtWindow::StepRow(int direction) {
  row_ = std::clamp(row_ + direction, 0, std::max(0, Rows() - 1));
  if (view_ == F2) Refresh();
}

void FtWindow::StepColumn(int direction) {
  column_ = std::clamp(column_ + direction, 0, std::max(0, Columns() - 1));
  if (view_ == F1) Refresh();
}

void FtWindow::AddPhase0(double step) {
  Axis().phase0 = processing::AddPhase0(Axis().phase0, step);
  Rephase();
}

void FtWindow::AddPhase1(double step) {
  Axis().phase1 = processing::AddPhase1(Axis().phase1, step);
  Rephase();
}

void FtWindow::SetPhase0(double degrees) { AddPhase0(degrees - Axis().phase0); }
void FtWindow::SetPhase1(double degrees) { AddPhase1(degrees - Axis().phase1); }

void FtWindow::SetPivot(std::int32_t point) {
  if (view_ != F2) return;
  Axis().pivot = std::clamp(point, 0, processing::CurrentSize(Axis()) - 1);
  Rephase();
}

void FtWindow::SetYSpan(float multiplier) {
  if (!(multiplier > 0)) return;
  yMultiplier_ = multiplier;
  preview_.scale.ySpan = preview_.scale.yMaximum / yMultiplier_;
}

void FtWindow::Refresh() {
  const model::Spectrum2D& s = document_.spectrum;
  const processing::AxisProcessing& a = Axis();
  const std::int32_t n = processing::CurrentSize(a);
  FtPreview& p = preview_;
  p.fidRe.assign(static_cast<std::size_t>(std::max(n, 0)), 0.0f);
  p.fidIm.assign(p.fidRe.size(), 0.0f);
  // The F2 view shows a row of (RR, IR); the F1 view a column of the F1 pair: (RR, RI) in the
  // phase-sensitive classes, (RR, IR) in the absolute ones.
  if (view_ == F2 && reference_) {
    const auto points = std::min<std::size_t>(p.fidRe.size(), reference_->re.size());
    std::copy_n(reference_->re.begin(), points, p.fidRe.begin());
    std::copy_n(reference_->im.begin(), points, p.fidIm.begin());
  } else if (view_ == F2) {
    const std::int32_t points = std::min(n, s.RR.stride);
    if (row_ < s.RR.rows)
      for (std::int32_t i = 0; i < points; ++i) {
        p.fidRe[i] = s.RR.at(i, row_);
        p.fidIm[i] = s.IR.at(i, row_);
      }
  } else {
    const model::Plane& imag = PhaseSensitive() ? s.RI : s.IR;
    const std::int32_t points = std::min(n, s.RR.rows);
    if (column_ < s.RR.stride)
      for (std::int32_t j = 0; j < points; ++j) {
        p.fidRe[j] = s.RR.at(column_, j);
        p.fidIm[j] = imag.at(column_, j);
      }
  }
  Predict();
  const platform::Outcome made = view_ == F2 ? processing::Make_RW_Wind(s, settings_, p.window)
                                             : processing::Make_CL_Wind(s, settings_, p.window);
  p.windowFailed = !made.ok();
  p.specRe = p.fidRe;
  p.specIm = p.fidIm;
  if (p.windowFailed) {
    std::fill(p.specRe.begin(), p.specRe.end(), 0.0f);
    std::fill(p.specIm.begin(), p.specIm.end(), 0.0f);
  } else {
    processing::TraceView v;
    v.axis = view_;
    v.span = s.axis[view_].Frequency;
    v.size = n;
    v.zeroFill = a.lpFactor != 1 ? a.lpFactor : a.zeroFill;
    v.fidShift = view_ == F2 ? s.fidShift : 0;
    v.pulseModeClass = settings_.pulseModeClass;
    v.formatNumber = settings_.formatNumber;
    v.brukerData = settings_.brukerData;
    v.f1SingleAd = settings_.axis[F1].singleAd;
    v.f1Inverse = settings_.f1Inverse;
    v.yMultiplier = yMultiplier_;
    p.scale = processing::TransformTrace(p.specRe.data(), p.specIm.data(), p.window, v);
  }
  rampValid_ = false;
  Rephase();
}

Transformed FtWindow::Execute(platform::Progress& progress, const std::filesystem::path& workFile,
                              std::function<void(std::string_view)> onCaption, bool withPrediction) {
  if (processing::SaveFidWork(workFile, document_.spectrum) != 0) {
    Transformed refused;
    refused.outcome = {1, {"File Error", "The FID cannot be kept in " + workFile.string(), platform::Buttons::Ok}};
    return refused;
  }
  const processing::SequenceSettings before = settings_;
  Transformed done = TransformDocument(document_, settings_, withPrediction, progress, std::move(onCaption));
  if (!done.outcome.ok()) {
    settings_ = before;
    processing::RestoreFidWork(workFile, document_.spectrum);
  } else {
    // The transform clears its phases; the phase correction opens with those it was made with.
    const processing::AxisProcessing& f1 = before.axis[F1];
    const processing::AxisProcessing& f2 = before.axis[F2];
    document_.phases = {static_cast<float>(f1.phase0), static_cast<float>(f1.phase1), static_cast<float>(f2.phase0),
                        static_cast<float>(f2.phase1), static_cast<std::int32_t>(std::lrint(f1.pivot)),
                        static_cast<std::int32_t>(std::lrint(f2.pivot))};
  }
  std::error_code ignored;
  std::filesystem::remove(workFile, ignored);
  return done;
}

void FtWindow::Rephase() {
  FtPreview& p = preview_;
  const auto n = static_cast<std::int32_t>(p.specRe.size());
  p.shownRe.resize(p.specRe.size());
  p.shownIm.resize(p.specIm.size());
  if (PhaseSensitive()) {
    const processing::AxisProcessing& a = Axis();
    if (!rampValid_ || rampPhase1_ != a.phase1 || rampPivot_ != a.pivot) {
      rampRe_ = p.specRe;
      rampIm_ = p.specIm;
      processing::RotatePhaseTrace(rampRe_.data(), rampIm_.data(), n, {true, 0.0, a.phase1, a.pivot});
      rampValid_ = true;
      rampPhase1_ = a.phase1;
      rampPivot_ = a.pivot;
    }
    const double c = std::cos(a.phase0 * kDegree), s = std::sin(a.phase0 * kDegree);
    for (std::int32_t i = 0; i < n; ++i) {
      p.shownRe[i] = static_cast<float>(rampRe_[i] * c - rampIm_[i] * s);
      p.shownIm[i] = static_cast<float>(rampRe_[i] * s + rampIm_[i] * c);
    }
    return;
  }
  // Absolute classes show the magnitude; the phase controls have no part.
  for (std::int32_t i = 0; i < n; ++i) {
    p.shownRe[i] = std::hypot(p.specRe[i], p.specIm[i]);
    p.shownIm[i] = 0.0f;
  }
}

double FtWindow::PpmOf(double point) const {
  const model::AxisExtras& e = document_.spectrum.extras[view_];
  const model::AxisInfo& info = document_.spectrum.axis[view_];
  const double centre = e.ppmFirst + std::lrint(info.Point / 2.0) * e.ppmStep;
  const double frequency0 = e.absFreqCenter - info.Frequency * 0.5e-6;
  const auto n = static_cast<double>(preview_.specRe.size());
  const double step = frequency0 > 0 && n > 0 ? info.Frequency / n / frequency0 : 0.0;
  return centre + (point - std::lrint(n / 2)) * step;
}

std::int32_t FtWindow::DataPoints(model::Axis a) const { return document_.spectrum.extras[a].fidPoints; }

std::int32_t FtWindow::Extension(model::Axis a) const {
  const processing::AxisProcessing& p = settings_.axis[a];
  return p.lpFactor != 1 ? p.lpFactor : p.zeroFill;
}

bool FtWindow::PredictionAsked() const { return processing::PredictionAsked(settings_).empty(); }

platform::Outcome FtWindow::Resized(platform::Outcome out) {
  processing::AxisProcessing& f1 = settings_.axis[F1];
  f1.pivot = std::round(processing::CurrentSize(f1) / 2.0);
  Refresh();
  ShowWholeFid();
  return out;
}

platform::Outcome FtWindow::ZeroFill(model::Axis a) {
  return Resized(processing::ZeroFill(document_.spectrum, settings_, a));
}

platform::Outcome FtWindow::CancelZeroFill(model::Axis a) {
  return Resized(processing::CancelZeroFill(document_.spectrum, settings_, a));
}

platform::Outcome FtWindow::LpFill(model::Axis a) {
  const platform::Outcome out = Resized(processing::LpFill(document_.spectrum, settings_, a));
  if (!out.ok()) return out;
  return a == view_ ? preview_.prediction : platform::Outcome{};
}

platform::Outcome FtWindow::LpBack(model::Axis a) {
  processing::LpSetting& lp = settings_.axis[a].lp;
  if (platform::Message illegal = processing::CheckLpBack(lp, DataPoints(a)); !illegal.empty()) return {1, illegal};
  lp.BackwardOn = 1;
  Refresh();
  return a == view_ ? preview_.prediction : platform::Outcome{};
}

// The prediction asked for on the axis shown, on the trace as read: forward past the measured
// points, then backward over the first ones.
void FtWindow::Predict() {
  FtPreview& p = preview_;
  p.prediction = {};
  const processing::AxisProcessing& a = Axis();
  const auto n = static_cast<std::int32_t>(p.fidRe.size());
  const std::int32_t measured = std::min(DataPoints(view_), n);
  if (Predicted(view_)) p.prediction = processing::LpForwardTrace(p.fidRe.data(), p.fidIm.data(), a.lp, measured, n);
  if (p.prediction.ok() && a.lp.BackwardOn && a.lp.BackPoints >= 1)
    p.prediction = processing::LpBackwardTrace(p.fidRe.data(), p.fidIm.data(), a.lp, measured);
}

void FtWindow::UseSettings(const core::Settings& from) {
  LoadFtSettings(from, settings_, expressions_);
  Refresh();
}

void FtWindow::KeepSettings(core::Settings& to) const { StoreFtSettings(settings_, to); }

platform::Outcome FtWindow::SetRecipeSource(processing::RecipeSource source) {
  const processing::SequenceSettings before = settings_;
  settings_ = DefaultSettingsOf(document_, source);
  // What the user keeps from run to run stays.
  for (model::Axis a : {F1, F2}) settings_.axis[a].lp = before.axis[a].lp;
  settings_.t1Noise = before.t1Noise;
  settings_.t1Factor = before.t1Factor;
  return Resized(processing::Resize(document_.spectrum, settings_));
}

std::int32_t FtWindow::WorkingLength() const {
  return std::max(processing::CurrentSize(settings_.axis[F1]), processing::CurrentSize(settings_.axis[F2]));
}

void FtWindow::SetPhaseReference(PhaseReference reference) {
  reference_ = std::move(reference);
  yMultiplier_ = 1.0f;
  ShowF2();
}

void FtWindow::SetPhaseSensitive(bool on) {
  processing::SequenceSettings& s = settings_;
  s.pulseModeClass = model::ClassForMethod(s.pulseModeClass, on);
  const bool inadequate = s.mode == 10 || s.mode == 11;
  s.mode = inadequate ? (on ? 10 : 11) : s.pulseModeClass;
  processing::InitialF1Phase(document_.spectrum, s, document_.source.detection.modeText);
  Refresh();
}

void FtWindow::SetFidShift(std::int32_t shift) {
  document_.spectrum.fidShift = shift;
  Refresh();
}

FtWindow::Corrections FtWindow::CurrentCorrections() const {
  return {settings_.axis[F1].singleAd, settings_.axis[F2].singleAd, settings_.fidBaseline, settings_.t1Noise,
          settings_.t1Factor};
}

void FtWindow::SetCorrections(const Corrections& c) {
  settings_.axis[F1].singleAd = settings_.brukerData && c.f1SingleAd;
  settings_.axis[F2].singleAd = settings_.brukerData && c.f2SingleAd;
  settings_.t1Noise = c.t1Noise;
  settings_.t1Factor = processing::ClampT1NoiseFactor(c.t1Factor);
  if (c.fidBaseline && !settings_.fidBaseline) {
    model::Spectrum2D& s = document_.spectrum;
    for (model::Plane* plane : {&s.RR, &s.IR, &s.RI, &s.II})
      processing::FidBaseline(*plane, std::min(DataPoints(F1), plane->rows), std::min(DataPoints(F2), plane->stride));
    settings_.fidBaseline = true;
  }
  Refresh();
}

}  // namespace velk::document
