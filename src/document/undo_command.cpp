#include "document/undo_command.h"

#include "document/grid_command.h"
#include "document/inadequate_commands.h"
#include "document/peak_commands.h"

namespace velk::document {

Undone UndoLast(Document& d, const SnapshotFiles& files, operations::PhaseMemory& phases, platform::Prompt& prompt) {
  const UndoRecord* top = TopUndo(d.undo);
  if (!top || !CanUndo(d.undo)) return Undone::Nothing;
  if (top->Kind == kUndoChangeGrid) return UndoGridChange(d) ? Undone::Grid : Undone::Nothing;
  if (IsPeakUndoKind(top->Kind)) return UndoPeakEdit(d) ? Undone::Peaks : Undone::Nothing;
  if (top->Kind == kUndoInadequateExtension) return UndoInadequateExtension(d) ? Undone::Data : Undone::Nothing;
  return UndoToolRecord(d, files, phases, prompt) ? Undone::Data : Undone::Nothing;
}

}  // namespace velk::document
