// The main view drawn through Qt into picture files, on a synthetic phase-sensitive spectrum.
#include <QColor>
#include <QImage>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "display/page_picture.h"
#include "model/data_type.h"
#include "platform/qt/picture_file.h"
#include "support/synthetic_2d.h"
#include "support/temp_folder.h"

namespace velk::display {
namespace {

std::string Head(const std::filesystem::path& file, std::size_t n) {
  std::ifstream in(file, std::ios::binary);
  std::string text(n, '\0');
  in.read(text.data(), static_cast<std::streamsize>(n));
  return text;
}

TEST(MainViewPicture, FilledLevelsOfBothSignsInTheirColoursInEveryFileKind) {
  // A positive peak at (F2 7 ppm, F1 3 ppm) and a negative one at (3 ppm, 7 ppm).
  auto s = test::MakeSynthetic2D(512, 256, {{7, 3, 1.0, 0.08}, {3, 7, -0.9, 0.08}});
  ContourSetting setting;
  setting.Steps = 8;
  MainViewInput input{*s, model::VPH_HOMO, setting, {}, TraceKind::ProjectionPosNeg, "F2 (ppm)", "F1 (ppm)"};
  input.view.ViewF2Start = 10;  // high ppm at the left
  input.view.ViewF2End = 0;
  input.view.ViewF1Start = 0;
  input.view.ViewF1End = 10;
  const platform::Extent size{600, 500};
  test::TempFolder folder;
  platform::NoProgress progress;
  for (const char* name : {"view.png", "view.svg", "view.pdf"}) {
    const auto outcome = platform::qt::WritePicture(folder / name, size, [&](platform::Surface& surface) {
      EXPECT_TRUE(DrawMainView(surface, size, input, progress));
    });
    ASSERT_TRUE(outcome.ok()) << outcome.message.text;
  }
  EXPECT_EQ(Head(folder / "view.pdf", 5), "%PDF-");
  EXPECT_NE(Head(folder / "view.svg", 200).find("<svg"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(folder / "view.png.part.png"));

  const QImage image(QString::fromStdString((folder / "view.png").string()));
  ASSERT_EQ(image.width(), 600);
  const MainViewLayout l = LayOutMainView(size, true);
  const auto at = [&](double f2, double f1) {
    const int x = l.contour.x + static_cast<int>((10 - f2) / 10 * (l.contour.width - 1));
    const int y = l.contour.y + static_cast<int>(f1 / 10 * (l.contour.height - 1));
    return QColor(image.pixel(x, y));
  };
  // The top of the positive peak in the highest positive colour (red), the negative one in the
  // deepest negative colour (blue), empty ground white.
  EXPECT_EQ(at(7, 3), QColor(255, 0, 0));
  EXPECT_EQ(at(3, 7), QColor(0, 0, 255));
  EXPECT_EQ(at(5, 5), QColor(255, 255, 255));
  // The flank of the positive peak at about a third of its height is in a lower colour.
  EXPECT_NE(at(7.12, 3), QColor(255, 0, 0));
  EXPECT_NE(at(7.12, 3), QColor(255, 255, 255));

  EXPECT_FALSE(platform::qt::WritePicture(folder / "view.gif", size, [](platform::Surface&) {}).ok());
  EXPECT_FALSE(platform::qt::WritePicture(folder / "missing" / "view.png", size, [](platform::Surface&) {}).ok());
}

}  // namespace
}  // namespace velk::display
