// Print sets, the paper setup kept in the settings, the print plan and the names of output files.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "layout/output_file_name.h"
#include "layout/print_set.h"
#include "layout/print_setup.h"
#include "support/temp_folder.h"

namespace velk::layout {
namespace {

core::Settings ReadText(const std::string& text, core::Settings set, int expectedCode = 0) {
  std::istringstream in(text);
  EXPECT_EQ(ReadPrintSet(in, set).code, expectedCode) << text.substr(0, 40);
  return set;
}

TEST(PrintSet, VersionsPrefixAndRefusal) {
  core::Settings start = DefaultPrintSet();
  core::SetNumber(start, "AXIS COL", 255);

  // Version 1: the keys it holds are read, the others keep their values; "2-" is no prefix there.
  const core::Settings v1 = ReadText(
      "COLOR SET OF PRINT 2D VER.1\r\nGRID COL            ; 65280\r\n\r\n2-WIDTH AXIS ; 7\r\n"
      "no separator here\r\nAXIS FONT NAME ; Times New Roman\r\nPAPERR COL TRANS ; 1\r\n",
      start);
  EXPECT_EQ(v1.version, 1);
  EXPECT_EQ(core::Number(v1, "GRID COL"), 65280);
  EXPECT_EQ(core::Number(v1, "AXIS COL"), 255);
  EXPECT_EQ(core::Number(v1, "WIDTH AXIS"), 1);
  EXPECT_EQ(core::Text(v1, "AXIS FONT NAME"), "Times New Roman");
  EXPECT_EQ(core::Number(v1, "PAPERR COL TRANS"), 1);

  // Later versions drop the prefix; the oldest first line is read like version 1.
  const core::Settings v4 = ReadText("color set of print 2d ver.4\n2-WIDTH AXIS ; 7\n2-F1 TIC DIV 2 OTHER;4\n", start);
  EXPECT_EQ(core::Number(v4, "WIDTH AXIS"), 7);
  EXPECT_EQ(core::Number(v4, "F1 TIC DIV 2 OTHER"), 4);
  const core::Settings old = ReadText("2D PRINT SET DATA\n2-WIDTH AXIS ; 7\nWIDTH GRID ; 3\n", start);
  EXPECT_EQ(core::Number(old, "WIDTH AXIS"), 1);
  EXPECT_EQ(core::Number(old, "WIDTH GRID"), 3);

  // Another first line refuses the file and changes nothing; a bad number keeps the value.
  const core::Settings refused = ReadText("2D Initial Setting Ver.4\nAXIS COL ; 0\n", start, 1);
  EXPECT_EQ(core::Number(refused, "AXIS COL"), 255);
  EXPECT_EQ(ReadText("", start, 1).values, start.values);
  EXPECT_EQ(core::Number(ReadText("COLOR SET OF PRINT 2D VER.4\nAXIS COL ; red\n", start), "AXIS COL"), 255);
}

TEST(PrintSet, WrittenBytesReadBackAndRewriteIdentically) {
  test::TempFolder folder;
  core::Settings set = DefaultPrintSet();
  core::SetNumber(set, "CONTOUR DISPALY MODE", 2);
  core::Set(set, "PRNT LIST FONT NAME", "Courier New");
  ASSERT_TRUE(WritePrintSet(folder / "a.pr2", set).ok());

  std::ifstream in(folder / "a.pr2", std::ios::binary);
  std::string first, second;
  std::getline(in, first);
  std::getline(in, second);
  EXPECT_EQ(first, "COLOR SET OF PRINT 2D VER.4\r");
  EXPECT_EQ(second, "CONTOUR DISPALY MODE  ; 2\r");

  core::Settings back = DefaultPrintSet();
  ASSERT_TRUE(ReadPrintSet(folder / "a.pr2", back).ok());
  EXPECT_EQ(back.values, set.values);
  ASSERT_TRUE(WritePrintSet(folder / "b.pr2", back).ok());
  const auto bytes = [](const std::filesystem::path& p) {
    std::ifstream f(p, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(f), {});
  };
  EXPECT_EQ(bytes(folder / "a.pr2"), bytes(folder / "b.pr2"));
  EXPECT_EQ(ReadPrintSet(folder / "missing.pr2", back).code, -1);
}

TEST(PrintSetup, PaperKeptInThePrinterInterfaceNumbers) {
  core::Settings settings = core::DefaultSettings(core::Schema2D());
  // The start-up values: landscape A4 from the automatic bin without duplex; the list upright.
  const PrintSetup start = PrintSetupFromSettings(settings);
  EXPECT_EQ(start.page.size, PaperSize::A4);
  EXPECT_TRUE(start.page.landscape);
  EXPECT_EQ(start.page.bin, PaperBin::AutoSelect);
  EXPECT_FALSE(start.dualSide);
  EXPECT_FALSE(start.list.landscape);

  PrintSetup changed = start;
  changed.page = {PaperSize::B5, PaperBin::LowerCassette, false};
  changed.dualSide = true;
  changed.bind = BindSide::Upper;
  StorePrintSetup(changed, settings);
  EXPECT_EQ(core::Number(settings, "PAPER SIZE"), 13);
  EXPECT_EQ(core::Number(settings, "PAPER BIN"), 2);
  EXPECT_EQ(core::Number(settings, "PAPER ORIENTATION"), 1);
  EXPECT_EQ(core::Number(settings, "PAPER DUPLEX"), 3);
  const PrintSetup back = PrintSetupFromSettings(settings);
  EXPECT_EQ(back.page.size, PaperSize::B5);
  EXPECT_EQ(back.page.bin, PaperBin::LowerCassette);
  EXPECT_EQ(back.bind, BindSide::Upper);
  EXPECT_TRUE(back.dualSide);

  // A column page is drawn at the column's width on an A4 sheet.
  const Paper half = PageAreaOf({PaperSize::A4HalfColumn, PaperBin::AutoSelect, false});
  EXPECT_DOUBLE_EQ(half.widthCm, 8.5);
  EXPECT_NEAR(half.heightCm, 8.5 * 29.7 / 21.0, 1e-9);
  EXPECT_DOUBLE_EQ(SheetOf({PaperSize::A4FullColumn, PaperBin::AutoSelect, true}).widthCm, 29.7);

  // The peak list's font goes with print sets, whose italic key is spelt out.
  PrintSetup fromSet;
  ListFontFromPrintSet(ReadText("COLOR SET OF PRINT 2D VER.4\nPRNT LIST FONT NAME;Courier New\n"
                                "PRNT LIST FONT SIZE;9\nPRNT LIST FONT ITALIC;1\n", DefaultPrintSet()), fromSet);
  EXPECT_EQ(fromSet.listFont.family, "Courier New");
  EXPECT_EQ(fromSet.listFont.pixelHeight, 9);
  EXPECT_TRUE(fromSet.listFont.italic);
  core::Settings set = DefaultPrintSet();
  ListFontIntoPrintSet(fromSet, set);
  EXPECT_EQ(core::Number(set, "PRNT LIST FONT ITALIC"), 1);
}

TEST(PrintPlan, MessagesAndSheets) {
  PrintSetup setup;
  const PrinterAbilities simplex{true, {PaperSize::A4, PaperSize::A3}, false};
  const PrinterAbilities duplex{true, {}, true};

  EXPECT_EQ(PlanPrint(setup, {false, {}, false}, true).refusal->text, "No Printer is available");
  setup.page.size = PaperSize::B4;
  const PrintPlan misfit = PlanPrint(setup, simplex, false);
  ASSERT_TRUE(misfit.refusal);
  EXPECT_EQ(misfit.refusal->title, "Print Size Error");
  EXPECT_EQ(misfit.refusal->text, "Can not print the paper\nChange Printer Name, or Paper Size");
  setup.page.size = PaperSize::A4HalfColumn;  // printed on A4
  EXPECT_FALSE(PlanPrint(setup, simplex, false).refusal);

  // Dual side on a simplex printer: the warning once, the list on a sheet of its own.
  setup.dualSide = true;
  const PrintPlan warned = PlanPrint(setup, simplex, true);
  ASSERT_TRUE(warned.warning);
  EXPECT_EQ(warned.warning->text, "The Printer cannot print on a reverse side!");
  ASSERT_EQ(warned.sheets.size(), 2u);
  EXPECT_FALSE(warned.sheets[1].reverseOfPrevious);
  EXPECT_FALSE(warned.duplex);
  // ... whose paper must fit as well.
  setup.list.size = PaperSize::B5;
  EXPECT_TRUE(PlanPrint(setup, simplex, true).refusal);
  setup.list.size = PaperSize::A4;

  const PrintPlan both = PlanPrint(setup, duplex, true);
  EXPECT_FALSE(both.warning);
  ASSERT_EQ(both.sheets.size(), 2u);
  EXPECT_TRUE(both.sheets[1].reverseOfPrevious);
  EXPECT_TRUE(both.duplex);

  // No peaks, or "without reverse side": the page alone, and no warning.
  EXPECT_EQ(PlanPrint(setup, simplex, false).sheets.size(), 1u);
  EXPECT_FALSE(PlanPrint(setup, simplex, false).warning);
  setup.peakListOnReverse = false;
  EXPECT_EQ(PlanPrint(setup, duplex, true).sheets.size(), 1u);

  EXPECT_TRUE(FlipOnLongEdge(BindSide::Left, false));
  EXPECT_FALSE(FlipOnLongEdge(BindSide::Left, true));
  EXPECT_TRUE(FlipOnLongEdge(BindSide::Upper, true));
}

TEST(OutputFileName, ExtensionAddedOrRefused) {
  platform::Message refusal;
  EXPECT_EQ(OutputFileName("/tmp/page", "PNG", refusal), "/tmp/page.png");
  EXPECT_EQ(OutputFileName("/tmp/page.Png", "PNG", refusal), "/tmp/page.Png");
  EXPECT_EQ(OutputFileName("/tmp/set.v1/page", "EMF", refusal), "/tmp/set.v1/page.emf");
  EXPECT_FALSE(OutputFileName("/tmp/page.jpg", "PNG", refusal));
  EXPECT_EQ(refusal.text, "Invalid File, or\nExtension of File is not .PNG");
  EXPECT_FALSE(OutputFileName("/tmp/colours.prt", "PR2", refusal));
  EXPECT_EQ(refusal.text, "Invalid File, or\nExtension of File is not .PR2");
}

}  // namespace
}  // namespace velk::layout
