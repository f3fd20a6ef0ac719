#include "platform/qt/picture_decode.h"

#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace velk::platform::qt {
namespace {

constexpr int kLargestSide = 8000;  // pixels: a page at 600 dpi stays below this

QByteArray Wrap(std::span<const std::uint8_t> bytes) {
  return QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
}

std::optional<QImage> Render(std::span<const std::uint8_t> bytes, int width, int height) {
  const QByteArray data = Wrap(bytes);
  QImage raster;
  if (raster.loadFromData(data)) {
    return raster.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_ARGB32);
  }
  QSvgRenderer svg(data);
  if (!svg.isValid()) return std::nullopt;
  QImage image(width, height, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  svg.render(&painter, QRectF(0, 0, width, height));
  return image;
}

}  // namespace

std::optional<Image> DecodePicture(std::span<const std::uint8_t> bytes, int width, int height) {
  if (bytes.empty() || width < 1 || height < 1 || width > kLargestSide || height > kLargestSide) return std::nullopt;
  const std::optional<QImage> image = Render(bytes, width, height);
  if (!image || image->isNull()) return std::nullopt;
  Image out{width, height, {}};
  out.pixels.reserve(static_cast<std::size_t>(width) * height);
  for (int y = 0; y < height; ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(image->constScanLine(y));
    out.pixels.insert(out.pixels.end(), row, row + width);
  }
  return out;
}

double PictureAspect(std::span<const std::uint8_t> bytes) {
  const QByteArray data = Wrap(bytes);
  QImage raster;
  if (raster.loadFromData(data) && raster.width() > 0) return double(raster.height()) / raster.width();
  QSvgRenderer svg(data);
  const QSizeF size = svg.isValid() ? svg.defaultSize() : QSizeF();
  return size.width() > 0 ? size.height() / size.width() : 0.0;
}

}  // namespace velk::platform::qt
