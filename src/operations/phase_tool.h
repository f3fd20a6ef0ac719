#pragma once
// The phase panel of one axis (F1: mode 2, F2: mode 5). While the person turns the values only
// the trace of the axis is recomputed; "Preview" rotates the whole spectrum from the backups,
// "Auto" proposes values found from the spectrum, "Fix" keeps the data with an undo record.
#include <memory>
#include <vector>

#include "operations/phase.h"
#include "operations/tool.h"

namespace velk::operations {

// The phase values that outlive the panel: those each axis opens with (set by the transform,
// cleared by "Fix") and the pivots.
struct PhaseMemory {
  float StoredPhaseF1_0 = 0, StoredPhaseF1_1 = 0;
  float StoredPhaseF2_0 = 0, StoredPhaseF2_1 = 0;
  std::int32_t PivotF1 = 0, PivotF2 = 0;
};

class PhaseTool final : public Tool {
 public:
  PhaseTool(ToolHost& host, PhaseMemory& memory, model::Axis axis);

  std::int16_t Mode() const override;
  model::Axis Axis() const { return axis_; }
  PhaseValues Values() const { return values_; }
  const std::vector<float>& TraceReal() const { return traceRe_; }
  const std::vector<float>& TraceImaginary() const { return traceIm_; }

  // Each change takes the value through the panel's rules, disables "Fix", sets PreviewPending
  // and recomputes the trace.
  void SetPhase0(float degrees);
  void SetPhase1(float degrees);
  void ScrollPhase0(int tenths);
  void ScrollPhase1(int tenths);
  void StepPhase0(int label);
  void StepPhase1(int label);
  void ZeroPhases();
  void SetPivot(std::int32_t point);
  // The values found by "Auto" for this axis, about the current pivot; the data stay until
  // "Preview". False when the spectrum gives no answer (no imaginary quadrants, no peaks).
  bool Auto();

  void Preview() override;
  void Reset() override;
  void Fix() override;
  void Cancel() override;

 private:
  std::string_view FixQuestion() const override;
  std::string_view NotFixable() const override;
  void Changed();
  void Trace();

  PhaseMemory& memory_;
  model::Axis axis_;
  QuadrantBackup backup_;
  PhaseValues values_;
  std::vector<float> traceRe_, traceIm_;
};

// Phase correction needs a phase-sensitive class with all four quadrants; otherwise its commands
// are disabled.
bool CanPhase(const model::Spectrum2D& s, int pulseModeClass);

// "F1 Phase Corr." and "F2 Phase Corr.": refused when the spectrum cannot be phased, during a paint or when the same panel is open;
// after a baseline correction or symmetrization the person is warned and may stop; the open tool
// is resolved; then the snapshot is written and the panel opens.
bool BeginPhaseCorrection(ToolHost& host, ActiveTool& active, PhaseMemory& memory, model::Axis axis);

}  // namespace velk::operations
