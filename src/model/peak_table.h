#pragma once
#include <cstdint>
#include <vector>

namespace velk::model {

inline constexpr int kMaxPeaks2D = 1000;

struct Peak2D {
  std::int32_t PointF2 = 0;
  std::int32_t PointF1 = 0;
  float PosF2 = 0;  // point number times the F2 frequency step
  float PosF1 = 0;
  std::int32_t reserved1 = 0;  // set when a record is made, untouched by the sort
  std::int32_t reserved2 = 0;
  float Height = 0;  // RR at the data point
};

struct PeakTable2D {
  std::vector<Peak2D> peaks;  // PeakCount is peaks.size()
  // Threshold values kept with the table: sensitivity first (forced to 1 when 0 or less).
  float thresholds[5] = {1, 0, 0, 0, 0};
};

}  // namespace velk::model
