// Printing: the page and the peak list through Qt's printer (CUPS on Linux) or into a PDF file,
// following the plan the library makes from the setup and what the printer can do.
#include <QApplication>
#include <QPageLayout>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

#include "core/atomic_write.h"
#include "gui/page_output.h"
#include "gui/printer_setting_dialog.h"
#include "layout/output_file_name.h"
#include "layout/print_list_2d.h"
#include "layout/print_messages.h"
#include "platform/qt/qt_surface.h"

namespace velk::gui {
namespace {

QPageSize::PageSizeId SizeId(layout::PaperSize size) {
  switch (size) {
    case layout::PaperSize::A3:
      return QPageSize::A3;
    case layout::PaperSize::A5:
      return QPageSize::A5;
    case layout::PaperSize::B4:
      return QPageSize::JisB4;
    case layout::PaperSize::B5:
      return QPageSize::JisB5;
    case layout::PaperSize::A4:
    case layout::PaperSize::A4HalfColumn:
    case layout::PaperSize::A4FullColumn:
      break;
  }
  return QPageSize::A4;
}

QPrinter::PaperSource SourceOf(layout::PaperBin bin) {
  switch (bin) {
    case layout::PaperBin::ManualTray:
      return QPrinter::Manual;
    case layout::PaperBin::UpperCassette:
      return QPrinter::Upper;
    case layout::PaperBin::MiddleCassette:
      return QPrinter::Middle;
    case layout::PaperBin::LowerCassette:
      return QPrinter::Lower;
    case layout::PaperBin::AutoSelect:
      break;
  }
  return QPrinter::Auto;
}

layout::PrinterAbilities AbilitiesOf(const QPrinterInfo& info) {
  layout::PrinterAbilities a;
  a.exists = !info.isNull();
  if (!a.exists) return a;
  for (const QPageSize& size : info.supportedPageSizes()) {
    switch (size.id()) {
      case QPageSize::A3:
        a.sizes.push_back(layout::PaperSize::A3);
        break;
      case QPageSize::A4:
        a.sizes.push_back(layout::PaperSize::A4);
        break;
      case QPageSize::A5:
        a.sizes.push_back(layout::PaperSize::A5);
        break;
      case QPageSize::B4:
      case QPageSize::JisB4:
        a.sizes.push_back(layout::PaperSize::B4);
        break;
      case QPageSize::B5:
      case QPageSize::JisB5:
        a.sizes.push_back(layout::PaperSize::B5);
        break;
      default:
        break;
    }
  }
  for (QPrinter::DuplexMode mode : info.supportedDuplexModes())
    a.duplex = a.duplex || mode == QPrinter::DuplexLongSide || mode == QPrinter::DuplexShortSide || mode == QPrinter::DuplexAuto;
  return a;
}

// The printer named in the setup; with no name the system's default, else its first.
QPrinterInfo ChosenPrinter(const layout::PrintSetup& setup) {
  if (!setup.printer.empty()) return QPrinterInfo::printerInfo(QString::fromStdString(setup.printer));
  QPrinterInfo info = QPrinterInfo::defaultPrinter();
  const QList<QPrinterInfo> all = QPrinterInfo::availablePrinters();
  return info.isNull() && !all.isEmpty() ? all.front() : info;
}

void SetPaper(QPrinter& printer, const layout::PaperChoice& choice) {
  printer.setPageLayout(QPageLayout(QPageSize(SizeId(choice.size)),
                                    choice.landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()));
  printer.setPaperSource(SourceOf(choice.bin));
}

bool DrawSheets(QPrinter& printer, const PageOutput& output, const layout::PrintSetup& setup, const layout::PrintPlan& plan) {
  printer.setDocName(QString::fromStdString(output.documentName));
  printer.setFullPage(true);
  printer.setCopyCount(setup.copies);
  printer.setDuplex(!plan.duplex                                 ? QPrinter::DuplexNone
                    : layout::FlipOnLongEdge(setup.bind, setup.page.landscape) ? QPrinter::DuplexLongSide
                                                                               : QPrinter::DuplexShortSide);
  SetPaper(printer, setup.page);
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  const double dpi = printer.resolution();
  const auto extent = [&] {
    const QRect r = printer.paperRect(QPrinter::DevicePixel).toRect();
    return platform::Extent{r.width(), r.height()};
  };
  platform::NoProgress progress;
  bool first = true;
  for (const layout::Sheet& sheet : plan.sheets) {
    if (sheet.kind == layout::SheetKind::Page) {
      platform::qt::QtSurface surface(painter, extent());
      if (!layout::RenderPage(surface, output.content, layout::PageAreaOf(setup.page), dpi, progress)) return false;
      first = false;
      continue;
    }
    const layout::PaperChoice paper = sheet.reverseOfPrevious ? setup.page : setup.list;
    if (!sheet.reverseOfPrevious) SetPaper(printer, paper);
    const layout::TextFont font{setup.listFont.family, static_cast<double>(setup.listFont.pixelHeight),
                                setup.listFont.bold, setup.listFont.italic};
    std::size_t row = 0;
    do {
      if (!first && !printer.newPage()) return false;
      first = false;
      platform::qt::QtSurface surface(painter, extent());
      row = layout::PrintList2D(surface, output.peakList, font, layout::SheetOf(paper), dpi, row);
    } while (row < output.peakList.rows.size());
  }
  return painter.end() && printer.printerState() != QPrinter::Error;
}

}  // namespace

platform::Outcome PrintPage(QWidget* parent, const PageOutput& output, layout::PrintSetup& setup,
                            platform::Prompt& prompt, bool askSetting) {
  if (askSetting && !OpenPrinterSetting(parent, setup)) return {1, {}};
  const bool toFile = setup.printer == layout::kPdfFilePrinter;
  const QPrinterInfo info = toFile ? QPrinterInfo() : ChosenPrinter(setup);
  const layout::PrinterAbilities abilities = toFile ? layout::PrinterAbilities{} : AbilitiesOf(info);
  const layout::PrintPlan plan = layout::PlanPrint(setup, abilities, !output.peakList.rows.empty());
  if (plan.refusal) {
    prompt.Ask(*plan.refusal);
    return {1, *plan.refusal};
  }
  std::string file = setup.pdfFile;
  if (toFile && file.empty()) {
    const std::optional<std::string> chosen = prompt.ChooseFile("Print to PDF file", {{"PDF Format(*.pdf)", "*.pdf"}}, true);
    if (!chosen) return {1, {}};
    platform::Message refusal;
    const std::optional<std::string> name = layout::OutputFileName(*chosen, "PDF", refusal);
    if (!name) {
      prompt.Ask(refusal);
      return {1, refusal};
    }
    file = *name;
  }
  if (plan.warning) prompt.Ask(*plan.warning);

  QApplication::setOverrideCursor(Qt::WaitCursor);
  bool printed = false;
  if (toFile) {
    printed = core::WriteAtomically(file, [&](const std::filesystem::path& temporary) -> std::string {
                QPrinter printer(QPrinter::HighResolution);
                printer.setOutputFormat(QPrinter::PdfFormat);
                printer.setOutputFileName(QString::fromStdString(temporary.string()));
                return DrawSheets(printer, output, setup, plan) ? "" : "the document could not be drawn";
              }).ok();
  } else {
    QPrinter printer(info, QPrinter::HighResolution);
    printed = DrawSheets(printer, output, setup, plan);
  }
  QApplication::restoreOverrideCursor();
  if (!printed) {
    prompt.Ask(layout::messages::PrintFailed());
    return {-1, layout::messages::PrintFailed()};
  }
  return {0, {}};
}

bool OpenPrinterSetting(QWidget* parent, layout::PrintSetup& setup) {
  PrinterSettingDialog dialog(setup, parent);
  if (dialog.exec() != QDialog::Accepted) return false;
  setup = dialog.Setup();
  return true;
}

}  // namespace velk::gui
