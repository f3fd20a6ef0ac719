#pragma once
// Pieces shared by the 2D and 1D blocks: sections addressed from a block's own table, and the
// plain text sections.
#include <string>

#include "native/fields.h"

namespace velk::native {

// A block of the file: its bytes and where they start.
struct Block {
  Bytes bytes;
  std::uint64_t address = 0;

  // The section an absolute entry names, when it lies inside the block; else empty.
  Bytes Section(Entry entry) const;
  // The bytes from an absolute address on, when they lie inside the block; else empty.
  Bytes Range(std::uint64_t start, std::uint64_t length) const;
  Entry EntryAt(std::uint64_t offsetInBlock) const { return ReadEntry(bytes, offsetInBlock); }
};

// A text section: tag, then the text; an empty text leaves one long of zero.
Entry WriteTextSection(FileSink& sink, std::string_view tag, const std::string& text);
// The text of a section read by its table entry: from the address + 16 over the length - 16.
std::string ReadTextSection(Bytes section);

// Both data blocks open alike; offsets count from the base, 16 bytes behind the block's address.
inline constexpr std::uint64_t kBlockTableEnd = 240;
inline constexpr std::uint64_t kOrgFileAt = 240;
inline constexpr std::uint64_t kParameterAt = 768;
// Writes the block's tag, its mode string, "%% ADDRESS" with zeros for the block's own table, the
// original file name and the parameter block (whose tag it sets). Returns the block's address.
std::uint64_t WriteBlockOpening(FileSink& sink, std::string_view tag, const std::string& modeString,
                                const std::string& originalName, std::size_t nameWidth,
                                std::vector<std::uint8_t> parameters);

// Starts a section at the next boundary with its tag; returns its address.
std::uint64_t BeginSection(FileSink& sink, std::string_view tag);
Entry EndSection(const FileSink& sink, std::uint64_t address);

}  // namespace velk::native
