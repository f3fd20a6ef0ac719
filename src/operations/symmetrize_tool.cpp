#include "operations/symmetrize_tool.h"

#include <algorithm>
#include <cmath>

#include "operations/messages.h"

namespace velk::operations {

SymmetrizeTool::SymmetrizeTool(ToolHost& host) : Tool(host), backup_(host.spectrum.RR) {
  host.view.ToolMode = Mode();
}

std::string_view SymmetrizeTool::FixQuestion() const { return messages::kFixSymmetrization; }
std::string_view SymmetrizeTool::NotFixable() const { return messages::kSymmetrizationNotFixable; }

void SymmetrizeTool::ShiftStep(int direction, bool f2LowToHighOnScreen) {
  symShift_ = StepSymShift(symShift_, f2LowToHighOnScreen ? direction : -direction);
}

void SymmetrizeTool::DragTo(double points) {
  symShift_ = std::clamp(static_cast<float>(std::nearbyint(points / kSymShiftStep) * kSymShiftStep), -kSymShiftLimit,
                         kSymShiftLimit);
}

void SymmetrizeTool::Preview() {
  SymmetrizeData(backup_, host_.spectrum, host_.pulseModeClass, symShift_, host_.threads);
  fixEnabled_ = true;
  previewPending_ = false;
}

void SymmetrizeTool::Reset() {
  host_.spectrum.RR.data = backup_.data;
  fixEnabled_ = false;
}

void SymmetrizeTool::Fix() {
  if (!StartFix(kUndoSymmetrize)) return;
  host_.spectrum.Modified = 1;
  FinishFix();
}

void SymmetrizeTool::Cancel() {
  Leave();
  host_.spectrum.RR.data = backup_.data;
}

bool BeginSymmetrize(ToolHost& host, ActiveTool& active) {
  return active.OpenOnSnapshot<SymmetrizeTool>(host, display::kSymmetrization);
}

bool GrabsSymmetryLine(const ScreenLine& line, double x, double y) {
  const double dx = line.x1 - line.x0, dy = line.y1 - line.y0;
  const double handles[3][2] = {{line.x0, line.y0}, {line.x1, line.y1}, {line.x0 + dx / 2, line.y0 + dy / 2}};
  for (const auto& h : handles)
    if (std::hypot(x - h[0], y - h[1]) <= kHandleReach) return true;
  const double length2 = dx * dx + dy * dy;
  if (!(length2 > 0)) return false;
  const double t = std::clamp(((x - line.x0) * dx + (y - line.y0) * dy) / length2, 0.0, 1.0);
  return std::hypot(x - (line.x0 + t * dx), y - (line.y0 + t * dy)) <= kLineReach;
}

}  // namespace velk::operations
