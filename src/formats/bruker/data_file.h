#pragma once
// A Bruker data file (fid, ser, 1r, 2rr ...) loaded for decoding: the element type chosen by the
// element-size test, the byte order of the parameters, and the bytes that the parameters announce.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "core/bytes.h"
#include "formats/bruker/routines.h"
#include "formats/elements.h"
#include "platform/prompt.h"

namespace velk::formats::bruker {

struct DataFile {
  std::vector<std::uint8_t> bytes;  // exactly the announced bytes; a longer file is cut
  ElementType type = ElementType::Int32;
  core::ByteOrder order = core::ByteOrder::Little;
};

// The element-size test: file length / pointsInFile (rounded; 0 skips the test) of 8 means doubles;
// otherwise a non-zero DecimalFlag leaves the type open (asked for spectra when askable), and a zero
// one means 32-bit integers whatever the parameter file said.
void ChooseDataType(std::uint64_t fileLength, std::uint64_t pointsInFile, bool askable, LoadState& state,
                    platform::Prompt& prompt);

// Reads the element count the parameters announce. A message when the file is missing, shorter
// than announced, or larger than this program handles; nothing is allocated before the checks.
std::optional<platform::Message> LoadDataFile(const std::filesystem::path& file, std::uint64_t pointsInFile,
                                              bool askable, std::uint64_t elements, LoadState& state,
                                              platform::Prompt& prompt, DataFile& out);

// Elements of a row layout: each row of rowValues values starts on a 1024-byte boundary.
std::uint64_t RowStrideValues(std::uint64_t rowValues, ElementType type);

}  // namespace velk::formats::bruker
