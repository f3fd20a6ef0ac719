#pragma once
// The page leaves the program: to a printer (or a PDF file) with the peak list on its reverse
// side, to picture files ("Save Screen as PNG/BMP/EMF", PDF, SVG) and, as a copied area, to the
// clipboard. The Print Preview window and the main window call these; the rules (messages,
// sheets, file names) live in the library, these only talk to Qt.
#include <filesystem>
#include <optional>
#include <string>

#include "core/settings.h"
#include "layout/print_setup.h"
#include "layout/render_page.h"
#include "operations/peak_print_list.h"
#include "platform/message.h"
#include "platform/prompt.h"

class QWidget;

namespace velk::gui {

// What goes out: the page, and the peak list for its reverse side (no rows: no list).
struct PageOutput {
  const layout::PageContent& content;
  operations::PrintList peakList;
  std::string documentName = "velk2d";  // the job's name in the printer's queue (the data file's name)
};

// "Printer Setting": printer (the system's printers and a PDF file), size, bin, orientation,
// copies, dual side with its bind side, the peak list's font. Changes the setup only on "OK";
// false on "Cancel".
bool OpenPrinterSetting(QWidget* parent, layout::PrintSetup& setup);

// Print: with askSetting the "Printer Setting" dialog comes first ("Cancel" prints nothing);
// without it the present paper is used ("Present Paper"). Then the sequence of the print rules:
// "No Printer is available", "Can not print the paper", the reverse-side warning once, the page,
// the peak list, "Document could not be printed". Code 0 printed, 1 nothing done, -1 failed;
// every message has been shown through the prompt already.
platform::Outcome PrintPage(QWidget* parent, const PageOutput& output, layout::PrintSetup& setup, platform::Prompt& prompt,
                            bool askSetting);

// The picture kinds of "Save Screen as ..." and the vector files.
enum class ScreenFormat { Png, Bmp, Emf, Pdf, Svg };

// "Save Screen as PNG" ...: asks the file name with the kind's filter, checks it ("Invalid File,
// or" / "Extension of File is not .PNG"), and writes the page atomically. Code 1 when cancelled
// or refused (the message shown), -1 when the write failed (the message shown).
platform::Outcome SaveScreen(QWidget* parent, ScreenFormat format, const layout::PageContent& content,
                             const layout::Paper& paper, platform::Prompt& prompt);

// Writes the page to the named file of the kind, without asking: images at the screen's 96 dots
// per inch unless given, vector files in 1/96 inch.
platform::Outcome WritePageFile(const std::filesystem::path& file, ScreenFormat format,
                                const layout::PageContent& content, const layout::Paper& paper,
                                double dotsPerInch = 96);

// Read print set, Save print set: a ".pr2" file chosen with the filter "Print Env. & Color
// Setting"; a refused file ("Invalid File, or" / "Extension of File is not .PR2", or an unknown
// first line) leaves the set as it was. Code 0 done, 1 cancelled or refused, -1 failed; the
// messages have been shown.
platform::Outcome ReadPrintSetFile(core::Settings& set, platform::Prompt& prompt);
platform::Outcome SavePrintSetFile(const core::Settings& set, platform::Prompt& prompt);

// An area of the page in centimetres from its top-left corner.
struct AreaCm {
  double x = 0, y = 0, width = 0, height = 0;
};
// The copy area's size as the status line shows it: "Copy Area 12.00x8.00 cm 453x302 dot".
std::string CopyAreaText(const AreaCm& area, double dotsPerInch);
// The area of the page to the clipboard as a picture: an enhanced metafile, with an SVG and a
// bitmap beside it for programs that read those. False when the area is empty.
bool CopyAreaToClipboard(const layout::PageContent& content, const layout::Paper& paper, const AreaCm& area);

}  // namespace velk::gui
