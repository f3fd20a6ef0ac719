#include <gtest/gtest.h>

#include <cmath>

#include "document/ft_window.h"
#include "document/fid_image.h"
#include "document/ft_settings.h"
#include "document/phase_reference.h"
#include "document/read_data_set.h"
#include "platform/progress.h"
#include "processing/messages.h"
#include "processing/transforms.h"
#include "support/corpus.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"
#include "../processing/synthetic.h"

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

// Row 1 of the FID holds three decaying lines: prediction must continue them as they go on.
TEST_F(FtWindowTest, PredictionOnTheRowShownContinuesAndRepairsAKnownSignal) {
  const std::vector<test::Line> lines{{0.11, 0.004, 1.0}, {-0.23, 0.006, 0.6, 1.0}, {0.31, 0.003, 0.4, 2.0}};
  model::Spectrum2D& s = doc.spectrum;
  const std::int32_t measured = s.extras[model::F2].fidPoints;
  for (std::int32_t i = 0; i < s.RR.stride; ++i) {
    const std::complex<double> v = i < measured ? test::SignalAt(lines, i) : 0.0;
    s.RR.at(i, 1) = static_cast<float>(v.real());
    s.IR.at(i, 1) = static_cast<float>(v.imag());
  }
  FtWindow w(doc);
  w.StepRow(+1);
  EXPECT_FALSE(w.PredictionAsked());
  w.settings().axis[model::F2].lp = {3, 40, 2, 3, 0, 0, 0};
  const std::int32_t before = w.Columns();
  ASSERT_TRUE(w.LpFill(model::F2).ok());
  EXPECT_TRUE(w.PredictionAsked());
  EXPECT_TRUE(w.Predicted(model::F2));
  EXPECT_EQ(w.Extension(model::F2), 2);
  EXPECT_EQ(s.RR.stride, 2 * before);  // the planes took the new size
  const FtPreview& p = w.preview();
  ASSERT_EQ(p.fidRe.size(), static_cast<std::size_t>(2 * before));
  for (std::int32_t i : {measured, measured + 50, 2 * before - 1}) {
    const std::complex<double> truth = test::SignalAt(lines, i);
    EXPECT_NEAR(p.fidRe[i], truth.real(), 2e-3) << i;
    EXPECT_NEAR(p.fidIm[i], truth.imag(), 2e-3) << i;
  }
  EXPECT_EQ(s.RR.at(measured + 5, 1), 0.0f);  // only the preview is predicted

  // "ZeroFill" puts zero fill in the place of prediction.
  ASSERT_TRUE(w.ZeroFill(model::F2).ok());
  EXPECT_FALSE(w.Predicted(model::F2));
  EXPECT_EQ(w.preview().fidRe[measured + 5], 0.0f);
  ASSERT_TRUE(w.CancelZeroFill(model::F2).ok());
  EXPECT_EQ(s.RR.stride, before);
  EXPECT_FALSE(w.PredictionAsked());

  // "LP Back": spoilt first points come back; parameters past the data are refused.
  s.RR.at(0, 1) = s.RR.at(1, 1) = s.RR.at(2, 1) = 9;
  w.settings().axis[model::F2].lp.BackPoints = measured;
  const platform::Outcome refused = w.LpBack(model::F2);
  EXPECT_EQ(refused.message.text, processing::messages::kIllegalLpParameter);
  EXPECT_FALSE(w.BackPredicted(model::F2));
  w.settings().axis[model::F2].lp.BackPoints = 3;
  w.SetFidShift(0);
  ASSERT_TRUE(w.LpBack(model::F2).ok());
  EXPECT_TRUE(w.PredictionAsked());
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(w.preview().fidRe[i], test::SignalAt(lines, i).real(), 2e-3) << i;
}

