#pragma once
// Window (apodisation) curves of the F1, F2 and 1D axes: five types, an optional trapezoid, and the
// normalisation by type. Curves are indexed by complex point number and reach below zero so that
// the display of a shifted FID can show them; the transforms read indices >= 0 only.
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace velk::processing {

enum WindowType : std::int16_t { kExponential = 0, kSineBell = 1, kHann = 2, kGaussian = 3, kBlackmanHarris = 4 };

inline constexpr std::int32_t kAxisWindowLow = -400;   // F1 and F2 curves start here
inline constexpr std::int32_t k1DWindowLow = -5000;    // the 1D curve starts here
inline constexpr std::int32_t kAxisWindowHigh = 16384;  // F1 and F2 curves reach at least this far

struct WindowFunctionSetting {
  std::int16_t type = kExponential;
  float BF = 0;   // Hz
  float GBF = 0;  // "G-BF", Hz
  float GF = 0;   // Hz
  std::array<float, 4> WS{};  // %, for types 1, 2, 3, 4
  std::array<float, 3> WE{};  // %, for types 1, 2, 4
  std::array<std::int32_t, 5> multiTrape{};
  std::array<float, 4> T{};  // trapezoid corners, %
};

// WS of the setting's own type (types 1..4); WE of types 1, 2, 4.
float StartOf(const WindowFunctionSetting& w);
float EndOf(const WindowFunctionSetting& w);
std::string_view WindowName(int type);

// What the generator needs to know about the axis besides the setting.
struct WindowAxis {
  double sw = 0;                // span, Hz
  std::int32_t length = 0;      // points the function runs over: FID length, or the size under LP
  std::int32_t size = 0;        // current size N of the axis
  std::int32_t fidShift = 0;    // F2 and 1D only; 0 for F1
  std::int32_t low = kAxisWindowLow;
  std::int32_t high = kAxisWindowHigh;  // last index kept; raised to the size when that is larger
};

struct WindowCurve {
  std::int32_t low = 0;
  std::vector<float> values;  // index i at values[i - low]

  float at(std::int32_t i) const { return values[static_cast<std::size_t>(i - low)]; }
  float& at(std::int32_t i) { return values[static_cast<std::size_t>(i - low)]; }
  std::int32_t high() const { return low + static_cast<std::int32_t>(values.size()) - 1; }
  const float* fromZero() const { return values.data() - low; }  // W(0), W(1) ...
};

// 0 and the curve, or 1 when the normalisation would divide by zero (a curve that stays zero) or a
// bell of zero width lies inside the data: the program's arithmetic error.
int MakeWindowCurve(const WindowFunctionSetting& w, const WindowAxis& axis, WindowCurve& curve);

}  // namespace velk::processing
