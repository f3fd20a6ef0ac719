// The grid and the tracer on a vendor-processed spectrum of the corpus.
#include <algorithm>

#include <gtest/gtest.h>

#include "display/display_grid.h"
#include "display/levels.h"
#include "display/tracer.h"
#include "formats/registry.h"
#include "model/data_type.h"
#include "model/type_detector.h"
#include "support/corpus.h"
#include "support/recording_surface.h"
#include "support/scripted_prompt.h"

namespace velk::display {
namespace {

// The edited HSQC: CH and CH3 positive, CH2 negative; 1024 x 1024 points onto 300 x 200 pixels.
TEST(RealData, EditedHsqcTracesBothSignsInsideTheView) {
  const auto path = test::CorpusPath("bruker/cyclosporin_hsqc/3/pdata/1/2rr");
  const model::FormatTable formats = formats::Formats();
  const model::Detection d = model::TypeDetector(path, formats);
  ASSERT_EQ(d.pulseModeClass, model::VPH_HETERO);
  const auto entry = std::find_if(formats.begin(), formats.end(),
                                  [&](const model::FormatEntry& e) { return e.extensionWord == d.file.extensionWord; });
  ASSERT_NE(entry, formats.end());
  test::ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words{d.code, d.pulseModeClass, 0};
  model::ReadContext context{prompt, progress, words, nullptr};
  auto s = std::make_unique<model::Spectrum2D>();
  ASSERT_TRUE(entry->read2D(d.file, *s, context).ok());

  ContourSetting setting;
  setting.Steps = 8;
  const float largest = LargestShownMagnitude(*s, words.pulseModeClass, setting);
  ASSERT_GT(largest, 0.0f);
  LevelTable levels;
  BuildLevelTable(levels, setting, largest, 0.05f * largest, words.pulseModeClass);
  ContourGrid grid;
  const int cols = s->axis[model::F2].Point, rows = s->axis[model::F1].Point;
  ASSERT_TRUE(MakeDisplayGrid(grid, {*s, words.pulseModeClass, setting}, 0, cols - 1, 0, rows - 1, 300, 200, false));
  EXPECT_EQ(grid.Cols, 511);  // 1023 intervals on 300 pixels: halved once
  EXPECT_EQ(grid.Rows, 255);  // on 200 pixels: halved twice
  grid.ViewColStart = 6.0f;  // 6..0 ppm 1H, 10..70 ppm 13C
  grid.ViewColEnd = 0.0f;
  grid.ViewRowStart = 10.0f;
  grid.ViewRowEnd = 70.0f;
  test::RecordingSurface surface;
  ASSERT_TRUE(TraceContour(surface, grid, levels, {0, 299, 0, 199}, {0, 0, 299, 199}, 1, progress, kLines));

  int positive = 0, negative = 0;
  for (const test::Segment& seg : surface.Segments()) {
    positive += seg.color == setting.Palette[0] || seg.color == setting.Palette[4];
    negative += seg.color == setting.Palette[11] || seg.color == setting.Palette[15];
    // One grid step beyond the view at most: about 4 pixels across, 10 down at these scales.
    for (platform::Point p : {seg.from, seg.to}) {
      EXPECT_GE(p.x, -5);
      EXPECT_LE(p.x, 305);
      EXPECT_GE(p.y, -12);
      EXPECT_LE(p.y, 212);
    }
  }
  EXPECT_GT(positive, 200);
  EXPECT_GT(negative, 50);
}

}  // namespace
}  // namespace velk::display
