// The tools' undo on the document's stack: each fix leaves its own numbered snapshot file, and
// each undo consumes one and brings the data back as they were before that fix.
#include <gtest/gtest.h>

#include <cmath>

#include "document/tool_undo.h"
#include "model/data_type.h"
#include "model/frequency_table.h"
#include "model/trace.h"
#include "operations/trace_reference.h"
#include "operations/baseline_tool.h"
#include "operations/reference_tool.h"
#include "support/scripted_prompt.h"
#include "support/synthetic_2d.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

using model::F1;
using model::F2;

std::vector<float> Data(const model::Plane& p, std::int32_t n2, std::int32_t n1) {
  std::vector<float> v;
  for (std::int32_t r = 0; r < n1; ++r) v.insert(v.end(), p.row(r).begin(), p.row(r).begin() + n2);
  return v;
}

struct Fixture {
  TempFolder folder;
  ScriptedPrompt prompt;
  document::Document d;
  document::SnapshotFiles files{folder.path, "0003"};
  operations::PhaseMemory phases{7, 8, 0, 0, 64, 64};
  operations::ActiveTool active;

  Fixture() {
    d.spectrum = *MakeSynthetic2D(128, 128, {{3, 3, 1, 0.1}, {6, 7, -0.5, 0.1}}, 0.01);
    d.words = {model::MakeTypeCode(2, true, model::kVer4), model::VPH_HOMO, 0};
  }
  std::vector<float> RR() const { return Data(d.spectrum.RR, 128, 128); }
};

TEST(ToolUndo, TwoFixesTwoUndosEachWithItsOwnFile) {
  Fixture f;
  operations::ToolHost host = document::MakeToolHost(f.d, f.files, f.prompt, 2);
  const std::vector<float> original = f.RR();

  ASSERT_TRUE(operations::BeginPhaseCorrection(host, f.active, f.phases, F2));
  ASSERT_TRUE(std::filesystem::exists(f.files.Live()));
  auto* phase = static_cast<operations::PhaseTool*>(f.active.tool.get());
  phase->SetPhase0(90);
  phase->Preview();
  phase->Fix();
  const std::vector<float> phased = f.RR();
  ASSERT_NE(phased, original);
  ASSERT_TRUE(operations::BeginBaseCorrection(host, f.active, F1, 2));
  auto* base = static_cast<operations::BaselineTool*>(f.active.tool.get());
  base->AddPoint(10);
  base->Preview();
  base->Fix();
  ASSERT_NE(f.RR(), phased);
  EXPECT_TRUE(std::filesystem::exists(f.folder / "UnDo2Ddata.0003000"));
  EXPECT_TRUE(std::filesystem::exists(f.folder / "UnDo2Ddata.0003001"));
  EXPECT_EQ(document::UndoCaption(f.d.undo), "UnDo(F1 Base Line Correction)");
  EXPECT_TRUE(document::Modified(f.d));

  ASSERT_TRUE(document::UndoToolRecord(f.d, f.files, f.phases, f.prompt));
  EXPECT_EQ(f.RR(), phased);
  EXPECT_FALSE(std::filesystem::exists(f.folder / "UnDo2Ddata.0003001"));
  EXPECT_EQ(document::UndoCaption(f.d.undo), "UnDo(F2 Phase Correction)");
  EXPECT_EQ(f.phases.StoredPhaseF1_0, 7.0f);  // the F1 pair is left as it is
  ASSERT_TRUE(document::UndoToolRecord(f.d, f.files, f.phases, f.prompt));
  EXPECT_EQ(f.RR(), original);
  EXPECT_FALSE(std::filesystem::exists(f.folder / "UnDo2Ddata.0003000"));
  EXPECT_EQ(document::UndoCaption(f.d.undo), "UnDo");
  EXPECT_FALSE(document::Modified(f.d));
}

TEST(ToolUndo, MissingFileEndsSilentlyAndReferenceComesBack) {
  Fixture f;
  operations::ToolHost host = document::MakeToolHost(f.d, f.files, f.prompt);
  const operations::ReferenceValues before = operations::CurrentReference(f.d.spectrum);
  ASSERT_TRUE(operations::BeginReference(host, f.active));
  static_cast<operations::ReferenceTool*>(f.active.tool.get())->SetShift(F2, "4.25");
  f.active.tool->Fix();
  EXPECT_EQ(document::UndoCaption(f.d.undo), "UnDo(2D Refernec Setting)");
  ASSERT_TRUE(document::UndoToolRecord(f.d, f.files, f.phases, f.prompt));
  EXPECT_EQ(operations::CurrentReference(f.d.spectrum)[F2].Reference, before[F2].Reference);
  EXPECT_EQ(f.d.undo.records.size(), 0u);

  ASSERT_TRUE(document::WriteLiveSnapshot(f.d, f.files));
  ASSERT_TRUE(document::PushSnapshotUndo(f.d, f.files, operations::kUndoSymmetrize, false));
  std::filesystem::remove(f.folder / "UnDo2Ddata.0003000");
  const std::vector<float> now = f.RR();
  EXPECT_FALSE(document::UndoToolRecord(f.d, f.files, f.phases, f.prompt));
  EXPECT_EQ(f.RR(), now);
  EXPECT_EQ(document::UndoCaption(f.d.undo), "UnDo(Symmetrize)");
  EXPECT_TRUE(f.prompt.shown.empty());
}

