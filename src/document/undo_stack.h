#pragma once
// The document's undo: a stack of records, newest on top, one level popped per command and no
// redo. Small things (peak lists, parameter texts, references) live in the record; whole data
// sets live in snapshot files in the work folder. The stack also keeps the clean mark: the depth
// at which the data equal what was last saved.
#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "display/axes.h"
#include "model/peak_table.h"
#include "operations/reference.h"

namespace velk::document {

struct UndoRecord {
  std::int16_t Kind = 0;
  std::filesystem::path FileName;      // the data snapshot, for the file kinds
  std::vector<std::string> Parameters;  // up to 25 parameter texts, for "Change Parameter"
  model::PeakTable2D Peaks;             // for the peak kinds
  operations::ReferenceState Axes;      // the axes' reference, for the 2D reference kind
  std::array<double, 4> References{};   // a trace's scale, for the 1D reference kinds
  display::GridSetting Grid;            // the grid before "Set up Grid"
  std::int16_t PreviewPending = 0;      // the main window's state at the push, restored
};

struct UndoStack {
  std::vector<UndoRecord> records;  // the newest last
  // The depth that matches the saved file; none when no depth can (a change that cannot be
  // undone, or the saved state was undone past and replaced).
  std::optional<std::size_t> cleanDepth = 0;
};

// The caption of a kind ("UnDo(Symmetrize)"); the plain "UnDo" for an unknown kind.
std::string CaptionOf(int kind);
// The menu entry: the caption of the top record, or "UnDo" and disabled for an empty stack.
std::string UndoCaption(const UndoStack& stack);
bool CanUndo(const UndoStack& stack);

void PushUndo(UndoStack& stack, UndoRecord record);
const UndoRecord* TopUndo(const UndoStack& stack);
void PopUndo(UndoStack& stack);
// Removes all records and deletes their snapshot files; at a new data set.
void ClearUndo(UndoStack& stack);

bool AtCleanMark(const UndoStack& stack);
// After a save: the present depth matches the file.
void SetCleanMark(UndoStack& stack);
// After a change that the stack does not hold (a transform, a fix that could not be recorded).
void LoseCleanMark(UndoStack& stack);

}  // namespace velk::document
