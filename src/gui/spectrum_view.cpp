#include "gui/spectrum_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <memory>

#include "display/contour_view.h"
#include "display/display_grid.h"
#include "display/levels.h"
#include "display/view_navigation.h"
#include "platform/qt/qt_surface.h"

namespace velk::gui {
namespace {

platform::Extent DeviceSize(const QWidget& w) {
  const double ratio = w.devicePixelRatioF();
  return {static_cast<int>(std::lrint(w.width() * ratio)), static_cast<int>(std::lrint(w.height() * ratio))};
}

std::string AxisCaption(const char* axis, const std::string& nucleus) {
  return std::string(axis) + (nucleus.empty() ? "" : " " + nucleus) + " (ppm)";
}

}  // namespace

SpectrumView::SpectrumView(document::Document& document, display::ToolBox& tools, QWidget* parent)
    : QWidget(parent), document_(document), tools_(tools) {
  setMouseTracking(true);
  setMinimumSize(480, 360);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::CrossCursor);
  connect(&worker_, &Worker::progressed, this, &SpectrumView::tracing);
}

void SpectrumView::SetShown(bool shown) {
  worker_.Stop();
  shown_ = shown;
}

void SpectrumView::DataChanged() {
  worker_.Stop();
  projF2_ = projF1_ = {};
  if (shown_) {
    const model::Spectrum2D& s = document_.spectrum;
    const display::ContourSetting& setting = document_.contour;
    const int cls = document_.words.pulseModeClass;
    const bool both = display::HasNegativeSide(setting, cls);
    projF2_ = display::MakeProjectionF2(s, cls, setting, both);
    projF1_ = display::MakeProjectionF1(s, cls, setting, both);
    axisCaptionF2_ = AxisCaption("F2", s.extras[model::F2].nucleus);
    axisCaptionF1_ = AxisCaption("F1", s.extras[model::F1].nucleus);
  }
  pendingReuse_ = false;
  Trace(false);
}

void SpectrumView::LevelsChanged() { Trace(true); }
void SpectrumView::WindowChanged() { Trace(true); }

void SpectrumView::Recompose() {
  Compose();
  update();
}

void SpectrumView::SetBusy(bool busy) {
  if (busy) worker_.Stop();
  busy_ = busy;
}

void SpectrumView::SetMarkStyle(const operations::MarkStyle& marks) {
  marks_ = marks;
  update();
}

QPointF SpectrumView::PositionOf(double ppmF2, double ppmF1) const {
  const display::DisplayState& v = document_.view;
  const display::Rect& c = layout_.contour;
  const double x = display::ValueToPixel(v.ViewF2Start, v.ViewF2End, c.x, c.width, ppmF2);
  const double y = display::ValueToPixel(v.ViewF1Start, v.ViewF1End, c.y, c.height, ppmF1);
  return {x / Ratio(), y / Ratio()};
}

// The contour is traced on the worker into an image of the contour rectangle. The grid is kept
// between traces: with `reuse` it serves again unless the window or the size asks for another.
void SpectrumView::Trace(bool reuse) {
  if (busy_) return;
  worker_.Stop();
  layout_ = display::LayOutMainView(DeviceSize(*this), true);
  if (!shown_ || layout_.contour.width < 3 || layout_.contour.height < 3) {
    Compose();
    update();
    return;
  }
  document_.view.ContourDirty = true;
  const display::Rect rect{0, 0, layout_.contour.width, layout_.contour.height};
  auto image = std::make_shared<QImage>(rect.width, rect.height, QImage::Format_ARGB32_Premultiplied);
  auto levels = std::make_shared<display::LevelTable>(levels_);
  // The job works on copies of the small records and reads the spectrum in place: the window
  // stops the trace before it changes the data.
  auto job = [this, image, levels, rect, reuse = reuse && pendingReuse_, state = document_.view,
              setting = document_.contour, cls = document_.words.pulseModeClass,
              spectrum = &document_.spectrum](platform::Progress& progress) {
    image->fill(Qt::white);
    QPainter painter(image.get());
    platform::qt::QtSurface surface(painter, {rect.width, rect.height});
    bool keep = reuse;
    const display::GridSource source{*spectrum, cls, setting};
    display::DrawContourView(surface, grid_, *levels, source, state, rect, 0, 0, keep, progress);
  };
  worker_.Start(job, [this, image, levels] {
    contour_ = std::move(*image);
    levels_ = *levels;
    pendingReuse_ = true;
    document_.view.ContourDirty = false;
    Compose();
    update();
    emit traced();
  });
}

display::MainViewInput SpectrumView::Input() const {
  const document::Document& d = document_;
  const int cls = d.words.pulseModeClass;
  // Both signs of the projection where the contour has a negative side, else the positive only.
  const display::TraceKind kind = d.traces == display::TraceKind::ProjectionPosNeg && !display::HasNegativeSide(d.contour, cls)
                                      ? display::TraceKind::Projection
                                      : d.traces;
  return {d.spectrum, cls, d.contour, d.view, kind, axisCaptionF2_, axisCaptionF1_, &d.companionF2, &d.companionF1, &d.grid};
}

