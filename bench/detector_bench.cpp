// The detector runs on every Open and on every file a folder listing shows: it must stay far
// below what a person notices. Measured against reading the same file's bytes.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "core/bytes.h"
#include "formats/registry.h"
#include "model/type_detector.h"

namespace {

std::filesystem::path MakeFile() {
  const auto path = std::filesystem::temp_directory_path() / "velk-bench-detector.jdx";
  std::ofstream out(path);
  out << "##TITLE= bench\n##JCAMP-DX= 5.01\n";
  for (int i = 0; i < 20000; ++i) out << i << " " << i * 3 << "\n";
  return path;
}

void DetectorOnJcampFile(benchmark::State& state) {
  const auto path = MakeFile();
  for (auto _ : state) benchmark::DoNotOptimize(velk::model::TypeDetector(path, velk::formats::Formats()));
}
BENCHMARK(DetectorOnJcampFile);

void ReadSameFileBytes(benchmark::State& state) {
  const auto path = MakeFile();
  for (auto _ : state) benchmark::DoNotOptimize(velk::core::ReadWholeFile(path.string()));
}
BENCHMARK(ReadSameFileBytes);

}  // namespace
