// Picture files and the clipboard: the page drawn at the screen's resolution into PNG, BMP, EMF,
// PDF or SVG, and an area of it copied as a picture.
#include "gui/page_output.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QImage>
#include <QMimeData>
#include <QPainter>
#include <QSvgGenerator>
#include <cmath>
#include <cstdio>

#include "core/atomic_write.h"
#include "layout/emf_recorder.h"
#include "layout/output_file_name.h"
#include "layout/print_set.h"
#include "layout/shifted_surface.h"
#include "platform/qt/picture_file.h"
#include "platform/qt/qt_surface.h"

namespace velk::gui {
namespace {

constexpr double kScreenDotsPerInch = 96;
constexpr double kCmPerInch = 2.54;

struct FormatInfo {
  const char* extension;  // as the refusal names it
  platform::FileFilter filter;
  const char* title;
};

FormatInfo InfoOf(ScreenFormat format) {
  switch (format) {
    case ScreenFormat::Png:
      return {"PNG", {"PNG Format(*.png)", "*.png"}, "Save Screen as PNG"};
    case ScreenFormat::Bmp:
      return {"BMP", {"Bitmap format(*.bmp)", "*.bmp"}, "Save Screen as BMP"};
    case ScreenFormat::Emf:
      return {"EMF", {"EMF Format(*.emf)", "*.emf"}, "Save Screen as EMF"};
    case ScreenFormat::Pdf:
      return {"PDF", {"PDF Format(*.pdf)", "*.pdf"}, "Save Screen as PDF"};
    case ScreenFormat::Svg:
      break;
  }
  return {"SVG", {"SVG Format(*.svg)", "*.svg"}, "Save Screen as SVG"};
}

// A surface that only measures text, for the metafile recorder: the same fonts as on screen.
class Measurer {
 public:
  Measurer() : image_(8, 8, QImage::Format_RGB32), painter_(&image_), surface_(painter_, {8, 8}) {}
  platform::Surface& Surface() { return surface_; }

 private:
  QImage image_;
  QPainter painter_;
  platform::qt::QtSurface surface_;
};

// The page drawn into a metafile; the origin is the page's point that becomes the picture's corner.
std::vector<std::uint8_t> RecordEmf(const layout::PageContent& content, const layout::Paper& paper, double dpi,
                                    platform::Extent size, platform::Point origin, bool& drawn) {
  platform::qt::EnsureGuiApplication();
  Measurer measurer;
  layout::EmfRecorder recorder(size, dpi, measurer.Surface());
  layout::ShiftedSurface shifted(recorder, -origin.x, -origin.y, layout::PageExtent(paper, dpi));
  platform::NoProgress progress;
  drawn = layout::RenderPage(shifted, content, paper, dpi, progress);
  return recorder.Finish();
}

platform::Outcome WriteEmf(const std::filesystem::path& file, const layout::PageContent& content,
                           const layout::Paper& paper, double dpi) {
  bool drawn = false;
  const std::vector<std::uint8_t> bytes = RecordEmf(content, paper, dpi, layout::PageExtent(paper, dpi), {}, drawn);
  if (!drawn) return {1, {"Picture", "Nothing to draw"}};
  return core::WriteAtomically(file, [&](std::ostream& out) {
    return static_cast<bool>(out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size())));
  });
}

}  // namespace

platform::Outcome WritePageFile(const std::filesystem::path& file, ScreenFormat format,
                                const layout::PageContent& content, const layout::Paper& paper, double dotsPerInch) {
  const bool vector = format == ScreenFormat::Pdf || format == ScreenFormat::Svg || format == ScreenFormat::Emf;
  const double dpi = vector ? kScreenDotsPerInch : dotsPerInch;
  if (format == ScreenFormat::Emf) return WriteEmf(file, content, paper, dpi);
  platform::NoProgress progress;
  return platform::qt::WritePicture(file, layout::PageExtent(paper, dpi), [&](platform::Surface& surface) {
    return layout::RenderPage(surface, content, paper, dpi, progress);
  });
}

