#pragma once
// The four quadrants of a data set as one unit: the backups that a tool keeps while it is open, and
// the shared loop that hands rows of the data to every core.
#include <cstdint>
#include <functional>

#include "model/spectrum.h"

namespace velk::operations {

// Copies of RR, IR, RI and II, taken when a tool opens; every preview starts again from them.
struct QuadrantBackup {
  model::Plane RR, IR, RI, II;
};

QuadrantBackup BackUpQuadrants(const model::Spectrum2D& s);
// The backups back into the live quadrants (the quadrants keep their allocation).
void RestoreQuadrants(const QuadrantBackup& backup, model::Spectrum2D& s);

// Calls work(first, count) for rows [0, rows) in fixed chunks on `threads` threads (0: every
// core). Each row is written by one call only, so the result does not depend on the threads.
void ForEachRowChunk(std::int32_t rows, int threads,
                     const std::function<void(std::int32_t first, std::int32_t count)>& work);

}  // namespace velk::operations
