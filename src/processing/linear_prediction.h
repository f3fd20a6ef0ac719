#pragma once
// Linear prediction along F1 or F2: forward extension past the end of the FID and backward
// recalculation of its first points, one trace at a time, by a complex autoregression solved by
// the normal equations. Forward coefficients are always stabilised through the roots of their
// polynomial; backward ones when the stability check is on. A trace that cannot be solved stays as
// it was and leaves lines in the progress list.
#include <cstdint>
#include <string>
#include <vector>

#include "model/plane.h"
#include "platform/message.h"
#include "processing/transforms.h"

namespace velk::processing {

struct LpSetting {
  std::int32_t Order = 32;
  std::int32_t Points = 64;
  std::int32_t Start = 10;     // 1-based
  std::int32_t BackPoints = 1;
  std::int16_t StabilityCheck = 0;
  std::int16_t ForwardOn = 0;
  std::int16_t BackwardOn = 0;
};

// One run over a matrix: false when the user asked to quit. Failure lines are appended to
// `list` in trace order, whatever the number of threads.
struct LpRun {
  const Workers& workers;
  std::vector<std::string>& list;
};

// Every column 0 .. columns-1 from fidLength to targetLength points.
bool LpForwardF1(model::Plane& X, model::Plane& Y, const LpSetting& s, std::int32_t fidLength,
                 std::int32_t targetLength, std::int32_t columns, const LpRun& run);
// Every row 0 .. rows-1 from fidLength to targetLength points.
bool LpForwardF2(model::Plane& X, model::Plane& Y, const LpSetting& s, std::int32_t fidLength,
                 std::int32_t targetLength, std::int32_t rows, const LpRun& run);
// Points 0 .. BackPoints-1 of every column, from the data of dataRows rows.
bool LpBackwardF1(model::Plane& X, model::Plane& Y, const LpSetting& s, std::int32_t dataRows,
                  std::int32_t columns, const LpRun& run);
// The same along every row, behind the FID shift; skipped when the points do not fit in size.
bool LpBackwardF2(model::Plane& X, model::Plane& Y, const LpSetting& s, std::int32_t dataPoints,
                  std::int32_t size, std::int32_t fidShift, std::int32_t rows, const LpRun& run);

// The previews of the trace on screen: on the eleventh failure the message says why.
platform::Outcome LpForwardTrace(float* re, float* im, const LpSetting& s, std::int32_t fidLength,
                                 std::int32_t targetLength);
platform::Outcome LpBackwardTrace(float* re, float* im, const LpSetting& s, std::int32_t fidLength);

// The checks of the parameters: empty text when they pass.
// "LP Back" of an axis, with the axis' data points.
platform::Message CheckLpBack(const LpSetting& s, std::int32_t dataPoints);
// The dialog's "Go FFT" on both axes: Start is first pulled into 10 .. FID points - Order -
// Points + 1; the last failing text wins.
struct LpAxisCheck {
  LpSetting* setting;
  std::int32_t dataPoints;
  bool forward;  // LP factor >= 2 and "Execute Forward" set
};
platform::Message CheckLpDialog(LpAxisCheck f1, LpAxisCheck f2);
// The recheck of the 2D sequence with prediction, under "Check LP Parameter".
platform::Message CheckLpSequence(const LpAxisCheck& f1, const LpAxisCheck& f2);

}  // namespace velk::processing
