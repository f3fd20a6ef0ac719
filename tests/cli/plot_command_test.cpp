#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <fstream>

#include "display/page_picture.h"
#include "display/view_navigation.h"
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

// --peaks: a cross on each top, of the file's own list or of one picked anew, where the top lies.
TEST(PlotCommand, PeakMarksSitOnTheTops) {
  TempFolder folder;
  // Tops on data points (a top between two would be a plateau, which is no peak): 0 to 10 ppm on
  // 256 and 128 points.
  const std::int32_t col = 178, row = 38;
  const double f2 = col * 10.0 / 255, f1 = row * 10.0 / 127, f2b = 77 * 10.0 / 255, f1b = 89 * 10.0 / 127;
  auto s = MakeSynthetic2D(256, 128, {{f2, f1, 1.0, 0.08}, {f2b, f1b, -0.9, 0.08}});
  // The file's list holds the positive top only.
  s->peaks.peaks.push_back({col, row, static_cast<float>(col * s->axis[model::F2].Resolution),
                            static_cast<float>(row * s->axis[model::F1].Resolution), 0, 0, s->RR.at(col, row)});
  const model::DataWords words{model::MakeTypeCode(2, true, model::kVer4), model::VPH_HOMO, 1};
  ASSERT_TRUE(native::WriteDataR4(folder / "s.vlk2", *s, nullptr, nullptr, words, native::SaveMode::RealOnly, {false, nullptr}).ok());
  const auto plot = [&](const std::string& name, const std::string& peaks) {
    const CliRun run = RunCli("plot " + Quoted((folder / "s.vlk2").string()) + " -o " + Quoted((folder / name).string()) +
                              " --size 500x400 --f2 9,1 --f1 1,9 --traces none" + peaks);
    EXPECT_EQ(run.exitStatus, 0) << run.err;
    return QImage(QString::fromStdString((folder / name).string())).convertToFormat(QImage::Format_RGB32);
  };
  const QImage plain = plot("plain.png", ""), stored = plot("stored.png", " --peaks stored"),
               picked = plot("picked.png", " --peaks 0.5");
  // The pixels that the marks changed, and the black ones among them around each top.
  const display::Rect c = display::LayOutMainView({500, 400}, false).contour;
  const auto marked = [&](const QImage& image, double f2, double f1) {
    const int x = static_cast<int>(std::lrint(display::ValueToPixel(9, 1, c.x, c.width, f2)));
    const int y = static_cast<int>(std::lrint(display::ValueToPixel(1, 9, c.y, c.height, f1)));
    int black = 0;
    for (int d = -5; d <= 5; ++d) black += (image.pixel(x + d, y) & 0xFFFFFF) == 0 && (image.pixel(x, y + d) & 0xFFFFFF) == 0;
    return black;
  };
  int changedStored = 0, changedPicked = 0;
  for (int y = 0; y < plain.height(); ++y)
    for (int x = 0; x < plain.width(); ++x) {
      changedStored += stored.pixel(x, y) != plain.pixel(x, y);
      changedPicked += picked.pixel(x, y) != plain.pixel(x, y);
    }
  // A cross of two arms of 11 pixels on each top (a point is one to two pixels here).
  EXPECT_GE(marked(stored, f2, f1), 9);
  EXPECT_LE(marked(stored, f2b, f1b), 1);
  EXPECT_GT(changedStored, 10);
  EXPECT_LT(changedStored, 30);
  EXPECT_GE(marked(picked, f2, f1), 9);
  EXPECT_GE(marked(picked, f2b, f1b), 9);
  EXPECT_LT(changedPicked, 2 * 30);
  const CliRun refused = RunCli("plot " + Quoted((folder / "s.vlk2").string()) + " -o " +
                                Quoted((folder / "x.png").string()) + " --peaks 2");
  EXPECT_EQ(refused.exitStatus, 2) << refused.err;
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
