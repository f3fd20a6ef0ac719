#include "processing/ft_controls.h"

#include <algorithm>
#include <cmath>

namespace velk::processing {

double AddPhase0(double phase, double step) {
  double p = phase + step;
  if (p >= 180) p -= 360;
  if (p < -180) p += 360;
  return p;
}

double AddPhase1(double phase, double step) { return std::clamp(phase + step, -1800.0, 1800.0); }

int HeldStep::Press(std::int64_t now) {
  held_ = true;
  next_ = now + kFirstRepeatMs;
  return 1;
}

int HeldStep::Due(std::int64_t now) {
  if (!held_ || now < next_) return 0;
  const std::int64_t steps = 1 + (now - next_) / kRepeatMs;
  next_ += steps * kRepeatMs;
  return static_cast<int>(steps);
}

std::int32_t StepFidShift(std::int32_t shift, int direction, std::int32_t pressStart, std::int32_t nf2) {
  std::int32_t next = std::clamp(shift + direction, std::min(0, 1 - nf2), std::max(0, nf2 - 1));
  if (pressStart > 0 && direction < 0) next = std::max(next, 0);
  if (pressStart < 0 && direction > 0) next = std::min(next, 0);
  return next;
}

WindowExpressions DefaultWindowExpressions() {
  WindowExpressions e;
  e.initial = {"W(t) = exp(-pi * BF * t)",
               "W(t) = sin(pi * (t - WS) / (WE - WS)),  WS <= t <= WE",
               "W(t) = sin^2(pi * (t - WS) / (WE - WS)),  WS <= t <= WE",
               "W(t) = exp(pi * GBF * (t - Tp) - pi * GF^2 * (t - Tp)^2),  Tp the peak position",
               "W(u) = 0.35875 - 0.48829 cos(2 pi u) + 0.14128 cos(4 pi u) - 0.01168 cos(6 pi u),  "
               "u = (t - WS) / (WE - WS)"};
  e.current = e.initial;
  return e;
}

void SetInitialExpression(WindowExpressions& e, int type) {
  if (type >= 0 && type < 5) e.current[type] = e.initial[type];
}

std::string_view ExpressionTitle(int type) {
  static constexpr std::string_view kTitles[] = {"Exponential", "Sine Bell", "Squared Sine Bell", "Gauss Function",
                                                 "Blackman Harris"};
  return type >= 0 && type < 5 ? kTitles[type] : std::string_view{};
}

float ClampCorner(const std::array<float, 4>& T, int corner, float value) {
  switch (corner) {
    case 0: return std::max(-100.0f, std::min(value, T[1]));
    case 1: return std::min(std::max(value, T[0]), T[2] - 10);
    case 2: return std::max(std::min(value, T[3]), T[1] + 10);
    default: return std::min(std::max(value, T[2]), 200.0f);
  }
}

// Start and end keep at least a point of percent between them.
float ClampStart(float value, float end) { return std::max(-100.0f, std::min(value, end - 1)); }
float ClampEnd(float value, float start) { return std::min(200.0f, std::max(value, start + 1)); }

namespace {

// WE of the bell types 1, 2, 4; the Gaussian has none.
float* EndSlot(WindowFunctionSetting& w) {
  switch (w.type) {
    case kSineBell: return &w.WE[0];
    case kHann: return &w.WE[1];
    case kBlackmanHarris: return &w.WE[2];
    default: return nullptr;
  }
}

float* Slot(WindowFunctionSetting& w, WindowField f) {
  const bool bell = w.type >= kSineBell && w.type <= kBlackmanHarris;
  switch (f) {
    case WindowField::Broadening: return &w.BF;
    case WindowField::Start: return bell && w.type != kGaussian ? &w.WS[w.type - 1] : nullptr;
    case WindowField::End: return EndSlot(w);
    case WindowField::GaussPeak: return &w.WS[kGaussian - 1];
    case WindowField::GaussFactor: return &w.GF;
    case WindowField::GaussBroadening: return &w.GBF;
    case WindowField::T1: return &w.T[0];
    case WindowField::T2: return &w.T[1];
    case WindowField::T3: return &w.T[2];
    case WindowField::T4: return &w.T[3];
  }
  return nullptr;
}

}  // namespace

float WindowEditor::Value(WindowField f) const {
  const float* slot = Slot(live_, f);
  return slot ? *slot : 0.0f;
}

float WindowEditor::Set(WindowField f, float value) {
  float* slot = Slot(live_, f);
  if (!slot) return 0.0f;
  switch (f) {
    case WindowField::Start: value = ClampStart(value, *EndSlot(live_)); break;
    case WindowField::End: value = ClampEnd(value, StartOf(live_)); break;
    case WindowField::GaussPeak: value = std::clamp(value, -100.0f, 200.0f); break;
    case WindowField::T1: case WindowField::T2: case WindowField::T3: case WindowField::T4:
      value = ClampCorner(live_.T, static_cast<int>(f) - static_cast<int>(WindowField::T1), value);
      break;
    default: break;
  }
  *slot = value;
  return value;
}

float WindowEditor::Step(WindowField f, int direction) {
  return Set(f, std::trunc(Value(f)) + static_cast<float>(direction));
}

}  // namespace velk::processing
