#pragma once
// The "UnDo" command of the main window: the top record of the document's stack, whatever its
// kind, goes back, and the caller learns what to draw again.
#include "document/tool_undo.h"

namespace velk::document {

enum class Undone {
  Nothing,  // an empty stack, or a record whose data could not be brought back
  Grid,     // the lattice over the contour: compose again
  Peaks,    // the peak list: the marks anew
  Scale,    // a reference of the spectrum or of a trace beside it: the same contour on new axes
  Data,     // planes or axes: projections and contour anew
};

// Takes back the top record of the document's stack; an undone phase clears the document's stored phases.
Undone UndoLast(Document& d, const SnapshotFiles& files, platform::Prompt& prompt);

}  // namespace velk::document
