// velk2d-cli page: the printed page of the corpus HSQC and of a saved set with its own layout.
#include <gtest/gtest.h>

#include <QImage>
#include <fstream>
#include <sstream>

#include "layout/layout_sections.h"
#include "model/data_type.h"
#include "native/ver4_file.h"
#include "support/corpus.h"
#include "support/run_cli.h"
#include "support/synthetic_2d.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

std::string Slurped(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

TEST(PageCommand, TheHsqcPageAsVectorFilesAndAnImage) {
  TempFolder folder;
  const std::string in = Quoted(CorpusPath("bruker/cyclosporin_hsqc/3/pdata/1/2rr").string());
  for (const char* name : {"p.svg", "p.pdf", "p.png"}) {
    const CliRun run = RunCli("page " + in + " -o " + Quoted((folder / name).string()) +
                              " --comment \"\\g(d)\\-(H) HSQC\" --dpi 100");
    ASSERT_EQ(run.exitStatus, 0) << run.err;
  }
  const std::string svg = Slurped(folder / "p.svg");
  for (const char* text : {"F2-Nucleus", "13C", "F2 1H (ppm)", "F1 13C (ppm)", "hsqcedetgpsp.3", "HSQC", "C6D6"})
    EXPECT_NE(svg.find(text), std::string::npos) << text;
  EXPECT_EQ(Slurped(folder / "p.pdf").substr(0, 5), "%PDF-");
  const QImage page(QString::fromStdString((folder / "p.png").string()));
  EXPECT_EQ(page.width(), 827);  // A4 at 100 dots per inch
  EXPECT_EQ(page.height(), 1169);

  const CliRun letter = RunCli("page " + in + " -o " + Quoted((folder / "l.png").string()) + " --paper Letter");
  EXPECT_EQ(letter.exitStatus, 2);
  EXPECT_FALSE(std::filesystem::exists(folder / "l.png"));
}

TEST(PageCommand, ASavedSetBringsItsOwnObjectsAndAListItsOwnParameters) {
  TempFolder folder;
  auto s = MakeSynthetic2D(256, 128, {{7, 3, 1.0, 0.08}});
  layout::LayoutDocument objects;
  layout::AddText(objects, {.X = 3, .Y = 27, .Text = "\\< stored note"});
  layout::WriteLayoutSections(objects, layout::LayoutPage::Page2D, s->carried.fileSections);
  const model::DataWords words{model::MakeTypeCode(2, true, model::kVer4), model::VPH_HOMO, 1};
  ASSERT_TRUE(native::WriteDataR4(folder / "s.vlk2", *s, nullptr, nullptr, words, native::SaveMode::RealOnly,
                                  {false, nullptr}).ok());
  const auto list = folder.Write("mine.prt", "$My heading\r\nSCANS     {Scans here}\r\n");
  const CliRun run = RunCli("page " + Quoted((folder / "s.vlk2").string()) + " -o " +
                            Quoted((folder / "s.svg").string()) + " --parameters " + Quoted(list.string()) +
                            " --paper A5 --orientation landscape");
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  const std::string svg = Slurped(folder / "s.svg");
  for (const char* text : {"stored note", "My heading", "Scans here"}) EXPECT_NE(svg.find(text), std::string::npos) << text;
  EXPECT_EQ(svg.find("F2-Nucleus"), std::string::npos) << "the default list is not used";
}

}  // namespace
}  // namespace velk::test