TEST_F(FtWindowTest, TheTransformWithPredictionLeavesItsPhasesForThePhaseCorrection) {
  doc.words.pulseModeClass = model::VPH_HOMO;
  FtWindow w(doc);
  w.SetPivot(300);
  w.SetPhase0(30);
  w.SetPhase1(-20);
  w.StepColumn(+100);  // column 0 is all but zero (the digital filter's delay): nothing to predict
  w.ShowF1();
  w.SetPhase0(-12.5);
  w.settings().axis[model::F1].lp = {20, 40, 10, 3, 0, 0, 0};
  const std::int32_t rows = w.Rows();
  const platform::Outcome filled = w.LpFill(model::F1);
  ASSERT_TRUE(filled.ok()) << filled.message.text;
  test::TempFolder folder;
  platform::NoProgress progress;
  const Transformed done = w.Execute(progress, folder / "fid.wkf", {}, true);
  ASSERT_TRUE(done.outcome.ok()) << done.outcome.message.text;
  EXPECT_EQ(doc.spectrum.axis[model::F1].Point, 2 * rows);
  EXPECT_FLOAT_EQ(doc.phases.StoredPhaseF2_0, 30);
  EXPECT_FLOAT_EQ(doc.phases.StoredPhaseF2_1, -20);
  EXPECT_FLOAT_EQ(doc.phases.StoredPhaseF1_0, -12.5);
  EXPECT_EQ(doc.phases.PivotF2, 300);
  EXPECT_EQ(doc.phases.PivotF1, rows);  // the middle of the predicted F1 axis
  EXPECT_TRUE(std::any_of(done.list.begin(), done.list.end(),
                          [](const std::string& l) { return l.find("LP Forward(F1)") != std::string::npos; }));
}

TEST_F(FtWindowTest, MethodShiftAndCorrectionsReachTheRecipe) {
  FtWindow w(doc);
  ASSERT_FALSE(w.PhaseSensitive());  // the example is a magnitude COSY
  w.SetPhaseSensitive(true);
  EXPECT_EQ(w.settings().pulseModeClass, model::VPH_HOMO);
  EXPECT_EQ(w.settings().mode, model::VPH_HOMO);
  w.SetPhaseSensitive(false);
  EXPECT_EQ(w.settings().pulseModeClass, model::V_HOMO);

  const std::vector<float> unshifted = w.preview().specRe;
  w.SetFidShift(w.FidShift() + 3);
  EXPECT_NE(w.preview().specRe, unshifted);

  // Converter options count for Bruker data only; the factor is clamped to 0 .. 2.
  FtWindow::Corrections c;
  c.f1SingleAd = true;
  c.t1Noise = true;
  c.t1Factor = 7;
  w.settings().brukerData = false;
  w.SetCorrections(c);
  EXPECT_FALSE(w.CurrentCorrections().f1SingleAd);
  EXPECT_FLOAT_EQ(w.CurrentCorrections().t1Factor, 2.0f);
  w.settings().brukerData = true;
  w.SetCorrections(c);
  EXPECT_TRUE(w.CurrentCorrections().f1SingleAd);

  // The baseline of the FID: the tail of each row averages to zero afterwards.
  model::Spectrum2D& s = doc.spectrum;
  const std::int32_t n = w.DataPoints(model::F2);
  for (std::int32_t i = 0; i < n; ++i) s.RR.at(i, 0) += 5;
  c.fidBaseline = true;
  w.SetCorrections(c);
  double tail = 0;
  const std::int32_t from = static_cast<std::int32_t>(std::lrint(n * 0.8));
  for (std::int32_t i = from; i < n; ++i) tail += s.RR.at(i, 0);
  EXPECT_NEAR(tail / (n - from), 0.0, 1e-3);
  EXPECT_TRUE(w.settings().fidBaseline);
}

