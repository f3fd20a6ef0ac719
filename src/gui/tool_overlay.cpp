#include "gui/tool_overlay.h"

#include <algorithm>
#include <cmath>

#include "display/traces.h"
#include "display/view_navigation.h"
#include "gui/operation_tools.h"
#include "operations/baseline_tool.h"
#include "operations/phase_tool.h"
#include "operations/reference_tool.h"
#include "operations/symmetrize_tool.h"
#include "operations/trace_reference.h"
#include "display/page_picture.h"

namespace velk::gui {

using model::F1;
using model::F2;

namespace {

int Pixel(double start, double end, int first, int extent, double value) {
  return static_cast<int>(std::lrint(display::ValueToPixel(start, end, first, extent, value)));
}
double ValueAt(double start, double end, int first, int extent, int pixel) {
  return extent > 0 ? start + (end - start) * (pixel - first) / extent : start;
}
int X(const display::DisplayState& v, const display::Rect& c, double ppm) {
  return Pixel(v.ViewF2Start, v.ViewF2End, c.x, c.width, ppm);
}
int Y(const display::DisplayState& v, const display::Rect& c, double ppm) {
  return Pixel(v.ViewF1Start, v.ViewF1End, c.y, c.height, ppm);
}
float PpmAt(const std::vector<float>& ppm, std::int32_t i) {
  return ppm.empty() ? 0.0f : ppm[std::clamp<std::size_t>(static_cast<std::size_t>(std::max(i, 0)), 0, ppm.size() - 1)];
}

// A line across a rectangle at a shift of an axis: vertical for F2, horizontal for F1.
void PpmLine(platform::Surface& surface, const display::DisplayState& v, const display::Rect& r, model::Axis axis,
             double ppm) {
  if (axis == F2) {
    const int x = X(v, r, ppm);
    surface.MoveTo(x, r.y);
    surface.LineTo(x, r.bottom());
  } else {
    const int y = Y(v, r, ppm);
    surface.MoveTo(r.x, y);
    surface.LineTo(r.right(), y);
  }
}

// The same at a data point of the spectrum's axis.
void AxisLine(platform::Surface& surface, const display::DisplayState& v, const model::Spectrum2D& s,
              const display::Rect& c, model::Axis axis, std::int32_t point) {
  PpmLine(surface, v, c, axis, PpmAt(axis == F2 ? s.ppmF2 : s.ppmF1, point));
}

// A side panel emptied inside its frame, which stays, for a trace of the tool's own.
void ClearPanel(platform::Surface& surface, const display::Rect& panel) {
  surface.SetPen(platform::kWhite, 1);
  surface.SetBrush(platform::kWhite);
  const platform::Point corners[4] = {{panel.x + 1, panel.y + 1},
                                      {panel.right() - 2, panel.y + 1},
                                      {panel.right() - 2, panel.bottom() - 2},
                                      {panel.x + 1, panel.bottom() - 2}};
  surface.Polygon(corners);
  surface.SetNoBrush();
}

// The trace under a 1D reference on its scale of the moment, with a line at the picked point.
void DrawTraceReference(platform::Surface& surface, const operations::TraceReferenceTool& tool,
                        const display::DisplayState& v, const display::Rect& panel) {
  const bool f1 = tool.Axis() == F1;
  ClearPanel(surface, panel);
  const model::Spectrum1D& trace = tool.Trace();
  display::DrawCompanionTrace(surface, &trace, {panel, f1 ? v.ViewF1Start : v.ViewF2Start,
                                                f1 ? v.ViewF1End : v.ViewF2End, 0, 1, f1});
  if (tool.Picked() < 0 || static_cast<std::size_t>(tool.Picked()) >= trace.axisPpm.size()) return;
  const double ppm = trace.axisPpm[static_cast<std::size_t>(tool.Picked())];
  surface.SetPen(kReferenceColor, 1);
  PpmLine(surface, v, panel, tool.Axis(), ppm);
}

// The phase trace of the panel's axis replaces the projection in that axis's side panel, on a
// scale symmetric about its base line so that both signs show.
void DrawPhaseTrace(platform::Surface& surface, const operations::PhaseTool& tool, const display::DisplayState& v,
                    const model::Spectrum2D& s, const display::Rect& panel) {
  const std::vector<float>& re = tool.TraceReal();
  float largest = 0;
  for (float x : re) largest = std::max(largest, std::fabs(x));
  if (largest <= 0) largest = 1;
  ClearPanel(surface, panel);
  const bool f1 = tool.Axis() == F1;
  display::TracePanel p{panel, f1 ? v.ViewF1Start : v.ViewF2Start, f1 ? v.ViewF1End : v.ViewF2End, -1.05f * largest,
                        1.05f * largest, f1};
  surface.SetPen(0xC0C0C0, 1);  // the base line
  if (f1) {
    surface.MoveTo(panel.x + panel.width / 2, panel.y);
    surface.LineTo(panel.x + panel.width / 2, panel.bottom());
  } else {
    surface.MoveTo(panel.x, panel.y + panel.height / 2);
    surface.LineTo(panel.right(), panel.y + panel.height / 2);
  }
  const std::vector<float>& ppm = f1 ? s.ppmF1 : s.ppmF2;
  display::DrawTrace(surface, p, ppm, re, static_cast<int>(re.size()), kPhaseTraceColor, 1);
  surface.SetPen(kPivotColor, 1);
  PpmLine(surface, v, panel, tool.Axis(), PpmAt(ppm, tool.Values().pivot));
}

// The part of a line inside a rectangle (the line itself when it misses it).
operations::ScreenLine Inside(const operations::ScreenLine& l, double left, double top, double right, double bottom) {
  const double dx = l.x1 - l.x0, dy = l.y1 - l.y0;
  double t0 = 0, t1 = 1;
  const auto cut = [&](double p, double q) {  // keeps the side p * t <= q
    if (p == 0) return q >= 0;
    const double t = q / p;
    if (p < 0) t0 = std::max(t0, t);
    else t1 = std::min(t1, t);
    return t0 <= t1;
  };
  if (!(cut(-dx, l.x0 - left) && cut(dx, right - l.x0) && cut(-dy, l.y0 - top) && cut(dy, bottom - l.y0))) return l;
  return {l.x0 + t0 * dx, l.y0 + t0 * dy, l.x0 + t1 * dx, l.y0 + t1 * dy};
}

// The diagonal that symmetrization mirrors across, F1 = F2 + d, in pixels: the part inside the
// contour, held back from its edges so that the handles at its ends show whole.
operations::ScreenLine SymmetryLine(float shift, const display::DisplayState& v, const model::Spectrum2D& s,
                                    const display::Rect& c) {
  const double d = operations::DiagonalOffset(s, shift);
  const auto y = [&](int x) { return Y(v, c, ValueAt(v.ViewF2Start, v.ViewF2End, c.x, c.width, x) + d); };
  const operations::ScreenLine across{static_cast<double>(c.x), static_cast<double>(y(c.x)),
                                      static_cast<double>(c.right()), static_cast<double>(y(c.right()))};
  const double room = operations::kHandleReach - 1;  // the handle's half width and one pixel
  return Inside(across, c.x + room, c.y + room, c.right() - 1 - room, c.bottom() - 1 - room);
}

// The line with its handles: a small square at each end and in the middle.
void DrawSymmetryLine(platform::Surface& surface, const operations::ScreenLine& line) {
  surface.SetPen(kSymmetryColor, 2);
  surface.MoveTo(static_cast<int>(line.x0), static_cast<int>(line.y0));
  surface.LineTo(static_cast<int>(line.x1), static_cast<int>(line.y1));
  const int r = static_cast<int>(operations::kHandleReach) - 2;
  surface.SetBrush(kSymmetryColor);
  for (double t : {0.0, 0.5, 1.0}) {
    const int x = static_cast<int>(std::lrint(line.x0 + t * (line.x1 - line.x0)));
    const int y = static_cast<int>(std::lrint(line.y0 + t * (line.y1 - line.y0)));
    const platform::Point square[4] = {{x - r, y - r}, {x + r, y - r}, {x + r, y + r}, {x - r, y + r}};
    surface.Polygon(square);
  }
  surface.SetNoBrush();
}

bool OverSymmetryLine(const operations::SymmetrizeTool& sym, const display::ToolContext& context,
                      const display::Pointer& at) {
  return operations::GrabsSymmetryLine(SymmetryLine(sym.SymShift(), context.view, context.spectrum, context.contour),
                                       at.x, at.y);
}

}  // namespace

void ToolOverlay::Press(display::ToolContext& context, const display::Pointer& at) {
  if (at.right) return;
  const display::CursorReading r = display::ReadCursor(context.view, context.spectrum, context.contour, at.x, at.y);
  operations::Tool* tool = tools_.Active();
  if (auto* reference = dynamic_cast<operations::ReferenceTool*>(tool)) {
    reference->PlaceCross(r.col, r.row);
    tools_.ScaleChanged();
  } else if (auto* base = dynamic_cast<operations::BaselineTool*>(tool)) {
    const std::int32_t point = context.view.ToolMode == display::kBaselineF1 ? r.row : r.col;
    if (context.view.ToolCode == 1) base->AddPoint(point);
    else if (context.view.ToolCode == -1) base->DeletePoint(point);
    tools_.MarksChanged();
  } else if (auto* phase = dynamic_cast<operations::PhaseTool*>(tool)) {
    if (context.view.ToolCode != 2) return;  // the pivot button is up
    phase->SetPivot(phase->Axis() == F1 ? r.row : r.col);
    tools_.MarksChanged();
  } else if (auto* sym = dynamic_cast<operations::SymmetrizeTool*>(tool)) {
    if (!OverSymmetryLine(*sym, context, at)) return;
    context.view.MouseMode = display::kSymmetryLine;
    Move(context, at);
  }
}

void ToolOverlay::Move(display::ToolContext& context, const display::Pointer& at) {
  auto* sym = dynamic_cast<operations::SymmetrizeTool*>(tools_.Active());
  if (!sym) return;
  const bool dragging = context.view.MouseMode == display::kSymmetryLine;
  tools_.PointerOverHandle(dragging || OverSymmetryLine(*sym, context, at));
  if (!dragging) return;
  // The line through the pointer: its offset in F2 points from the line through the middle.
  const display::DisplayState& v = context.view;
  const display::Rect& c = context.contour;
  const double f2 = ValueAt(v.ViewF2Start, v.ViewF2End, c.x, c.width, at.x);
  const double f1 = ValueAt(v.ViewF1Start, v.ViewF1End, c.y, c.height, at.y);
  const double d0 = operations::DiagonalOffset(context.spectrum, 0);
  const double perPoint = operations::DiagonalOffset(context.spectrum, 1) - d0;
  if (perPoint == 0) return;
  sym->DragTo((f1 - f2 - d0) / perPoint);
  tools_.MarksChanged();
}

void ToolOverlay::Release(display::ToolContext& context, const display::Pointer& at) {
  Move(context, at);
  context.view.MouseMode = display::kNoDrag;
}

bool ToolOverlay::CanLeave() { return tools_.LeaveOpenTool(); }

void ToolOverlay::DrawOverlay(platform::Surface& surface, const display::DisplayState& v, const model::Spectrum2D& s,
                              const display::Rect& c) const {
  const operations::Tool* tool = tools_.Active();
  if (!tool) return;
  const display::MainViewLayout& layout = tools_.View().Layout();
  surface.SetNoBrush();
  if (auto* phase = dynamic_cast<const operations::PhaseTool*>(tool)) {
    const display::Rect& panel = phase->Axis() == F1 ? layout.traceF1 : layout.traceF2;
    if (panel.width > 2 && panel.height > 2) {
      surface.SetClip(panel.x, panel.y, panel.width, panel.height);
      DrawPhaseTrace(surface, *phase, v, s, panel);
    }
    surface.SetClip(c.x, c.y, c.width, c.height);
    surface.SetPen(kPivotColor, 1);
    AxisLine(surface, v, s, c, phase->Axis(), phase->Values().pivot);
  } else if (auto* base = dynamic_cast<const operations::BaselineTool*>(tool)) {
    // On the contour and across the trace panel of the axis, which shares the axis's extent.
    const model::Axis axis = v.ToolMode == display::kBaselineF1 ? F1 : F2;
    surface.SetPen(kBasePointColor, 1);
    for (const display::Rect& r : {c, axis == F1 ? layout.traceF1 : layout.traceF2}) {
      surface.SetClip(r.x, r.y, r.width, r.height);
      for (const operations::BasePoint& p : base->Points()) AxisLine(surface, v, s, r, axis, p.position);
    }
  } else if (auto* sym = dynamic_cast<const operations::SymmetrizeTool*>(tool)) {
    surface.SetClip(c.x, c.y, c.width, c.height);
    DrawSymmetryLine(surface, SymmetryLine(sym->SymShift(), v, s, c));
  } else if (auto* reference = dynamic_cast<const operations::ReferenceTool*>(tool)) {
    surface.SetClip(c.x, c.y, c.width, c.height);
    surface.SetPen(kReferenceColor, 1);
    AxisLine(surface, v, s, c, F2, reference->CrossF2());
    AxisLine(surface, v, s, c, F1, reference->CrossF1());
  } else if (auto* trace = dynamic_cast<const operations::TraceReferenceTool*>(tool)) {
    const display::Rect& panel = trace->Axis() == F1 ? layout.traceF1 : layout.traceF2;
    if (panel.width > 2 && panel.height > 2) {
      surface.SetClip(panel.x, panel.y, panel.width, panel.height);
      DrawTraceReference(surface, *trace, v, panel);
    }
  }
  surface.ClearClip();
}

}  // namespace velk::gui
