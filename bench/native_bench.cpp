// Reading and writing a 4096 x 2048 four-plane Ver.4 file (128 MiB of planes) from and to a warm
// page cache, against moving the same bytes plainly in the same run: a plain read() into a ready
// buffer, a plain write() of one buffer, and std::memcpy. Each benchmark reports its time and the
// counters x_plain (its time over the plain transfer's) and x_memcpy. Target: x_plain at most 2.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>

#include "model/spectrum.h"
#include "native/ver4_file.h"
#include "platform/progress.h"
#include "platform/prompt.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
constexpr std::int32_t kColumns = 4096, kRows = 2048;
constexpr std::size_t kPlaneBytes = std::size_t{kColumns} * kRows * sizeof(float);

class SilentPrompt final : public velk::platform::Prompt {
 public:
  velk::platform::Answer Ask(const velk::platform::Message&) override { return velk::platform::Answer::Ok; }
  std::optional<int> Choose(const std::string&, const std::vector<std::string>&) override { return 0; }
  std::optional<std::string> ChooseFile(const std::string&, const std::vector<velk::platform::FileFilter>&, bool) override {
    return std::nullopt;
  }
};

std::unique_ptr<velk::model::Spectrum2D> MakeSet() {
  auto s = std::make_unique<velk::model::Spectrum2D>();
  velk::model::AllocateSpectrum2D(*s, kColumns, kRows);
  for (velk::model::Plane* plane : {&s->RR, &s->RI, &s->IR, &s->II})
    for (std::size_t i = 0; i < plane->data.size(); ++i) plane->data[i] = static_cast<float>(i % 977) * 0.5f;
  for (int a : {velk::model::F1, velk::model::F2}) {
    s->axis[a].Point = a == velk::model::F2 ? kColumns : kRows;
    s->axis[a].Frequency = 5000;
  }
  return s;
}

fs::path BenchFile(const char* name) { return fs::temp_directory_path() / name; }

double Seconds(Clock::time_point from) { return std::chrono::duration<double>(Clock::now() - from).count(); }

double PlainRead(const fs::path& file, std::vector<char>& buffer) {
  const auto start = Clock::now();
  std::FILE* in = std::fopen(file.c_str(), "rb");
  const std::size_t got = std::fread(buffer.data(), 1, buffer.size(), in);
  std::fclose(in);
  benchmark::DoNotOptimize(got);
  return Seconds(start);
}

// Into a new file, as the writer's own output is a new file.
double PlainWrite(const fs::path& file, const std::vector<char>& buffer) {
  fs::remove(file);
  const auto start = Clock::now();
  std::FILE* out = std::fopen(file.c_str(), "wb");
  std::fwrite(buffer.data(), 1, buffer.size(), out);
  std::fclose(out);
  return Seconds(start);
}

double Memcpy(std::vector<char>& to, const std::vector<char>& from) {
  const auto start = Clock::now();
  std::memcpy(to.data(), from.data(), from.size());
  benchmark::ClobberMemory();
  return Seconds(start);
}

void Report(benchmark::State& state, double ours, double plain, double copy) {
  state.counters["x_plain"] = ours / plain;
  state.counters["x_memcpy"] = ours / copy;
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * 4 * kPlaneBytes));
}

void WriteDataR4Of128MiB(benchmark::State& state) {
  const auto s = MakeSet();
  const fs::path file = BenchFile("velk-bench-write.vlk2"), plainFile = BenchFile("velk-bench-plain.bin");
  std::vector<char> buffer(4 * kPlaneBytes, 1), other(4 * kPlaneBytes, 2);
  double ours = 0, plain = 0, copy = 0;
  for (auto _ : state) {
    fs::remove(file);  // a new file each time, like the plain write; replacing adds two renames
    const auto start = Clock::now();
    const auto outcome = velk::native::WriteDataR4(file, *s, nullptr, nullptr, {0x210C, 0, 0},
                                                   velk::native::SaveMode::AllPlanes, {false, nullptr});
    const double seconds = Seconds(start);
    if (!outcome.ok()) state.SkipWithError("write failed");
    state.SetIterationTime(seconds);
    ours += seconds;
    plain += PlainWrite(plainFile, buffer);
    copy += Memcpy(other, buffer);
  }
  Report(state, ours, plain, copy);
  fs::remove(file);
  fs::remove(plainFile);
}
BENCHMARK(WriteDataR4Of128MiB)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(2.0);

void ReadDataR4Of128MiB(benchmark::State& state) {
  const fs::path file = BenchFile("velk-bench-read.vlk2");
  velk::native::WriteDataR4(file, *MakeSet(), nullptr, nullptr, {0x210C, 0, 0}, velk::native::SaveMode::AllPlanes,
                            {false, nullptr});
  std::vector<char> buffer(fs::file_size(file)), other(buffer.size());
  auto s = std::make_unique<velk::model::Spectrum2D>();
  SilentPrompt prompt;
  velk::platform::NoProgress progress;
  velk::model::DataWords words;
  velk::model::ReadContext context{prompt, progress, words, nullptr};
  double ours = 0, plain = 0, copy = 0;
  for (auto _ : state) {
    const auto start = Clock::now();
    const auto outcome = velk::native::ReadDataR4(file, *s, context);
    const double seconds = Seconds(start);
    if (!outcome.ok()) state.SkipWithError("read failed");
    state.SetIterationTime(seconds);
    ours += seconds;
    plain += PlainRead(file, buffer);
    copy += Memcpy(other, buffer);
  }
  Report(state, ours, plain, copy);
  fs::remove(file);
}
BENCHMARK(ReadDataR4Of128MiB)->UseManualTime()->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace
