// The tools as a person drives them, without a window: entry, preview, the resolver's questions
// in the program's words, fix and cancel, and what each leaves for the undo stack.
#include <gtest/gtest.h>

#include "model/data_type.h"
#include "operations/baseline_tool.h"
#include "operations/messages.h"
#include "operations/phase_tool.h"
#include "operations/reference_tool.h"
#include "operations/symmetrize_tool.h"
#include "support/scripted_prompt.h"
#include "support/synthetic_2d.h"

namespace velk::test {
namespace {

using model::F1;
using model::F2;
using platform::Answer;

// A host whose document side only records what it was asked to do.
struct Recorded {
  std::unique_ptr<model::Spectrum2D> spectrum = MakeSynthetic2D(128, 128, {{3, 3, 1, 0.1}, {6, 3, -0.5, 0.1}}, 0.01);
  display::DisplayState view;
  ScriptedPrompt prompt;
  int snapshots = 0, unsaved = 0, fixed = 0;
  std::vector<operations::UndoKind> pushed;
  std::vector<operations::ReferenceState> references;
  model::Spectrum1D traceF2, traceF1;
  operations::ToolHost host{*spectrum, view, prompt, traceF2, traceF1, model::VPH_HOMO, 2,
                            [this] { ++snapshots; },
                            [this](operations::UndoKind k) { pushed.push_back(k); },
                            [this](const operations::ReferenceState& v) { references.push_back(v); },
                            [this](int n) { references.resize(references.size() - n); },
                            [this](operations::UndoKind k, const std::array<double, 4>&) { pushed.push_back(k); },
                            [this] { ++unsaved; },
                            [this] { ++fixed; }};
  operations::ActiveTool active;
  operations::PhaseMemory memory{10, 20, 0, 0, 64, 64};

