#include "display/levels.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "display/messages.h"
#include "model/data_type.h"

namespace velk::display {

int NormalizeSteps(int steps) {
  if (steps < 5) return 4;
  if (steps <= 8) return 8;
  if (steps <= 16) return 16;
  return 32;
}

double SpacingBase(int interval) {
  static constexpr double kPresets[] = {0.0, 2.0, 1.5, 1.2, 1.8, 2.5, 3.0};
  if (interval <= 0) return 0.0;
  if (interval <= 6) return kPresets[interval];
  if (interval >= 100 && interval <= 300) return interval / 100.0;
  return 2.0;
}

bool HasNegativeSide(const ContourSetting& setting, int pulseModeClass) {
  return (pulseModeClass == model::VPH_HOMO || pulseModeClass == model::VPH_HETERO) && setting.PowerSpectrum == 0;
}

void BuildLevelTable(LevelTable& table, const ContourSetting& setting, float upperLimit, float lowerLimit,
                     int pulseModeClass) {
  const int steps = NormalizeSteps(setting.Steps);
  const int s = 32 / steps;
  const int h = steps / 2;

  int n = 0;
  for (int k = 16 - s; k >= 0; k -= s) {
    table.DrawIndex[n] = k;
    table.DrawSign[n++] = 1;
  }
  if (HasNegativeSide(setting, pulseModeClass)) {
    for (int k = 15 + s; k <= 31; k += s) {
      table.DrawIndex[n] = k;
      table.DrawSign[n++] = -1;
    }
  }
  table.DrawIndex[n] = -1;
  table.DrawSign[n] = 0;
  table.DrawCount = n;

  const double u = upperLimit;
  const double l = lowerLimit;
  const double r = SpacingBase(setting.Interval);
  for (int i = 1; i <= h; ++i) {
    const int k = (i - 1) * s;
    double level;
    // A free base of exactly 1.0 has linear spacing as its limit; the formula would divide by 0.
    if (r == 0.0 || r == 1.0) {
      level = (l - u) * (k / s) / (h - 1) + u;
    } else {
      level = (std::pow(r, h - i) - 1.0) * (u - l) / (std::pow(r, h - 1) - 1.0) + l;
    }
    table.Level[k] = static_cast<float>(level);
    table.Level[31 - k] = -table.Level[k];
  }
  for (int i = 0; i < 32; ++i) table.Color[i] = setting.Palette[i / 2];
}

std::vector<std::string> LevelListText(const LevelTable& table, int steps) {
  const int n = NormalizeSteps(steps);
  const int s = 32 / n;
  std::vector<std::string> lines;
  std::size_t widest = 0;
  for (int i = 1; i <= n / 2; ++i) {
    char text[64];
    std::snprintf(text, sizeof text, "%.6f", table.Level[(i - 1) * s] * 100.0);
    lines.emplace_back(text);
    widest = std::max(widest, lines.back().find('.'));
  }
  for (std::string& line : lines) line = std::string(widest - line.find('.'), ' ') + line + std::string(messages::kPercent);
  return lines;
}

int FreeSpacingCode(double value) {
  const int code = static_cast<int>(std::lrint(std::clamp(value, 1.0, 3.0) * 100.0));
  static constexpr int kPresetValues[][2] = {{120, 3}, {150, 2}, {180, 4}, {200, 1}, {250, 5}, {300, 6}};
  for (const auto& [free, preset] : kPresetValues)
    if (code == free) return preset;
  return code;
}

namespace {

bool ParsePercent(std::string_view text, float& fraction) {
  const std::string copy(text);
  char* end = nullptr;
  const double percent = std::strtod(copy.c_str(), &end);
  if (end == copy.c_str()) return false;
  while (*end == ' ' || *end == '%') ++end;
  if (*end != '\0' || !std::isfinite(percent)) return false;
  fraction = static_cast<float>(percent / 100.0);
  return true;
}

constexpr float kLowestLimit = 1e-8f;

}  // namespace

bool EnterUpperLimit(std::string_view percentText, float& upper, float lower) {
  float value = 0;
  if (!ParsePercent(percentText, value) || !(value > 0) || !(value > lower) || value == upper) return false;
  upper = value;
  return true;
}

bool EnterLowerLimit(std::string_view percentText, float upper, float& lower) {
  float value = 0;
  if (!ParsePercent(percentText, value) || !(value > 0) || !(value < upper) || value == lower) return false;
  lower = value;
  return true;
}

bool StepUpperLimit(bool up, float& upper, float lower) {
  const float value = up ? upper * 1.1f : upper / 1.1f;
  if (!(value > lower)) return false;
  upper = value;
  return true;
}

bool StepLowerLimit(bool up, float upper, float& lower) {
  const float value = up ? lower * 1.1f : lower / 1.1f;
  if (value < kLowestLimit || !(value < upper)) return false;
  lower = value;
  return true;
}

std::string FormatLimit(float value, double scientificBelow) {
  char text[64];
  if (value < scientificBelow) {
    std::snprintf(text, sizeof text, "%.3E", value * 100.0);
    return text;
  }
  // "##0.0####": up to five decimals, trailing zeros dropped down to one.
  std::snprintf(text, sizeof text, "%.5f", value * 100.0);
  std::string s = text;
  while (s.size() > 1 && s.back() == '0' && s[s.size() - 2] != '.') s.pop_back();
  return s;
}

}  // namespace velk::display
