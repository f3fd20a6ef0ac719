#include "platform/qt/picture_file.h"

#include <QBuffer>
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
#include <vector>

#include "core/atomic_write.h"

#include "platform/qt/qt_surface.h"

namespace velk::platform::qt {
namespace {

constexpr int kDotsPerInch = 96;

std::string LowerExtension(const std::filesystem::path& file) {
  std::string ext = file.extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
  return ext;
}

bool DrawOn(QPaintDevice& device, Extent size, const Drawing& draw, bool& drawn) {
  QPainter painter(&device);
  if (!painter.isActive()) return false;
  painter.fillRect(0, 0, size.width, size.height, Qt::white);
  {
    QtSurface surface(painter, size);
    drawn = draw(surface);
  }
  return painter.end();
}

// Each kind is drawn into memory first: the file itself is then written in one checked step, so
// that a full disk is an error with its reason, never a truncated picture.
bool DrawImage(QBuffer& out, const char* format, Extent size, const Drawing& draw, bool& drawn) {
  QImage image(size.width, size.height, QImage::Format_RGB32);
  return !image.isNull() && DrawOn(image, size, draw, drawn) && drawn && image.save(&out, format);
}

bool DrawSvg(QBuffer& out, Extent size, const Drawing& draw, bool& drawn) {
  QSvgGenerator svg;
  svg.setOutputDevice(&out);
  svg.setSize(QSize(size.width, size.height));
  svg.setViewBox(QRect(0, 0, size.width, size.height));
  svg.setResolution(kDotsPerInch);
  return DrawOn(svg, size, draw, drawn);
}

bool DrawPdf(QBuffer& out, Extent size, const Drawing& draw, bool& drawn) {
  QPdfWriter pdf(&out);
  pdf.setResolution(kDotsPerInch);
  const double toPoints = 72.0 / kDotsPerInch;
  pdf.setPageSize(QPageSize(QSizeF(size.width * toPoints, size.height * toPoints), QPageSize::Point));
  pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
  return DrawOn(pdf, size, draw, drawn);
}

// Qt's warnings while a picture is made, gathered into one line instead of one line each.
thread_local std::vector<std::string>* gCollected = nullptr;

void CollectQtMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (text.contains(QStringLiteral("XDG_RUNTIME_DIR"))) return;  // Qt uses a private folder then
  if (gCollected && type != QtFatalMsg) {
    gCollected->push_back(text.toStdString());
    return;
  }
  std::fprintf(stderr, "%s\n", qPrintable(text));
}

std::string Summary(const std::vector<std::string>& warnings) {
  if (warnings.empty()) return {};
  std::string text = "Qt reported " + std::to_string(warnings.size()) + " warning" + (warnings.size() == 1 ? "" : "s") +
                     " while drawing; the first: " + warnings.front();
  return text;
}

}  // namespace

void EnsureGuiApplication() {
  if (QCoreApplication::instance()) return;
  if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  qInstallMessageHandler(CollectQtMessage);
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

  std::vector<std::string> warnings;
  gCollected = &warnings;
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  bool drawn = false, rendered = false;
  if (ext == ".png") rendered = DrawImage(buffer, "PNG", size, draw, drawn);
  else if (ext == ".bmp") rendered = DrawImage(buffer, "BMP", size, draw, drawn);
  else if (ext == ".svg") rendered = DrawSvg(buffer, size, draw, drawn);
  else rendered = DrawPdf(buffer, size, draw, drawn);
  buffer.close();
  gCollected = nullptr;

  if (!drawn) return {1, {"Picture", "Nothing to draw"}};
  if (!rendered || buffer.data().isEmpty()) {
    const std::string why = warnings.empty() ? "the picture could not be drawn" : Summary(warnings);
    return {-1, {"Picture", file.string() + ": " + why}};
  }
  const QByteArray& bytes = buffer.data();
  Outcome written = core::WriteAtomically(file, [&](std::ostream& out) {
    return static_cast<bool>(out.write(bytes.constData(), bytes.size()));
  });
  if (written.ok()) written.message.text = Summary(warnings);
  return written;
}

}  // namespace velk::platform::qt
