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

}  // namespace

SpectrumView::SpectrumView(ViewData& data, QWidget* parent) : QWidget(parent), data_(data) {
  setMouseTracking(true);
  setMinimumSize(480, 360);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::CrossCursor);
  connect(&worker_, &Worker::progressed, this, &SpectrumView::tracing);
}

void SpectrumView::DataChanged() {
  worker_.Stop();
  projF2_ = projF1_ = {};
  if (data_.spectrum) {
    const bool both = display::HasNegativeSide(data_.setting, data_.pulseModeClass);
    projF2_ = display::MakeProjectionF2(*data_.spectrum, data_.pulseModeClass, data_.setting, both);
    projF1_ = display::MakeProjectionF1(*data_.spectrum, data_.pulseModeClass, data_.setting, both);
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

QPointF SpectrumView::PositionOf(double ppmF2, double ppmF1) const {
  const display::DisplayState& v = data_.state;
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
  if (!data_.spectrum || layout_.contour.width < 3 || layout_.contour.height < 3) {
    Compose();
    update();
    return;
  }
  data_.state.ContourDirty = true;
  const display::Rect rect{0, 0, layout_.contour.width, layout_.contour.height};
  auto image = std::make_shared<QImage>(rect.width, rect.height, QImage::Format_ARGB32_Premultiplied);
  auto levels = std::make_shared<display::LevelTable>(levels_);
  auto job = [this, image, levels, rect, reuse = reuse && pendingReuse_, state = data_.state,
              setting = data_.setting, cls = data_.pulseModeClass,
              spectrum = data_.spectrum](platform::Progress& progress) {
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
    data_.state.ContourDirty = false;
    Compose();
    update();
    emit traced();
  });
}

void SpectrumView::Compose() {
  const platform::Extent size = DeviceSize(*this);
  frame_ = QImage(size.width, size.height, QImage::Format_ARGB32_Premultiplied);
  frame_.fill(Qt::white);
  if (!data_.spectrum) return;
  QPainter painter(&frame_);
  if (!contour_.isNull()) painter.drawImage(layout_.contour.x, layout_.contour.y, contour_);
  platform::qt::QtSurface surface(painter, size);
  // The grid lies over the contour, under the marks of the tools.
  if (data_.showGrid) display::DrawGridLines(surface, layout_.contour, data_.state, data_.grid);
  // Both signs of the projection where the contour has a negative side, else the positive only.
  const display::TraceKind kind = display::HasNegativeSide(data_.setting, data_.pulseModeClass)
                                      ? display::TraceKind::ProjectionPosNeg
                                      : display::TraceKind::Projection;
  const display::MainViewInput input{*data_.spectrum, data_.pulseModeClass, data_.setting, data_.state,
                                     kind,            data_.captionF2,      data_.captionF1};
  display::DrawSurround(surface, layout_, input, levels_, projF2_, projF1_);
  const display::DisplayState& v = data_.state;
  const model::Spectrum2D& s = *data_.spectrum;
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
  if (busy_ || !data_.spectrum) return;
  platform::qt::QtSurface surface(painter, DeviceSize(*this));
  // The marks of the data lie over the contour and the grid, under the tool's own marks.
  operations::MarkStyle marks = data_.marks;
  marks.peakHalfSize = static_cast<int>(std::lrint(marks.peakHalfSize * Ratio()));
  marks.peakWidth = std::max(1, static_cast<int>(std::lrint(marks.peakWidth * Ratio())));
  marks.slopeWidth = std::max(1, static_cast<int>(std::lrint(marks.slopeWidth * Ratio())));
  operations::DrawSlope2Line(surface, data_.state, *data_.spectrum, layout_.contour, marks);
  operations::DrawPeakMarks(surface, data_.state, *data_.spectrum, layout_.contour, marks);
  data_.tools.Active(data_.state).DrawOverlay(surface, data_.state, *data_.spectrum, layout_.contour);
}

void SpectrumView::resizeEvent(QResizeEvent*) { Trace(true); }

display::Pointer SpectrumView::DevicePointer(QMouseEvent* event) const {
  const QPointF p = event->position() * Ratio();
  return {static_cast<int>(std::lrint(p.x())), static_cast<int>(std::lrint(p.y())),
          event->button() == Qt::RightButton || (event->buttons() & Qt::RightButton && !(event->buttons() & Qt::LeftButton))};
}

void SpectrumView::Point(Pointing what, QMouseEvent* event) {
  if (busy_ || !data_.spectrum) return;
  const display::Pointer at = DevicePointer(event);
  if (what == Pointing::Press && at.right && Tracing()) return QuitTracing();
  const display::Rect& c = layout_.contour;
  const bool inside = at.x >= c.x && at.x < c.right() && at.y >= c.y && at.y < c.bottom();
  if (inside) emit cursorMoved(QString::fromStdString(display::CursorText(
                  display::ReadCursor(data_.state, *data_.spectrum, c, at.x, at.y))));
  // A press starts only on the contour, and not while it is being traced.
  if (what == Pointing::Press && (!inside || data_.state.ContourDirty)) return;
  display::ToolContext context{data_.state, *data_.spectrum, c};
  display::Tool& tool = data_.tools.Active(data_.state);
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

void SpectrumView::mousePressEvent(QMouseEvent* e) { Point(Pointing::Press, e); }
void SpectrumView::mouseMoveEvent(QMouseEvent* e) { Point(Pointing::Move, e); }
void SpectrumView::mouseReleaseEvent(QMouseEvent* e) { Point(Pointing::Release, e); }
void SpectrumView::leaveEvent(QEvent*) { emit cursorMoved(QString()); }

}  // namespace velk::gui