platform::Outcome SaveScreen(QWidget*, ScreenFormat format, const layout::PageContent& content,
                             const layout::Paper& paper, platform::Prompt& prompt) {
  const FormatInfo info = InfoOf(format);
  const std::optional<std::string> chosen = prompt.ChooseFile(info.title, {info.filter}, true);
  if (!chosen) return {1, {}};
  platform::Message refusal;
  const std::optional<std::string> name = layout::OutputFileName(*chosen, info.extension, refusal);
  if (!name) {
    prompt.Ask(refusal);
    return {1, refusal};
  }
  QApplication::setOverrideCursor(Qt::WaitCursor);
  platform::Outcome written = WritePageFile(*name, format, content, paper);
  QApplication::restoreOverrideCursor();
  if (written.code == -1) prompt.Ask(written.message);
  return written;
}

namespace {

std::optional<std::string> ChoosePrintSet(const char* title, bool forSaving, platform::Prompt& prompt) {
  const std::optional<std::string> chosen =
      prompt.ChooseFile(title, {{layout::kPrintSetFilterLabel, layout::kPrintSetFilterPattern}}, forSaving);
  if (!chosen) return std::nullopt;
  platform::Message refusal;
  std::optional<std::string> name = layout::OutputFileName(*chosen, "PR2", refusal);
  if (!name) prompt.Ask(refusal);
  return name;
}

}  // namespace

platform::Outcome ReadPrintSetFile(core::Settings& set, platform::Prompt& prompt) {
  const std::optional<std::string> name = ChoosePrintSet("Read Print Set", false, prompt);
  if (!name) return {1, {}};
  const platform::Outcome read = layout::ReadPrintSet(*name, set);
  if (!read.ok()) prompt.Ask(read.message);
  return read;
}

platform::Outcome SavePrintSetFile(const core::Settings& set, platform::Prompt& prompt) {
  const std::optional<std::string> name = ChoosePrintSet("Save Print Set", true, prompt);
  if (!name) return {1, {}};
  const platform::Outcome written = layout::WritePrintSet(*name, set);
  if (!written.ok()) prompt.Ask(written.message);
  return written;
}

std::string CopyAreaText(const AreaCm& area, double dotsPerInch) {
  const auto dots = [&](double cm) { return std::lround(cm / kCmPerInch * dotsPerInch); };
  char text[96];
  std::snprintf(text, sizeof text, "Copy Area %.2fx%.2f cm %ldx%ld dot", area.width, area.height, dots(area.width),
                dots(area.height));
  return text;
}

bool CopyAreaToClipboard(const layout::PageContent& content, const layout::Paper& paper, const AreaCm& area) {
  const double dpi = kScreenDotsPerInch;
  const auto dots = [&](double cm) { return static_cast<int>(std::lround(cm / kCmPerInch * dpi)); };
  const platform::Extent size{dots(area.width), dots(area.height)};
  if (size.width < 1 || size.height < 1) return false;
  const platform::Point origin{dots(area.x), dots(area.y)};
  const platform::Extent page = layout::PageExtent(paper, dpi);
  platform::NoProgress progress;

  QImage image(size.width, size.height, QImage::Format_RGB32);
  image.fill(Qt::white);
  QByteArray svgBytes;
  QBuffer svgBuffer(&svgBytes);
  QSvgGenerator svg;
  svg.setOutputDevice(&svgBuffer);
  svg.setSize(QSize(size.width, size.height));
  svg.setViewBox(QRect(0, 0, size.width, size.height));
  svg.setResolution(static_cast<int>(dpi));
  for (QPaintDevice* device : {static_cast<QPaintDevice*>(&image), static_cast<QPaintDevice*>(&svg)}) {
    QPainter painter(device);
    painter.translate(-origin.x, -origin.y);
    platform::qt::QtSurface surface(painter, page);
    layout::RenderPage(surface, content, paper, dpi, progress);
  }
  bool drawn = false;
  const std::vector<std::uint8_t> emf = RecordEmf(content, paper, dpi, size, origin, drawn);

  auto* mime = new QMimeData;
  mime->setImageData(image);
  mime->setData("image/svg+xml", svgBytes);
  if (drawn) mime->setData("image/x-emf", QByteArray(reinterpret_cast<const char*>(emf.data()), static_cast<qsizetype>(emf.size())));
  QApplication::clipboard()->setMimeData(mime);
  return true;
}

}  // namespace velk::gui
