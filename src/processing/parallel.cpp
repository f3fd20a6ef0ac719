#include "processing/parallel.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace velk::processing {

int ResolveThreads(int requested) {
  if (requested > 0) return requested;
  return std::max(1u, std::thread::hardware_concurrency());
}

bool ForEachChunk(std::int64_t items, std::int32_t chunk, int threads, platform::Progress& progress,
                  const std::function<void(std::int64_t, std::int32_t, int)>& work) {
  if (items <= 0) return true;
  const std::int64_t chunks = (items + chunk - 1) / chunk;
  const int workers = static_cast<int>(std::min<std::int64_t>(std::max(threads, 1), chunks));
  std::atomic<std::int64_t> next{0};
  std::atomic<std::int64_t> done{0};
  std::atomic<bool> stop{false};
  auto runChunk = [&](std::int64_t index, int worker) {
    const std::int64_t first = index * chunk;
    const auto count = static_cast<std::int32_t>(std::min<std::int64_t>(chunk, items - first));
    work(first, count, worker);
    return done.fetch_add(count) + count;
  };
  std::vector<std::thread> pool;
  pool.reserve(workers - 1);
  for (int w = 1; w < workers; ++w)
    pool.emplace_back([&, w] {
      for (std::int64_t c = next++; c < chunks && !stop; c = next++) runChunk(c, w);
    });
  std::int64_t reported = 0;
  for (std::int64_t c = next++; c < chunks && !stop; c = next++) {
    const std::int64_t finished = runChunk(c, 0);
    for (; reported < finished && !stop; ++reported)
      if (!progress.Step(reported + 1, items)) stop = true;
  }
  for (auto& t : pool) t.join();
  for (; reported < done && !stop; ++reported)
    if (!progress.Step(reported + 1, items)) stop = true;
  return !stop;
}

}  // namespace velk::processing
