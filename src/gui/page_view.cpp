#include "gui/page_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "layout/render_page.h"
#include "platform/qt/picture_decode.h"
#include "platform/qt/qt_surface.h"

namespace velk::gui {
namespace {

constexpr int kMargin = 16;        // pixels of grey around the paper
constexpr double kScreenDpi = 96;  // the resolution of zoom 100
constexpr int kGrab = 5;           // pixels around a handle or a thin line that still catch it
constexpr int kHandle = 7;         // the side of a handle's square
const QColor kSelection(0, 90, 220);

}  // namespace

PageView::PageView(layout::EditedPage& page, RenderFrames frames, BeforeChange before, QWidget* parent)
    : QWidget(parent), page_(page), renderFrames_(std::move(frames)), before_(std::move(before)) {
  setMouseTracking(true);
  setFocusPolicy(Qt::ClickFocus);
  decoder_ = [this](std::span<const std::uint8_t> bytes, int width, int height) { return Picture(bytes, width, height); };
  SetZoom(zoom_);
  ObjectsChanged();
}

double PageView::DotsPerInch() const { return kScreenDpi * zoom_ / 100.0; }

void PageView::SetZoom(int percent) {
  zoom_ = std::clamp(percent, 25, 400);
  const platform::Extent e = layout::PageExtent(page_.paper, DotsPerInch());
  setFixedSize(e.width + 2 * kMargin, e.height + 2 * kMargin);
  pictures_.clear();
  FramesChanged();
}

void PageView::FramesChanged() {
  framesStale_ = true;
  update();
}

void PageView::ObjectsChanged() {
  QImage scratch(1, 1, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&scratch);
  platform::qt::QtSurface surface(painter, {1, 1});
  texts_ = layout::TextFramesOf(surface, page_.objects);
  if (selection_ && selection_->what == layout::Target::What::Object && !layout::IsLive(page_.objects, selection_->object))
    Select(std::nullopt);
  update();
}

void PageView::Select(std::optional<layout::Target> target) {
  if (selection_ == target) return;
  selection_ = target;
  update();
  emit selectionChanged();
}

QPoint PageView::WidgetPoint(layout::PagePoint p) const {
  const double perCm = DotsPerInch() / 2.54;
  return {kMargin + static_cast<int>(std::lrint(p.x * perCm)), kMargin + static_cast<int>(std::lrint(p.y * perCm))};
}

layout::PagePoint PageView::PagePointOf(QPointF at) const {
  const double perCm = DotsPerInch() / 2.54;
  return {(at.x() - kMargin) / perCm, (at.y() - kMargin) / perCm};
}

std::optional<platform::Image> PageView::Picture(std::span<const std::uint8_t> bytes, int width, int height) {
  const auto key = std::make_tuple(static_cast<const void*>(bytes.data()), width, height);
  const auto found = pictures_.find(key);
  if (found != pictures_.end()) return found->second;
  if (pictures_.size() > 64) pictures_.clear();
  return pictures_[key] = platform::qt::DecodePicture(bytes, width, height);
}

void PageView::paintEvent(QPaintEvent*) {
  const platform::Extent e = layout::PageExtent(page_.paper, DotsPerInch());
  if (framesStale_) {
    frames_ = QImage(e.width, e.height, QImage::Format_ARGB32_Premultiplied);
    frames_.fill(Qt::white);
    QPainter painter(&frames_);
    platform::qt::QtSurface surface(painter, e);
    renderFrames_(surface, DotsPerInch());
    framesStale_ = false;
  }
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Dark));
  painter.fillRect(kMargin + 3, kMargin + 3, e.width, e.height, QColor(90, 90, 90));  // the paper's shadow
  painter.drawImage(kMargin, kMargin, frames_);
  painter.save();
  painter.translate(kMargin, kMargin);
  painter.setClipRect(0, 0, e.width, e.height);
  {
    platform::qt::QtSurface surface(painter, e);
    const layout::PageScale scale = layout::ScaleOf(DotsPerInch());
    layout::PaintObjects(surface, page_.objects, scale, &decoder_);
  }
  // An image slot without a picture to show is marked where it lies, so that it can be found.
  painter.setPen(QPen(QColor(150, 150, 150), 1, Qt::DashLine));
  painter.setBrush(Qt::NoBrush);
  for (int slot = layout::kFirstImageSlot; slot <= layout::kLastImageSlot; ++slot) {
    const layout::LayoutImage& image = page_.objects.images[slot];
    if (image.free()) continue;
    const layout::DeviceRect r = layout::ImageRect(image, layout::ScaleOf(DotsPerInch()));
    const auto kind = static_cast<layout::PictureKind>(image.Kind);
    const bool metafile = kind == layout::PictureKind::EnhancedMetafile || kind == layout::PictureKind::Metafile ||
                          kind == layout::PictureKind::PlaceableMetafile;
    if (image.Picture.empty() || (!metafile && !Picture(*image.Picture.bytes, r.width, r.height)))
      painter.drawRect(r.x, r.y, r.width, r.height);
  }
  painter.restore();
  PaintSelection(painter);
}

