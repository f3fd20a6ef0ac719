#pragma once
// Zero and first order phase of a finished 2D spectrum, one axis at a time. The whole spectrum is
// rotated from the backups into the live quadrants, so that a second preview starts again from the
// data as the tool found them; a trace preview rotates one row or column only.
#include <cstdint>
#include <vector>

#include "model/spectrum.h"
#include "operations/quadrants.h"

namespace velk::operations {

// Degrees, and the pivot as a data point of the axis (rows for F1, columns for F2). The angle at
// point k of an axis of N points is Phase0 + (k - pivot) * Phase1 / N.
struct PhaseValues {
  float Phase0 = 0;
  float Phase1 = 0;
  std::int32_t pivot = 0;
};

// F1 mixes RR with RI and IR with II, one angle per row; F2 mixes RR with IR and RI with II, one
// angle per column. The four results of a point come from the backups at once.
void RotatePhaseF1(const QuadrantBackup& backup, model::Spectrum2D& s, const PhaseValues& p, int threads = 0);
void RotatePhaseF2(const QuadrantBackup& backup, model::Spectrum2D& s, const PhaseValues& p, int threads = 0);

// One trace of the axis from the backups: F1 the column `column` (RR, RI), F2 the row `row` (RR, IR).
// The buffers are resized to the points of the axis, at most kTraceBufferPoints + 1.
void PhaseTraceF1(const QuadrantBackup& backup, const model::Spectrum2D& s, std::int32_t column, const PhaseValues& p,
                  std::vector<float>& re, std::vector<float>& im);
void PhaseTraceF2(const QuadrantBackup& backup, const model::Spectrum2D& s, std::int32_t row, const PhaseValues& p,
                  std::vector<float>& re, std::vector<float>& im);

}  // namespace velk::operations
