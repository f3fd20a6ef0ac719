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

bool DrawOn(QPaintDevice& device, Extent size, const Drawing& draw) {
  QPainter painter(&device);
  painter.fillRect(0, 0, size.width, size.height, Qt::white);
  bool drawn = false;
  {
    QtSurface surface(painter, size);
    drawn = draw(surface);
  }
  return painter.end() && drawn;
}

bool WriteImage(const QString& name, const char* format, Extent size, const Drawing& draw) {
  QImage image(size.width, size.height, QImage::Format_RGB32);
  return DrawOn(image, size, draw) && image.save(name, format);
}

bool WriteSvg(const QString& name, Extent size, const Drawing& draw) {
  QSvgGenerator svg;
  svg.setFileName(name);
  svg.setSize(QSize(size.width, size.height));
  svg.setViewBox(QRect(0, 0, size.width, size.height));
  svg.setResolution(kDotsPerInch);
  return DrawOn(svg, size, draw);
}

bool WritePdf(const QString& name, Extent size, const Drawing& draw) {
  QPdfWriter pdf(name);
  pdf.setResolution(kDotsPerInch);
  const double toPoints = 72.0 / kDotsPerInch;
  pdf.setPageSize(QPageSize(QSizeF(size.width * toPoints, size.height * toPoints), QPageSize::Point));
  pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
  return DrawOn(pdf, size, draw);
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

Outcome WritePicture(const std::filesystem::path& file, Extent size, const Drawing& draw) {
  const std::string ext = LowerExtension(file);
  if (!IsPictureExtension(file)) return {-1, {"Picture", "Unknown picture type: " + file.string()}};
  if (size.width < 1 || size.height < 1 || size.width > 32767 || size.height > 32767)
    return {-1, {"Picture", "Picture size out of range"}};
  EnsureGuiApplication();

  std::filesystem::path temporary = file;
  temporary += ".part" + ext;  // the writers choose by the name's ending
  const QString name = QString::fromStdString(temporary.string());
  bool drawn = false;
  const Drawing tracked = [&](Surface& surface) { return drawn = draw(surface); };
  bool written = false;
  if (ext == ".png") written = WriteImage(name, "PNG", size, tracked);
  else if (ext == ".bmp") written = WriteImage(name, "BMP", size, tracked);
  else if (ext == ".svg") written = WriteSvg(name, size, tracked);
  else written = WritePdf(name, size, tracked);

  std::error_code error;
  if (!drawn) {
    std::filesystem::remove(temporary, error);
    return {1, {"Picture", "Nothing to draw"}};
  }
  if (written && std::filesystem::exists(temporary, error)) std::filesystem::rename(temporary, file, error);
  else error = std::make_error_code(std::errc::io_error);
  if (error) {
    std::filesystem::remove(temporary, error);
    return {-1, {"Picture", "Cannot write " + file.string()}};
  }
  return {};
}

}  // namespace velk::platform::qt