  std::string LastText() const { return prompt.shown.empty() ? "" : prompt.shown.back().text; }
};

TEST(Tools, PhasePanelFromEntryToFixAndCancel) {
  Recorded r;
  const std::vector<float> original = r.spectrum->RR.data;
  ASSERT_TRUE(operations::BeginPhaseCorrection(r.host, r.active, r.memory, F1));
  EXPECT_EQ(r.view.ToolMode, display::kPhaseF1);
  EXPECT_EQ(r.snapshots, 1);
  EXPECT_FALSE(operations::BeginPhaseCorrection(r.host, r.active, r.memory, F1));  // already open
  auto* phase = static_cast<operations::PhaseTool*>(r.active.tool.get());
  EXPECT_EQ(phase->Values().Phase0, 10.0f);  // opens with the stored values
  EXPECT_EQ(phase->TraceReal().size(), 128u);
  EXPECT_FALSE(phase->FixEnabled());
  phase->Fix();  // refused before a preview
  EXPECT_EQ(r.view.ToolMode, display::kPhaseF1);
  // Pending values: another command simply cancels the tool and the data are as they were.
  phase->Preview();
  phase->StepPhase0(13);
  EXPECT_TRUE(phase->PreviewPending());
  EXPECT_FALSE(r.active.Resolve(r.view));
  EXPECT_TRUE(r.prompt.shown.empty());
  EXPECT_EQ(r.spectrum->RR.data, original);
  EXPECT_EQ(r.view.ToolMode, display::kNoTool);

  // F2 after a preview: the question, Cancel stays, No cancels.
  ASSERT_TRUE(operations::BeginPhaseCorrection(r.host, r.active, r.memory, F2));
  phase = static_cast<operations::PhaseTool*>(r.active.tool.get());
  phase->SetPhase0(90);
  phase->Preview();
  EXPECT_TRUE(phase->Auto());  // proposed in the panel, the data stay until the next preview
  EXPECT_TRUE(phase->PreviewPending());
  EXPECT_FALSE(phase->FixEnabled());
  phase->Preview();
  r.prompt.answers = {Answer::Cancel, Answer::No};
  EXPECT_TRUE(r.active.Resolve(r.view));
  EXPECT_EQ(r.LastText(), "Execute F2 Phase Correction?");
  EXPECT_EQ(r.view.ToolMode, display::kPhaseF2);
  EXPECT_FALSE(r.active.Resolve(r.view));
  EXPECT_EQ(r.spectrum->RR.data, original);
  EXPECT_TRUE(r.pushed.empty());

  // F1 fixed through the resolver's Yes: one record of kind 7, the stored F1 phases cleared.
  ASSERT_TRUE(operations::BeginPhaseCorrection(r.host, r.active, r.memory, F1));
  r.active.tool->Preview();
  r.prompt.answers = {Answer::Yes};
  EXPECT_FALSE(r.active.Resolve(r.view));
  EXPECT_EQ(r.LastText(), "Fix F1 Phase Correction?");
  ASSERT_EQ(r.pushed, std::vector{operations::kUndoF1Phase});
  EXPECT_EQ(r.memory.StoredPhaseF1_0, 0.0f);
  EXPECT_EQ(r.memory.StoredPhaseF1_1, 0.0f);
  EXPECT_EQ(r.unsaved, 1);
  EXPECT_NE(r.spectrum->RR.data, original);

  // After a baseline correction the entry warns; anything but Yes stops it.
  r.spectrum->Modified = 1;
  r.prompt.answers = {Answer::No};
  EXPECT_FALSE(operations::BeginPhaseCorrection(r.host, r.active, r.memory, F2));
  EXPECT_EQ(r.LastText(), "Since BaseLine Correction or Symmetrization has been executed,\n"
                          "this Phase Correction will not give a correct result.\nContinue?");
  EXPECT_TRUE(r.prompt.shown.back().beep);
}

TEST(Tools, BaselinePointsTheirUndoAndTheResolver) {
  Recorded r;
  const std::vector<float> original = r.spectrum->RR.data;
  ASSERT_TRUE(operations::BeginBaseCorrection(r.host, r.active, F2, 30));
  auto* base = static_cast<operations::BaselineTool*>(r.active.tool.get());
  EXPECT_EQ(base->AvePoint(), 20);
  EXPECT_EQ(base->SetAvePointText("0"), "20");
  EXPECT_EQ(base->SetAvePointText("3"), "3");
  EXPECT_EQ(base->PointUndoKind(), 0);
  EXPECT_FALSE(base->DeletePoint(5));
  EXPECT_TRUE(base->AddPoint(200));  // clamped to the last point
  EXPECT_TRUE(base->AddPoint(10));
  EXPECT_EQ(base->Points().front().position, 10);
  EXPECT_EQ(base->Points().back().position, 127);
  EXPECT_TRUE(base->DeletePoint(12));
  EXPECT_EQ(base->PointUndoKind(), operations::kUndoDeletePoint);
  EXPECT_TRUE(base->DeleteAllPoints());
  EXPECT_EQ(base->PointUndoKind(), operations::kUndoDeleteAllPoints);
  EXPECT_TRUE(base->UndoPoint());
  EXPECT_TRUE(base->UndoPoint());
  EXPECT_EQ(base->Points().size(), 2u);
  EXPECT_EQ(base->PointUndoKind(), operations::kUndoAddPoint);

  // Points set but no preview: "Fix" is not possible, and "NEXT" is needed to leave.
  r.prompt.answers = {Answer::Cancel, Answer::Ok};
  EXPECT_TRUE(r.active.Resolve(r.view));
  EXPECT_EQ(r.LastText(), "Base Line Correction can not be Fixed\nAnyway, Go Next?");
  EXPECT_FALSE(r.active.Resolve(r.view));
  EXPECT_EQ(r.spectrum->RR.data, original);

  ASSERT_TRUE(operations::BeginBaseCorrection(r.host, r.active, F2, 3));
  base = static_cast<operations::BaselineTool*>(r.active.tool.get());
  base->AddPoint(100);
  base->Preview();
  const std::vector<float> corrected = r.spectrum->RR.data;
  EXPECT_NE(corrected, original);
  r.prompt.answers = {Answer::Yes};
  EXPECT_FALSE(r.active.Resolve(r.view));
  EXPECT_EQ(r.LastText(), "Execute F2 Base Line Correction?");
  EXPECT_EQ(r.pushed, std::vector{operations::kUndoF2Base});
  EXPECT_EQ(r.spectrum->Modified, 1);
  EXPECT_EQ(r.spectrum->RR.data, corrected);
  EXPECT_EQ(operations::SaveRecommendation(*r.spectrum),
            "recommend [Save Real only], because this data was Symmetrized or BaseLine corrected.");
}

TEST(Tools, SymmetrizationAndReferenceCross) {
  Recorded r;
  ASSERT_TRUE(operations::BeginSymmetrize(r.host, r.active));
  auto* sym = static_cast<operations::SymmetrizeTool*>(r.active.tool.get());
  sym->ShiftStep(1, false);
  EXPECT_EQ(sym->SymShift(), -0.25f);
  r.prompt.answers = {Answer::Cancel};
  EXPECT_TRUE(r.active.Resolve(r.view));
  EXPECT_EQ(r.LastText(), "Symmetrization can not be Fixed\nAnyway, Go Next?");
  sym->Preview();
  r.prompt.answers = {Answer::Yes};
  EXPECT_FALSE(r.active.Resolve(r.view));
  EXPECT_EQ(r.LastText(), "Execute Symmetrization?");
  EXPECT_EQ(r.pushed, std::vector{operations::kUndoSymmetrize});
  EXPECT_EQ(r.spectrum->Modified, 1);

  // Each press leaves one record of the axes before it: two clicks, an arrow held through two
  // repeats; a typed shift waits for "Fix". Cancel puts everything back and takes the records.
  const operations::ReferenceState entry = operations::SaveReferenceState(*r.spectrum);
  const float view = r.view.ViewF2Start = 8.0f;
  ASSERT_TRUE(operations::BeginReference(r.host, r.active));
  auto* ref = static_cast<operations::ReferenceTool*>(r.active.tool.get());
  ref->PlaceCross(40, 300);
  ref->PlaceCross(40, 300);  // the same point again changes nothing and records nothing
  EXPECT_TRUE(ref->SetShift(F2, "4.5"));
  EXPECT_FALSE(ref->SetShift(F1, "abc"));
  const operations::ReferenceState typed = operations::SaveReferenceState(*r.spectrum);
  ref->MoveCross(1, 0);
  ref->MoveCross(1, 0, true);
  ref->MoveCross(1, 0, true);
  EXPECT_EQ(r.spectrum->ppmF2[43], 4.5f);
  EXPECT_EQ(ref->CrossF1(), 127);
  EXPECT_EQ(ref->ShiftText(F2), "4.5");
  ASSERT_EQ(r.references.size(), 2u);
  EXPECT_EQ(r.references[0], entry);
  EXPECT_EQ(r.references[1], typed);  // the typed shift goes back with the arrow's press
  r.active.tool->Cancel();
  EXPECT_EQ(operations::SaveReferenceState(*r.spectrum), entry);
  EXPECT_EQ(r.view.ViewF2Start, view);
  EXPECT_TRUE(r.references.empty());
  // A click, then a typed shift fixed by the resolver's Yes: the fix records the click's result.
  ASSERT_TRUE(operations::BeginReference(r.host, r.active));
  ref = static_cast<operations::ReferenceTool*>(r.active.tool.get());
  ref->PlaceCross(10, 20);
  const operations::ReferenceState clicked = operations::SaveReferenceState(*r.spectrum);
  ref->SetShift(F1, "-2");
  r.prompt.answers = {Answer::Yes};
  EXPECT_FALSE(r.active.Resolve(r.view));
  EXPECT_EQ(r.LastText(), "Execute Reference Setting?");
  ASSERT_EQ(r.references.size(), 2u);
  EXPECT_EQ(r.references[0], entry);
  EXPECT_EQ(r.references[1], clicked);
  // "Set Center(F2)" on the panel, with a 1D record that can serve: the cross follows to the
  // centre, and the press is recorded.
  ASSERT_TRUE(operations::BeginReference(r.host, r.active));
  ref = static_cast<operations::ReferenceTool*>(r.active.tool.get());
  EXPECT_FALSE(ref->SetCenter(F2));
  r.traceF2.absFreqCenter = 500.001;
  r.traceF2.absFreq0ppm = 500.0;
  r.traceF2.params.POINT = 4;
  r.traceF2.re.assign(4, 0.0f);
  EXPECT_TRUE(ref->SetCenter(F2));
  EXPECT_EQ(ref->CrossF2(), 64);
  EXPECT_EQ(r.references.size(), 3u);
}

TEST(Tools, SymmetryLineIsTakenOnlyNearItOrItsHandles) {
  // A steep line from (100, 400) to (300, 0): handles at both ends and at (200, 200).
  const operations::ScreenLine line{100, 400, 300, 0};
  EXPECT_TRUE(operations::GrabsSymmetryLine(line, 200, 200));
  EXPECT_TRUE(operations::GrabsSymmetryLine(line, 204, 204));  // beside the middle handle, off the line
  EXPECT_TRUE(operations::GrabsSymmetryLine(line, 96, 402));   // just beyond an end, on its handle
  EXPECT_TRUE(operations::GrabsSymmetryLine(line, 152, 300));  // on the line between handles, 2 px aside
  EXPECT_FALSE(operations::GrabsSymmetryLine(line, 156, 300));  // 5 px aside, away from any handle
  EXPECT_FALSE(operations::GrabsSymmetryLine(line, 320, -40));  // on the line's extension, past its end
  EXPECT_FALSE(operations::GrabsSymmetryLine(line, 200, 280));  // far below the middle
  EXPECT_FALSE(operations::GrabsSymmetryLine({50, 50, 50, 50}, 60, 60));
  EXPECT_TRUE(operations::GrabsSymmetryLine({50, 50, 50, 50}, 52, 52));
}

}  // namespace
}  // namespace velk::test
