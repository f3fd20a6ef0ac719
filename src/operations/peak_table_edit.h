#pragma once
// The edits of the peak list: add (with the limit and the duplicate rule), delete one or all,
// move a top, and the sort by F2 position.
#include <cstdint>

#include "model/peak_table.h"
#include "operations/peak_pick.h"
#include "operations/peak_top.h"

namespace velk::operations {

// Adds the peak unless the list is full or some peak lies within 1/32 of a step of it on both
// axes; returns true when it was added.
bool AddPeak(model::PeakTable2D& table, const model::Peak2D& peak, double stepF2, double stepF1);

// True when some peak stands on this data point.
bool HasPeakAtPoint(const model::PeakTable2D& table, std::int32_t col, std::int32_t row);

// The peak whose top lies nearest to a position given in points (fractions allowed), -1 for none.
int NearestPeak(const model::PeakTable2D& table, double col, double row, double stepF2, double stepF1);

// Removes the peak nearest to the position; returns false when the list is empty.
bool DeleteNearestPeak(model::PeakTable2D& table, double col, double row, double stepF2, double stepF1);

void DeleteAllPeaks(model::PeakTable2D& table);

// Removes every peak whose data point lies in the area; returns how many went.
int DeletePeaksInArea(model::PeakTable2D& table, const PointArea& area);

// The peak takes the data point (col, row) and its top is made anew; a point on the rim or a top
// that would duplicate another peak leaves the list as it was. Returns true when it moved.
bool MovePeakTop(model::PeakTable2D& table, int index, const PeakPlane& plane, std::int32_t col, std::int32_t row,
                 PeakMode mode);

// Ascending F2 position by an exchange sort: each record against each later one. The two fields
// that are set when a record is made stay in their places.
void SortPeaks(model::PeakTable2D& table);

}  // namespace velk::operations
