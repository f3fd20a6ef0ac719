#pragma once
// "Set up Grid" on the document: the new lattice over the contour, with an undo record that keeps
// the old one. The grid is a way of looking, not data: the change leaves the saved state as it was.
#include <cstdint>

#include "document/document.h"

namespace velk::document {

inline constexpr std::int16_t kUndoChangeGrid = 133;

// Takes the grid, with a record of the one before. Nothing is recorded when it did not change.
void SetGrid(Document& d, const display::GridSetting& grid);
// Undo of kind 133: the grid as it was. False, changing nothing, when the top record is another kind.
bool UndoGridChange(Document& d);

}  // namespace velk::document
