// Reading a processed 2D spectrum (2048 x 2048 points of 32 bits in 256 x 256 submatrices,
// 16 MiB) with its unscrambling, as a ratio to reading the same file's bytes in the same run.
// Target: at most 3 times the byte read.
#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

#include "core/bytes.h"
#include "formats/bruker/bruker.h"
#include "model/spectrum.h"
#include "platform/progress.h"
#include "platform/prompt.h"

namespace {

namespace fs = std::filesystem;

class NoQuestions final : public velk::platform::Prompt {
 public:
  velk::platform::Answer Ask(const velk::platform::Message&) override { return velk::platform::Answer::Ok; }
  std::optional<int> Choose(const std::string&, const std::vector<std::string>&) override { return 0; }
  std::optional<std::string> ChooseFile(const std::string&, const std::vector<velk::platform::FileFilter>&,
                                        bool) override {
    return std::nullopt;
  }
};

fs::path MakeSet() {
  const fs::path folder = fs::temp_directory_path() / "velk-bench-bruker";
  fs::create_directories(folder);
  for (const char* name : {"procs", "proc2s"}) {
    std::ofstream out(folder / name);
    out << "##ORIGIN= Bruker BioSpin GmbH\n##$SF= 500.13\n##$SW_p= 6000\n##$SI= 2048\n##$XDIM= 256\n"
           "##$OFFSET= 10\n##$PH_mod= 0\n##$BYTORDP= 0\n##$DTYPP= 0\n##END=\n";
  }
  std::vector<std::int32_t> values(2048 * 2048);
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<std::int32_t>(i * 2654435761u >> 8);
  std::ofstream(folder / "2rr", std::ios::binary)
      .write(reinterpret_cast<const char*>(values.data()), static_cast<std::streamsize>(values.size() * 4));
  return folder / "2rr";
}

double Seconds(std::chrono::steady_clock::duration d) { return std::chrono::duration<double>(d).count(); }

void BrukerRead2rrAgainstBytes(benchmark::State& state) {
  const fs::path file = MakeSet();
  velk::model::DetectedFile detected;
  detected.path = file;
  detected.folder = file.parent_path();
  NoQuestions prompt;
  velk::platform::NoProgress progress;
  auto spectrum = std::make_unique<velk::model::Spectrum2D>();
  double readerSeconds = 0, byteSeconds = 0;
  for (auto _ : state) {
    const auto t0 = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(velk::core::ReadWholeFile(file.string()));
    const auto t1 = std::chrono::steady_clock::now();
    velk::model::DataWords words;
    velk::model::ReadContext context{prompt, progress, words, nullptr};
    if (!velk::formats::bruker::ReadBruker2D(detected, *spectrum, context).ok()) state.SkipWithError("read failed");
    const auto t2 = std::chrono::steady_clock::now();
    byteSeconds += Seconds(t1 - t0);
    readerSeconds += Seconds(t2 - t1);
    state.SetIterationTime(Seconds(t2 - t1));
  }
  state.counters["ratio_to_bytes"] = readerSeconds / byteSeconds;
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * 2048 * 2048 * 4);
}
BENCHMARK(BrukerRead2rrAgainstBytes)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
