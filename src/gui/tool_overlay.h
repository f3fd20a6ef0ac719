#pragma once
// The open spectrum tool as the view's tool of its mode: the mouse on the contour (the reference
// cross, baseline points, the pivot, the symmetry line) and the marks over the retained contour
// (the phase trace in its side panel with the pivot, the points, the line, the cross).
#include "display/tools.h"

namespace velk::gui {

class OperationTools;

class ToolOverlay final : public display::Tool {
 public:
  explicit ToolOverlay(OperationTools& tools) : tools_(tools) {}

  void Activate(display::DisplayState&) override {}
  void Press(display::ToolContext& context, const display::Pointer& at) override;
  void Move(display::ToolContext& context, const display::Pointer& at) override;
  void Release(display::ToolContext& context, const display::Pointer& at) override;
  bool CanLeave() override;
  void Leave(display::DisplayState&) override {}
  void DrawOverlay(platform::Surface& surface, const display::DisplayState& view, const model::Spectrum2D& s,
                   const display::Rect& contour) const override;

 private:
  OperationTools& tools_;
};

// The colours of the marks (blue-green-red words): the phase trace, the pivot and the baseline
// points, the symmetry line, and the reference cross, blue so that the red slice cursors and
// the warm contour levels do not hide it.
inline constexpr platform::Color kPhaseTraceColor = 0xC00000;
inline constexpr platform::Color kPivotColor = 0x0000FF;
inline constexpr platform::Color kBasePointColor = 0xC000C0;
inline constexpr platform::Color kSymmetryColor = 0x00A000;
inline constexpr platform::Color kReferenceColor = platform::MakeColor(0, 64, 255);

}  // namespace velk::gui
