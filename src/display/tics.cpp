#include "display/tics.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace velk::display {
namespace {

// int() of the routine: truncation towards zero.
double FirstTic(double a, double step) { return (std::trunc(a / step - 0.0001) + 1.0) * step; }

// Decimals that show every multiple of the step exactly (at most 6).
int DecimalsOf(double step) {
  const double s = std::fabs(step);
  for (int d = 0; d < 6; ++d) {
    const double scaled = s * std::pow(10.0, d);
    if (std::fabs(scaled - std::round(scaled)) < 1e-6 * std::max(1.0, scaled)) return d;
  }
  return 6;
}

int MinorDivisions(int digit) { return digit == 2 || digit == 4 ? 4 : 5; }

std::vector<Tic> TicsFrom(double a, double first, double b, double step, int divisions) {
  std::vector<Tic> tics;
  if (step == 0) return tics;
  const double slack = 0.001 * std::fabs(step);
  const auto inside = [&](double v) {
    return step > 0 ? v >= a - slack && v <= b + slack : v <= a + slack && v >= b - slack;
  };
  // The truncation of the first tic skips a whole step when a / step is negative (a range
  // running against the sign of its values, or a step grown after the first): a major tic
  // that lies inside the range before the first one is taken back. A tic on the start
  // itself stays away, as the first-tic rule wants.
  while (inside(first - step) && std::fabs(first - step - a) > slack) first -= step;
  // Minor tics before the first major one, then each major step with its divisions.
  const double minor = divisions > 1 ? step / divisions : 0;
  for (int k = 1; minor != 0 && k < divisions; ++k) {
    const double v = first - k * minor;
    if (!inside(v)) break;
    tics.push_back({v, false, {}});
  }
  std::reverse(tics.begin(), tics.end());
  for (int n = 0; n < 10000; ++n) {
    const double major = first + n * step;
    if (!inside(major)) break;
    tics.push_back({major, true, TicLabel(major, step)});
    for (int k = 1; minor != 0 && k < divisions; ++k) {
      const double v = major + k * minor;
      if (!inside(v)) break;
      tics.push_back({v, false, {}});
    }
  }
  return tics;
}

}  // namespace

int NiceTicStep(double a, double b, double& first, double& span, double& step) {
  span = b - a;
  if (a == b) {
    step = 0;
    first = a;
    return 0;
  }
  const double l = std::log(std::fabs(span)) * 0.434294481903252;
  const double e = std::floor(l);
  const double m = std::pow(10.0, l - e);
  const int digit = m <= 1.5 ? 1 : m <= 2.0 ? 2 : m <= 2.5 ? 4 : m <= 5.0 ? 5 : 10;
  step = (span < 0 ? -1.0 : 1.0) * (digit / 10.0) * std::pow(10.0, e);
  first = FirstTic(a, step);
  return digit;
}

void FixedTicStart(double a, double b, double& first, double& span, double& step) {
  span = b - a;
  first = a;
  if (a == b || step == 0 || !std::isfinite(step) || std::fabs(span) / std::fabs(step) > 50) {
    step = 0;
    return;
  }
  step = span < 0 ? -std::fabs(step) : std::fabs(step);
  first = FirstTic(a, step);
}

std::string TicLabel(double value, double step) {
  if (std::fabs(value) < 0.01 * std::fabs(step)) value = 0;
  char text[32];
  const double size = std::fabs(value);
  if (size > 10000 || (size != 0 && size < 0.001)) std::snprintf(text, sizeof text, "%.2E", value);
  else std::snprintf(text, sizeof text, "%.*f", DecimalsOf(step), value);
  return text;
}

std::vector<Tic> MakeTics(double a, double b, int pixels, const TicSetting& setting,
                          const std::function<int(const std::string&)>& labelWidth) {
  double first = 0, span = 0, step = setting.step;
  if (!setting.automatic) {
    FixedTicStart(a, b, first, span, step);
    return TicsFrom(a, first, b, step, setting.divisions);
  }
  int digit = NiceTicStep(a, b, first, span, step);
  if (step == 0 || pixels <= 0) return {};
  for (int round = 0; round < 11; ++round) {
    int widest = 0;
    for (const Tic& t : TicsFrom(a, first, b, step, 1)) widest = std::max(widest, labelWidth(t.label));
    if (std::fabs(step) * pixels / std::fabs(span) * 0.9 >= widest) break;
    if (digit == 4) {
      step *= 1.25;
      digit = 5;
    } else {
      step *= 2;
      digit *= 2;
    }
    if (digit > 10) digit /= 10;
    first = FirstTic(a, step);
  }
  return TicsFrom(a, first, b, step, MinorDivisions(digit));
}

}  // namespace velk::display