// The cyclosporin HSQC carries the spectrometer's recipe: the window follows it until the
// program's is chosen, and the preview's ppm scale spans the proton shifts of the sample.
TEST(FtWindowRecipe, TheVendorsRecipeOrTheProgramsOnTheHsqc) {
  test::ScriptedPrompt prompt;
  ReadResult read = ReadDataSet(test::CorpusPath("bruker/cyclosporin_hsqc/3/ser").string(), prompt);
  ASSERT_TRUE(read.outcome.ok());
  Document doc = std::move(*read.document);
  FtWindow w(doc);
  ASSERT_TRUE(w.HasVendorRecipe());
  EXPECT_TRUE(w.FollowsVendor());
  ASSERT_TRUE(w.SetRecipeSource(processing::RecipeSource::kProgram).ok());
  EXPECT_FALSE(w.FollowsVendor());
  EXPECT_EQ(w.Extension(model::F2), 1);
  EXPECT_EQ(doc.spectrum.RR.stride, w.Columns());  // the planes back at the size as read
  const auto n = static_cast<double>(w.preview().specRe.size());
  // About 10 ppm at the high end and -1 ppm at the low end of the proton window.
  EXPECT_NEAR(w.PpmOf(n - 1), 10.0, 1.0);
  EXPECT_NEAR(w.PpmOf(0), -0.5, 1.0);
  ASSERT_TRUE(w.SetRecipeSource(processing::RecipeSource::kVendorWhenPresent).ok());
  EXPECT_TRUE(w.FollowsVendor());
  EXPECT_GT(w.Extension(model::F1), 1);  // the stored recipe zero-fills F1

  // The F1 view shows a column's strongest carbon where the transformed spectrum has signal, not
  // at its mirror image about the carrier.
  ASSERT_TRUE(w.SetRecipeSource(processing::RecipeSource::kProgram).ok());
  w.StepColumn(70);
  w.ShowF1();
  const FtPreview& p = w.preview();
  std::size_t top = 0;
  for (std::size_t i = 0; i < p.specRe.size(); ++i)
    if (std::hypot(p.specRe[i], p.specIm[i]) > std::hypot(p.specRe[top], p.specIm[top])) top = i;
  const double shown = w.PpmOf(static_cast<double>(top)), mirror = w.PpmOf(static_cast<double>(p.specRe.size() - top));
  test::TempFolder folder;
  platform::NoProgress progress;
  ASSERT_TRUE(w.Execute(progress, folder / "fid.wkf").outcome.ok());
  const model::Spectrum2D& s = doc.spectrum;
  const auto projection = [&](double ppm) {  // the largest |RR| of the F1 row nearest the shift
    std::int32_t row = 0;
    for (std::int32_t r = 0; r < s.axis[model::F1].Point; ++r)
      if (std::abs(s.ppmF1[r] - ppm) < std::abs(s.ppmF1[row] - ppm)) row = r;
    float largest = 0;
    for (std::int32_t c = 0; c < s.axis[model::F2].Point; ++c) largest = std::max(largest, std::abs(s.RR.at(c, row)));
    return largest;
  };
  EXPECT_GT(shown, 5.0);
  EXPECT_LT(shown, 80.0);
  EXPECT_GT(projection(shown), 4 * projection(mirror)) << shown << " ppm against " << mirror;
}

// A 1D FID read for its phase: a 2D file is refused, so is one longer than the working line, and
// Retry opens the file dialog again; the F2 view then shows the reference in place of the row.
TEST_F(FtWindowTest, PhaseDataComeFromA1DFidAndTakeThePlaceOfTheRow) {
  const std::string oneD = test::CorpusPath("bruker/cyclosporin_1h/1/fid").string();
  const std::string twoD = std::string(VELK_SOURCE_DIR) + "/examples/cosy/ser";
  test::ScriptedPrompt prompt;
  EXPECT_FALSE(ReadPhaseReference(twoD, prompt, 1 << 20));
  const auto whole = ReadPhaseReference(oneD, prompt, 1 << 20);
  ASSERT_TRUE(whole);
  const auto points = static_cast<std::int32_t>(whole->re.size());
  EXPECT_FALSE(ReadPhaseReference(oneD, prompt, points - 1));

  // The proton FID is longer than the COSY's rows: after the 2D file, it is refused too.
  FtWindow w(doc);
  ASSERT_LT(w.WorkingLength(), points);
  prompt.files = {twoD, oneD};
  prompt.answers = {platform::Answer::Retry, platform::Answer::Cancel};
  prompt.shown.clear();
  EXPECT_FALSE(AskPhaseReference(prompt, model::FormatOf(doc.words.dataTypeCode), w.WorkingLength()));
  ASSERT_EQ(prompt.shown.size(), 4u);  // file dialog, refusal, file dialog, refusal
  EXPECT_EQ(prompt.shown[1].text, NotPhaseData().text);
  EXPECT_EQ(prompt.shown[3].buttons, platform::Buttons::RetryCancel);
  EXPECT_EQ(PhaseReferenceFilters(model::kAlice).front().label, "Alice Type(*.als)");
  EXPECT_EQ(PhaseReferenceFilters(model::kBruker).front().label, "All File");

  PhaseReference part = *whole;
  part.re.resize(static_cast<std::size_t>(w.Columns() / 2));
  part.im.resize(part.re.size());
  w.ShowF1();
  w.SetYSpan(3);
  w.SetPhaseReference(part);
  EXPECT_EQ(w.view(), model::F2);
  EXPECT_FLOAT_EQ(w.ySpan(), 1.0f);
  const FtPreview& p = w.preview();
  ASSERT_EQ(p.fidRe.size(), 2 * part.re.size());
  for (std::size_t i : {std::size_t{0}, part.re.size() - 1}) EXPECT_EQ(p.fidRe[i], part.re[i]);
  EXPECT_EQ(p.fidRe[part.re.size()], 0.0f);  // zero past the reference
}

