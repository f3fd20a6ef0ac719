#include "gui/play_image.h"

#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cstring>

namespace velk::gui {
namespace {

constexpr int kLargestSide = 8192;
constexpr qint64 kLargestFile = 64 << 20;

bool StartsWith(std::span<const std::uint8_t> bytes, std::string_view magic) {
  return bytes.size() >= magic.size() && std::memcmp(bytes.data(), magic.data(), magic.size()) == 0;
}

// An SVG drawing: XML whose first element, after the declaration and comments, is <svg.
bool LooksLikeSvg(std::span<const std::uint8_t> bytes) {
  const std::string_view head(reinterpret_cast<const char*>(bytes.data()), std::min<std::size_t>(bytes.size(), 4096));
  const std::size_t start = head.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
  return start != std::string_view::npos && head[start] == '<' && head.find("<svg") != std::string_view::npos;
}

void Draw(platform::Surface& surface, const QImage& picture, const layout::PictureFrame& frame) {
  const QImage argb = picture.convertToFormat(QImage::Format_ARGB32);
  platform::Image image{argb.width(), argb.height(), {}};
  image.pixels.resize(static_cast<std::size_t>(argb.width()) * static_cast<std::size_t>(argb.height()));
  for (int y = 0; y < argb.height(); ++y)
    std::memcpy(image.pixels.data() + static_cast<std::size_t>(y) * argb.width(), argb.constScanLine(y),
                static_cast<std::size_t>(argb.width()) * 4);
  surface.DrawImage(frame.x, frame.y, image);
}

}  // namespace

int PlayImage(platform::Surface& surface, std::span<const std::uint8_t> bytes, const layout::PictureFrame& frame) {
  if (frame.width < 1 || frame.height < 1 || frame.width > kLargestSide || frame.height > kLargestSide) return 1;
  const QByteArray data = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
  if (StartsWith(bytes, "\x89PNG\r\n\x1A\n") || StartsWith(bytes, "\xFF\xD8\xFF")) {
    const QImage image = QImage::fromData(data);
    if (image.isNull()) return 1;
    Draw(surface, image.scaled(frame.width, frame.height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation), frame);
    return 0;
  }
  if (LooksLikeSvg(bytes)) {
    QSvgRenderer svg(data);
    if (!svg.isValid()) return 1;
    QImage image(frame.width, frame.height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    svg.render(&painter);
    painter.end();
    Draw(surface, image, frame);
    return 0;
  }
  return layout::PlayPicture(surface, bytes, frame);
}

int PlayImageFile(platform::Surface& surface, const std::filesystem::path& file, const layout::PictureFrame& frame) {
  QFile in(QString::fromStdString(file.string()));
  if (!in.open(QIODevice::ReadOnly) || in.size() > kLargestFile) return -1;
  const QByteArray data = in.readAll();
  return PlayImage(surface, std::span(reinterpret_cast<const std::uint8_t*>(data.constData()), static_cast<std::size_t>(data.size())), frame);
}

}  // namespace velk::gui