void PageView::PaintSelection(QPainter& painter) {
  if (!selection_) return;
  if (selection_->what == layout::Target::What::Frame) {
    const layout::PageFrame& f = page_.frames[selection_->frame];
    painter.setPen(QPen(kSelection, 1, Qt::DashLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRect(WidgetPoint({f.X, f.Y}), WidgetPoint({f.X + f.Width, f.Y + f.Height})));
  }
  painter.setPen(QPen(kSelection, 1));
  painter.setBrush(Qt::white);
  for (const layout::HandlePlace& h : layout::HandlesOf(page_, texts_, *selection_)) {
    const QPoint at = WidgetPoint(h.at);
    painter.drawRect(at.x() - kHandle / 2, at.y() - kHandle / 2, kHandle, kHandle);
  }
}

void PageView::ShowStatus(layout::PagePoint at, std::string_view hint) {
  QString text = QString::fromStdString(layout::PositionText(at));
  if (selection_ && selection_->what == layout::Target::What::Frame)
    text += "     " + QString::fromStdString(layout::FrameText(page_.frames[selection_->frame]));
  if (!hint.empty()) text += "     " + QString::fromUtf8(hint.data(), static_cast<qsizetype>(hint.size()));
  emit status(text);
}

void PageView::mousePressEvent(QMouseEvent* event) {
  const layout::PagePoint at = PagePointOf(event->position());
  const double tolerance = kGrab * 2.54 / DotsPerInch();
  const std::optional<layout::Hit> hit = layout::HitTest(page_, texts_, at, tolerance, selection_);
  if (event->button() == Qt::RightButton) {
    if (hit) Select(hit->target);
    emit contextMenuAt(event->globalPosition().toPoint(), at);
    return;
  }
  if (event->button() != Qt::LeftButton) return;
  Select(hit ? std::optional<layout::Target>(hit->target) : std::nullopt);
  if (hit) drag_ = Drag{*hit, at, page_, false};
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
  const layout::PagePoint at = PagePointOf(event->position());
  if (!drag_ || !(event->buttons() & Qt::LeftButton)) {
    const double tolerance = kGrab * 2.54 / DotsPerInch();
    const std::optional<layout::Hit> hit = layout::HitTest(page_, texts_, at, tolerance, selection_);
    return ShowStatus(at, hit ? layout::HintOf(*hit) : std::string_view{});
  }
  if (!drag_->moved) {
    const QPoint start = WidgetPoint(drag_->from);
    if ((event->position().toPoint() - start).manhattanLength() < 3) return;
    before_(drag_->hit.target, layout::DragUndoCode(drag_->hit));
    drag_->moved = true;
  }
  layout::ApplyDrag(page_, drag_->begun, drag_->hit, drag_->from, at);
  if (drag_->hit.target.what == layout::Target::What::Object) ObjectsChanged();
  update();
  ShowStatus(at, layout::HintOf(drag_->hit));
}

void PageView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !drag_) return;
  const bool moved = drag_->moved, frame = drag_->hit.target.what == layout::Target::What::Frame;
  drag_.reset();
  if (!moved) return;
  if (frame) FramesChanged();
  emit changed();
}

void PageView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && selection_) emit doubleClicked();
}

}  // namespace velk::gui