void SpectrumView::Compose() {
  const platform::Extent size = DeviceSize(*this);
  frame_ = QImage(size.width, size.height, QImage::Format_ARGB32_Premultiplied);
  frame_.fill(Qt::white);
  if (!shown_) return;
  const document::Document& d = document_;
  QPainter painter(&frame_);
  if (!contour_.isNull()) painter.drawImage(layout_.contour.x, layout_.contour.y, contour_);
  platform::qt::QtSurface surface(painter, size);
  // The grid lies over the contour, under the marks of the tools.
  if (d.grid.shown) display::DrawGridLines(surface, layout_.contour, d.view, d.grid);
  display::DrawSurround(surface, layout_, Input(), levels_, projF2_, projF1_);
  const display::DisplayState& v = d.view;
  const model::Spectrum2D& s = d.spectrum;
  traceCaptionF2_ = v.SliceF1 >= 0 && v.SliceF1 < static_cast<int>(s.ppmF1.size())
                        ? QString::fromStdString(display::SliceCaption(false, s.ppmF1[v.SliceF1]))
                        : QString();
  traceCaptionF1_ = v.SliceF2 >= 0 && v.SliceF2 < static_cast<int>(s.ppmF2.size())
                        ? QString::fromStdString(display::SliceCaption(true, s.ppmF2[v.SliceF2]))
                        : QString();
}

void SpectrumView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (frame_.isNull()) {
    painter.fillRect(rect(), Qt::white);
    return;
  }
  // The frame and the marks are in device pixels: drawn one to one, sharp on any screen.
  painter.scale(1.0 / Ratio(), 1.0 / Ratio());
  painter.drawImage(0, 0, frame_);
  if (busy_ || !shown_) return;
  platform::qt::QtSurface surface(painter, DeviceSize(*this));
  // The marks of the data lie over the contour and the grid, under the tool's own marks.
  const document::Document& d = document_;
  operations::MarkStyle marks = marks_;
  marks.peakHalfSize = static_cast<int>(std::lrint(marks.peakHalfSize * Ratio()));
  marks.peakWidth = std::max(1, static_cast<int>(std::lrint(marks.peakWidth * Ratio())));
  marks.slopeWidth = std::max(1, static_cast<int>(std::lrint(marks.slopeWidth * Ratio())));
  operations::DrawSlope2Line(surface, d.view, d.spectrum, layout_.contour, marks);
  operations::DrawPeakMarks(surface, d.view, d.spectrum, layout_.contour, marks);
  tools_.Active(d.view).DrawOverlay(surface, d.view, d.spectrum, layout_.contour);
}

void SpectrumView::resizeEvent(QResizeEvent*) { Trace(true); }

// On a screen of another pixel ratio the retained pictures are made again in its device pixels.
bool SpectrumView::event(QEvent* event) {
  if (event->type() == QEvent::ScreenChangeInternal) Trace(true);
  return QWidget::event(event);
}

display::Pointer SpectrumView::DevicePointer(QMouseEvent* event) const {
  const QPointF p = event->position() * Ratio();
  return {static_cast<int>(std::lrint(p.x())), static_cast<int>(std::lrint(p.y())),
          event->button() == Qt::RightButton || (event->buttons() & Qt::RightButton && !(event->buttons() & Qt::LeftButton))};
}

void SpectrumView::Point(Pointing what, QMouseEvent* event) {
  if (busy_ || !shown_) return;
  document::Document& d = document_;
  const display::Pointer at = DevicePointer(event);
  if (what == Pointing::Press && at.right && Tracing()) return QuitTracing();
  const display::Rect& c = layout_.contour;
  const bool inside = at.x >= c.x && at.x < c.right() && at.y >= c.y && at.y < c.bottom();
  if (inside) emit cursorMoved(QString::fromStdString(display::CursorText(
                  display::ReadCursor(d.view, d.spectrum, c, at.x, at.y))));
  if (what == Pointing::Press && !inside && !at.right) PressBeside(at);
  // A press starts only on the contour, and not while it is being traced.
  if (what == Pointing::Press && (!inside || d.view.ContourDirty)) return;
  display::ToolContext context{d.view, d.spectrum, c};
  display::Tool& tool = tools_.Active(d.view);
  if (what == Pointing::Press) tool.Press(context, at);
  else if (what == Pointing::Move) tool.Move(context, at);
  else tool.Release(context, at);
  if (context.windowChanged) {
    WindowChanged();
    emit windowMoved();
  }
  if (context.slicesChanged) Recompose();
  update();
}

void SpectrumView::PressBeside(const display::Pointer& at) {
  const display::DisplayState& v = document_.view;
  const auto within = [&](const display::Rect& r) {
    return r.width > 0 && r.height > 0 && at.x >= r.x && at.x < r.right() && at.y >= r.y && at.y < r.bottom();
  };
  const display::Rect& f2 = layout_.traceF2;
  const display::Rect& f1 = layout_.traceF1;
  if (within(f2)) emit tracePressed(model::F2, display::PixelToValue(v.ViewF2Start, v.ViewF2End, f2.x, f2.width, at.x));
  if (within(f1)) emit tracePressed(model::F1, display::PixelToValue(v.ViewF1Start, v.ViewF1End, f1.y, f1.height, at.y));
}

void SpectrumView::mousePressEvent(QMouseEvent* e) { Point(Pointing::Press, e); }
void SpectrumView::mouseMoveEvent(QMouseEvent* e) { Point(Pointing::Move, e); }
void SpectrumView::mouseReleaseEvent(QMouseEvent* e) { Point(Pointing::Release, e); }
void SpectrumView::leaveEvent(QEvent*) { emit cursorMoved(QString()); }

}  // namespace velk::gui
