#include "page_screenshots.h"

#include <QApplication>
#include <QListWidget>
#include <QTest>

#include "core/folders.h"
#include "gui/coded_text_editor.h"
#include "gui/parameter_print_dialog.h"
#include "gui/print_preview.h"
#include "layout/bracket_text.h"
#include "layout/styled_runs.h"

namespace velk::test {
namespace {

bool Save(QWidget& widget, const QString& file) {
  const bool ok = widget.grab().save(file);
  std::printf("%s %s\n", ok ? "wrote" : "could not write", file.toLocal8Bit().constData());
  return ok;
}

// Where a shift lies on the page: the contour fills the spectrum frame but for its axis bands.
layout::PagePoint OnPage(const layout::EditedPage& page, const display::DisplayState& v, double f2, double f1) {
  const layout::PageFrame& f = page.frames[layout::FrameKind::Spectrum];
  const double width = f.Width - layout::kAxisBandRightCm, height = f.Height - layout::kAxisBandBelowCm;
  return {f.X + (v.ViewF2Start - f2) / (v.ViewF2Start - v.ViewF2End) * width,
          f.Y + (f1 - v.ViewF1Start) / (v.ViewF1End - v.ViewF1Start) * height};
}

}  // namespace

bool PagePictures(gui::MainWindow& w, const QString& out) {
  gui::PrintPreview* preview = w.OpenPrintPreview();
  if (!preview) return false;
  preview->resize(1200, 940);
  preview->SetZoom(100);
  const display::DisplayState& v = w.Document().view;
  // The methyl groups of the leucines and valines: an oval round them, an arrow and a label.
  preview->ChangeObjects(2, [&](layout::EditedPage& page) {
  const layout::PagePoint low = OnPage(page, v, 1.9, 10), high = OnPage(page, v, 0.3, 30);
  layout::LayoutShape oval{.X1 = float(std::min(low.x, high.x)), .Y1 = float(std::min(low.y, high.y)),
                           .X2 = float(std::max(low.x, high.x)), .Y2 = float(std::max(low.y, high.y)),
                           .BorderColor = 0x0000C0, .LineWidth = 4};
  layout::AddCircle(page.objects, oval);
  const layout::PagePoint tip = OnPage(page, v, 1.95, 17), tail = OnPage(page, v, 4.2, 12);
  layout::LayoutLine arrow = layout::NewLine(page, {});
  arrow.X1 = float(tail.x), arrow.Y1 = float(tail.y), arrow.X2 = float(tip.x), arrow.Y2 = float(tip.y);
  arrow.Color = arrow.FillColor = 0x0000C0;
  layout::AddLine(page.objects, arrow);
  layout::LayoutText label = layout::NewText(page, {tail.x - 2.6, tail.y - 0.5}, layout::InternalFromBracket("Leu, Val CH\\-(3)"));
  label.Color = 0x0000C0;
  layout::AddText(page.objects, label);
  });
  preview->View().Select(layout::Target::Of(layout::FrameKind::TraceF2));
  QTest::qWait(50);
  bool ok = Save(*preview, out + "/print-preview-hsqc.png");

  gui::CodedTextEditor editor("Text Input",
                              layout::InternalFromBracket("\\b(Cyclosporin A)  \\i(\\g(d))\\-(H) 0.8 ppm, \\c0000C0(C\\-(6)D\\-(6))\r\n"
                                                          "\\p14(J\\-(HH)) = 7.2 Hz, 10\\+(3) scans"),
                              {}, {"Sans Serif", 11, 0}, preview);
  editor.resize(620, 380);
  editor.show();
  QTest::qWait(50);
  ok &= Save(editor, out + "/dialog-text-editor.png");
  editor.close();

  const layout::PrintedParameters& printed = preview->Parameters();
  gui::ParameterEditSources sources = gui::SessionParameterSources(w.Session(), printed.list);
  // The window's folders are temporary: offer the list of all parameters the program installs.
  sources.offered = layout::OfferedParameters({core::DefaultFolders(QCoreApplication::applicationFilePath().toStdString()).data});
  gui::ParameterPrintDialog print(layout::ParameterPrintPageOf(printed, preview->Page(), w.Document().spectrum), sources,
                                  preview);
  print.show();
  QTest::qWait(50);
  ok &= Save(print, out + "/dialog-parameter-print.png");
  print.close();
  gui::ParameterEditDialog edit(printed.list, sources, preview);
  edit.Offered()->setCurrentRow(8);
  edit.Printed()->setCurrentRow(6);
  edit.show();
  QTest::qWait(50);
  ok &= Save(edit, out + "/dialog-edit-parameters.png");
  edit.close();
  preview->close();
  return ok;
}

}  // namespace velk::test
