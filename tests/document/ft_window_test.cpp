#include <gtest/gtest.h>

#include <cmath>

#include "document/ft_window.h"
#include "document/read_data_set.h"
#include "processing/transforms.h"
#include "support/scripted_prompt.h"

namespace velk::document {
namespace {

class FtWindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    test::ScriptedPrompt prompt;
    ReadResult read = ReadDataSet(std::string(VELK_SOURCE_DIR) + "/examples/cosy/ser", prompt);
    ASSERT_TRUE(read.outcome.ok());
    doc = std::move(*read.document);
  }
  Document doc;
};

TEST_F(FtWindowTest, StepsStayInsideTheFidAndShowTheRowOrColumnAsRead) {
  FtWindow w(doc);
  EXPECT_EQ(w.view(), model::F2);
  ASSERT_GT(w.Rows(), 1);
  const std::size_t n = w.preview().fidRe.size();
  EXPECT_EQ(n, static_cast<std::size_t>(w.Columns()));
  EXPECT_EQ(w.preview().specRe.size(), n);
  EXPECT_EQ(w.preview().scale.x.size(), n);
  w.StepRow(-1);
  EXPECT_EQ(w.row(), 0);
  w.StepRow(+1);
  EXPECT_EQ(w.preview().fidRe[5], doc.spectrum.RR.at(5, 1));
  EXPECT_EQ(w.preview().fidIm[5], doc.spectrum.IR.at(5, 1));
  for (int i = 0; i < w.Rows() + 5; ++i) w.StepRow(+1);
  EXPECT_EQ(w.row(), w.Rows() - 1);

  w.StepColumn(+3);
  w.ShowF1();
  EXPECT_EQ(w.preview().fidRe.size(), static_cast<std::size_t>(w.Rows()));
  EXPECT_EQ(w.preview().fidRe[2], doc.spectrum.RR.at(3, 2));
  EXPECT_EQ(w.Pivot(), std::round(w.Rows() / 2.0));
}

TEST_F(FtWindowTest, PhaseRotatesTheShownTraceOnly) {
  doc.words.pulseModeClass = model::VPH_HOMO;  // the example is a magnitude set; read it as phased
  FtWindow w(doc);
  ASSERT_TRUE(w.PhaseSensitive());
  const std::vector<float> re = w.preview().specRe, im = w.preview().specIm;
  w.SetPhase1(0);
  w.SetPhase0(90);
  for (std::size_t i : {0u, 100u, 300u}) {  // (x, y) turned by 90 degrees is (-y, x)
    EXPECT_NEAR(w.preview().shownRe[i], -im[i], 1e-4f * w.preview().scale.yMaximum);
    EXPECT_NEAR(w.preview().shownIm[i], re[i], 1e-4f * w.preview().scale.yMaximum);
  }
  EXPECT_EQ(w.preview().specRe, re);
  // Both orders with a pivot: the same turn as the matrix rotation of the transform.
  w.SetPivot(100);
  w.SetPhase1(-250);
  w.SetPhase0(33);
  std::vector<float> xr = re, xi = im;
  processing::RotatePhaseTrace(xr.data(), xi.data(), static_cast<std::int32_t>(xr.size()), {true, 33, -250, 100});
  for (std::size_t i = 0; i < xr.size(); i += 37) {
    ASSERT_NEAR(w.preview().shownRe[i], xr[i], 1e-5f * w.preview().scale.yMaximum);
    ASSERT_NEAR(w.preview().shownIm[i], xi[i], 1e-5f * w.preview().scale.yMaximum);
  }
  w.AddPhase0(152);  // 185 wraps
  EXPECT_DOUBLE_EQ(w.Phase0(), -175);
  w.SetPhase1(5000);
  EXPECT_DOUBLE_EQ(w.Phase1(), 1800);
  w.ShowF1();  // each axis keeps its own phases
  EXPECT_NE(w.Phase0(), -175);
}

TEST_F(FtWindowTest, AbsoluteSetsShowTheMagnitudeAndAZeroTraceHasTheFloorMaximum) {
  doc.words.pulseModeClass = model::V_HOMO;
  std::fill(doc.spectrum.RR.data.begin(), doc.spectrum.RR.data.end(), 0.0f);
  std::fill(doc.spectrum.IR.data.begin(), doc.spectrum.IR.data.end(), 0.0f);
  doc.spectrum.RR.at(0, 0) = 3;
  doc.spectrum.IR.at(0, 0) = 4;
  FtWindow w(doc);
  ASSERT_FALSE(w.PhaseSensitive());
  for (std::size_t i = 0; i < w.preview().shownRe.size(); ++i)
    ASSERT_NEAR(w.preview().shownRe[i], std::hypot(w.preview().specRe[i], w.preview().specIm[i]), 1e-5f);
  w.StepRow(+1);  // row 1 is all zero
  EXPECT_FLOAT_EQ(w.preview().scale.yMaximum, 2 * std::sqrt(0.1f));
  w.SetYSpan(4);
  EXPECT_FLOAT_EQ(w.preview().scale.ySpan, 2 * std::sqrt(0.1f) / 4);
}

}  // namespace
}  // namespace velk::document
