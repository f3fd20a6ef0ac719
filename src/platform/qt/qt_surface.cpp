#include "platform/qt/qt_surface.h"

#include <QFontMetrics>
#include <QImage>
#include <QPaintEngine>
#include <QString>

namespace velk::platform::qt {
namespace {

QColor ToQColor(Color c) { return QColor(RedOf(c), GreenOf(c), BlueOf(c)); }
QString ToQString(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

}  // namespace

QtSurface::QtSurface(QPainter& painter, Extent size) : painter_(painter), size_(size) {
  // Whole device units and no smoothing: contour pieces meet pixel for pixel.
  painter_.setRenderHint(QPainter::Antialiasing, false);
  painter_.setRenderHint(QPainter::TextAntialiasing, true);
  painter_.setPen(QPen(Qt::black, 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
  painter_.setBrush(Qt::NoBrush);
}

QtSurface::~QtSurface() { Flush(); }

void QtSurface::Flush() {
  if (pending_.empty()) return;
  painter_.drawLines(pending_.data(), static_cast<int>(pending_.size()));
  pending_.clear();
}

void QtSurface::SetPen(Color color, int width) {
  Flush();
  if (width <= 0) painter_.setPen(Qt::NoPen);
  else painter_.setPen(QPen(ToQColor(color), width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
}

void QtSurface::SetBrush(Color color) {
  Flush();
  painter_.setBrush(QBrush(ToQColor(color)));
}

void QtSurface::SetNoBrush() {
  Flush();
  painter_.setBrush(Qt::NoBrush);
}

void QtSurface::SetDrawMode(DrawMode mode) {
  Flush();
  xor_ = mode == DrawMode::Xor;
  // Exclusive-or exists on raster devices only; vector files and printers draw over.
  if (painter_.paintEngine() && painter_.paintEngine()->type() == QPaintEngine::Raster)
    painter_.setCompositionMode(xor_ ? QPainter::RasterOp_SourceXorDestination : QPainter::CompositionMode_SourceOver);
}

void QtSurface::SetClip(int x, int y, int width, int height) {
  Flush();
  painter_.setClipRect(x, y, width, height);
}

void QtSurface::ClearClip() {
  Flush();
  painter_.setClipping(false);
}

void QtSurface::MoveTo(int x, int y) { at_ = QPoint(x, y); }

void QtSurface::LineTo(int x, int y) {
  const QPoint to(x, y);
  // Pieces drawn together would cancel where they meet under exclusive-or: draw those at once.
  if (xor_) painter_.drawLine(at_, to);
  else pending_.emplace_back(at_, to);
  at_ = to;
}

const std::vector<QPoint>& QtSurface::ToQt(std::span<const Point> points) {
  scratch_.resize(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) scratch_[i] = QPoint(points[i].x, points[i].y);
  return scratch_;
}

void QtSurface::Polyline(std::span<const Point> points) {
  Flush();
  const auto& q = ToQt(points);
  painter_.drawPolyline(q.data(), static_cast<int>(q.size()));
}

void QtSurface::Polygon(std::span<const Point> points) {
  Flush();
  const auto& q = ToQt(points);
  painter_.drawPolygon(q.data(), static_cast<int>(q.size()), Qt::WindingFill);
}

void QtSurface::SetFont(const Font& font) {
  Flush();
  QFont f(QString::fromStdString(font.family));
  f.setPixelSize(std::max(1, font.pixelHeight));
  f.setBold(font.bold);
  f.setItalic(font.italic);
  f.setUnderline(font.underline);
  f.setStrikeOut(font.strikeOut);
  painter_.setFont(f);
}

void QtSurface::SetTextColor(Color color) { textColor_ = ToQColor(color); }

void QtSurface::Text(int x, int y, double angleDegrees, std::string_view text) {
  Flush();
  painter_.save();
  painter_.setPen(textColor_);
  painter_.translate(x, y);
  painter_.rotate(-angleDegrees);
  painter_.drawText(0, QFontMetrics(painter_.font()).ascent(), ToQString(text));
  painter_.restore();
}

Extent QtSurface::MeasureText(std::string_view text) {
  const QFontMetrics metrics(painter_.font());
  return {metrics.horizontalAdvance(ToQString(text)), metrics.height()};
}

void QtSurface::DrawImage(int x, int y, const Image& image) {
  Flush();
  if (image.width <= 0 || image.height <= 0 ||
      image.pixels.size() < static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height))
    return;
  const QImage view(reinterpret_cast<const uchar*>(image.pixels.data()), image.width, image.height,
                    image.width * 4, QImage::Format_ARGB32);
  painter_.drawImage(x, y, view);
}

}  // namespace velk::platform::qt
