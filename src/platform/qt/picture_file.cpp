#include "platform/qt/picture_file.h"

#include <QGuiApplication>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <system_error>

#include "platform/qt/qt_surface.h"

namespace velk::platform::qt {
namespace {

constexpr int kDotsPerInch = 96;

std::string LowerExtension(const std::filesystem::path& file) {
  std::string ext = file.extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
  return ext;
}

void DrawOn(QPaintDevice& device, Extent size, const std::function<void(Surface&)>& draw) {
  QPainter painter(&device);
  painter.fillRect(0, 0, size.width, size.height, Qt::white);
  {
    QtSurface surface(painter, size);
    draw(surface);
  }
  painter.end();
}

bool WriteImage(const QString& name, const char* format, Extent size, const std::function<void(Surface&)>& draw) {
  QImage image(size.width, size.height, QImage::Format_RGB32);
  DrawOn(image, size, draw);
  return image.save(name, format);
}

bool WriteSvg(const QString& name, Extent size, const std::function<void(Surface&)>& draw) {
  QSvgGenerator svg;
  svg.setFileName(name);
  svg.setSize(QSize(size.width, size.height));
  svg.setViewBox(QRect(0, 0, size.width, size.height));
  svg.setResolution(kDotsPerInch);
  DrawOn(svg, size, draw);
  return true;
}

bool WritePdf(const QString& name, Extent size, const std::function<void(Surface&)>& draw) {
  QPdfWriter pdf(name);
  pdf.setResolution(kDotsPerInch);
  const double toPoints = 72.0 / kDotsPerInch;
  pdf.setPageSize(QPageSize(QSizeF(size.width * toPoints, size.height * toPoints), QPageSize::Point));
  pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
  DrawOn(pdf, size, draw);
  return true;
}

// Qt's own messages go to stderr as usual, except the note that a command-line run has no
// XDG_RUNTIME_DIR: Qt then uses a private folder of its own, which is all a picture needs.
void ForwardQtMessage(QtMsgType, const QMessageLogContext&, const QString& text) {
  if (text.contains(QStringLiteral("XDG_RUNTIME_DIR"))) return;
  std::fprintf(stderr, "%s\n", qPrintable(text));
}

}  // namespace

void EnsureGuiApplication() {
  if (QCoreApplication::instance()) return;
  if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  qInstallMessageHandler(ForwardQtMessage);
  static int argc = 1;
  static char name[] = "velk2d";
  static char* argv[] = {name, nullptr};
  static auto* application = new QGuiApplication(argc, argv);  // lives to the end of the process
  (void)application;
}

bool IsPictureExtension(const std::filesystem::path& file) {
  const std::string ext = LowerExtension(file);
  return ext == ".png" || ext == ".bmp" || ext == ".svg" || ext == ".pdf";
}

Outcome WritePicture(const std::filesystem::path& file, Extent size, const std::function<void(Surface&)>& draw) {
  const std::string ext = LowerExtension(file);
  if (!IsPictureExtension(file)) return {-1, {"Picture", "Unknown picture type: " + file.string()}};
  if (size.width < 1 || size.height < 1 || size.width > 32767 || size.height > 32767)
    return {-1, {"Picture", "Picture size out of range"}};
  EnsureGuiApplication();

  std::filesystem::path temporary = file;
  temporary += ".part" + ext;  // the writers choose by the name's ending
  const QString name = QString::fromStdString(temporary.string());
  bool written = false;
  if (ext == ".png") written = WriteImage(name, "PNG", size, draw);
  else if (ext == ".bmp") written = WriteImage(name, "BMP", size, draw);
  else if (ext == ".svg") written = WriteSvg(name, size, draw);
  else written = WritePdf(name, size, draw);

  std::error_code error;
  if (written && std::filesystem::exists(temporary, error)) std::filesystem::rename(temporary, file, error);
  else error = std::make_error_code(std::errc::io_error);
  if (error) {
    std::filesystem::remove(temporary, error);
    return {-1, {"Picture", "Cannot write " + file.string()}};
  }
  return {};
}

}  // namespace velk::platform::qt
