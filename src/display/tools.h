#pragma once
// The tools of the main view as objects with one interface: a command activates a tool, the mouse
// on the contour goes to the active tool, and ResolveActiveTool asks the active tool whether it can
// be left before any other command starts.
#include <map>
#include <memory>

#include "display/display_state.h"
#include "model/spectrum.h"
#include "platform/surface.h"

namespace velk::display {

// A mouse event on the contour, in device pixels of the view.
struct Pointer {
  int x = 0, y = 0;
  bool right = false;  // the right button rather than the left
};

// What a tool works on, and what it tells the view to redo afterwards.
struct ToolContext {
  DisplayState& view;
  const model::Spectrum2D& spectrum;
  Rect contour;
  bool windowChanged = false;  // the shown window moved: a new grid and trace
  bool slicesChanged = false;  // the side panels show other rows or columns
};

class Tool {
 public:
  virtual ~Tool() = default;
  virtual void Activate(DisplayState& view) = 0;
  virtual void Press(ToolContext& context, const Pointer& at) = 0;
  virtual void Move(ToolContext& context, const Pointer& at) = 0;
  virtual void Release(ToolContext& context, const Pointer& at) = 0;
  // False when the tool must not be left without the user's word (unfixed work); the tool asks
  // itself then, and returns true only if the user agreed.
  virtual bool CanLeave() = 0;
  virtual void Leave(DisplayState& view) = 0;
  // The tool's marks over the retained contour image.
  virtual void DrawOverlay(platform::Surface& surface, const DisplayState& view, const model::Spectrum2D& s,
                           const Rect& contour) const = 0;
};

// The sub-modes of the basic tool (mode 0), kept in ToolCode.
enum BasicSubMode : std::int16_t { kExpand = 0, kSlice = 1, kPanView = 2 };

// Mode 0. Expand: a left drag draws a rubber band that becomes the window, a right click zooms
// out. Slice: a left press or drag puts the slice cursors on the point under the pointer, whose
// row and column the side panels then show; a right click removes them. Pan: a left drag moves
// the window with the pointer.
class BasicTool final : public Tool {
 public:
  void Activate(DisplayState& view) override;
  void Press(ToolContext& context, const Pointer& at) override;
  void Move(ToolContext& context, const Pointer& at) override;
  void Release(ToolContext& context, const Pointer& at) override;
  bool CanLeave() override { return true; }
  void Leave(DisplayState& view) override;
  void DrawOverlay(platform::Surface& surface, const DisplayState& view, const model::Spectrum2D& s,
                   const Rect& contour) const override;

  bool BandShown() const { return band_; }

 private:
  void PlaceSlices(ToolContext& context, const Pointer& at);

  bool band_ = false;
  Pointer from_, to_;
};

// The tools by mode, and the single way from one to another.
class ToolBox {
 public:
  ToolBox();
  // The tools of later modes join here.
  void Add(int mode, std::unique_ptr<Tool> tool) { tools_[mode] = std::move(tool); }
  Tool& Active(const DisplayState& view);
  // Ends the active tool through ResolveActiveTool, then activates the tool of the mode. Returns
  // false when the user chose to stay in the active tool.
  bool Switch(DisplayState& view, int mode);
  // The question every command asks before it starts.
  bool Resolve(DisplayState& view);

 private:
  std::map<int, std::unique_ptr<Tool>> tools_;
};

// The lines of the slice cursors that are set, across the contour rectangle.
void DrawSliceLines(platform::Surface& surface, const DisplayState& view, const model::Spectrum2D& s,
                    const Rect& contour, platform::Color color, int width);

// The colour of the slice cursors ("SLICE POS COLOR", red) and of the rubber band.
inline constexpr platform::Color kSliceColor = 0x0000FF;
inline constexpr platform::Color kBandColor = 0x000000;

}  // namespace velk::display
