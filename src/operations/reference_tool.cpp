#include "operations/reference_tool.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "operations/messages.h"

namespace velk::operations {

using model::F1;
using model::F2;

ReferenceTool::ReferenceTool(ToolHost& host)
    : Tool(host),
      remembered_(CurrentReference(host.spectrum)),
      zeroPpm_{host.spectrum.extras[F1].absFreq0ppm, host.spectrum.extras[F2].absFreq0ppm},
      viewF2Start_(host.view.ViewF2Start),
      viewF2End_(host.view.ViewF2End),
      viewF1Start_(host.view.ViewF1Start),
      viewF1End_(host.view.ViewF1End),
      crossF2_(remembered_[F2].RefPoint),
      crossF1_(remembered_[F1].RefPoint),
      shiftF2_(remembered_[F2].Reference),
      shiftF1_(remembered_[F1].Reference) {
  host.view.ToolMode = Mode();
  fixEnabled_ = true;
  previewPending_ = false;
}

std::string_view ReferenceTool::FixQuestion() const { return messages::kFixReference; }

bool ReferenceTool::Changed() const {
  const ReferenceValues now = CurrentReference(host_.spectrum);
  for (model::Axis a : {F1, F2})
    if (now[a].Reference != remembered_[a].Reference || now[a].RefPoint != remembered_[a].RefPoint) return true;
  return false;
}

void ReferenceTool::Apply() { ApplyReference(host_.spectrum, host_.view, shiftF2_, crossF2_, shiftF1_, crossF1_); }

void ReferenceTool::PlaceCross(std::int32_t column, std::int32_t row) {
  crossF2_ = std::clamp(column, 0, std::max(host_.spectrum.axis[F2].Point - 1, 0));
  crossF1_ = std::clamp(row, 0, std::max(host_.spectrum.axis[F1].Point - 1, 0));
  Apply();
}

void ReferenceTool::MoveCross(std::int32_t dc, std::int32_t dr) { PlaceCross(crossF2_ + dc, crossF1_ + dr); }

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
  platform::Outcome done =
      SetReferenceByInstrument(host_.spectrum, host_.view, host_.pulseModeClass, zeroPpmF2, zeroPpmF1);
  if (!done.ok()) return done;
  const ReferenceValues now = CurrentReference(host_.spectrum);
  crossF2_ = now[F2].RefPoint;
  crossF1_ = now[F1].RefPoint;
  shiftF2_ = now[F2].Reference;
  shiftF1_ = now[F1].Reference;
  return done;
}

std::string ReferenceTool::ShiftText(model::Axis axis) const {
  char text[64];
  std::snprintf(text, sizeof text, "%.4f", static_cast<double>(host_.spectrum.axis[axis].Reference));
  std::string s = text;
  while (s.size() > 1 && s.back() == '0' && s[s.size() - 2] != '.') s.pop_back();
  return s;
}

void ReferenceTool::Reset() {
  ApplyReference(host_.spectrum, host_.view, remembered_);
  crossF2_ = remembered_[F2].RefPoint;
  crossF1_ = remembered_[F1].RefPoint;
}

void ReferenceTool::Fix() {
  Leave();
  if (!Changed()) return;
  if (host_.pushReferenceUndo) host_.pushReferenceUndo(remembered_);
  Call(host_.markUnsaved);
}

void ReferenceTool::Cancel() {
  Leave();
  ApplyReference(host_.spectrum, host_.view, remembered_);
  for (model::Axis a : {F1, F2}) host_.spectrum.extras[a].absFreq0ppm = zeroPpm_[a];
  host_.view.ViewF2Start = viewF2Start_;
  host_.view.ViewF2End = viewF2End_;
  host_.view.ViewF1Start = viewF1Start_;
  host_.view.ViewF1End = viewF1End_;
}

bool BeginReference(ToolHost& host, ActiveTool& active) {
  if (!active.MayOpen(host.view, display::kReference2D)) return false;
  active.tool = std::make_unique<ReferenceTool>(host);
  return true;
}

}  // namespace velk::operations
