#include "document/peak_commands.h"

#include "operations/peak_pick.h"
#include "operations/peak_table_edit.h"

namespace velk::document {
namespace {

using model::F1;
using model::F2;

void SaveList(Document& d, std::int16_t kind) {
  UndoRecord record;
  record.Kind = kind;
  record.Peaks = d.spectrum.peaks;
  PushUndo(d.undo, std::move(record));
}

// Runs an edit on a copy of the list and keeps it, with the old list on the stack, when it
// changed something.
template <class Edit>
bool EditList(Document& d, std::int16_t kind, Edit edit) {
  model::PeakTable2D before = d.spectrum.peaks;
  if (!edit()) return false;
  UndoRecord record;
  record.Kind = kind;
  record.Peaks = std::move(before);
  PushUndo(d.undo, std::move(record));
  return true;
}

}  // namespace

int PickAllArea(Document& d, float threshold, operations::PeakMode mode) {
  SaveList(d, kUndoPickAllArea);
  return operations::PickArea(d.spectrum, operations::AllArea(d.spectrum), threshold, mode);
}

int PickDisplayedArea(Document& d, float threshold, operations::PeakMode mode) {
  SaveList(d, kUndoPickDisplayedArea);
  return operations::PickArea(d.spectrum, operations::DisplayedArea(d.spectrum, d.view), threshold, mode);
}

bool AddPeakByClick(Document& d, std::int32_t col, std::int32_t row, float threshold, operations::PeakMode mode) {
  return EditList(d, kUndoAddPeak, [&] { return operations::AddPeakNear(d.spectrum, col, row, threshold, mode); });
}

bool DeletePeakByClick(Document& d, double col, double row) {
  const double stepF2 = d.spectrum.axis[F2].Resolution, stepF1 = d.spectrum.axis[F1].Resolution;
  return EditList(d, kUndoDeletePeak,
                  [&] { return operations::DeleteNearestPeak(d.spectrum.peaks, col, row, stepF2, stepF1); });
}

int PickInArea(Document& d, const operations::PointArea& area, float threshold, operations::PeakMode mode) {
  int added = 0;
  EditList(d, kUndoAddPeak, [&] { return (added = operations::PickArea(d.spectrum, area, threshold, mode)) > 0; });
  return added;
}

int DeleteInArea(Document& d, const operations::PointArea& area) {
  int removed = 0;
  EditList(d, kUndoDeletePeak, [&] { return (removed = operations::DeletePeaksInArea(d.spectrum.peaks, area)) > 0; });
  return removed;
}

bool DeletePeakAt(Document& d, int index) {
  return EditList(d, kUndoDeletePeak, [&] {
    if (index < 0 || index >= static_cast<int>(d.spectrum.peaks.peaks.size())) return false;
    d.spectrum.peaks.peaks.erase(d.spectrum.peaks.peaks.begin() + index);
    return true;
  });
}

bool MovePeakByDrag(Document& d, int index, std::int32_t col, std::int32_t row, operations::PeakMode mode) {
  const operations::PeakPlane plane = operations::PlaneOf(d.spectrum);
  return EditList(d, kUndoMovePeakTop,
                  [&] { return operations::MovePeakTop(d.spectrum.peaks, index, plane, col, row, mode); });
}

bool DeleteAllPeaksOf(Document& d) {
  return EditList(d, kUndoDeleteAll, [&] {
    if (d.spectrum.peaks.peaks.empty()) return false;
    operations::DeleteAllPeaks(d.spectrum.peaks);
    return true;
  });
}

bool IsPeakUndoKind(int kind) { return kind >= kUndoDeletePeak && kind <= kUndoMovePeakTop; }

bool UndoPeakEdit(Document& d) {
  const UndoRecord* top = TopUndo(d.undo);
  if (!top || !IsPeakUndoKind(top->Kind)) return false;
  d.spectrum.peaks = top->Peaks;
  PopUndo(d.undo);
  return true;
}

}  // namespace velk::document
