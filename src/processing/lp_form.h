#pragma once
// The prediction set-up ("Linear Prediction Parameter", or "FFT LP Parameter Set" when it opens on
// the way to "Execute 2D-FFT(Use LP)") without its widgets: the fields of both axes, the rules a
// field follows when it is left, and the checks of "Go FFT".
#include <array>
#include <cstdint>

#include "platform/message.h"
#include "processing/sequence.h"

namespace velk::processing {

enum class LpField { Order, Points, Start, BackPoints };

class LpForm {
 public:
  // Works on a copy of both axes' settings; Apply hands them back.
  explicit LpForm(const SequenceSettings& settings, const std::array<std::int32_t, 2>& dataPoints);

  const LpSetting& Axis(model::Axis a) const { return edit_[a]; }
  // A field left with a typed value; answers the value kept. An order outside 20 .. 100 or a
  // number of backward points outside 1 .. 10 goes back to the stored value; a new order lowers
  // the highest start to data points - 2 order - 1, a start is never above FID points - 2 order.
  std::int32_t Leave(model::Axis a, LpField f, std::int32_t value);
  void SetStabilityCheck(model::Axis a, bool on) { edit_[a].StabilityCheck = on ? 1 : 0; }
  void SetForward(model::Axis a, bool on) { edit_[a].ForwardOn = on ? 1 : 0; }
  void SetBackward(model::Axis a, bool on) { edit_[a].BackwardOn = on ? 1 : 0; }

  // "Go FFT": the start points are pulled into their range, then the text of the last failing
  // check under "LP Parameter Error" (the form stays open); when every "Execute" box is off, the
  // question "LP is not set" (OK goes on, Cancel stays). An empty message: go on.
  platform::Message GoFft();
  // The values into the settings (prediction parameters and the Execute boxes).
  void Apply(SequenceSettings& settings) const;

 private:
  std::array<LpSetting, 2> stored_, edit_;
  std::array<std::int32_t, 2> dataPoints_;
  std::array<std::int32_t, 2> lpFactor_;
};

// "Execute 2D-FFT(Use LP)" before its set-up opens: an error when neither axis has a pending
// forward prediction ("LP Fill") nor a backward one ("LP Back").
platform::Message PredictionAsked(const SequenceSettings& settings);

}  // namespace velk::processing
