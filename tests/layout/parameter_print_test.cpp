// The printed parameter list's choice: kept in a settings file and read back whole; a parameter
// file that can't be read leaves the list that was printed; the entries offered for editing.
#include <gtest/gtest.h>

#include "layout/parameter_print.h"
#include "support/temp_folder.h"

namespace velk::layout {
namespace {

TEST(ParameterPrint, TheChoiceComesBackFromTheSettingsFile) {
  test::TempFolder folder;
  ParameterPrint choice;
  choice.source = ParameterListSource::List;
  choice.file = folder / "kept.prt";
  choice.list = ParseParameterText("$---F2----\r\n;not printed\r\nF2FRQ     {Obs F2} MHz!\r\nD[3]\r\n");
  choice.decimalColumn = 31;
  choice.font = {"DejaVu Serif", 10.5, true, false};
  core::Settings settings = core::DefaultSettings(core::Schema2D());
  StoreParameterPrint(choice, settings);
  ASSERT_TRUE(core::WriteSettings(folder / "2d.ini", settings));
  core::Settings read = core::DefaultSettings(core::Schema2D());
  ASSERT_TRUE(core::ReadSettings(folder / "2d.ini", read));
  EXPECT_EQ(ParameterPrintFromSettings(read), choice);

  // Fresh settings print the default list at column 25; a file source without a file is the default.
  EXPECT_EQ(ParameterPrintFromSettings(core::DefaultSettings(core::Schema2D())), ParameterPrint{});
  read.lists["PARA TABLE"] = {"FILE 0"};
  core::Set(read, "PARAMETER TABLE", "");
  const ParameterPrint noFile = ParameterPrintFromSettings(read);
  EXPECT_EQ(noFile.source, ParameterListSource::Default);
  EXPECT_EQ(noFile.decimalColumn, kDefaultDecimalColumn) << "a column out of range keeps the default";
}

TEST(ParameterPrint, AnUnreadableFileKeepsTheListPrinted) {
  test::TempFolder folder;
  PrintedParameters printed;
  ParameterPrint list;
  list.source = ParameterListSource::List;
  list.list = {{"SCANS", "Scans", ""}};
  ASSERT_TRUE(ApplyParameterPrint(list, folder.path, printed).ok());
  EXPECT_EQ(printed.list, list.list);

  ParameterPrint missing;
  missing.source = ParameterListSource::File;
  missing.file = "absent";  // a bare name is looked for in the parameter folder, as "absent.prt"
  const platform::Outcome failed = ApplyParameterPrint(missing, folder.path, printed);
  EXPECT_FALSE(failed.ok());
  EXPECT_EQ(failed.message.title, "ReadParaFile/Fm17");
  EXPECT_EQ(printed.choice, list);
  EXPECT_EQ(printed.list, list.list);

  folder.Write("absent.prt", "F1PNT\r\n$Head\r\n");
  ASSERT_TRUE(ApplyParameterPrint(missing, folder.path, printed).ok());
  EXPECT_EQ(printed.list, (ParameterList{{"F1PNT", "", ""}, {"$", "", "Head"}}));

  // From the settings, a vanished file prints the default list and says why.
  core::Settings settings = core::DefaultSettings(core::Schema2D());
  missing.file = folder / "gone.prt";
  StoreParameterPrint(missing, settings);
  platform::Outcome failure;
  const PrintedParameters start = PrintedParametersFromSettings(settings, folder.path, &failure);
  EXPECT_EQ(failure.message.title, "ReadParaFile/Fm17");
  EXPECT_EQ(start.list, DefaultParameterList());
}

TEST(ParameterPrint, OfferedEntriesComeFromTheFirstListFoundElseFromTheMacros) {
  test::TempFolder empty, installed;
  const ParameterList macros = OfferedParameters({empty.path});
  const auto frq = std::find_if(macros.begin(), macros.end(), [](const ParameterLine& l) { return l.Kind == "F2FRQ"; });
  ASSERT_NE(frq, macros.end());
  EXPECT_EQ(frq->Label, "F2-ObsFreq");
  EXPECT_GT(macros.size(), 200u);

  installed.Write("NMRAllParE.lst", "; what this file is\r\n$---Times---\r\nPD        {Delay}\r\n");
  EXPECT_EQ(OfferedParameters({empty.path, installed.path}), (ParameterList{{"$", "", "---Times---"}, {"PD", "Delay", ""}}));
}

}  // namespace
}  // namespace velk::layout
