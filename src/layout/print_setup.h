#pragma once
// The paper of the printed page and of the peak list, the choices of "Printer Setting", and the
// rules of the print command: which message comes when, and which sheets go to the printer.
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/settings.h"
#include "layout/render_page.h"
#include "platform/message.h"
#include "platform/surface.h"

namespace velk::layout {

enum class PaperSize { A3, A4, A5, B4, B5, A4HalfColumn, A4FullColumn };
enum class PaperBin { AutoSelect, ManualTray, UpperCassette, MiddleCassette, LowerCassette };
enum class BindSide { Left, Upper };

// The names the dialog lists, in its order.
inline constexpr std::array<std::string_view, 7> kPaperSizeNames{"A3", "A4", "A5", "B4", "B5", "A4 Half Column",
                                                                 "A4 Full Column"};
inline constexpr std::array<std::string_view, 5> kPaperBinNames{"Auto Select", "Manual Tray", "Upper cassette",
                                                                "Middle cassette", "Lower cassette"};

// Where the pages go: a printer of the system, or a PDF file, which is always offered.
inline constexpr std::string_view kPdfFilePrinter = "PDF file";

struct PaperChoice {
  PaperSize size = PaperSize::A4;
  PaperBin bin = PaperBin::AutoSelect;
  bool landscape = true;
};

struct PrintSetup {
  std::string printer;  // empty: the system's default printer
  std::string pdfFile;  // the file when the printer is kPdfFilePrinter
  PaperChoice page;                                                   // "PAPER SIZE", "PAPER BIN", ...
  PaperChoice list{PaperSize::A4, PaperBin::AutoSelect, false};       // "PAPER SIZE LIST", ...
  int copies = 1;
  bool dualSide = false;     // "Dual Side Print"
  BindSide bind = BindSide::Left;
  bool peakListOnReverse = true;  // "Peak List on reverse side" / "without reverse side"
  platform::Font listFont{"Courier New", 10, false, false};  // "Font for List", height in points
};

// The sheet the page is drawn on; the column sizes are A4 sheets.
Paper SheetOf(const PaperChoice& choice);
// The area the page is drawn in on that sheet: the whole sheet, or the width of a journal's
// column (8.5 cm half, 17.5 cm full) with the page's proportions, at the sheet's top left.
Paper PageAreaOf(const PaperChoice& choice);

// The setup kept in the 2D settings ("USER PRINTER", "PAPER SIZE" ... "PRINT LIST ON BACK",
// "PRNT LIST FONT ..."), in the printer interface's numbers (A4 9, landscape 2, automatic bin 7).
PrintSetup PrintSetupFromSettings(const core::Settings& settings);
void StorePrintSetup(const PrintSetup& setup, core::Settings& settings);
// The peak list's font goes with print sets: a set read gives it to the setup, a set saved takes it.
void ListFontFromPrintSet(const core::Settings& printSet, PrintSetup& setup);
void ListFontIntoPrintSet(const PrintSetup& setup, core::Settings& printSet);

// What the chosen printer can do, as the platform reports it.
struct PrinterAbilities {
  bool exists = true;  // false: no printer of the system at all, or the named one is gone
  std::vector<PaperSize> sizes;  // the sizes it takes; empty: unknown, every size is tried
  bool duplex = false;
};

// One sheet side to print, in order.
enum class SheetKind { Page, PeakList };
struct Sheet {
  SheetKind kind;
  bool reverseOfPrevious;  // printed on the back of the sheet before
};

// The plan of a print: a message that ends it, or the sheets with the warning to show once first.
struct PrintPlan {
  std::optional<platform::Message> refusal;  // "No Printer is available", "Can not print the paper"
  std::optional<platform::Message> warning;  // "The Printer cannot print on a reverse side!"
  std::vector<Sheet> sheets;
  bool duplex = false;  // the printer is asked to print both sides
};
// A sheet bound at its left side turns about a long edge when upright, about a short one when
// lying; bound at the top the other way round.
constexpr bool FlipOnLongEdge(BindSide bind, bool landscape) { return (bind == BindSide::Left) != landscape; }

PrintPlan PlanPrint(const PrintSetup& setup, const PrinterAbilities& abilities, bool hasPeaks);

}  // namespace velk::layout
