// Opening the largest 2D Delta file of the corpus (a 33 MiB HSQC), against reading its bytes in
// the same run: the reader should cost at most three times the read.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "core/bytes.h"
#include "formats/jeol/delta.h"
#include "platform/prompt.h"

namespace {

std::filesystem::path LargestDelta() {
  const char* root = std::getenv("VELK_TEST_DATA");
  const std::filesystem::path base = root ? root : std::filesystem::path(std::getenv("HOME")) / ".cache/velk2d-test-data";
  return base / "jeol/Rutin_3080ug200uL_DMSOd6_HSQC_400MHz_Jeol.jdf";
}

class SilentPrompt final : public velk::platform::Prompt {
 public:
  velk::platform::Answer Ask(const velk::platform::Message&) override { return velk::platform::Answer::Ok; }
  std::optional<int> Choose(const std::string&, const std::vector<std::string>&) override { return 0; }
  std::optional<std::string> ChooseFile(const std::string&, const std::vector<velk::platform::FileFilter>&,
                                        bool) override {
    return std::nullopt;
  }
};

void ReadLargestDelta2D(benchmark::State& state) {
  SilentPrompt prompt;
  velk::platform::NoProgress progress;
  velk::model::DataWords words{0x2003, velk::model::VPH_HETERO, 0};
  velk::model::ReadContext context{prompt, progress, words, nullptr};
  auto spectrum = std::make_unique<velk::model::Spectrum2D>();
  for (auto _ : state) {
    if (!velk::formats::jeol::ReadData2DDelta(LargestDelta(), *spectrum, context).ok()) state.SkipWithError("not read");
  }
}
BENCHMARK(ReadLargestDelta2D)->Unit(benchmark::kMillisecond);

void ReadLargestDeltaBytes(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(velk::core::ReadWholeFile(LargestDelta().string()));
}
BENCHMARK(ReadLargestDeltaBytes)->Unit(benchmark::kMillisecond);

}  // namespace
