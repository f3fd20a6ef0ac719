#include "layout/print_setup.h"

#include <algorithm>
#include <cmath>

#include "layout/print_messages.h"

namespace velk::layout {
namespace {

// The printer interface's numbers, as the settings file keeps them. The column sizes have no
// number of their own there: they take two from the range left for sizes of a program's own.
constexpr int kSizeCodes[] = {8, 9, 11, 12, 13, 256, 257};
constexpr int kBinCodes[] = {7, 4, 1, 3, 2};
constexpr int kPortrait = 1, kLandscape = 2;
constexpr int kSimplex = 1, kLongEdge = 2, kShortEdge = 3;

constexpr double kHalfColumnCm = 8.5, kFullColumnCm = 17.5;

template <typename Enum, std::size_t N>
Enum FromCode(const int (&codes)[N], double value, Enum fallback) {
  for (std::size_t i = 0; i < N; ++i)
    if (codes[i] == std::lround(value)) return static_cast<Enum>(i);
  return fallback;
}

template <typename Enum, std::size_t N>
int ToCode(const int (&codes)[N], Enum value) {
  return codes[static_cast<std::size_t>(value)];
}

PaperChoice ChoiceFromSettings(const core::Settings& s, std::string_view size, std::string_view bin,
                               std::string_view orientation, PaperChoice fallback) {
  PaperChoice c;
  c.size = FromCode(kSizeCodes, core::Number(s, size), fallback.size);
  c.bin = FromCode(kBinCodes, core::Number(s, bin), fallback.bin);
  const long o = std::lround(core::Number(s, orientation));
  c.landscape = o == kLandscape ? true : o == kPortrait ? false : fallback.landscape;
  return c;
}

void StoreChoice(const PaperChoice& c, core::Settings& s, std::string_view size, std::string_view bin,
                 std::string_view orientation) {
  core::SetNumber(s, size, ToCode(kSizeCodes, c.size));
  core::SetNumber(s, bin, ToCode(kBinCodes, c.bin));
  core::SetNumber(s, orientation, c.landscape ? kLandscape : kPortrait);
}

bool Takes(const PrinterAbilities& abilities, PaperSize size) {
  // The column pages are printed on A4 sheets.
  if (size == PaperSize::A4HalfColumn || size == PaperSize::A4FullColumn) size = PaperSize::A4;
  return abilities.sizes.empty() || std::find(abilities.sizes.begin(), abilities.sizes.end(), size) != abilities.sizes.end();
}

// The 2D settings and the print sets keep the list's font under the same keys but for the italic one.
void ReadListFont(const core::Settings& s, std::string_view italicKey, platform::Font& font) {
  if (!core::Text(s, "PRNT LIST FONT NAME").empty()) font.family = core::Text(s, "PRNT LIST FONT NAME");
  const double size = core::Number(s, "PRNT LIST FONT SIZE");
  if (size >= 4 && size <= 72) font.pixelHeight = static_cast<int>(std::lround(size));
  font.bold = core::Number(s, "PRNT LIST FONT BOLD") != 0;
  font.italic = core::Number(s, italicKey) != 0;
}

void StoreListFont(const platform::Font& font, core::Settings& s, std::string_view italicKey) {
  core::Set(s, "PRNT LIST FONT NAME", font.family);
  core::SetNumber(s, "PRNT LIST FONT SIZE", font.pixelHeight);
  core::SetNumber(s, "PRNT LIST FONT BOLD", font.bold ? 1 : 0);
  core::SetNumber(s, italicKey, font.italic ? 1 : 0);
}

}  // namespace

Paper SheetOf(const PaperChoice& choice) {
  const std::size_t index = static_cast<std::size_t>(choice.size);
  const std::string_view name = index >= 5 ? "A4" : kPaperSizeNames[index];
  return *PaperOf(name, choice.landscape);
}

Paper PageAreaOf(const PaperChoice& choice) {
  const Paper sheet = SheetOf(choice);
  const double width = choice.size == PaperSize::A4HalfColumn   ? kHalfColumnCm
                       : choice.size == PaperSize::A4FullColumn ? kFullColumnCm
                                                                : sheet.widthCm;
  return Paper{width, sheet.heightCm * width / sheet.widthCm};
}

PrintSetup PrintSetupFromSettings(const core::Settings& s) {
  PrintSetup setup;
  setup.printer = core::Text(s, "USER PRINTER");
  setup.page = ChoiceFromSettings(s, "PAPER SIZE", "PAPER BIN", "PAPER ORIENTATION", setup.page);
  setup.list = ChoiceFromSettings(s, "PAPER SIZE LIST", "PAPER BIN LIST", "PAPER ORIENT LIST", setup.list);
  const long duplex = std::lround(core::Number(s, "PAPER DUPLEX"));
  setup.dualSide = duplex == kLongEdge || duplex == kShortEdge;
  setup.bind = duplex == kShortEdge ? BindSide::Upper : BindSide::Left;
  setup.peakListOnReverse = core::Number(s, "PRINT LIST ON BACK") != 0;
  ReadListFont(s, "PRNT LIST FONT ITAL", setup.listFont);
  return setup;
}

void StorePrintSetup(const PrintSetup& setup, core::Settings& s) {
  core::Set(s, "USER PRINTER", setup.printer);
  StoreChoice(setup.page, s, "PAPER SIZE", "PAPER BIN", "PAPER ORIENTATION");
  StoreChoice(setup.list, s, "PAPER SIZE LIST", "PAPER BIN LIST", "PAPER ORIENT LIST");
  core::SetNumber(s, "PAPER DUPLEX", !setup.dualSide ? kSimplex : setup.bind == BindSide::Upper ? kShortEdge : kLongEdge);
  core::SetNumber(s, "PRINT LIST ON BACK", setup.peakListOnReverse ? 1 : 0);
  StoreListFont(setup.listFont, s, "PRNT LIST FONT ITAL");
}

void ListFontFromPrintSet(const core::Settings& printSet, PrintSetup& setup) {
  ReadListFont(printSet, "PRNT LIST FONT ITALIC", setup.listFont);
}

void ListFontIntoPrintSet(const PrintSetup& setup, core::Settings& printSet) {
  StoreListFont(setup.listFont, printSet, "PRNT LIST FONT ITALIC");
}

PrintPlan PlanPrint(const PrintSetup& setup, const PrinterAbilities& abilities, bool hasPeaks) {
  PrintPlan plan;
  if (!abilities.exists) {
    plan.refusal = messages::NoPrinter();
    return plan;
  }
  const bool list = hasPeaks && setup.peakListOnReverse;
  const bool onBack = list && setup.dualSide && abilities.duplex;
  // A list on a sheet of its own takes the list's paper, which must fit as well.
  if (!Takes(abilities, setup.page.size) || (list && !onBack && !Takes(abilities, setup.list.size))) {
    plan.refusal = messages::PaperDoesNotFit();
    return plan;
  }
  plan.sheets.push_back({SheetKind::Page, false});
  if (!list) return plan;
  if (setup.dualSide && !abilities.duplex) plan.warning = messages::NoReverseSide();
  plan.sheets.push_back({SheetKind::PeakList, onBack});
  plan.duplex = onBack;
  return plan;
}

}  // namespace velk::layout
