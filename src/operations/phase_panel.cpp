#include "operations/phase_panel.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace velk::operations {

float WrapPhase0(float degrees) {
  if (!std::isfinite(degrees)) return 0;
  while (degrees < -180.0f) degrees += 360.0f;
  while (degrees > 180.0f) degrees -= 360.0f;
  return degrees;
}

float ClampPhase1(float degrees) {
  if (std::isnan(degrees)) return 0;
  return std::clamp(degrees, -kPhase1Limit, kPhase1Limit);
}

int WrapPhase0Scroll(int tenths) {
  if (tenths < -kPhase0ScrollLimit) return tenths + 3600;
  if (tenths > kPhase0ScrollLimit) return tenths - 3600;
  return tenths;
}

int PhaseScrollValue(float degrees) { return static_cast<int>(std::lrint(degrees * 10.0)); }

float StepPhase0(float phase0, int label) { return WrapPhase0(phase0 + kPhaseSteps.at(label)); }
float StepPhase1(float phase1, int label) { return ClampPhase1(phase1 + kPhaseSteps.at(label)); }

namespace {

std::optional<float> ParseFloat(std::string_view text) {
  const std::string copy(text);
  char* end = nullptr;
  const float value = std::strtof(copy.c_str(), &end);
  if (end == copy.c_str() || !std::isfinite(value)) return std::nullopt;
  while (*end == ' ') ++end;
  if (*end != '\0') return std::nullopt;
  return value;
}

}  // namespace

std::optional<float> ParsePhase0(std::string_view text) {
  const auto value = ParseFloat(text);
  if (!value) return std::nullopt;
  return WrapPhase0(*value);
}

std::optional<float> ParsePhase1(std::string_view text) {
  const auto value = ParseFloat(text);
  if (!value) return std::nullopt;
  return ClampPhase1(*value);
}

std::string FormatPhase(float degrees) {
  char text[64];
  std::snprintf(text, sizeof text, "%.2f", static_cast<double>(degrees));
  std::string s = text;
  if (s.size() > 1 && s.back() == '0') s.pop_back();
  if (s == "-0.0") s = "0.0";
  return s;
}

}  // namespace velk::operations
