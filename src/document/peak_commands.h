#pragma once
// The commands of the peak tool on a document: each keeps the list as it was in an undo record of
// its kind, so that one Undo brings it back exactly. The contour itself does not change: the
// marks of the list are drawn over it.
#include <cstdint>

#include "document/document.h"
#include "operations/peak_pick.h"
#include "operations/peak_top.h"

namespace velk::document {

enum PeakUndoKind : std::int16_t {
  kUndoDeletePeak = 1,
  kUndoAddPeak = 2,
  kUndoDeleteAll = 3,
  kUndoPickAllArea = 4,
  kUndoPickDisplayedArea = 5,
  kUndoMovePeakTop = 6,
};

// "Pick All Area" and "Pick Displayed Area": the list is saved first, whatever the search finds.
// Return the number of peaks added.
int PickAllArea(Document& d, float threshold, operations::PeakMode mode);
int PickDisplayedArea(Document& d, float threshold, operations::PeakMode mode);

// A click of the add, delete and move tools at a data point (fractions allowed for delete). A
// click that changes nothing leaves no undo record. Return true when the list changed.
bool AddPeakByClick(Document& d, std::int32_t col, std::int32_t row, float threshold, operations::PeakMode mode);
bool DeletePeakByClick(Document& d, double col, double row);
// A rubber band of the add tool picks every extremum inside it (kind 2); one of the delete tool
// removes every peak inside it (kind 1). Return how many peaks were added or removed.
int PickInArea(Document& d, const operations::PointArea& area, float threshold, operations::PeakMode mode);
int DeleteInArea(Document& d, const operations::PointArea& area);
// One row of the list window: the peak of that index goes (kind 1).
bool DeletePeakAt(Document& d, int index);
bool MovePeakByDrag(Document& d, int index, std::int32_t col, std::int32_t row, operations::PeakMode mode);
// "Delete All": refused (false) when the list is already empty.
bool DeleteAllPeaksOf(Document& d);

bool IsPeakUndoKind(int kind);
// Undo of a peak kind: the list of the top record comes back.
// False, changing nothing, when the top record is not of a peak kind.
bool UndoPeakEdit(Document& d);

}  // namespace velk::document
