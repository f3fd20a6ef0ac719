#pragma once
// The "UnDo" command of the main window: the top record of the document's stack, whatever its
// kind, goes back, and the caller learns what to draw again.
#include "document/tool_undo.h"

namespace velk::document {

enum class Undone {
  Nothing,  // an empty stack, or a record whose data could not be brought back
  Grid,     // the lattice over the contour: compose again
  Peaks,    // the peak list: the marks anew
  Data,     // planes, axes or reference: projections and contour anew
};

Undone UndoLast(Document& d, const SnapshotFiles& files, operations::PhaseMemory& phases, platform::Prompt& prompt);

}  // namespace velk::document
