#include "operations/quadrants.h"

#include "processing/parallel.h"

namespace velk::operations {

QuadrantBackup BackUpQuadrants(const model::Spectrum2D& s) {
  return {s.RR, s.IR, s.RI, s.II};
}

void RestoreQuadrants(const QuadrantBackup& backup, model::Spectrum2D& s) {
  s.RR.data = backup.RR.data;
  s.IR.data = backup.IR.data;
  s.RI.data = backup.RI.data;
  s.II.data = backup.II.data;
}

void ForEachRowChunk(std::int32_t rows, int threads, const std::function<void(std::int32_t, std::int32_t)>& work) {
  constexpr std::int32_t kRows = 16;
  platform::NoProgress quiet;
  processing::ForEachChunk(rows, kRows, processing::ResolveThreads(threads), quiet,
                           [&](std::int64_t first, std::int32_t count, int) {
                             work(static_cast<std::int32_t>(first), count);
                           });
}

}  // namespace velk::operations
