#include "operations/trace_reference.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "operations/messages.h"
#include "operations/reference.h"

namespace velk::operations {

using model::F1;

// The start of the table in double precision where there is one, so that a scale put back gives
// the same positions; the record's single precision start otherwise.
TraceScale ScaleOf(const model::Spectrum1D& t) {
  return {t.params.SMEXR, t.params.SMTMS, t.axisPpm.empty() ? double{t.axisFirst} : t.axisPpm[0]};
}

void SetTraceScale(model::Spectrum1D& t, const TraceScale& scale) {
  t.params.SMEXR = scale.Reference;
  t.params.SMTMS = scale.RefPoint;
  t.axisFirst = static_cast<float>(scale.first);
  const std::size_t points = std::min<std::size_t>(std::max(t.params.POINT, 0), t.axisPpm.size());
  for (std::size_t i = 0; i < points; ++i) t.axisPpm[i] = scale.first + static_cast<double>(i) * t.axisStep;
}

void SetTraceReference(model::Spectrum1D& t, std::int32_t refPoint, float reference) {
  SetTraceScale(t, {reference, refPoint, reference - refPoint * t.axisStep});
}

std::array<double, 4> ScaleRecord(const TraceScale& scale) {
  return {scale.Reference, static_cast<double>(scale.RefPoint), scale.first, 0};
}

TraceScale ScaleFromRecord(const std::array<double, 4>& v) {
  return {static_cast<float>(v[0]), static_cast<std::int32_t>(v[1]), v[2]};
}

bool CanReferenceTrace(const model::Spectrum1D& t) { return t.params.POINT > 0 && !t.re.empty(); }

std::int32_t TracePointAt(const model::Spectrum1D& t, double ppm) {
  if (t.axisStep == 0) return 0;
  const double point = std::nearbyint((ppm - t.axisFirst) / t.axisStep);
  return static_cast<std::int32_t>(std::clamp(point, -1e9, 1e9));
}

TraceReferenceTool::TraceReferenceTool(ToolHost& host, model::Axis axis)
    : Tool(host), axis_(axis), remembered_(ScaleOf(Data())), picked_(remembered_.RefPoint),
      shift_(remembered_.Reference) {
  host.view.ToolMode = Mode();
  fixEnabled_ = true;
  previewPending_ = 0;
}

std::int16_t TraceReferenceTool::Mode() const {
  return axis_ == F1 ? display::kReference1DF1 : display::kReference1DF2;
}

std::string_view TraceReferenceTool::FixQuestion() const {
  return axis_ == F1 ? messages::kFixReference1DF1 : messages::kFixReference1DF2;
}

void TraceReferenceTool::Pick(std::int32_t point) {
  picked_ = std::clamp(point, 0, std::max(Data().params.POINT - 1, 0));
  SetTraceReference(Data(), picked_, shift_);
}

bool TraceReferenceTool::SetShift(std::string_view text) {
  const std::string copy(text);
  char* end = nullptr;
  const float value = std::strtof(copy.c_str(), &end);
  if (end == copy.c_str() || !std::isfinite(value)) return false;
  shift_ = value;
  SetTraceReference(Data(), picked_, shift_);
  return true;
}

std::string TraceReferenceTool::ShiftText() const { return FormatShift(shift_); }

bool TraceReferenceTool::SetCenter() {
  const model::Spectrum1D& t = Data();
  if (!CanSetCenter()) return false;
  picked_ = CentrePoint(t.params.POINT);
  shift_ = static_cast<float>((t.absFreqCenter - t.absFreq0ppm) / t.absFreq0ppm * 1e6);
  SetTraceReference(Data(), picked_, shift_);
  return true;
}

void TraceReferenceTool::Reset() {
  SetTraceScale(Data(), remembered_);
  picked_ = remembered_.RefPoint;
  shift_ = remembered_.Reference;
}

void TraceReferenceTool::Fix() {
  Leave();
  const TraceScale now = ScaleOf(Data());
  if (now.Reference == remembered_.Reference && now.RefPoint == remembered_.RefPoint) return;
  if (host_.pushTraceReferenceUndo)
    host_.pushTraceReferenceUndo(axis_ == F1 ? kUndoReference1DF1 : kUndoReference1DF2, ScaleRecord(remembered_));
  Call(host_.markUnsaved);
}

void TraceReferenceTool::Cancel() {
  Leave();
  SetTraceScale(Data(), remembered_);
}

bool BeginTraceReference(ToolHost& host, ActiveTool& active, model::Axis axis) {
  if (!CanReferenceTrace(axis == F1 ? host.traceF1 : host.traceF2)) return false;
  if (!active.MayOpen(host.view, axis == F1 ? display::kReference1DF1 : display::kReference1DF2)) return false;
  active.tool = std::make_unique<TraceReferenceTool>(host, axis);
  return true;
}

}  // namespace velk::operations
