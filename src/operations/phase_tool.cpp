#include "operations/phase_tool.h"

#include <algorithm>
#include <string>

#include "model/data_type.h"
#include "operations/auto_phase.h"
#include "operations/messages.h"
#include "operations/phase_panel.h"

namespace velk::operations {

using model::F1;
using model::F2;

PhaseTool::PhaseTool(ToolHost& host, PhaseMemory& memory, model::Axis axis)
    : Tool(host), memory_(memory), axis_(axis), backup_(BackUpQuadrants(host.spectrum)) {
  values_.Phase0 = axis == F1 ? memory.StoredPhaseF1_0 : memory.StoredPhaseF2_0;
  values_.Phase1 = axis == F1 ? memory.StoredPhaseF1_1 : memory.StoredPhaseF2_1;
  values_.pivot = axis == F1 ? memory.PivotF1 : memory.PivotF2;
  host.view.ToolMode = Mode();
  Trace();
}

std::int16_t PhaseTool::Mode() const { return axis_ == F1 ? display::kPhaseF1 : display::kPhaseF2; }

std::string_view PhaseTool::FixQuestion() const {
  return axis_ == F1 ? messages::kFixF1Phase : messages::kFixF2Phase;
}

std::string_view PhaseTool::NotFixable() const {
  return axis_ == F1 ? messages::kF1PhaseNotFixable : messages::kF2PhaseNotFixable;
}

void PhaseTool::Trace() {
  const model::Spectrum2D& s = host_.spectrum;
  // The F1 trace is the column under the F2 slice cursor, the F2 trace the row under the F1 one;
  // without a cursor the middle of the other axis.
  const std::int32_t other = axis_ == F1 ? host_.view.SliceF2 : host_.view.SliceF1;
  const std::int32_t points = s.axis[axis_ == F1 ? F2 : F1].Point;
  const std::int32_t at = other >= 0 && other < points ? other : points / 2;
  if (axis_ == F1) PhaseTraceF1(backup_, s, at, values_, traceRe_, traceIm_);
  else PhaseTraceF2(backup_, s, at, values_, traceRe_, traceIm_);
}

void PhaseTool::Changed() {
  fixEnabled_ = false;
  previewPending_ = true;
  Trace();
}

void PhaseTool::SetPhase0(float degrees) {
  values_.Phase0 = WrapPhase0(degrees);
  Changed();
}
void PhaseTool::SetPhase1(float degrees) {
  values_.Phase1 = ClampPhase1(degrees);
  Changed();
}
void PhaseTool::ScrollPhase0(int tenths) { SetPhase0(WrapPhase0Scroll(tenths) * 0.1f); }
void PhaseTool::ScrollPhase1(int tenths) { SetPhase1(tenths * 0.1f); }
void PhaseTool::StepPhase0(int label) { SetPhase0(operations::StepPhase0(values_.Phase0, label)); }
void PhaseTool::StepPhase1(int label) { SetPhase1(operations::StepPhase1(values_.Phase1, label)); }

void PhaseTool::ZeroPhases() {
  values_.Phase0 = values_.Phase1 = 0;
  Changed();
}

void PhaseTool::SetPivot(std::int32_t point) {
  values_.pivot = std::clamp(point, 0, std::max(host_.spectrum.axis[axis_].Point - 1, 0));
  (axis_ == F1 ? memory_.PivotF1 : memory_.PivotF2) = values_.pivot;
  Changed();
}

bool PhaseTool::Auto() {
  // Found on the data as they were when the panel opened.
  const model::Spectrum2D& s = host_.spectrum;
  const AutoPhaseData data{backup_.RR, backup_.IR, backup_.RI, backup_.II, {s.axis[F1].Point, s.axis[F2].Point}};
  const AutoPhaseResult r = FindAutoPhase(data, memory_.PivotF1, memory_.PivotF2, host_.threads);
  if (r.peaksUsed == 0) return false;
  const PhaseValues& v = axis_ == F1 ? r.f1 : r.f2;
  values_.Phase0 = v.Phase0;
  values_.Phase1 = v.Phase1;
  Changed();
  return true;
}

void PhaseTool::Preview() {
  if (axis_ == F1) RotatePhaseF1(backup_, host_.spectrum, values_, host_.threads);
  else RotatePhaseF2(backup_, host_.spectrum, values_, host_.threads);
  fixEnabled_ = true;
  previewPending_ = false;
}

void PhaseTool::Reset() {
  RestoreQuadrants(backup_, host_.spectrum);
  fixEnabled_ = false;
  previewPending_ = true;
}

void PhaseTool::Fix() {
  if (!StartFix(axis_ == F1 ? kUndoF1Phase : kUndoF2Phase)) return;
  if (axis_ == F1) memory_.StoredPhaseF1_0 = memory_.StoredPhaseF1_1 = 0;
  else memory_.StoredPhaseF2_0 = memory_.StoredPhaseF2_1 = 0;
  FinishFix();
}

void PhaseTool::Cancel() {
  Leave();
  values_.Phase0 = axis_ == F1 ? memory_.StoredPhaseF1_0 : memory_.StoredPhaseF2_0;
  values_.Phase1 = axis_ == F1 ? memory_.StoredPhaseF1_1 : memory_.StoredPhaseF2_1;
  RestoreQuadrants(backup_, host_.spectrum);
}

bool CanPhase(const model::Spectrum2D& s, int pulseModeClass) {
  if (!model::IsPhaseSensitive(pulseModeClass)) return false;
  for (const model::Plane* p : {&s.RR, &s.IR, &s.RI, &s.II})
    if (p->data.empty()) return false;
  return true;
}

bool BeginPhaseCorrection(ToolHost& host, ActiveTool& active, PhaseMemory& memory, model::Axis axis) {
  const std::int16_t mode = axis == F1 ? display::kPhaseF1 : display::kPhaseF2;
  if (!CanPhase(host.spectrum, host.pulseModeClass)) return false;
  if (host.view.Painting || host.view.ToolMode == mode) return false;
  if (host.spectrum.Modified == 1) {
    const platform::Message warning{"", std::string(messages::kPhaseAfterModified), platform::Buttons::YesNo,
                                    platform::Icon::Warning, true};
    if (host.prompt.Ask(warning) != platform::Answer::Yes) return false;
  }
  return active.OpenOnSnapshot<PhaseTool>(host, mode, memory, axis);
}

}  // namespace velk::operations
