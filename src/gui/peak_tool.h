#pragma once
// The peak tool of the main window (mode 20): the mouse adds, deletes and moves the tops of the
// peak list, one by a click or many by a rubber band, each change one undo record of the
// document. The sub-mode is kept in ToolCode.
#include <functional>

#include "display/tools.h"
#include "document/document.h"
#include "operations/peak_top.h"

namespace velk::gui {

enum PeakSubMode : std::int16_t {
  kPeakDelete = -1,     // a click removes the nearest top, a band every top inside it
  kPeakAddByClick = 1,  // a click adds the extremum found near it
  kPeakAddInArea = 2,   // a click as above, a band picks every extremum inside it
  kPeakMove = 3,        // the nearest top is dragged; on release it takes the data point there
};

class PeakTool final : public display::Tool {
 public:
  struct Hooks {
    std::function<float()> threshold;
    std::function<operations::PeakMode()> topKind;
    std::function<void()> listChanged;
  };
  PeakTool(document::Document& document, Hooks hooks) : document_(document), hooks_(std::move(hooks)) {}

  void Activate(display::DisplayState& view) override;
  void Press(display::ToolContext& context, const display::Pointer& at) override;
  void Move(display::ToolContext& context, const display::Pointer& at) override;
  void Release(display::ToolContext& context, const display::Pointer& at) override;
  // Every change is already on the undo stack: nothing is left to fix.
  bool CanLeave() override { return true; }
  void Leave(display::DisplayState& view) override;
  void DrawOverlay(platform::Surface& surface, const display::DisplayState& view, const model::Spectrum2D& s,
                   const display::Rect& contour) const override;

 private:
  bool Dragged() const;
  void Changed(bool changed) const;

  document::Document& document_;
  Hooks hooks_;
  display::Pointer from_, to_;
  int moving_ = -1;  // the index of the dragged top
};

}  // namespace velk::gui
