#include "document/grid_command.h"

namespace velk::document {
namespace {

bool Same(const display::GridSetting& a, const display::GridSetting& b) {
  return a.shown == b.shown && a.automatic == b.automatic && a.stepF2 == b.stepF2 && a.stepF1 == b.stepF1 &&
         a.color == b.color && a.penWidth == b.penWidth;
}

}  // namespace

// A record that leaves the data alone carries the clean mark with it: data that matched their
// file still match it after the grid changed, and after that change was undone.
void SetGrid(Document& d, const display::GridSetting& grid) {
  if (Same(d.grid, grid)) return;
  const bool clean = AtCleanMark(d.undo);
  UndoRecord record;
  record.Kind = kUndoChangeGrid;
  record.Grid = d.grid;
  PushUndo(d.undo, std::move(record));
  if (clean) SetCleanMark(d.undo);
  d.grid = grid;
}

bool UndoGridChange(Document& d) {
  const UndoRecord* top = TopUndo(d.undo);
  if (!top || top->Kind != kUndoChangeGrid) return false;
  const bool clean = AtCleanMark(d.undo);
  d.grid = top->Grid;
  PopUndo(d.undo);
  if (clean) SetCleanMark(d.undo);
  return true;
}

}  // namespace velk::document
