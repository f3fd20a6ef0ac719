#pragma once
// The reference cross on the contour (mode 1): a click or the arrows place it on a data point of
// both axes, the typed shifts say what the point reads; "Fix" keeps the new scale with an undo
// record of the values before, "Cancel" puts the scale and the view back.
#include <string>
#include <string_view>

#include "operations/reference.h"
#include "operations/tool.h"

namespace velk::operations {

class ReferenceTool final : public Tool {
 public:
  explicit ReferenceTool(ToolHost& host);

  std::int16_t Mode() const override { return display::kReference2D; }
  std::int32_t CrossF2() const { return crossF2_; }
  std::int32_t CrossF1() const { return crossF1_; }
  bool Changed() const;

  // The cross on a data point of both axes (clamped to the data), then the scale through it.
  void PlaceCross(std::int32_t column, std::int32_t row);
  // An arrow: one point along F2 (dc) or F1 (dr).
  void MoveCross(std::int32_t dc, std::int32_t dr);
  // A typed shift for the cross's point of an axis; false (and nothing changed) when not a number.
  bool SetShift(model::Axis axis, std::string_view text);
  // The instruments' 0 ppm frequencies set both axes (see SetReferenceByInstrument); the cross
  // moves to the new reference points. "Fix" keeps it like any other move of the cross.
  platform::Outcome SetByInstrument(std::optional<double> zeroPpmF2, std::optional<double> zeroPpmF1);
  // "#####0.0###" of the axis's reference.
  std::string ShiftText(model::Axis axis) const;

  void Preview() override {}
  void Reset() override;
  void Fix() override;
  void Cancel() override;

 private:
  bool CancelsWithoutAsking() const override { return false; }
  std::string_view FixQuestion() const override;
  std::string_view NotFixable() const override { return FixQuestion(); }
  void Apply();

  ReferenceValues remembered_;
  std::array<double, 2> zeroPpm_;  // the axes' 0 ppm frequencies, which the instrument form sets
  float viewF2Start_, viewF2End_, viewF1Start_, viewF1End_;
  std::int32_t crossF2_, crossF1_;
  float shiftF2_, shiftF1_;
};

bool BeginReference(ToolHost& host, ActiveTool& active);

}  // namespace velk::operations
