#include "gui/peak_tool.h"

#include <algorithm>
#include <cmath>

#include "document/peak_commands.h"
#include "operations/contour_marks.h"
#include "operations/peak_table_edit.h"

namespace velk::gui {
namespace {

using model::F1;
using model::F2;

// What the held left button is doing.
enum PeakDrag : std::int16_t {
  kClickHeld = display::kPeakFirst,       // 30: a click of the add tool
  kAddBandHeld = display::kPeakFirst + 1,  // 31: a press of the add tool that may become a band
  kDeleteHeld = display::kPeakFirst + 2,   // 32: a press of the delete tool that may become a band
  kTopHeld = display::kPeakLast,           // 33: a top being moved
  kAddBand = display::kPeakAddHeld,        // 311: the add tool's band
  kDeleteBand = display::kPeakDeleteHeld,  // 321: the delete tool's band
};

// A press that moves less than this many pixels is a click.
constexpr int kClickSlack = 3;
// The band and the dragged top are drawn in blue, apart from the marks of the list.
constexpr platform::Color kDragColor = 0xC00000;

struct Point {
  double col = 0, row = 0;
  std::int32_t Col() const { return static_cast<std::int32_t>(std::lrint(col)); }
  std::int32_t Row() const { return static_cast<std::int32_t>(std::lrint(row)); }
};

Point PointAt(const display::ToolContext& c, const display::Pointer& at) {
  const operations::MarkPixel p = operations::PointOfPixel(c.view, c.spectrum, c.contour, at.x, at.y);
  return {p.x, p.y};
}

operations::PointArea AreaOf(const display::ToolContext& c, const display::Pointer& a, const display::Pointer& b) {
  const Point p = PointAt(c, a), q = PointAt(c, b);
  return {std::min(p.Col(), q.Col()), std::max(p.Col(), q.Col()), std::min(p.Row(), q.Row()),
          std::max(p.Row(), q.Row())};
}

}  // namespace

void PeakTool::Activate(display::DisplayState& view) {
  view.MouseMode = display::kNoDrag;
  moving_ = -1;
}

void PeakTool::Leave(display::DisplayState& view) {
  view.MouseMode = display::kNoDrag;
  moving_ = -1;
}

bool PeakTool::Dragged() const {
  return std::abs(to_.x - from_.x) >= kClickSlack || std::abs(to_.y - from_.y) >= kClickSlack;
}

void PeakTool::Changed(bool changed) const {
  if (changed && hooks_.listChanged) hooks_.listChanged();
}

void PeakTool::Press(display::ToolContext& context, const display::Pointer& at) {
  display::DisplayState& v = context.view;
  if (at.right) return;
  from_ = to_ = at;
  switch (v.ToolCode) {
    case kPeakAddByClick: v.MouseMode = kClickHeld; return;
    case kPeakAddInArea: v.MouseMode = kAddBandHeld; return;
    case kPeakDelete: v.MouseMode = kDeleteHeld; return;
    case kPeakMove: {
      const Point p = PointAt(context, at);
      const model::Spectrum2D& s = document_.spectrum;
      moving_ = operations::NearestPeak(s.peaks, p.col, p.row, s.axis[F2].Resolution, s.axis[F1].Resolution);
      if (moving_ >= 0) v.MouseMode = kTopHeld;
      return;
    }
    default: return;
  }
}

void PeakTool::Move(display::ToolContext& context, const display::Pointer& at) {
  display::DisplayState& v = context.view;
  if (v.MouseMode == display::kNoDrag) return;
  to_ = at;
  if (!Dragged()) return;
  if (v.MouseMode == kAddBandHeld) v.MouseMode = kAddBand;
  if (v.MouseMode == kDeleteHeld) v.MouseMode = kDeleteBand;
}

void PeakTool::Release(display::ToolContext& context, const display::Pointer& at) {
  display::DisplayState& v = context.view;
  const std::int16_t drag = v.MouseMode;
  v.MouseMode = display::kNoDrag;
  if (drag == display::kNoDrag) return;
  to_ = at;
  const Point p = PointAt(context, at);
  const auto threshold = [this] { return hooks_.threshold ? hooks_.threshold() : document_.spectrum.LowerLimit; };
  const operations::PeakMode kind = hooks_.topKind ? hooks_.topKind() : operations::kPeakOnDataPoint;
  switch (drag) {
    case kClickHeld:
    case kAddBandHeld: Changed(document::AddPeakByClick(document_, p.Col(), p.Row(), threshold(), kind)); return;
    case kAddBand: Changed(document::PickInArea(document_, AreaOf(context, from_, to_), threshold(), kind) > 0); return;
    case kDeleteHeld: Changed(document::DeletePeakByClick(document_, p.col, p.row)); return;
    case kDeleteBand: Changed(document::DeleteInArea(document_, AreaOf(context, from_, to_)) > 0); return;
    case kTopHeld:
      if (Dragged()) Changed(document::MovePeakByDrag(document_, moving_, p.Col(), p.Row(), kind));
      moving_ = -1;
      return;
    default: return;
  }
}

void PeakTool::DrawOverlay(platform::Surface& surface, const display::DisplayState& view, const model::Spectrum2D& s,
                           const display::Rect& contour) const {
  surface.SetClip(contour.x, contour.y, contour.width, contour.height);
  surface.SetNoBrush();
  surface.SetPen(kDragColor, 1);
  if (view.MouseMode == kAddBand || view.MouseMode == kDeleteBand) {
    const platform::Point corners[4] = {{from_.x, from_.y}, {to_.x, from_.y}, {to_.x, to_.y}, {from_.x, to_.y}};
    surface.Polygon(corners);
  } else if (view.MouseMode == kTopHeld && Dragged()) {
    // The top goes where the pointer is: a cross there, and a line from the top it leaves.
    if (moving_ < static_cast<int>(s.peaks.peaks.size())) {
      const model::Peak2D& top = s.peaks.peaks[moving_];
      const operations::MarkPixel p =
          operations::PixelOfPoint(view, s, contour, top.PosF2 / s.axis[F2].Resolution, top.PosF1 / s.axis[F1].Resolution);
      surface.MoveTo(static_cast<int>(std::lrint(p.x)), static_cast<int>(std::lrint(p.y)));
      surface.LineTo(to_.x, to_.y);
    }
    surface.MoveTo(to_.x - 6, to_.y);
    surface.LineTo(to_.x + 7, to_.y);
    surface.MoveTo(to_.x, to_.y - 6);
    surface.LineTo(to_.x, to_.y + 7);
  }
  surface.ClearClip();
}

}  // namespace velk::gui