// The picture of the matrix: each cell takes the largest modulus of its points, on a square-root
// scale; rows and points past the data are not drawn.
TEST(FidImage, CellsKeepTheLargestModulusOfTheirPoints) {
  model::Spectrum2D s;
  s.RR = test::MakePlane(8, 4);
  s.IR = test::MakePlane(8, 4);
  s.RR.at(5, 2) = 3;
  s.IR.at(5, 2) = 4;   // modulus 5: the brightest cell
  s.RR.at(0, 0) = 1.25f;  // a quarter of it: half the level on the square-root scale
  s.RR.at(7, 3) = 100;    // past the data points: left out
  const FidImage image = MakeFidImage(s, 6, 3, 3, 10);
  ASSERT_EQ(image.width, 3);
  ASSERT_EQ(image.height, 3);  // no more cells than rows
  EXPECT_EQ(image.level[2 * 3 + 2], 255);  // point 5 of row 2 lies in cell (2, 2)
  EXPECT_EQ(image.level[0], 128);
  EXPECT_EQ(image.level[1 * 3 + 1], 0);
  EXPECT_TRUE(MakeFidImage(s, 0, 3, 3, 3).level.empty());
}

// The prediction and correction values come from the 2D settings (F1 under the keys ending in 1)
// and go back to them; a value the file does not hold leaves the program's own.
TEST(FtSettings, PredictionAndCorrectionValuesRoundTripThroughThe2DSettings) {
  core::Settings kept = core::DefaultSettings(core::Schema2D());
  core::SetNumber(kept, "LP ORDER 1", 24);
  core::SetNumber(kept, "LP POINT 2", 0);
  core::SetNumber(kept, "LP EX CHECK 2", 1);
  core::Set(kept, "FUNCTION GAUSS", "my Gauss");
  processing::SequenceSettings settings;
  processing::WindowExpressions words = processing::DefaultWindowExpressions();
  LoadFtSettings(kept, settings, words);
  EXPECT_EQ(settings.axis[model::F1].lp.Order, 24);
  EXPECT_EQ(settings.axis[model::F2].lp.Order, 40);
  EXPECT_EQ(settings.axis[model::F2].lp.Points, processing::LpSetting{}.Points);
  EXPECT_EQ(settings.axis[model::F2].lp.StabilityCheck, 1);
  EXPECT_FLOAT_EQ(settings.t1Factor, 0.5f);
  EXPECT_EQ(words.initial[processing::kGaussian], "my Gauss");
  EXPECT_EQ(words.current[processing::kGaussian], "my Gauss");
  // A wording the file was never given ("0" in a fresh file) keeps the program's own.
  EXPECT_EQ(words.current[processing::kExponential], processing::DefaultWindowExpressions().current[processing::kExponential]);

  settings.axis[model::F2].lp.BackPoints = 7;
  settings.t1Noise = true;
  StoreFtSettings(settings, kept);
  EXPECT_EQ(core::Number(kept, "LP BACKWARD 2"), 7);
  EXPECT_EQ(core::Number(kept, "LP ORDER 1"), 24);
  EXPECT_EQ(core::Number(kept, "FIST POINT COR 1"), 1);
}

}  // namespace
}  // namespace velk::document
