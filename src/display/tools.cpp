#include "display/tools.h"

#include <algorithm>
#include <cmath>

#include "display/view_navigation.h"

namespace velk::display {

void BasicTool::Activate(DisplayState& view) {
  view.ToolMode = kNoTool;
  view.MouseMode = kNoDrag;
  band_ = false;
}

void BasicTool::PlaceSlices(ToolContext& context, const Pointer& at) {
  const CursorReading r = ReadCursor(context.view, context.spectrum, context.contour, at.x, at.y);
  if (r.col == context.view.SliceF2 && r.row == context.view.SliceF1) return;
  context.view.SliceF2 = r.col;
  context.view.SliceF1 = r.row;
  context.slicesChanged = true;
}

void BasicTool::Press(ToolContext& context, const Pointer& at) {
  DisplayState& v = context.view;
  switch (v.ToolCode) {
    case kExpand:
      if (at.right) {
        ZoomOut(v, context.spectrum);
        context.windowChanged = true;
        return;
      }
      v.MouseMode = kExpansionBand;
      from_ = to_ = at;
      band_ = true;
      return;
    case kSlice:
      if (at.right) {
        v.SliceF2 = v.SliceF1 = -1;
        context.slicesChanged = true;
        return;
      }
      v.MouseMode = kExpansionBandHeld;
      PlaceSlices(context, at);
      return;
    case kPanView:
      if (!at.right) {
        v.MouseMode = kViewBody;
        from_ = at;
      }
      return;
    default: return;
  }
}

void BasicTool::Move(ToolContext& context, const Pointer& at) {
  DisplayState& v = context.view;
  if (v.MouseMode == kExpansionBand) {
    to_ = at;
  } else if (v.MouseMode == kExpansionBandHeld) {
    PlaceSlices(context, at);
  } else if (v.MouseMode == kViewBody && (at.x != from_.x || at.y != from_.y)) {
    Pan(v, context.spectrum, context.contour, at.x - from_.x, at.y - from_.y);
    from_ = at;
    context.windowChanged = true;
  }
}

void BasicTool::Release(ToolContext& context, const Pointer& at) {
  DisplayState& v = context.view;
  if (v.MouseMode == kExpansionBand) {
    to_ = at;
    band_ = false;
    // A click without a drag is no band.
    if (std::abs(to_.x - from_.x) > 2 && std::abs(to_.y - from_.y) > 2)
      context.windowChanged = ZoomToBand(v, context.spectrum, context.contour, from_.x, from_.y, to_.x, to_.y);
  } else {
    Move(context, at);
  }
  v.MouseMode = kNoDrag;
}

void BasicTool::Leave(DisplayState& view) {
  view.MouseMode = kNoDrag;
  band_ = false;
}

void BasicTool::DrawOverlay(platform::Surface& surface, const DisplayState& view, const model::Spectrum2D& s,
                            const Rect& contour) const {
  surface.SetNoBrush();
  surface.SetClip(contour.x, contour.y, contour.width, contour.height);
  if (band_) {
    surface.SetPen(kBandColor, 1);
    const platform::Point corners[4] = {{from_.x, from_.y}, {to_.x, from_.y}, {to_.x, to_.y}, {from_.x, to_.y}};
    surface.Polygon(corners);
  }
  DrawSliceLines(surface, view, s, contour, kSliceColor, 1);
  surface.ClearClip();
}

void DrawSliceLines(platform::Surface& surface, const DisplayState& view, const model::Spectrum2D& s,
                    const Rect& contour, platform::Color color, int width) {
  const auto pixel = [](double start, double end, int first, int extent, double value) {
    return static_cast<int>(std::lrint(ValueToPixel(start, end, first, extent, value)));
  };
  surface.SetPen(color, width);
  if (view.SliceF2 >= 0 && view.SliceF2 < static_cast<int>(s.ppmF2.size())) {
    const int x = pixel(view.ViewF2Start, view.ViewF2End, contour.x, contour.width, s.ppmF2[view.SliceF2]);
    surface.MoveTo(x, contour.y);
    surface.LineTo(x, contour.bottom());
  }
  if (view.SliceF1 >= 0 && view.SliceF1 < static_cast<int>(s.ppmF1.size())) {
    const int y = pixel(view.ViewF1Start, view.ViewF1End, contour.y, contour.height, s.ppmF1[view.SliceF1]);
    surface.MoveTo(contour.x, y);
    surface.LineTo(contour.right(), y);
  }
}

ToolBox::ToolBox() { tools_[kNoTool] = std::make_unique<BasicTool>(); }

Tool& ToolBox::Active(const DisplayState& view) {
  const auto it = tools_.find(view.ToolMode);
  return it == tools_.end() ? *tools_.at(kNoTool) : *it->second;
}

bool ToolBox::Resolve(DisplayState& view) {
  ToolEnders enders;
  for (auto& [mode, tool] : tools_) {
    Tool* t = tool.get();
    enders[mode] = [t, &view] {
      if (!t->CanLeave()) return true;
      t->Leave(view);
      return false;
    };
  }
  bool declined = false;
  ResolveActiveTool(view, enders, declined);
  return !declined;
}

bool ToolBox::Switch(DisplayState& view, int mode) {
  if (!Resolve(view)) return false;
  const auto it = tools_.find(mode);
  if (it == tools_.end()) return false;
  it->second->Activate(view);
  view.ToolMode = static_cast<std::int16_t>(mode);
  return true;
}

}  // namespace velk::display
