#pragma once
// The reference of a high resolution 1D trace beside the contour (F1: mode 101, F2: mode 102). A
// click on the trace's panel picks a point, the typed shift says what that point reads; "Fix"
// keeps the new scale of the trace with an undo record of the old one, "Cancel" puts it back.
// The 2D scale is not touched.
#include <array>
#include <string>
#include <string_view>

#include "operations/reference.h"
#include "operations/tool.h"

namespace velk::operations {

// A trace's scale: the shift at its reference point and the ppm of its point 0.
struct TraceScale {
  float Reference = 0;
  std::int32_t RefPoint = 0;
  double first = 0;
};
TraceScale ScaleOf(const model::Spectrum1D& t);
// The point reads `reference`; the positions of every point are written anew.
void SetTraceReference(model::Spectrum1D& t, std::int32_t refPoint, float reference);
void SetTraceScale(model::Spectrum1D& t, const TraceScale& scale);
// The undo record keeps a scale in its four numbers, and gives it back.
std::array<double, 4> ScaleRecord(const TraceScale& scale);
TraceScale ScaleFromRecord(const std::array<double, 4>& values);

// The trace holds data that a 1D reference can work on.
bool CanReferenceTrace(const model::Spectrum1D& t);
// The trace's data point nearest to a shift on its present scale (not clamped).
std::int32_t TracePointAt(const model::Spectrum1D& t, double ppm);

class TraceReferenceTool final : public Tool {
 public:
  TraceReferenceTool(ToolHost& host, model::Axis axis);

  std::int16_t Mode() const override;
  model::Axis Axis() const { return axis_; }
  std::int32_t Picked() const { return picked_; }
  const model::Spectrum1D& Trace() const { return axis_ == model::F1 ? host_.traceF1 : host_.traceF2; }
  // "#####0.0###" of the shift at the picked point.
  std::string ShiftText() const;
  // "Set Center Frequency of F1" (F2) can serve.
  bool CanSetCenter() const { return HoldsCentreFrequency(Trace()); }
  // A click on the trace's panel: the nearest data point, clamped to the trace.
  void Pick(std::int32_t point);
  // The shift typed for the picked point; false (nothing changed) when not a number.
  bool SetShift(std::string_view text);
  // "Set Center Frequency of F1" (F2): the trace's centre frequency on its 0 ppm frequency, at its
  // centre point. False when the trace holds no frequencies.
  bool SetCenter();

  void Preview() override {}
  void Reset() override;
  void Fix() override;
  void Cancel() override;

 private:
  bool CancelsWithoutAsking() const override { return false; }
  std::string_view FixQuestion() const override;
  std::string_view NotFixable() const override { return FixQuestion(); }
  model::Spectrum1D& Data() const { return axis_ == model::F1 ? host_.traceF1 : host_.traceF2; }

  model::Axis axis_;
  TraceScale remembered_;
  std::int32_t picked_;
  float shift_;
};

// The 1D reference of a trace: refused while a paint runs, when that mode is open, or when the
// trace holds no data; the open tool is resolved first.
bool BeginTraceReference(ToolHost& host, ActiveTool& active, model::Axis axis);

}  // namespace velk::operations
