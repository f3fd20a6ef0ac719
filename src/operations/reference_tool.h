#pragma once
// The reference cross on the contour (mode 1): a click or the arrows place it on a data point of
// both axes, the typed shifts say what the point reads. Each press (a click, an arrow held or
// not, the instrument form, a centre command) leaves one undo record of the axes before it, so
// that UnDo steps back press by press; "Fix" adds a record only for a typed change that no press
// has recorded; "Cancel" puts the axes and the view back as they were at entry and takes back the
// records of this session.
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
  // The records pushed since entry.
  int Recorded() const { return recorded_; }

  // A click: the cross on a data point of both axes (clamped to the data), then the scale
  // through it.
  void PlaceCross(std::int32_t column, std::int32_t row);
  // An arrow: one point along F2 (dc) or F1 (dr). `held`: a repeat of the press before, which
  // leaves no record of its own.
  void MoveCross(std::int32_t dc, std::int32_t dr, bool held = false);
  // A typed shift for the cross's point of an axis; false (and nothing changed) when not a number.
  bool SetShift(model::Axis axis, std::string_view text);
  // The instruments' 0 ppm frequencies set both axes (see SetReferenceByInstrument); the cross
  // moves to the new reference points.
  platform::Outcome SetByInstrument(std::optional<double> zeroPpmF2, std::optional<double> zeroPpmF1);
  // "Set Center(F1)", "Set Center(F2)": the axis's centre takes the shift of the 1D record's
  // centre frequency; the cross follows. False when the record cannot serve.
  bool SetCenter(model::Axis axis);
  bool CanSetCenter(model::Axis axis) const { return HoldsCentreFrequency(Trace(axis)); }
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
  // One step of a press: `change` alters the axes; the first step of a press that changes them
  // records the state before.
  template <class Change>
  void Step(bool held, Change change);
  void Record(const ReferenceState& before);
  void FollowAxes();
  const model::Spectrum1D& Trace(model::Axis axis) const { return axis == model::F1 ? host_.traceF1 : host_.traceF2; }

  ReferenceState entry_;    // the axes at entry, for "Cancel"
  ReferenceState settled_;  // the axes after the last recorded press
  bool pressRecorded_ = false;
  int recorded_ = 0;
  float viewF2Start_, viewF2End_, viewF1Start_, viewF1End_;
  std::int32_t crossF2_, crossF1_;
  float shiftF2_, shiftF1_;
};

bool BeginReference(ToolHost& host, ActiveTool& active);

}  // namespace velk::operations
