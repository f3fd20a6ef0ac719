#pragma once
// The symmetrization panel (mode 10): the diagonal through the middle of the spectrum, moved in
// quarter F2 points by the shift buttons, "Preview" to symmetrize RR from the backup, "Fix" to
// keep it.
#include "operations/symmetrize.h"
#include "operations/tool.h"

namespace velk::operations {

class SymmetrizeTool final : public Tool {
 public:
  explicit SymmetrizeTool(ToolHost& host);

  std::int16_t Mode() const override { return display::kSymmetrization; }
  float SymShift() const { return symShift_; }
  // One press of a shift button; the step's sign follows the direction in which the F2 axis runs
  // on the screen.
  void ShiftStep(int direction, bool f2LowToHighOnScreen);
  // The line dragged to a shift of `points` F2 points: kept on quarter points within -10 .. 10.
  void DragTo(double points);

  void Preview() override;
  void Reset() override;
  void Fix() override;
  void Cancel() override;

 private:
  bool CancelsWithoutAsking() const override { return false; }
  std::string_view FixQuestion() const override;
  std::string_view NotFixable() const override;

  model::Plane backup_;
  float symShift_ = 0;
};

bool BeginSymmetrize(ToolHost& host, ActiveTool& active);

// The symmetry line on the screen, in pixels, from one edge of the contour to the other. Its
// handles are its two ends and its middle.
struct ScreenLine {
  double x0, y0, x1, y1;
};
inline constexpr double kHandleReach = 6;  // pixels around a handle that grab it
inline constexpr double kLineReach = 3;    // pixels either side of the line between the handles

// Whether a press at (x, y) takes hold of the line: near a handle, or on the line itself. A press
// elsewhere on the contour leaves the line where it is.
bool GrabsSymmetryLine(const ScreenLine& line, double x, double y);

}  // namespace velk::operations
