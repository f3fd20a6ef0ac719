// The grid under the document's undo, interleaved with a data change: each UnDo takes back
// exactly one step, and the grid never makes saved data look unsaved.
#include <gtest/gtest.h>

#include "document/grid_command.h"
#include "document/peak_commands.h"
#include "document/undo_command.h"
#include "operations/peak_synthetic.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

using namespace document;

display::GridSetting Manual(double f2, double f1) {
  display::GridSetting g;
  g.shown = true;
  g.automatic = false;
  g.stepF2 = f2;
  g.stepF1 = f1;
  return g;
}

bool SameGrid(const display::GridSetting& a, const display::GridSetting& b) {
  return a.shown == b.shown && a.automatic == b.automatic && a.stepF2 == b.stepF2 && a.stepF1 == b.stepF1;
}

TEST(GridUndo, StepsBackThroughGridAndPeakChangesAndKeepsTheSavedState) {
  TempFolder folder;
  ScriptedPrompt prompt;
  SnapshotFiles files{folder.path, "0001"};
  operations::PhaseMemory phases;
  Document d;
  d.spectrum = PeakSpectrum(64, 64, {{20.3, 17.8, 1.0, 5.0}, {45.4, 40.2, 0.8, 6.0}});
  const display::GridSetting first = d.grid;
  EXPECT_EQ(UndoCaption(d.undo), "UnDo");

  SetGrid(d, Manual(0.5, 2.0));
  EXPECT_EQ(UndoCaption(d.undo), "UnDo(Change Grid)");
  EXPECT_FALSE(Modified(d));  // only the look changed
  SetGrid(d, Manual(0.5, 2.0));  // the same grid again: nothing to undo
  EXPECT_EQ(d.undo.records.size(), 1u);

  ASSERT_EQ(PickAllArea(d, 0.1f, operations::kVirtualPeakTop), 2);
  EXPECT_TRUE(Modified(d));
  SetGrid(d, Manual(1.0, 5.0));
  EXPECT_TRUE(Modified(d));

  EXPECT_EQ(UndoLast(d, files, phases, prompt), Undone::Grid);
  EXPECT_TRUE(SameGrid(d.grid, Manual(0.5, 2.0)));
  EXPECT_EQ(d.spectrum.peaks.peaks.size(), 2u);
  EXPECT_EQ(UndoLast(d, files, phases, prompt), Undone::Peaks);
  EXPECT_TRUE(d.spectrum.peaks.peaks.empty());
  EXPECT_FALSE(Modified(d));  // back at the data as saved, under a grid record
  SetCleanMark(d.undo);       // saved here, with the grid at 0.5/2.0
  EXPECT_EQ(UndoLast(d, files, phases, prompt), Undone::Grid);
  EXPECT_TRUE(SameGrid(d.grid, first));
  EXPECT_FALSE(Modified(d));
  EXPECT_EQ(UndoLast(d, files, phases, prompt), Undone::Nothing);
  EXPECT_FALSE(CanUndo(d.undo));
}

TEST(GridUndo, ANewDataSetKeepsTheWayOfLookingAndStartsItsOwnViewAndUndo) {
  Document d;
  d.contour.Steps = 32;
  SetGrid(d, Manual(0.25, 4.0));
  d.view.ViewF2Start = 9.5f;
  Document fresh;
  fresh.spectrum = PeakSpectrum(32, 32, {{10, 10, 1.0, 3.0}});
  Replace(d, std::move(fresh));
  EXPECT_EQ(d.contour.Steps, 32);
  EXPECT_TRUE(SameGrid(d.grid, Manual(0.25, 4.0)));
  EXPECT_EQ(d.view.ViewF2Start, 0.0f);
  EXPECT_FALSE(CanUndo(d.undo));
  EXPECT_EQ(d.spectrum.axis[model::F2].Point, 32);
}

}  // namespace
}  // namespace velk::test
