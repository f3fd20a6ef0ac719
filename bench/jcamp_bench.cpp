// Decoding a JCAMP-DX table of one million points in DIF/DUP form, against strtod over the same
// count of plain numbers: the target is at most 1.5 times strtod's time.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "formats/jcamp/asdf.h"

namespace {

constexpr std::size_t kPoints = 1000000;

// A spectrum-like table: noise of a few hundred counts, Lorentzian lines, plateaus of zeros.
const std::vector<std::int64_t>& Values() {
  static const std::vector<std::int64_t> values = [] {
    std::mt19937 random(11);
    std::normal_distribution<double> noise(0, 300);
    std::vector<std::int64_t> v(kPoints);
    for (std::size_t i = 0; i < kPoints; ++i) {
      double y = (i / 50000) % 5 == 4 ? 0 : noise(random);
      for (double centre : {120000.0, 410000.0, 733000.0}) y += 4e6 / (1 + std::pow((i - centre) / 30.0, 2));
      v[i] = std::llrint(y);
    }
    return v;
  }();
  return values;
}

const std::string& DifDupText() {
  static const std::string text = [] {
    std::string t;
    for (const std::string& line : velk::formats::jcamp::EncodeDifDupLines(Values(), 0, 1)) t += line + "\n";
    return t;
  }();
  return text;
}

const std::string& PlainText() {
  static const std::string text = [] {
    std::string t;
    for (std::int64_t v : Values()) t += std::to_string(v) + " ";
    return t;
  }();
  return text;
}

double DecodeTable() {
  static std::vector<double> out(kPoints);
  const std::string& text = DifDupText();
  velk::formats::TextCursor cursor{velk::core::Bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()), 0};
  velk::formats::jcamp::AsdfTable table{out};
  velk::formats::jcamp::ReadAsdfTable(cursor, table);
  return out[kPoints - 1];
}

double StrtodAll() {
  const char* p = PlainText().c_str();
  double sum = 0;
  for (std::size_t i = 0; i < kPoints; ++i) {
    char* end = nullptr;
    sum += std::strtod(p, &end);
    p = end;
  }
  return sum;
}

void JcampDecodeDifDup1M(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(DecodeTable());
}
BENCHMARK(JcampDecodeDifDup1M)->Unit(benchmark::kMillisecond);

void StrtodPlain1M(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(StrtodAll());
}
BENCHMARK(StrtodPlain1M)->Unit(benchmark::kMillisecond);

// Both in every iteration: "ratio" is the decoder's time over strtod's in the same run.
void JcampDecodeRatioToStrtod(benchmark::State& state) {
  using Clock = std::chrono::steady_clock;
  double decode = 0, plain = 0;
  for (auto _ : state) {
    const auto t0 = Clock::now();
    benchmark::DoNotOptimize(DecodeTable());
    const auto t1 = Clock::now();
    benchmark::DoNotOptimize(StrtodAll());
    const auto t2 = Clock::now();
    decode += std::chrono::duration<double>(t1 - t0).count();
    plain += std::chrono::duration<double>(t2 - t1).count();
  }
  state.counters["ratio"] = plain > 0 ? decode / plain : 0;
}
BENCHMARK(JcampDecodeRatioToStrtod)->Unit(benchmark::kMillisecond);

}  // namespace
