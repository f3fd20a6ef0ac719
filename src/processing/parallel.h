#pragma once
// Rows and columns of a transform are independent: they are cut into fixed chunks that any thread
// may take, so the result does not depend on the number of threads. Progress is reported by the
// calling thread only, once per finished row or column, and a quit request stops the run between
// chunks.
#include <cstdint>
#include <functional>

#include "platform/progress.h"

namespace velk::processing {

// 0 asks for every core the machine has.
int ResolveThreads(int requested);

// Calls work(first, count, worker) for [0, items) in chunks of `chunk`; worker is 0 .. threads-1
// so that each thread can own its scratch. Returns false when the progress asked to quit.
bool ForEachChunk(std::int64_t items, std::int32_t chunk, int threads, platform::Progress& progress,
                  const std::function<void(std::int64_t first, std::int32_t count, int worker)>& work);

}  // namespace velk::processing
