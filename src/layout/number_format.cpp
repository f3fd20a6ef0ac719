#include "layout/number_format.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace velk::layout {

std::string FormatNumber(double value, std::string_view pattern) {
  const std::size_t point = pattern.find('.');
  const std::string_view whole = pattern.substr(0, point);
  const std::string_view fraction = point == std::string_view::npos ? std::string_view() : pattern.substr(point + 1);
  const auto leastWhole = std::count(whole.begin(), whole.end(), '0');
  const auto leastDecimals = std::count(fraction.begin(), fraction.end(), '0');
  const auto mostDecimals = leastDecimals + std::count(fraction.begin(), fraction.end(), '#');
  if (!std::isfinite(value)) return value != value ? "NaN" : value > 0 ? "Infinity" : "-Infinity";

  char buffer[400];
  std::snprintf(buffer, sizeof buffer, "%.*f", static_cast<int>(mostDecimals), std::fabs(value));
  std::string text = buffer;
  std::size_t dot = text.find('.');
  if (dot != std::string::npos) {
    std::size_t keep = text.size();
    while (keep > dot + 1 + static_cast<std::size_t>(leastDecimals) && text[keep - 1] == '0') --keep;
    if (keep == dot + 1) keep = dot;  // no decimals left: no point either
    text.resize(keep);
  }
  dot = std::min(text.find('.'), text.size());
  std::string wholeDigits = text.substr(0, dot);
  if (wholeDigits == "0" && leastWhole == 0) wholeDigits.clear();
  while (static_cast<std::ptrdiff_t>(wholeDigits.size()) < leastWhole) wholeDigits.insert(0, "0");
  text = wholeDigits + text.substr(dot);
  const bool allZero = text.find_first_of("123456789") == std::string::npos;
  return (value < 0 && !allZero ? "-" : "") + text;
}

std::string FormatPlainOrExp(double value, int digits, ExponentSigns signs) {
  const bool symbol = signs == ExponentSigns::Symbol;
  const std::string minus = symbol ? "\u2212" : "-";
  int exponent = value == 0 || !std::isfinite(value) ? 0 : static_cast<int>(std::floor(std::log10(std::fabs(value))));
  if (exponent >= -3 && exponent <= 3) return FormatNumber(value, digits == 0 ? "#######0" : "#######0.0######");

  const int decimals = std::clamp(digits, 0, 5);
  double mantissa = value / std::pow(10.0, exponent);
  const double unit = std::pow(10.0, decimals);
  if (std::fabs(std::round(mantissa * unit) / unit) >= 10) {  // 9.9999 rounds up to the next power
    mantissa /= 10;
    ++exponent;
  }
  std::string mantissaText = FormatNumber(std::fabs(mantissa), "0." + std::string(decimals, '0'));
  if (mantissa < 0) mantissaText.insert(0, minus);
  const std::string sign = exponent < 0 ? minus : "+";
  return mantissaText + (symbol ? "\u00D7" : "x") + "10\\+1 " + sign + std::to_string(std::abs(exponent)) + "\\+0 ";
}

}  // namespace velk::layout
