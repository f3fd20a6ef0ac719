#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <fstream>

#include "model/data_type.h"
#include "native/ver4_file.h"
#include "support/corpus.h"
#include "support/run_cli.h"
#include "support/synthetic_2d.h"
#include "support/temp_folder.h"

namespace velk::test {

std::string Head(const std::filesystem::path& file, std::size_t n) {
  std::ifstream in(file, std::ios::binary);
  std::string text(n, '\0');
  in.read(text.data(), static_cast<std::streamsize>(n));
  return text;
}

// A phase-sensitive spectrum in the program's own file, drawn into every picture kind.
TEST(PlotCommand, DrawsASavedSpectrumInEveryPictureKind) {
  TempFolder folder;
  auto s = MakeSynthetic2D(256, 128, {{7, 3, 1.0, 0.08}, {3, 7, -0.9, 0.08}});
  const model::DataWords words{model::MakeTypeCode(2, true, model::kVer4), model::VPH_HOMO, 1};
  ASSERT_TRUE(native::WriteDataR4(folder / "s.vlk2", *s, nullptr, nullptr, words, native::SaveMode::RealOnly, {false, nullptr}).ok());
  const std::string in = Quoted((folder / "s.vlk2").string());
  for (const char* name : {"a.png", "a.svg", "a.pdf"}) {
    const CliRun run = RunCli("plot " + in + " -o " + Quoted((folder / name).string()) +
                              " --size 500x400 --mode filled --steps 8 --f2 9,1 --f1 1,9 --traces pos-neg");
    EXPECT_EQ(run.exitStatus, 0) << run.err;
  }
  EXPECT_EQ(Head(folder / "a.png", 4), "\x89PNG");
  EXPECT_EQ(Head(folder / "a.pdf", 5), "%PDF-");
  // A window that lies beyond the data is refused, and no picture is left behind.
  const CliRun outside = RunCli("plot " + in + " -o " + Quoted((folder / "b.png").string()) + " --f2 20,30");
  EXPECT_EQ(outside.exitStatus, 2);
  EXPECT_NE(outside.err.find("outside the spectrum"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(folder / "b.png"));
}

// The edited HSQC of the corpus: CH and CH3 positive, CH2 negative. Filled with 16 steps, the
// positive levels are orange and red, the negative ones green and blue.
TEST(PlotCommand, PhaseSensitiveHsqcShowsBothSignsInTheirColours) {
  TempFolder folder;
  const auto in = CorpusPath("bruker/cyclosporin_hsqc/3/pdata/1/2rr");
  const CliRun run = RunCli("plot " + Quoted(in.string()) + " -o " + Quoted((folder / "h.png").string()) +
                            " --mode filled --lower 0.05 --f2 6,0 --f1 10,70");
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  const QImage image(QString::fromStdString((folder / "h.png").string()));
  ASSERT_EQ(image.width(), 1024);
  int positive = 0, negative = 0;
  for (int y = 160; y < 930; ++y)  // the contour area, not the level bar at the left
    for (int x = 300; x < 880; ++x) {
      const QColor c(image.pixel(x, y));
      positive += c == QColor(255, 0, 0) || c == QColor(255, 128, 0);
      negative += c == QColor(0, 255, 0) || c == QColor(0, 0, 255);
    }
  EXPECT_GT(positive, 1000);
  EXPECT_GT(negative, 300);
}

// A raw FID is transformed with the default settings before it is drawn.
TEST(PlotCommand, RawCosyIsTransformedFirst) {
  TempFolder folder;
  const auto in = CorpusPath("bruker/cyclosporin_cosy/1/ser");
  const CliRun run = RunCli("plot " + Quoted(in.string()) + " -o " + Quoted((folder / "c.svg").string()));
  EXPECT_EQ(run.exitStatus, 0) << run.err;
  EXPECT_TRUE(std::filesystem::exists(folder / "c.svg"));
}

TEST(PlotCommand, RefusesWhatItCannotDrawWithoutWritingAPicture) {
  TempFolder folder;
  const std::string out = Quoted((folder / "out.png").string());
  EXPECT_EQ(RunCli("plot --help").exitStatus, 0);
  EXPECT_EQ(RunCli("plot " + Quoted((folder / "missing.vlk2").string()) + " -o " + out).exitStatus, 2);
  const std::string junk = Quoted(folder.Write("junk.bin", std::string(500, 'x')).string());
  const CliRun refused = RunCli("plot " + junk + " -o " + out);
  EXPECT_EQ(refused.exitStatus, 1);
  EXPECT_NE(refused.err.find("velk2d-cli plot: "), std::string::npos);
  EXPECT_EQ(RunCli("plot " + junk + " -o " + out + " --size 10x10").exitStatus, 2);
  EXPECT_EQ(RunCli("plot " + junk + " -o " + Quoted((folder / "out.gif").string())).exitStatus, 2);
  EXPECT_EQ(RunCli("plot " + junk + " -o " + out + " --lower 0.5 --upper 0.2").exitStatus, 2);
  EXPECT_NE(RunCli("plot " + junk + " -o " + out + " --steps 5").exitStatus, 0);
  EXPECT_FALSE(std::filesystem::exists(folder / "out.png"));
}

}  // namespace velk::test