// Each press of the reference cross is a step of its own, and the instrument form's step takes
// the axes' 0 ppm frequencies with it: two undos bring every field of both axes back to the bit,
// even a first position that the reference point alone would not give again.
TEST(ToolUndo, ReferencePressesAndInstrumentComeBackExactly) {
  Fixture f;
  model::Spectrum2D& s = f.d.spectrum;
  f.d.words.pulseModeClass = model::VPH_HETERO;
  s.extras[F1].absFreqCenter = 125.7;
  for (model::Axis a : {F1, F2}) {
    s.extras[a].absFreq0ppm = s.extras[a].absFreqCenter * (1 - 4e-6);
    s.extras[a].ppmFirst = std::nextafter(s.extras[a].ppmFirst, 1e9);
  }
  model::RebuildPpmTables(s);
  const model::Spectrum2D before = s;
  const model::InstrumentFrequencyTable table{{{"test 1H", "499.9975", "", "", ""}},
                                              {{"test 13C", "125.6937", "", "", ""}}};
  operations::ToolHost host = document::MakeToolHost(f.d, f.files, f.prompt);
  ASSERT_TRUE(operations::BeginReference(host, f.active));
  auto* tool = static_cast<operations::ReferenceTool*>(f.active.tool.get());
  tool->PlaceCross(30, 40);
  const model::Spectrum2D clicked = s;
  ASSERT_TRUE(tool->SetByInstrument(model::ZeroPpmFrequency(table, "test 1H"),
                                    model::ZeroPpmFrequency(table, "test 13C")).ok());
  EXPECT_EQ(s.extras[F1].absFreq0ppm, 125.6937);
  EXPECT_NEAR(s.ppmF2[64], 5.0, 1e-3);  // 500 MHz on 0 ppm at 499.9975 MHz
  EXPECT_NEAR(s.ppmF1[64], (125.7 - 125.6937) / 125.6937 * 1e6, 1e-2);
  f.active.tool->Fix();
  ASSERT_EQ(f.d.undo.records.size(), 2u);
  EXPECT_EQ(document::UndoCaption(f.d.undo), "UnDo(2D Refernec Setting)");

  const auto same = [&](const model::Spectrum2D& want) {
    for (model::Axis a : {F1, F2}) {
      EXPECT_EQ(s.axis[a].Reference, want.axis[a].Reference);
      EXPECT_EQ(s.axis[a].RefPoint, want.axis[a].RefPoint);
      EXPECT_EQ(s.axis[a].Resolution, want.axis[a].Resolution);
      EXPECT_EQ(s.axis[a].Point, want.axis[a].Point);
      EXPECT_EQ(s.axis[a].Frequency, want.axis[a].Frequency);
      EXPECT_EQ(s.extras[a].absFreq0ppm, want.extras[a].absFreq0ppm);
      EXPECT_EQ(s.extras[a].ppmFirst, want.extras[a].ppmFirst);
      EXPECT_EQ(s.extras[a].ppmStep, want.extras[a].ppmStep);
    }
    EXPECT_EQ(s.ppmF2, want.ppmF2);
    EXPECT_EQ(s.ppmF1, want.ppmF1);
  };
  ASSERT_TRUE(document::UndoToolRecord(f.d, f.files, f.phases, f.prompt));
  same(clicked);
  ASSERT_TRUE(document::UndoToolRecord(f.d, f.files, f.phases, f.prompt));
  same(before);
  EXPECT_EQ(document::UndoCaption(f.d.undo), "UnDo");
}

// The traces beside the contour keep their own scale: a 1D reference moves the trace's positions
// only, and its undo (kinds 51, 52) brings back the trace's scale and the window's PreviewPending.
TEST(ToolUndo, TraceReferenceComesBackWithThePendingState) {
  Fixture f;
  ASSERT_EQ(model::TraceAsSpectrum1D(f.d.spectrum, F2, 64, f.d.companionF2), 0);
  const std::vector<double> before = f.d.companionF2.axisPpm;
  const auto scale2D = operations::CurrentReference(f.d.spectrum);
  display::DisplayState& view = f.d.view;
  operations::ToolHost host = document::MakeToolHost(f.d, f.files, f.prompt, 1);
  EXPECT_FALSE(operations::BeginTraceReference(host, f.active, F1));  // no F1 trace
  ASSERT_TRUE(operations::BeginTraceReference(host, f.active, F2));
  EXPECT_EQ(view.ToolMode, display::kReference1DF2);
  auto* tool = static_cast<operations::TraceReferenceTool*>(f.active.tool.get());
  tool->Pick(100);
  ASSERT_TRUE(tool->SetShift("7.5"));
  EXPECT_DOUBLE_EQ(f.d.companionF2.axisPpm[100], 7.5);
  EXPECT_NEAR(f.d.companionF2.axisPpm[101] - f.d.companionF2.axisPpm[100], before[1] - before[0], 1e-9);
  view.PreviewPending = 1;  // as a panel left it
  f.prompt.answers = {platform::Answer::Yes};
  EXPECT_FALSE(f.active.Resolve(view));  // asked, and Yes fixes
  EXPECT_EQ(f.prompt.shown.back().text, "Execute 1D (F2) Reference Setting?");
  EXPECT_EQ(document::UndoCaption(f.d.undo), "UnDo(F2-1D Refernec Setting)");
  EXPECT_EQ(operations::CurrentReference(f.d.spectrum)[F2].Reference, scale2D[F2].Reference);
  view.PreviewPending = 0;
  ASSERT_TRUE(document::UndoToolRecord(f.d, f.files, f.phases, f.prompt));
  EXPECT_EQ(f.d.companionF2.axisPpm, before);
  EXPECT_EQ(view.PreviewPending, 1);
  EXPECT_EQ(document::UndoCaption(f.d.undo), "UnDo");
}

}  // namespace
}  // namespace velk::test
