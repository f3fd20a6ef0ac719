#include "operations/reference_tool.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "operations/messages.h"

namespace velk::operations {

using model::F1;
using model::F2;

ReferenceTool::ReferenceTool(ToolHost& host)
    : Tool(host),
      entry_(SaveReferenceState(host.spectrum)),
      settled_(entry_),
      viewF2Start_(host.view.ViewF2Start),
      viewF2End_(host.view.ViewF2End),
      viewF1Start_(host.view.ViewF1Start),
      viewF1End_(host.view.ViewF1End),
      crossF2_(entry_.values[F2].RefPoint),
      crossF1_(entry_.values[F1].RefPoint),
      shiftF2_(entry_.values[F2].Reference),
      shiftF1_(entry_.values[F1].Reference) {
  host.view.ToolMode = Mode();
  fixEnabled_ = true;
  previewPending_ = false;
}

std::string_view ReferenceTool::FixQuestion() const { return messages::kFixReference; }

void ReferenceTool::Apply() { ApplyReference(host_.spectrum, host_.view, shiftF2_, crossF2_, shiftF1_, crossF1_); }

void ReferenceTool::Record(const ReferenceState& before) {
  if (host_.pushReferenceUndo) host_.pushReferenceUndo(before);
  ++recorded_;
}

template <class Change>
void ReferenceTool::Step(bool held, Change change) {
  if (!held) pressRecorded_ = false;
  const ReferenceState before = SaveReferenceState(host_.spectrum);
  change();
  if (SaveReferenceState(host_.spectrum) == before) return;
  if (!pressRecorded_) Record(before);
  pressRecorded_ = true;
  settled_ = SaveReferenceState(host_.spectrum);
}

// The cross and the typed shifts follow what a command other than the cross set on the axes.
void ReferenceTool::FollowAxes() {
  const ReferenceValues now = CurrentReference(host_.spectrum);
  crossF2_ = now[F2].RefPoint;
  crossF1_ = now[F1].RefPoint;
  shiftF2_ = now[F2].Reference;
  shiftF1_ = now[F1].Reference;
}

void ReferenceTool::PlaceCross(std::int32_t column, std::int32_t row) {
  Step(false, [&] {
    crossF2_ = std::clamp(column, 0, std::max(host_.spectrum.axis[F2].Point - 1, 0));
    crossF1_ = std::clamp(row, 0, std::max(host_.spectrum.axis[F1].Point - 1, 0));
    Apply();
  });
}

void ReferenceTool::MoveCross(std::int32_t dc, std::int32_t dr, bool held) {
  Step(held, [&] {
    crossF2_ = std::clamp(crossF2_ + dc, 0, std::max(host_.spectrum.axis[F2].Point - 1, 0));
    crossF1_ = std::clamp(crossF1_ + dr, 0, std::max(host_.spectrum.axis[F1].Point - 1, 0));
    Apply();
  });
}

bool ReferenceTool::SetShift(model::Axis axis, std::string_view text) {
  const std::string copy(text);
  char* end = nullptr;
  const float value = std::strtof(copy.c_str(), &end);
  if (end == copy.c_str() || !std::isfinite(value)) return false;
  (axis == F1 ? shiftF1_ : shiftF2_) = value;
  Apply();
  return true;
}

platform::Outcome ReferenceTool::SetByInstrument(std::optional<double> zeroPpmF2, std::optional<double> zeroPpmF1) {
  platform::Outcome done;
  Step(false, [&] {
    done = SetReferenceByInstrument(host_.spectrum, host_.view, host_.pulseModeClass, zeroPpmF2, zeroPpmF1);
  });
  FollowAxes();
  return done;
}

bool ReferenceTool::SetCenter(model::Axis axis) {
  bool done = false;
  Step(false, [&] {
    done = SetReferenceByCenter(host_.spectrum, host_.view, axis, Trace(axis)).ok();
  });
  FollowAxes();
  return done;
}

std::string ReferenceTool::ShiftText(model::Axis axis) const {
  return FormatShift(host_.spectrum.axis[axis].Reference);
}

void ReferenceTool::Reset() {
  Step(false, [&] { RestoreReferenceState(host_.spectrum, host_.view, entry_); });
  FollowAxes();
}

void ReferenceTool::Fix() {
  Leave();
  const ReferenceState now = SaveReferenceState(host_.spectrum);
  if (now == entry_ && recorded_ == 0) return;
  // A typed shift after the last press has no record yet.
  if (!(now == settled_)) Record(settled_);
  Call(host_.markUnsaved);
}

void ReferenceTool::Cancel() {
  Leave();
  RestoreReferenceState(host_.spectrum, host_.view, entry_);
  host_.view.ViewF2Start = viewF2Start_;
  host_.view.ViewF2End = viewF2End_;
  host_.view.ViewF1Start = viewF1Start_;
  host_.view.ViewF1End = viewF1End_;
  if (recorded_ > 0 && host_.dropUndo) host_.dropUndo(recorded_);
  recorded_ = 0;
}

bool BeginReference(ToolHost& host, ActiveTool& active) {
  if (!active.MayOpen(host.view, display::kReference2D)) return false;
  active.tool = std::make_unique<ReferenceTool>(host);
  return true;
}

}  // namespace velk::operations
