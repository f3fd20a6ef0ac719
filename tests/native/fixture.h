#pragma once
// Data sets with known contents for the Ver.4 tests, and small helpers to write and read them.
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "model/format_entry.h"
#include "model/spectrum.h"
#include "native/ver4_file.h"
#include "support/scripted_prompt.h"

namespace velk::test {

// A processed 2D set whose every plane value is a known function of plane, column and row, with
// texts (Shift-JIS among them), peaks, regions, history and summary lines filled in.
std::unique_ptr<model::Spectrum2D> MakeSpectrum2D(std::int32_t f2Points, std::int32_t f1Points);
// A companion trace of the given length.
model::Spectrum1D MakeSpectrum1D(std::int32_t points, std::int16_t mode);
// Every section this program carries without interpreting it, with distinct contents.
void AddEveryCarriedSection(model::Spectrum2D& s, model::Spectrum1D& f2, model::Spectrum1D& f1);

struct ReadBack {
  std::unique_ptr<model::Spectrum2D> s = std::make_unique<model::Spectrum2D>();
  model::Spectrum1D f2, f1;
  ScriptedPrompt prompt;
  model::DataWords words;
  platform::Outcome outcome;
};
// Reads the bytes of a whole file the way Open does, with both companion sets.
std::unique_ptr<ReadBack> Read2D(std::span<const std::uint8_t> file);

std::vector<std::uint8_t> Slurp(const std::filesystem::path& file);

}  // namespace velk::test
