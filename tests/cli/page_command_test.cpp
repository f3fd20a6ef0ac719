// velk2d-cli page: the printed page of the corpus HSQC and of a saved set with its own layout.
#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <fstream>
#include <sstream>

#include "layout/layout_sections.h"
#include "layout/page_frames.h"
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


// Rows of the page holding a horizontal run of the colour longer than `length` pixels.
int RowsWithRun(const QImage& page, QRgb colour, int length) {
  int rows = 0;
  for (int y = 0; y < page.height(); ++y) {
    int run = 0, longest = 0;
    for (int x = 0; x < page.width(); ++x) {
      run = (page.pixel(x, y) & 0xFFFFFF) == (colour & 0xFFFFFF) ? run + 1 : 0;
      longest = std::max(longest, run);
    }
    rows += longest > length;
  }
  return rows;
}

int PixelsOf(const QImage& page, QRect area, QRgb colour) {
  int n = 0;
  for (int y = area.top(); y <= area.bottom(); ++y)
    for (int x = area.left(); x <= area.right(); ++x) n += (page.pixel(x, y) & 0xFFFFFF) == (colour & 0xFFFFFF);
  return n;
}

// A print set gives the page its colours and widths: the numbers are the stored decimal ones with
// red in the low byte, and a width of 1 is one pixel at 96 dots per inch.
TEST(PageCommand, APrintSetColoursAndWidensThePage) {
  TempFolder folder;
  auto s = MakeSynthetic2D(256, 128, {{7, 3, 1.0, 0.08}});
  const model::DataWords words{model::MakeTypeCode(2, true, model::kVer4), model::VPH_HOMO, 1};
  ASSERT_TRUE(native::WriteDataR4(folder / "s.vlk2", *s, nullptr, nullptr, words, native::SaveMode::RealOnly,
                                  {false, nullptr}).ok());
  const std::string look = "COLOR SET OF PRINT 2D VER.4\r\n2-AXIS COL;255\r\n2-1D SPEC COL;16711680\r\n"
                           "2-WAKU CO;65280\r\n2-F2 1D WAKU COL;65280\r\n2-F1 1D WAKU COL;65280\r\n"
                           "2-PAPER COLOR;14745599\r\n2-WIDTH AXIS;3\r\n2-WIDTH 1D SPEC;3\r\n";
  const auto page = [&](const std::string& name, const std::string& set) {
    std::string options = " --dpi 96";
    if (!set.empty()) options += " --print-set " + Quoted(folder.Write(name + ".pr2", set).string());
    const CliRun run = RunCli("page " + Quoted((folder / "s.vlk2").string()) + " -o " +
                              Quoted((folder / (name + ".png")).string()) + options);
    EXPECT_EQ(run.exitStatus, 0) << run.err;
    return QImage(QString::fromStdString((folder / (name + ".png")).string()));
  };
  const QImage framed = page("framed", look + "2-WIDTH WAKU;2\r\n"), unframed = page("unframed", look + "WIDTH WAKU;0\r\n");
  const QImage plain = page("plain", "");
  ASSERT_FALSE(framed.isNull() || unframed.isNull() || plain.isNull());
  const layout::PageFrame f = layout::DefaultPageFrames(*layout::PaperOf("A4", false))[layout::FrameKind::TraceF2];
  const auto dots = [](double cm) { return static_cast<int>(cm / 2.54 * 96); };
  const QRect traceF2 = QRect(dots(f.X), dots(f.Y), dots(f.Width), dots(f.Height)).adjusted(3, 3, -3, -3);

  EXPECT_EQ(RowsWithRun(unframed, qRgb(255, 0, 0), 300), 3) << "the F2 axis line in red, three pixels wide";
  EXPECT_EQ(RowsWithRun(unframed, qRgb(0, 0, 255), 300), 0) << "red is not read as blue";
  EXPECT_GT(PixelsOf(unframed, traceF2, qRgb(0, 0, 255)), 300) << "the trace in blue, three wide";
  EXPECT_EQ(RowsWithRun(unframed, qRgb(0, 255, 0), 300), 0) << "no frame lines at width 0";
  EXPECT_GE(RowsWithRun(framed, qRgb(0, 255, 0), 300), 4) << "green frames around the contour and the F2 trace";
  EXPECT_EQ(unframed.pixel(3, 3) & 0xFFFFFF, qRgb(255, 255, 224) & 0xFFFFFF) << "the paper";

  // The default set: white paper, a black axis and a black trace.
  EXPECT_EQ(plain.pixel(3, 3) & 0xFFFFFF, 0xFFFFFFu);
  EXPECT_EQ(RowsWithRun(plain, qRgb(255, 0, 0), 300) + RowsWithRun(plain, qRgb(0, 0, 255), 300), 0);
  EXPECT_GT(RowsWithRun(plain, qRgb(0, 0, 0), 300), 0);
  EXPECT_GT(PixelsOf(plain, traceF2, qRgb(0, 0, 0)), 100);
  EXPECT_EQ(PixelsOf(plain, traceF2, qRgb(0, 0, 255)), 0);
}

}  // namespace
}  // namespace velk::test
