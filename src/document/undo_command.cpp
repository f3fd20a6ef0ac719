#include "document/undo_command.h"

#include "document/grid_command.h"
#include "document/inadequate_commands.h"
#include "document/peak_commands.h"
#include "operations/undo_kinds.h"

namespace velk::document {

Undone UndoLast(Document& d, const SnapshotFiles& files, platform::Prompt& prompt) {
  const UndoRecord* top = TopUndo(d.undo);
  if (!top || !CanUndo(d.undo)) return Undone::Nothing;
  if (top->Kind == kUndoChangeGrid) return UndoGridChange(d) ? Undone::Grid : Undone::Nothing;
  if (IsPeakUndoKind(top->Kind)) return UndoPeakEdit(d) ? Undone::Peaks : Undone::Nothing;
  if (top->Kind == kUndoInadequateExtension) return UndoInadequateExtension(d) ? Undone::Data : Undone::Nothing;
  const bool reference = top->Kind == operations::kUndoReference2D || top->Kind == operations::kUndoReference1DF1 ||
                         top->Kind == operations::kUndoReference1DF2;
  if (!UndoToolRecord(d, files, d.phases, prompt)) return Undone::Nothing;
  return reference ? Undone::Scale : Undone::Data;
}

}  // namespace velk::document
