#pragma once
#include <array>
#include <cstdint>
#include <string>

namespace velk::model {

// The window function values an axis carries in its AxisInfo (the processing layer reads them as
// its WindowFunctionSetting).
struct AxisWindowValues {
  float BF = 0;
  float GBF = 0;  // "G-BF"
  float GF = 0;
  std::array<float, 4> start{};  // WS for window types 1..4
  std::array<float, 3> end{};    // WE for window types 1, 2, 4
};

struct AxisInfo {
  double Resolution = 0;  // Hz per point
  std::int32_t Point = 0;  // points after transform: columns for F2, rows for F1
  float Reference = 0;     // chemical shift at RefPoint
  std::int32_t RefPoint = 0;
  std::int32_t spare = 0;
  float Frequency = 0;     // spectral width, Hz
  AxisWindowValues window;
};

// Per-axis values that stand beside AxisInfo in the record.
struct AxisExtras {
  double absFreqCenter = 0;  // MHz, "Abs Freq(Center)"
  double absFreq0ppm = 0;    // MHz, "Abs Freq(0ppm)"
  double ppmStep = 0;        // ppm per point; the ppm table is first + index * step
  double ppmFirst = 0;
  std::int32_t fidPoints = 0;  // "F2-FID Point", "F1-Data_Point"
  std::int16_t acqMod = 0;
  std::int16_t adMode = 1;     // 1 single AD, anything else dual AD
  std::int16_t windowNumber = 0;
  std::array<float, 4> trapezoid{};
  std::string nucleus;
};

}  // namespace velk::model
