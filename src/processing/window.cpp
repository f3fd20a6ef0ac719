#include "processing/window.h"

#include <algorithm>
#include <cmath>

namespace velk::processing {
namespace {

constexpr double kPi = 3.14159265358979;
// The Blackman-Harris coefficients are the single-precision values nearest to the usual decimals.
constexpr double kBh0 = 0.35874998569488525, kBh1 = 0.488290011882782, kBh2 = 0.14127999544143677,
                 kBh3 = 0.011680000461637974;
constexpr double kGaussLimit = 85;  // keeps exp inside single precision; points above stay 0

std::int32_t PercentIndex(std::int32_t length, float percent) {
  return static_cast<std::int32_t>(std::lrint(static_cast<double>(length) * percent / 100.0));
}

// The bell types run over i0 .. i1; returns false when i1 = i0 lies inside the data.
template <class Shape>
bool Bell(WindowCurve& c, std::int32_t i0, std::int32_t i1, std::int32_t n, Shape shape) {
  const std::int32_t from = std::max(i0, c.low);
  const std::int32_t to = std::min(i1, n - 1);
  if (i1 == i0) return !(i0 >= c.low && i0 <= n - 1);
  for (std::int32_t i = from; i <= to; ++i) c.at(i) = static_cast<float>(shape(static_cast<double>(i - i0) / (i1 - i0)));
  return true;
}

bool Shape(const WindowFunctionSetting& w, const WindowAxis& a, WindowCurve& c) {
  const std::int32_t n = std::min(a.length, c.high() + 1);
  switch (w.type) {
    case kExponential:
      for (std::int32_t i = c.low; i < n; ++i) c.at(i) = static_cast<float>(std::exp(-w.BF * i * kPi / a.sw));
      return true;
    case kSineBell:
    case kHann: {
      const bool squared = w.type == kHann;
      return Bell(c, PercentIndex(a.length, StartOf(w)), PercentIndex(a.length, EndOf(w)), n, [&](double f) {
        const double v = std::sin(kPi * f);
        return squared ? v * v : v;
      });
    }
    case kGaussian: {
      const std::int32_t i0 = PercentIndex(a.length, StartOf(w));
      for (std::int32_t i = c.low; i < n; ++i) {
        const double t = static_cast<float>((i - i0) / a.sw);
        const double x = static_cast<float>(t * w.GBF * kPi - t * t * w.GF * w.GF * kPi);
        if (x < kGaussLimit) c.at(i) = static_cast<float>(std::exp(x));
      }
      return true;
    }
    case kBlackmanHarris:
      return Bell(c, PercentIndex(a.length, StartOf(w)), PercentIndex(a.length, EndOf(w)), n, [](double f) {
        const double u = static_cast<float>(2 * kPi * f);
        return kBh0 - kBh1 * std::cos(u) + kBh2 * std::cos(2 * u) - kBh3 * std::cos(3 * u);
      });
    default:
      return true;
  }
}

void Trapezoid(const WindowFunctionSetting& w, const WindowAxis& a, WindowCurve& c) {
  const std::int32_t length = a.fidShift >= 1 ? a.length - a.fidShift : a.length;
  const std::int32_t q1 = PercentIndex(length, w.T[0]), q2 = PercentIndex(length, w.T[1]);
  const std::int32_t q3 = PercentIndex(length, w.T[2]), q4 = PercentIndex(length, w.T[3]);
  const std::int32_t top = std::min(a.size - 1, c.high());
  auto clamp = [&](std::int32_t i) { return std::clamp(i, c.low, top + 1); };
  for (std::int32_t i = c.low; i < clamp(q1); ++i) c.at(i) = 0;
  if (q2 > q1)
    for (std::int32_t i = clamp(q1); i <= std::min(q2, top); ++i)
      c.at(i) = static_cast<float>(c.at(i) * static_cast<double>(i - q1) / (q2 - q1));
  if (q4 > q3)
    for (std::int32_t i = clamp(q3); i <= std::min(q4, top); ++i)
      c.at(i) = static_cast<float>(c.at(i) * static_cast<double>(i - q4) / (q3 - q4));
  for (std::int32_t i = clamp(q4); i <= top; ++i) c.at(i) = 0;
}

}  // namespace

float StartOf(const WindowFunctionSetting& w) { return w.type >= 1 && w.type <= 4 ? w.WS[w.type - 1] : 0.0f; }

float EndOf(const WindowFunctionSetting& w) {
  switch (w.type) {
    case kSineBell: return w.WE[0];
    case kHann: return w.WE[1];
    case kBlackmanHarris: return w.WE[2];
    default: return 0.0f;
  }
}

std::string_view WindowName(int type) {
  static constexpr std::string_view kNames[] = {"Exponential", "SineBell", "Hann(SqrSineBell)", "Gaussian",
                                                "Blackman-Harris"};
  return type >= 0 && type <= 4 ? kNames[type] : std::string_view{};
}

int MakeWindowCurve(const WindowFunctionSetting& w, const WindowAxis& axis, WindowCurve& curve) {
  // The exponential and the Gaussian divide by the span: a span of 0 is the arithmetic error.
  if ((w.type == kExponential || w.type == kGaussian) && !(axis.sw > 0)) return 1;
  curve.low = axis.low;
  curve.values.assign(static_cast<std::size_t>(std::max(axis.high, axis.size) - axis.low + 1), 0.0f);
  if (!Shape(w, axis, curve)) return 1;
  if (w.type >= 0 && w.type <= 4 && w.multiTrape[w.type] != 0) Trapezoid(w, axis, curve);
  if (w.type == kExponential) return 0;
  const std::int32_t n = std::min(axis.length, curve.high() + 1);
  float divisor = 0;
  for (std::int32_t i = curve.low; i < n; ++i) divisor = std::max(divisor, curve.at(i));
  if (divisor == 0) return 1;
  for (std::int32_t i = curve.low; i < n; ++i) curve.at(i) /= divisor;
  return 0;
}

}  // namespace velk::processing
